// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <condition_variable>
#include <mutex>
#include <thread>

/*!
    Shows on a terminal that long work goes on.

    Nothing is shown when the standard error is no terminal, or before half a second has passed.
    The line is taken away when the object goes.
*/
class Progress
{
public:
    Progress();
    ~Progress();
    Q_DISABLE_COPY_MOVE(Progress)

    /*! Names what is being done from now on ("Reading play.fdx"). */
    void setStep(const QString &step);

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_ended;
    QByteArray m_step;
    bool m_isEnding = false;
    std::thread m_thread;
};
