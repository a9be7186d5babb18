// SPDX-License-Identifier: MIT
// POSIX; Windows has SystemWindows.cpp.
#include <tool/UnfinishedFiles.h>

#include <tool/System.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <cstring>

#include <unistd.h>

namespace {

constexpr int maxUnfinished = 64; // of files of a batch that are written at the same time

}

/*! Where a name stands that is read when a signal comes: nothing may be locked or freed then. */
struct UnfinishedFile::Place
{
    std::atomic<bool> isTaken {false};
    std::atomic<bool> isNamed {false};
    std::array<char, PATH_MAX> name {};

    static std::array<Place, maxUnfinished> all;
};

std::array<UnfinishedFile::Place, maxUnfinished> UnfinishedFile::Place::all;

UnfinishedFile::Place *UnfinishedFile::freePlace()
{
    const auto place = std::find_if(Place::all.begin(), Place::all.end(),
                                    [](Place &each) { return !each.isTaken.exchange(true); });
    return place == Place::all.end() ? nullptr : &*place;
}

UnfinishedFile::~UnfinishedFile()
{
    if (!m_name.isEmpty())
        unlink(m_name.constData());
    forget();
}

void UnfinishedFile::setName(const QByteArray &name)
{
    forget();
    m_name = name;
    m_place = name.size() < PATH_MAX ? freePlace() : nullptr;
    if (!m_place)
        return;
    std::memcpy(m_place->name.data(), name.constData(), size_t(name.size()) + 1);
    m_place->isNamed = true;
}

void UnfinishedFile::forget()
{
    m_name.clear();
    if (!m_place)
        return;
    m_place->isNamed = false;
    m_place->isTaken = false;
    m_place = nullptr;
}

void removeUnfinishedFiles()
{
    for (const UnfinishedFile::Place &place : UnfinishedFile::Place::all) {
        if (place.isNamed)
            unlink(place.name.data());
    }
}

namespace {

static_assert(std::atomic<bool>::is_always_lock_free, "a signal may come in the midst of it");

/*! Ends the program as the signal does where nobody heeds it. */
void endBySignal(int number)
{
    removeUnfinishedFiles();
    raise(number);
}

/*! What others have said about a signal holds, as under nohup. */
void heed(int number, void (*answer)(int))
{
    struct sigaction action = {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
        return;
    action.sa_handler = answer;
    action.sa_flags = int(SA_RESETHAND | SA_NODEFER); // so that it ends the program when raised
    sigaction(number, &action, nullptr);
}

}

void System::prepareSignals()
{
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU})
        heed(number, endBySignal);
    heed(SIGXFSZ, SIG_IGN);
}
