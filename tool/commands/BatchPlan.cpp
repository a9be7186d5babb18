// SPDX-License-Identifier: MIT
#include <tool/commands/BatchPlan.h>

#include <tool/Folders.h>
#include <tool/Loading.h>
#include <tool/Messages.h>
#include <tool/System.h>
#include <tool/formats/Formats.h>

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>

namespace {

/*! The documents below a folder, and what could not be looked into. */
QStringList documentsBelow(const QString &folder, bool ofAnySuffix)
{
    QStringList documents;
    const QStringList files = Folders::filesBelow(folder, &documents);
    for (const QString &file : files) {
        const Format *format = formatOfFile(file);
        if (ofAnySuffix || (format && format->read))
            documents << file;
    }
    return documents;
}

/*! The deepest folder that holds all inputs; a folder among them holds itself. */
QString sharedFolder(const QStringList &inputs)
{
    QString shared;
    for (const QString &input : inputs) {
        const QString path = Folders::absolutePath(input);
        const QString folder = Folders::isFolder(input) ? path : QFileInfo(path).path();
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
        folder.setPath(folder.filePath(
            QDir(shared).relativeFilePath(QFileInfo(Folders::absolutePath(input)).path())));
    return QDir::cleanPath(folder.filePath(name + QLatin1Char('.') + QLatin1String(wish.to->name)));
}

QStringList findCollisions(const QVector<BatchFile> &files)
{
    QStringList collisions;
    QSet<QByteArray> inputs;
    for (const BatchFile &file : files)
        inputs.insert(System::fileIdentity(file.input));
    QHash<QString, QString> inputOf; // by output
    for (const BatchFile &file : files) {
        const QString output = Folders::absolutePath(file.output);
        const auto other = inputOf.constFind(output);
        if (other != inputOf.constEnd())
            collisions
                << Tool::tr("%1 and %2 would both become %3").arg(*other, file.input, file.output);
        inputOf.insert(output, file.input);
        const QByteArray existing = System::fileIdentity(file.output);
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
        if (Folders::isFolder(input))
            inputs += documentsBelow(input, !wish.from.isEmpty());
        else
            inputs << input;
    }
    const QString shared = wish.keepsTree ? sharedFolder(wish.inputs) : QString();
    BatchPlan plan;
    for (const QString &input : qAsConst(inputs)) {
        BatchFile file;
        file.input = input;
        file.output = outputFor(input, wish, shared);
        if (Folders::isFolder(input))
            file.error = Tool::tr("the folder cannot be looked into");
        else
            file.from = readableFormat(input, wish.from, &file.error);
        plan.files.append(file);
    }
    plan.collisions = findCollisions(plan.files);
    return plan;
}
