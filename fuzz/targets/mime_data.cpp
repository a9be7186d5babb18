// SPDX-License-Identifier: MIT
// Pastes any bytes as RTF; what was pasted must be copied and pasted again unchanged.
#include <fuzz/Require.h>
#include <fuzz/Targets.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>

#include <QMimeData>
#include <QTextDocument>

void fuzz_mime_data(const QByteArray &input)
{
    const MVRPicturePolicy none = MVRPicturePolicy::nowhere();
    QMimeData pasted;
    pasted.setData(QStringLiteral("text/rtf"), input);
    QTextDocument document;
    if (!MVRTextDoc::fromMovarinMarkupRtfMimeData(&pasted, &document, none)) {
        require(document.isEmpty(), "a refused paste leaves the document");
        return;
    }
    QMimeData copied;
    MVRTextDoc::setMovarinMarkupRtfMimeData(&copied, &document);
    QTextDocument again;
    require(MVRTextDoc::fromMovarinMarkupRtfMimeData(&copied, &again, none), "a copy is pasted");
    // Halves of codes that stood apart could join only where there are any.
    const QString text = document.toPlainText();
    if (!text.contains(QLatin1String("vr")) && !text.contains(QLatin1String("VR")))
        require(again.toPlainText() == text, "a copy has the same text");
}
