// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QStringList>

class QJsonDocument;

/*! The context of all texts that the tool shows; tr() translates them. */
class Tool
{
    Q_DECLARE_TR_FUNCTIONS(Tool)
};

/*! How a command ended; the program's exit code. */
enum ExitCode { Success = 0, Failure = 1, UsageError = 2 };

/*!
    Prints "mvrtext: FILE: TEXT" on the standard error, without a file "mvrtext: TEXT", with control
    characters written out.
*/
void printMessage(const QString &file, const QString &text);

/*!
    Prints \a text as it is on the standard output. Throws std::system_error when that takes it not
    or only in part, so that no command ends well whose report was lost.
*/
void printOutput(const QString &text);

/*! The text of a report for programs. Control characters that JSON lets stand are escaped. */
QString jsonText(const QJsonDocument &document);

/*! What messages call a file: its name, or what "-" stands for. */
QString displayName(const QString &path, const QString &nameOfStream);

/*! "1 note", "2 notes": the number and the word for it, which is translated. */
QString counted(int count, const char *singular, const char *plural);

/*! Adds what counted() says to \a words, of nothing not a word. */
void addCounted(QStringList *words, int count, const char *singular, const char *plural);
