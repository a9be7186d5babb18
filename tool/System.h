// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdio>
#include <memory>

/*!
    What the program asks of the system that it runs on. No other file calls POSIX or Windows.

    Functions that give an int give the code of what went wrong, as errno does, or 0.
*/
namespace System {

/*! The arguments of the program without its name, as the system knows them. */
QStringList arguments(int argc, char *argv[]);

/*! Makes the standard streams carry bytes as they are, and keeps the numbers of those that were
    closed from being given to files: reading and writing these is to fail. */
void prepareStandardStreams();

/*! Makes a signal that ends the program take what it has half written away first, and what is
    beyond the size that the user allows for files a fault of writing. */
void prepareSignals();

/*! Whether somebody sees what goes to the standard output or the standard error. */
bool isTerminal(FILE *stream);

/*! The columns of the terminal that is the standard output; 0 when that is none. */
int terminalColumns();

/*! Whether the program may take \a size more bytes of memory; it does not keep them. */
bool hasRoomFor(size_t size);

/*! Gives freed memory back to the system, where that does not do so by itself. */
void giveMemoryBack();

/*! What tells an existing file from all others, whichever path leads to it; empty for none. */
QByteArray fileIdentity(const QString &path);

/*! Whether two paths name the same existing file, also through links. */
inline bool isSameFile(const QString &one, const QString &other)
{
    const QByteArray identity = fileIdentity(one);
    return !identity.isEmpty() && identity == fileIdentity(other);
}

/*! Reads a file to its end; EFBIG when it is longer than \a maxSize bytes. */
int readFile(const QString &path, qint64 maxSize, QByteArray *data);
int readStandardInput(qint64 maxSize, QByteArray *data);

int writeStandardOutput(const QByteArray &data);

/*! Files that take their places together, each in one step: all hold what they held before unless
    every one could be written. The functions give the code of what went wrong, or 0. */
class NewFiles
{
public:
    NewFiles();
    ~NewFiles();
    Q_DISABLE_COPY_MOVE(NewFiles)

    /*! Into pipes, devices and files that the program has open already ("/dev/stdout") data goes
        as it comes. */
    int add(const QString &path, const QByteArray &data);
    /*! Puts those that were added in their places, one after the other up to a fault. */
    int takePlaces();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

}
