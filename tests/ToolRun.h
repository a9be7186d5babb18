// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QProcess>
#include <QScopedPointer>
#include <QStringList>
#include <QTemporaryDir>

/*! What a run of the tool gave. */
struct Run
{
    int exitCode = -1; // of a run that crashed or hung
    QByteArray output;
    QByteArray errors;
};

/*! What a process that has begun gives in the end. */
inline Run finished(QProcess &process)
{
    Run run;
    if (process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit)
        run.exitCode = process.exitCode();
    run.output = process.readAllStandardOutput();
    run.errors = process.readAllStandardError();
    return run;
}

inline Run mvrtext(const QStringList &arguments, const QByteArray &input = QByteArray(),
                   const QString &folder = QString())
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(QStringLiteral(MVR_TOOL), arguments);
    process.write(input);
    process.closeWriteChannel();
    return finished(process);
}

/*! The same, the arguments as one line: blanks part them. */
inline Run mvrtext(const char *arguments, const QString &folder)
{
    return mvrtext(QString::fromUtf8(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts),
                   QByteArray(), folder);
}

/*! A folder for the files of one test. */
class ToolFolder
{
public:
    bool isValid() const { return m_folder.isValid(); }
    QString path() const { return m_folder.path(); }
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? path(name)
                                                                                        : QString();
    }

    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};

/*! Tests of the tool that have a folder for the files of each function; see newFolder(). */
class ToolTest : public QObject
{
protected:
    /*! For init(): \return false where there is no folder. */
    bool newFolder()
    {
        m_folder.reset(new ToolFolder);
        return m_folder->isValid();
    }
    QString path(const QString &name) const { return m_folder->path(name); }
    QString write(const QString &name, const QByteArray &content) const
    {
        return m_folder->write(name, content);
    }
    QByteArray read(const QString &name) const { return m_folder->read(name); }

    /*! Runs a command line of the shell in which $T is the tool. */
    Run shell(const QByteArray &command) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder->path());
        process.start(QStringLiteral("/bin/sh"),
                      {QStringLiteral("-c"),
                       QStringLiteral("T='") + QStringLiteral(MVR_TOOL) + QStringLiteral("'; ")
                           + QString::fromUtf8(command)});
        return finished(process);
    }

    QScopedPointer<ToolFolder> m_folder;
};

/*! The example screenplay. */
inline QString example()
{
    return QStringLiteral(MVR_SOURCE_DIR "/examples/screenplay.fdx");
}

/*! A Final Draft file. */
inline QByteArray script(const QByteArray &content, const QByteArray &rest = QByteArray())
{
    return "<FinalDraft DocumentType=\"Script\" Version=\"6\"><Content>" + content + "</Content>"
        + rest + "</FinalDraft>";
}
