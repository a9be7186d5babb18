// SPDX-License-Identifier: MIT
#include <core/STextDoc.h>

#include <core/document/ForeignFormat_p.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/Pictures_p.h>

#include <QTextDocumentFragment>
#include <QTextList>

#include <optional>

namespace {

using Names = QHash<QString, QString>;

QString freeName(const QString &name, const QSet<QString> &taken)
{
    for (int number = 2;; ++number) {
        const QString numbered = name + QLatin1Char('-') + QString::number(number);
        if (!taken.contains(numbered))
            return numbered;
    }
}

/*! Gives the pictures of \a source to \a target; \return the new names of those whose name stands
    for another picture there. */
Names addPictures(const QTextDocument &source, QTextDocument *target)
{
    Names renamed;
    const QSet<QString> names = pictureNames(source);
    QSet<QString> taken = names.isEmpty() ? QSet<QString>() : pictureNames(*target);
    for (const QString &name : names) {
        const QVariant shown = picture(source, name);
        if (!shown.isValid())
            continue;
        QString newName = name;
        if (taken.contains(name) && picture(*target, name) != shown) {
            newName = freeName(name, taken);
            renamed.insert(name, newName);
        }
        taken.insert(newName);
        addPicture(target, newName, shown);
    }
    return renamed;
}

void renamePictures(QTextDocument *document, int start, int end, const Names &newNames)
{
    if (newNames.isEmpty())
        return;
    changeFormats(document, start, end, [&newNames](QTextCharFormat &format) {
        const QString name = format.stringProperty(QTextFormat::ImageName);
        if (format.isImageFormat() && newNames.contains(name))
            format.setProperty(QTextFormat::ImageName, newNames.value(name));
    });
}

/*! All of a document, and what a fragment of it does not tell. */
struct Content
{
    explicit Content(const QTextDocument &document)
        : Content(QTextDocumentFragment(&document), document)
    {
    }
    Content(const QTextDocumentFragment &all, const QTextDocument &document)
        : fragment(all)
        , firstFormat(formatElsewhere(document.begin()))
        , firstCharFormat(document.begin().charFormat())
        , paragraphs(document.blockCount())
    {
        const QTextList *list = document.begin().textList();
        if (!list || document.begin().length() > 1)
            return;
        emptyItem = list->format();
        lastOfItsList = list->item(list->count() - 1).blockNumber();
    }

    QTextDocumentFragment fragment;
    QTextBlockFormat firstFormat;
    QTextCharFormat firstCharFormat;
    int paragraphs;
    std::optional<QTextListFormat> emptyItem; // when it begins with an empty item of a list
    int lastOfItsList = 0; // the paragraph that is the last item of this list
};

/*! Inserts what begins with an empty item of a list; nothing in the fragment tells of that item. */
void insertFromEmptyItem(QTextCursor &cursor, const Content &content)
{
    if (cursor.block().length() > 1)
        cursor.insertBlock(content.firstFormat, content.firstCharFormat);
    cursor.setBlockFormat(content.firstFormat);
    cursor.setBlockCharFormat(content.firstCharFormat);
    QTextCursor item(cursor.document());
    item.setPosition(cursor.position());
    item.setKeepPositionOnInsert(true);
    cursor.insertFragment(content.fragment);
    const QTextBlock last
        = cursor.document()->findBlockByNumber(item.blockNumber() + content.lastOfItsList);
    if (content.lastOfItsList > 0 && last.textList())
        last.textList()->add(item.block());
    else
        item.createList(*content.emptyItem);
}

void insertContent(QTextCursor &cursor, const Content &content)
{
    if (content.emptyItem) {
        insertFromEmptyItem(cursor, content);
        return;
    }
    if (cursor.block().length() > 1) {
        cursor.insertFragment(content.fragment);
        return;
    }
    cursor.setBlockFormat(content.firstFormat);
    cursor.setBlockCharFormat(content.firstCharFormat);
    const int start = cursor.position();
    const int blocksBefore = cursor.document()->blockCount();
    cursor.insertFragment(content.fragment);
    // Qt leaves the empty paragraph in front of a list.
    if (cursor.document()->blockCount() - blocksBefore == content.paragraphs) {
        QTextCursor left(cursor.document());
        left.setPosition(start);
        left.deleteChar();
        left.setBlockCharFormat(content.firstCharFormat);
    }
}

} // namespace

void STextDoc::appendDocument(QTextCursor &cursor, QTextDocument *source)
{
    if (cursor.isNull() || !source || (source->isEmpty() && !source->begin().textList()))
        return;
    const Content content(*source);
    const EditBlock undoStep(cursor);
    cursor.removeSelectedText();
    const int start = cursor.position();
    const Names renamed = addPictures(*source, cursor.document());
    insertContent(cursor, content);
    renamePictures(cursor.document(), start, cursor.position(), renamed);
}

void STextDoc::appendFragment(QTextCursor &cursor, const QTextDocumentFragment &fragment)
{
    if (cursor.isNull() || fragment.isEmpty())
        return;
    const EditBlock undoStep(cursor);
    cursor.removeSelectedText();
    if (cursor.block().length() > 1) {
        cursor.insertFragment(fragment);
        return;
    }
    // Only a document tells the format of the fragment's first paragraph.
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    QTextCursor(&document).insertFragment(fragment);
    insertContent(cursor, Content(fragment, document));
}
