// SPDX-License-Identifier: MIT
#include <core/MVRTextRtf.h>

#include <QMimeData>
#include <QTextDocument>

namespace {

// In the order in which they are tried. Some programs call RTF by the name of an older format.
constexpr const char *rtfTypes[] = {"text/rtf", "application/rtf", "text/richtext"};

} // namespace

void MVRTextRtf::setMovarinMarkupRtfMimeData(QMimeData *data, const QTextDocument *document,
                                             bool withDefaults)
{
    if (!data || !document)
        return;
    const QByteArray rtf = toRtfCData(document, withDefaults);
    for (const char *type : {"text/rtf", "application/rtf"})
        data->setData(QLatin1String(type), rtf);
    QString text = document->toPlainText();
    text.remove(QChar::ObjectReplacementCharacter);
    data->setText(text);
}

bool MVRTextRtf::fromMovarinMarkupRtfMimeData(const QMimeData *data, QTextDocument *document)
{
    if (!data)
        return false;
    for (const char *type : rtfTypes) {
        if (fromRtfCData(data->data(QLatin1String(type)), document))
            return true;
    }
    return false;
}
