// SPDX-License-Identifier: MIT
#include <core/STextDoc.h>

#include <core/document/ForeignFormat_p.h>
#include <core/document/OfflineDocument_p.h>
#include <core/document/Pictures_p.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocumentFragment>
#include <QTextFrame>
#include <QTextList>

#include <memory>

namespace {

void copySettings(const QTextDocument &document, QTextDocument *clone)
{
    clone->setBaseUrl(document.baseUrl());
    for (const auto information : {QTextDocument::DocumentTitle, QTextDocument::DocumentUrl})
        clone->setMetaInformation(information, document.metaInformation(information));
    clone->setDefaultStyleSheet(document.defaultStyleSheet());
    clone->setDefaultFont(document.defaultFont());
    clone->setDefaultTextOption(document.defaultTextOption());
    clone->setDefaultCursorMoveStyle(document.defaultCursorMoveStyle());
    clone->setUseDesignMetrics(document.useDesignMetrics());
    clone->setIndentWidth(document.indentWidth());
    clone->setDocumentMargin(document.documentMargin());
    clone->setPageSize(document.pageSize());
    const QList<QByteArray> names = document.dynamicPropertyNames();
    for (const QByteArray &name : names)
        clone->setProperty(name.constData(), document.property(name.constData()));
}

// A fragment says nothing about an empty paragraph that it begins with.
void copyFirstFormat(const QTextDocument &document, QTextDocument *clone)
{
    const QTextBlock first = document.begin();
    QTextCursor cursor(clone);
    cursor.setBlockFormat(formatElsewhere(first));
    cursor.setBlockCharFormat(first.charFormat());
    const QTextList *list = first.textList();
    if (!list)
        return;
    QTextList *others
        = clone->findBlockByNumber(list->item(list->count() - 1).blockNumber()).textList();
    if (others)
        others->add(clone->begin());
    else
        cursor.createList(list->format());
}

void copyContent(const QTextDocument &document, QTextDocument *clone)
{
    if (!document.isEmpty())
        QTextCursor(clone).insertFragment(QTextDocumentFragment(&document));
    if (document.begin().length() == 1)
        copyFirstFormat(document, clone);
    clone->rootFrame()->setFrameFormat(document.rootFrame()->frameFormat());
    const QSet<QString> names = pictureNames(document);
    for (const QString &name : names) {
        const QVariant shown = picture(document, name);
        if (shown.isValid())
            addPicture(clone, name, shown);
    }
}

} // namespace

void STextDoc::copyDocument(const QTextDocument *document, QTextDocument *target)
{
    if (!document || !target || document == target)
        return;
    target->setUndoRedoEnabled(false);
    copySettings(*document, target);
    copyContent(*document, target);
    target->setMaximumBlockCount(document->maximumBlockCount());
    target->setUndoRedoEnabled(document->isUndoRedoEnabled());
    target->setModified(false);
}

QTextDocument *STextDoc::cloneDocumentQtStyle(const QTextDocument *document, QObject *parent)
{
    if (!document)
        return nullptr;
    auto clone = std::make_unique<OfflineDocument>(parent);
    copyDocument(document, clone.get());
    return clone.release();
}
