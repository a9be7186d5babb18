// SPDX-License-Identifier: MIT
#include <tool/commands/BatchPlan.h>

#include <tool/Loading.h>
#include <tool/Messages.h>
#include <tool/formats/Formats.h>

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <QSet>

namespace {

QStringList filesBelow(const QString &folder, bool ofAnySuffix)
{
    QStringList files;
    QDirIterator all(folder, QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString file = all.next();
        const Format *format = formatOfFile(file);
        if (ofAnySuffix || (format && format->read))
            files << file;
    }
    files.sort();
    return files;
}

QString absolutePath(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

/*! The deepest folder that holds all inputs; a folder among them holds itself. */
QString sharedFolder(const QStringList &inputs)
{
    QString shared;
    for (const QString &input : inputs) {
        const QFileInfo info(input);
        const QString folder
            = QDir::cleanPath(info.isDir() ? info.absoluteFilePath() : info.absolutePath());
        if (shared.isEmpty())
            shared = folder;
        while (folder != shared && shared != QDir::rootPath()
               && !folder.startsWith(shared + QLatin1Char('/')))
            shared = QFileInfo(shared).path();
    }
    return shared;
}

QString outputFor(const QString &input, const BatchWish &wish, const QString &shared)
{
    const QFileInfo info(input);
    QString name = info.completeBaseName();
    if (name.isEmpty()) // ".fdx"
        name = info.fileName();
    QDir folder(wish.into);
    if (wish.keepsTree)
        folder.setPath(
            folder.filePath(QDir(shared).relativeFilePath(QFileInfo(absolutePath(input)).path())));
    return QDir::cleanPath(folder.filePath(name + QLatin1Char('.') + QLatin1String(wish.to->name)));
}

QStringList findCollisions(const QVector<BatchFile> &files)
{
    QStringList collisions;
    QSet<QString> inputs;
    for (const BatchFile &file : files)
        inputs.insert(QFileInfo(file.input).canonicalFilePath());
    QHash<QString, QString> inputOf; // by output
    for (const BatchFile &file : files) {
        const QString output = absolutePath(file.output);
        const auto other = inputOf.constFind(output);
        if (other != inputOf.constEnd())
            collisions
                << Tool::tr("%1 and %2 would both become %3").arg(*other, file.input, file.output);
        inputOf.insert(output, file.input);
        const QString existing = QFileInfo(output).canonicalFilePath();
        if (!existing.isEmpty() && inputs.contains(existing))
            collisions << Tool::tr("%1 would be written over an input").arg(file.output);
    }
    return collisions;
}

}

BatchPlan planBatch(const BatchWish &wish)
{
    QStringList inputs;
    for (const QString &input : wish.inputs) {
        if (QFileInfo(input).isDir())
            inputs += filesBelow(input, !wish.from.isEmpty());
        else
            inputs << input;
    }
    const QString shared = wish.keepsTree ? sharedFolder(wish.inputs) : QString();
    BatchPlan plan;
    for (const QString &input : qAsConst(inputs)) {
        BatchFile file;
        file.input = input;
        file.output = outputFor(input, wish, shared);
        file.from = readableFormat(input, wish.from, &file.error);
        plan.files.append(file);
    }
    plan.collisions = findCollisions(plan.files);
    return plan;
}
