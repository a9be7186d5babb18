// SPDX-License-Identifier: MIT
#include <tool/commands/Batch.h>

#include <tool/FileName.h>
#include <tool/Messages.h>
#include <tool/Progress.h>

#include <QScopedPointer>
#include <QThread>

#include <atomic>
#include <exception>
#include <memory>
#include <mutex>
#include <new>
#include <system_error>
#include <vector>

namespace {

/*! Keeps what is said about one file for the line that it gets. */
class FileListener : public Listener
{
public:
    void setStep(const QString &) override { }
    void say(const QString &, const QString &text) override { m_messages << text; }
    QString messages() const { return m_messages.join(QLatin1String("; ")); }

private:
    QStringList m_messages;
};

/*! What the threads of a batch share. */
class Batch
{
public:
    Batch(const QVector<BatchFile> &files, const BatchStep &convert)
        : m_files(files)
        , m_convert(convert)
    {
    }

    void run(int workers)
    {
        std::vector<std::unique_ptr<QThread>> threads;
        for (int i = 0; i < workers; ++i) {
            threads.emplace_back(QThread::create([this] { work(); }));
            threads.back()->start();
        }
        for (const auto &thread : threads)
            thread->wait();
        if (m_fault)
            std::rethrow_exception(m_fault);
    }

    int failed() const { return m_failed; }

private:
    /*! Takes one file after the other until none is left. */
    void work()
    {
        for (int next = m_next++; next < m_files.size(); next = m_next++) {
            FileListener listener;
            bool isDone = false;
            try {
                isDone = m_convert(m_files.at(next), listener);
            } catch (const std::bad_alloc &) {
                listener.say(QString(), Tool::tr("out of memory"));
            }
            report(m_files.at(next), isDone, listener.messages());
        }
    }

    void report(const BatchFile &file, bool isDone, const QString &messages)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (isDone) {
            QString line = file.input + QLatin1String(" -> ") + file.output;
            if (!messages.isEmpty())
                line += QLatin1String(" (") + messages + QLatin1Char(')');
            print(shownOnTerminal(line) + QLatin1Char('\n'));
        } else {
            m_progress.say(file.input, messages);
            ++m_failed;
        }
        ++m_done;
        m_progress.setStep(Tool::tr("%1 of %2 files").arg(m_done).arg(m_files.size()));
        m_progress.setShare(m_done, int(m_files.size()));
    }

    // A line that cannot be printed is told when all is done; a thread must not throw.
    void print(const QString &line)
    {
        try {
            m_progress.print(line);
        } catch (const std::system_error &) {
            m_fault = std::current_exception();
        }
    }

    const QVector<BatchFile> &m_files;
    const BatchStep &m_convert;
    std::atomic<int> m_next {0};
    std::mutex m_mutex; // of what follows
    Progress m_progress;
    int m_done = 0;
    int m_failed = 0;
    std::exception_ptr m_fault;
};

QString countedFiles(int count)
{
    return counted(count, QT_TRANSLATE_NOOP("Tool", "file"), QT_TRANSLATE_NOOP("Tool", "files"));
}

}

int runBatch(const QVector<BatchFile> &files, int workers, const BatchStep &convert)
{
    int failed = 0;
    {
        Batch batch(files, convert);
        batch.run(qMin(workers, int(files.size())));
        failed = batch.failed();
    }
    QString summary = Tool::tr("%1 converted").arg(countedFiles(files.size() - failed));
    if (failed > 0)
        summary += Tool::tr(", %1 failed").arg(failed);
    printMessage(QString(), summary);
    return failed > 0 ? Failure : Success;
}
