// SPDX-License-Identifier: MIT
#include "Recovery.h"

#include <core/MVRCoreUtil.h>

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QVector>

namespace {

constexpr int pause = 1500; // ms without an edit
constexpr qint64 longest = 60000; // ms that edits may go on without a copy

QDir folder()
{
    QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    folder.mkpath(QStringLiteral("recovery"));
    folder.cd(QStringLiteral("recovery"));
    return folder;
}

std::unique_ptr<QLockFile> lockFor(const QString &base)
{
    auto lock = std::make_unique<QLockFile>(base + QLatin1String(".lock"));
    lock->setStaleLockTime(0); // a program may be open for days
    return lock;
}

} // namespace

Recovery::Recovery(std::function<bool(const QString &)> write, QObject *parent)
    : QObject(parent)
    , m_write(std::move(write))
    , m_base(folder().filePath(MVRCoreUtil::CreateUUID()))
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &Recovery::write);
}

Recovery::~Recovery() = default;

void Recovery::noteEdit(const QString &original, const QString &suffix)
{
    m_original = original;
    m_suffix = suffix;
    if (!m_due.isValid())
        m_due.start();
    m_pause.start(int(qBound(qint64(0), longest - m_due.elapsed(), qint64(pause))));
}

void Recovery::write()
{
    if (!m_due.isValid())
        return;
    m_pause.stop();
    m_due.invalidate();
    if (!m_lock) {
        m_lock = lockFor(m_base);
        m_lock->tryLock();
    }
    const QString copy = m_base + QLatin1Char('.') + m_suffix;
    if (!m_write(copy))
        return;
    QSaveFile record(m_base + QLatin1String(".copy"));
    record.open(QIODevice::WriteOnly);
    record.write(copy.toUtf8() + '\n' + m_original.toUtf8());
    record.commit();
}

void Recovery::drop()
{
    m_pause.stop();
    m_due.invalidate();
    for (const char *suffix : {".copy", ".rtf", ".fdx"})
        QFile::remove(m_base + QLatin1String(suffix));
    m_lock.reset();
}

QVector<Recovery::Copy> Recovery::leftCopies()
{
    QVector<Copy> copies;
    const QFileInfoList records
        = folder().entryInfoList({QStringLiteral("*.copy")}, QDir::Files, QDir::Time);
    for (const QFileInfo &info : records) {
        const QString base = info.path() + QLatin1Char('/') + info.completeBaseName();
        if (!lockFor(base)->tryLock(0)) // its program is alive
            continue;
        const QStringList lines
            = QString::fromUtf8(MVRCoreUtil::ReadBinaryFile(info.filePath(), nullptr))
                  .split(QLatin1Char('\n'));
        copies.append({lines.first(), lines.value(1), info.filePath()});
    }
    return copies;
}

void Recovery::remove(const Copy &copy)
{
    QFile::remove(copy.file);
    QFile::remove(copy.record);
}
