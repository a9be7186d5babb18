// SPDX-License-Identifier: MIT
#include <text/MVRRecovery.h>

#include <core/MVRCoreUtil.h>
#include <core/STextDoc.h>

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSaveFile>
#include <QSet>
#include <QStandardPaths>
#include <QTextDocument>
#include <QThread>
#include <QUuid>

#include <algorithm>

namespace {

constexpr int pause = 1500; // ms without an edit
constexpr qint64 longest = 60000; // ms that edits may go on without a copy
constexpr qint64 longestRecord = 1 << 16; // bytes
const QLatin1String recordSuffix("copy");
const QLatin1String lockSuffix("lock");

/*! Empty where the system says of none. */
QString folderPath()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return data.isEmpty() ? QString() : data + QLatin1String("/recovery");
}

// Texts of files that only their writer may read get copies here.
void makeFolder(const QString &path)
{
    if (QDir(path).exists() || !QDir().mkpath(path))
        return;
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

/*! Makes a suffix by which a copy is known from its record and its lock. */
QString copySuffix(QString suffix)
{
    const auto isOdd = [](QChar c) { return !c.isLetterOrNumber(); };
    std::replace_if(suffix.begin(), suffix.end(), isOdd, QLatin1Char('_'));
    return suffix == recordSuffix || suffix == lockSuffix ? suffix + QLatin1Char('_') : suffix;
}

/*! What the names of a copy, its record and its lock begin with; empty for those of other files. */
QString baseOf(const QString &fileName)
{
    const QString base = fileName.section(QLatin1Char('.'), 0, 0);
    return QUuid(base).isNull() ? QString() : base;
}

/*! No record, no lock, and nothing that was not written to its end. */
bool isCopy(const QString &fileName)
{
    const QString suffix = fileName.section(QLatin1Char('.'), 1);
    return !baseOf(fileName).isEmpty() && suffix != recordSuffix && suffix != lockSuffix
        && !suffix.contains(QLatin1Char('.'));
}

/*! Deletes those of a copy's files that \a matches takes. */
template <typename Matches>
void removeFiles(const QDir &folder, const QString &base, const Matches &matches)
{
    const QStringList files = folder.entryList({base + QLatin1String(".*")}, QDir::Files);
    for (const QString &file : files) {
        if (matches(file))
            QFile::remove(folder.filePath(file));
    }
}

/*! The file that was edited. */
QString originalIn(const QString &record)
{
    QFile file(record);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.read(longestRecord)).section(QLatin1Char('\n'), 1);
}

std::unique_ptr<QLockFile> lockFor(const QString &base)
{
    auto lock = std::make_unique<QLockFile>(base + QLatin1Char('.') + lockSuffix);
    lock->setStaleLockTime(0); // a program may be open for days
    return lock;
}

// Where a lock cannot be written for another reason, as on a full disk, nobody has it.
bool isInUse(const QString &base)
{
    const std::unique_ptr<QLockFile> lock = lockFor(base);
    return !lock->tryLock(0) && lock->error() == QLockFile::LockFailedError;
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
    , m_base(folderPath() + QLatin1Char('/') + MVRCoreUtil::CreateUUID())
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
    m_isWritten.reset();
    if (!m_lock) {
        makeFolder(folderPath());
        m_lock = lockFor(m_base);
    }
    if (folderPath().isEmpty() || (!m_lock->isLocked() && !m_lock->tryLock(0)))
        return; // a copy that nobody holds is offered to others
    const QFileInfo copy(m_base + QLatin1Char('.') + copySuffix(m_suffix));
    const QString record = m_base + QLatin1Char('.') + recordSuffix;
    const QByteArray names = copy.filePath().toUtf8() + '\n' + m_original.toUtf8();
    m_isWritten = std::make_shared<std::atomic<bool>>(false);
    m_thread.reset(QThread::create([writer = m_prepare(), copy, record, names, done = m_isWritten] {
        const QByteArray bytes = writer ? writer() : QByteArray();
        if (bytes.isEmpty() || !writeFile(record, names) || !writeFile(copy.filePath(), bytes))
            return;
        *done = true;
        removeFiles(copy.dir(), baseOf(copy.fileName()), [&copy](const QString &name) {
            return isCopy(name) && name != copy.fileName(); // of another format
        });
    }));
    m_thread->start(QThread::LowPriority);
}

bool MVRRecovery::isWritten() const
{
    return m_isWritten && *m_isWritten;
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
    m_isWritten.reset();
    m_lock.reset();
    remove({QString(), QString(), m_base + QLatin1Char('.') + recordSuffix});
}

QVector<MVRRecovery::Copy> MVRRecovery::leftCopies()
{
    QVector<Copy> copies;
    if (folderPath().isEmpty())
        return copies;
    const QDir folder(folderPath());
    const QFileInfoList files = folder.entryInfoList(QDir::Files | QDir::NoSymLinks, QDir::Time);
    QSet<QString> known;
    QSet<QString> unfinished; // by programs that are no more
    for (const QFileInfo &file : files) {
        const QString base = baseOf(file.fileName());
        if (base.isEmpty() || known.contains(base))
            continue;
        if (isInUse(folder.filePath(base))) {
            known.insert(base);
            continue;
        }
        unfinished.insert(base);
        if (!isCopy(file.fileName()))
            continue;
        known.insert(base);
        const QString record = folder.filePath(base + QLatin1Char('.') + recordSuffix);
        copies.append({file.filePath(), originalIn(record), record});
    }
    unfinished.subtract(known);
    for (const QString &base : qAsConst(unfinished))
        removeFiles(folder, base, [](const QString &) { return true; });
    return copies;
}

void MVRRecovery::remove(const Copy &copy)
{
    const QFileInfo record(copy.record);
    const QString base = baseOf(record.fileName());
    if (!base.isEmpty())
        removeFiles(record.dir(), base, [](const QString &) { return true; });
}

std::shared_ptr<const QTextDocument> MVRRecovery::detachedCopy(const QTextDocument &document)
{
    std::shared_ptr<QTextDocument> copy(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    copy->moveToThread(nullptr);
    return copy;
}
