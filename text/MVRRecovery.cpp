// SPDX-License-Identifier: MIT
#include <text/MVRRecovery.h>

#include <core/MVRCoreUtil.h>
#include <core/STextDoc.h>

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTextDocument>
#include <QThread>

namespace {

constexpr int pause = 1500; // ms without an edit
constexpr qint64 longest = 60000; // ms that edits may go on without a copy
constexpr const char *recordSuffix = ".copy";

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

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

MVRRecovery::MVRRecovery(std::function<Writer()> prepare, QObject *parent)
    : QObject(parent)
    , m_prepare(std::move(prepare))
    , m_base(folder().filePath(MVRCoreUtil::CreateUUID()))
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &MVRRecovery::write);
}

MVRRecovery::~MVRRecovery()
{
    wait();
}

void MVRRecovery::noteEdit(const QString &original, const QString &suffix)
{
    m_original = original;
    m_suffix = suffix;
    if (!m_due.isValid())
        m_due.start();
    m_pause.start(int(qBound(qint64(0), longest - m_due.elapsed(), qint64(pause))));
}

void MVRRecovery::write()
{
    if (!m_due.isValid() || !m_prepare)
        return;
    wait(); // for the copy before, which has had a pause to be written in
    m_pause.stop();
    m_due.invalidate();
    if (!m_lock) {
        m_lock = lockFor(m_base);
        m_lock->tryLock();
    }
    const QString copy = m_base + QLatin1Char('.') + m_suffix;
    const QString record = m_base + QLatin1String(recordSuffix);
    const QByteArray names = copy.toUtf8() + '\n' + m_original.toUtf8();
    m_thread.reset(QThread::create([writer = m_prepare(), copy, record, names] {
        const QByteArray bytes = writer ? writer() : QByteArray();
        if (!bytes.isEmpty() && writeFile(copy, bytes))
            writeFile(record, names);
    }));
    m_thread->start(QThread::LowPriority);
}

void MVRRecovery::wait()
{
    if (m_thread)
        m_thread->wait();
    m_thread.reset();
}

void MVRRecovery::drop()
{
    wait();
    m_pause.stop();
    m_due.invalidate();
    const QFileInfo base(m_base);
    const QStringList files = base.dir().entryList({base.fileName() + QLatin1String(".*")});
    m_lock.reset();
    for (const QString &file : files)
        base.dir().remove(file);
}

QVector<MVRRecovery::Copy> MVRRecovery::leftCopies()
{
    QVector<Copy> copies;
    const QFileInfoList records = folder().entryInfoList(
        {QLatin1Char('*') + QLatin1String(recordSuffix)}, QDir::Files, QDir::Time);
    for (const QFileInfo &info : records) {
        const QString base = info.path() + QLatin1Char('/') + info.completeBaseName();
        if (!lockFor(base)->tryLock(0)) // its program is alive
            continue;
        const QStringList lines
            = QString::fromUtf8(MVRCoreUtil::ReadBinaryFile(info.filePath(), nullptr))
                  .split(QLatin1Char('\n'));
        // Only what lies beside a record is its copy, whatever the record says.
        const QString copy = info.dir().filePath(QFileInfo(lines.first()).fileName());
        copies.append({copy, lines.value(1), info.filePath()});
    }
    return copies;
}

void MVRRecovery::remove(const Copy &copy)
{
    QFile::remove(copy.file);
    QFile::remove(copy.record);
}

std::shared_ptr<const QTextDocument> MVRRecovery::detachedCopy(const QTextDocument &document)
{
    std::shared_ptr<QTextDocument> copy(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    copy->moveToThread(nullptr);
    return copy;
}
