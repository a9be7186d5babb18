// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <condition_variable>
#include <mutex>
#include <thread>

/*! Hears how the work on a document goes on. */
class Listener
{
public:
    virtual ~Listener() = default;
    /*! Names what is being done from now on ("Reading play.fdx"). */
    virtual void setStep(const QString &step) = 0;
    /*! Says how much of the step is done: \a done of \a total parts. */
    virtual void setShare(int done, int total)
    {
        Q_UNUSED(done)
        Q_UNUSED(total)
    }
    /*! Takes a message about a file. */
    virtual void say(const QString &file, const QString &text) = 0;
};

/*!
    Shows on a terminal that long work goes on: what is being done, how much of it where that is
    counted, and for how long.

    Nothing is shown when the standard error is no terminal, or before half a second has passed.
    The line is taken away when the object goes.
*/
class Progress : public Listener
{
public:
    Progress();
    ~Progress() override;
    Q_DISABLE_COPY_MOVE(Progress)

    void setStep(const QString &step) override;
    void setShare(int done, int total) override;
    /*! Prints the message as printMessage() does. */
    void say(const QString &file, const QString &text) override;
    /*! Prints \a text on the standard output, with no line of progress before it. */
    void print(const QString &text);

private:
    void run();
    void takeLineAway();

    std::mutex m_mutex;
    std::condition_variable m_ended;
    QByteArray m_step;
    int m_percent = -1; // of the step; below 0 where nobody counts
    bool m_isEnding = false;
    bool m_isShown = false;
    std::thread m_thread;
};
