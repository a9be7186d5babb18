#include <text/MVRTextDoc.h>

#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>

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
    if (!data || !document || !MVRTextRtf::fromMovarinMarkupRtfMimeData(data, document))
        return false;
    fromInlineMarkup(document);
    return true;
}
