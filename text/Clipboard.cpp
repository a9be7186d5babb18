// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <core/document/EditBlock_p.h>
#include <text/MVRPicturePolicy.h>

#include <QMimeData>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <memory>

namespace {

constexpr const char *rtfTypes[] = {"text/rtf", "application/rtf", "text/richtext"};

} // namespace

void MVRTextDoc::setMovarinMarkupRtfMimeData(QMimeData *data, const QTextDocument *document)
{
    if (!data || !document)
        return;
    const std::unique_ptr<QTextDocument> clone(STextDoc::cloneDocumentQtStyle(document, nullptr));
    clone->setUndoRedoEnabled(false);
    toInlineMarkup(clone.get());
    MVRTextRtf::setMovarinMarkupRtfMimeData(data, clone.get(), true);
}

bool MVRTextDoc::fromMovarinMarkupRtfMimeData(const QMimeData *data, QTextDocument *document)
{
    return fromMovarinMarkupRtfMimeData(data, document, MVRPicturePolicy::anywhere());
}

bool MVRTextDoc::fromMovarinMarkupRtfMimeData(const QMimeData *data, QTextDocument *document,
                                              const MVRPicturePolicy &policy)
{
    if (!data || !document || !MVRTextRtf::fromMovarinMarkupRtfMimeData(data, document))
        return false;
    fromInlineMarkup(document, policy);
    return true;
}

void MVRTextDoc::copyMimeData(QMimeData *data, const QTextCursor &selection)
{
    if (!data || !selection.hasSelection())
        return;
    // A child asks its parent for pictures, and opens none.
    QTextDocument selected(selection.document());
    QTextCursor(&selected).insertFragment(selection.selection());
    const QByteArray rtf = toRtf(&selected);
    for (const char *type : rtfTypes)
        data->setData(QLatin1String(type), rtf);
}

bool MVRTextDoc::pasteMimeData(const QMimeData *data, QTextCursor &cursor)
{
    if (!data || cursor.isNull())
        return false;
    for (const char *type : rtfTypes) {
        QTextDocument pasted;
        if (!fromRtf(data->data(QLatin1String(type)), &pasted))
            continue;
        const EditBlock undoStep(cursor);
        cursor.removeSelectedText();
        appendDocument(cursor, &pasted);
        return true;
    }
    return false;
}
