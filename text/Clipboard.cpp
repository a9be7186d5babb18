// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <text/MVRPicturePolicy.h>

#include <QTextDocument>

#include <memory>

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
