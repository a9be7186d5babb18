// SPDX-License-Identifier: MIT
#include <tool/Progress.h>

#include <tool/Messages.h>
#include <tool/System.h>

#include <chrono>
#include <cstdio>

Progress::Progress()
{
    if (System::isTerminal(stderr))
        m_thread = std::thread([this] { run(); });
}

Progress::~Progress()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
    }
    m_ended.notify_one();
    m_thread.join();
}

void Progress::setStep(const QString &step)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_step = step.toUtf8();
    m_percent = -1;
}

void Progress::setShare(int done, int total)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_percent = total > 0 ? int(100 * qint64(done) / total) : -1;
}

void Progress::say(const QString &file, const QString &text)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    takeLineAway();
    printMessage(file, text);
}

void Progress::print(const QString &text)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    takeLineAway();
    printOutput(text);
}

void Progress::takeLineAway()
{
    if (!m_isShown)
        return;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
    m_isShown = false;
}

void Progress::run()
{
    using namespace std::chrono;
    const auto start = steady_clock::now();
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_ended.wait_for(lock, milliseconds(500), [this] { return m_isEnding; }))
        return;
    do {
        const double seconds = duration<double>(steady_clock::now() - start).count();
        const QByteArray share
            = m_percent < 0 ? QByteArray() : QByteArray::number(m_percent) + " %, ";
        std::fprintf(stderr, "\r\033[K%s ... %s%.0f s", m_step.constData(), share.constData(),
                     seconds);
        std::fflush(stderr);
        m_isShown = true;
    } while (!m_ended.wait_for(lock, milliseconds(250), [this] { return m_isEnding; }));
    takeLineAway();
}
