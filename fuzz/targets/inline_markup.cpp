// SPDX-License-Identifier: MIT
// Reads any text as inline markup; what was read must come through writing and reading again.
#include <core/MVRTextFormat.h>
#include <fuzz/Require.h>
#include <fuzz/Targets.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>

#include <QRegularExpression>
#include <QTextDocument>

#include <initializer_list>

namespace {

int notes(const QTextDocument &document)
{
    int count = 0;
    for (const int property :
         {MVRTextFormat::InlineAnnotationProperty, MVRTextFormat::InlineFootnoteProperty,
          MVRTextFormat::PreserveFormattingProperty})
        count += MVRTextDoc::formatCount(&document, property, true);
    return count;
}

}

void fuzz_inline_markup(const QByteArray &input)
{
    const MVRPicturePolicy none = MVRPicturePolicy::nowhere();
    QTextDocument document;
    document.setPlainText(QString::fromUtf8(input));
    MVRTextDoc::fromInlineMarkup(&document, none);
    const QString text = document.toPlainText();
    const int count = notes(document);
    MVRTextDoc::toInlineMarkup(&document);
    require(notes(document) == 0, "what is written is marked no more");
    // Sizes of more than six digits are written in a form that is not read.
    static const QRegularExpression unread(QStringLiteral("MVRImageLink\\[[^\\]]*e\\+"));
    if (document.toPlainText().contains(unread))
        return;
    MVRTextDoc::fromInlineMarkup(&document, none);
    // What is left of broken codes may pair with those that were written.
    if (text.contains(QLatin1String("vr"), Qt::CaseInsensitive) || text.contains(QLatin1Char('{'))
        || text.contains(QLatin1Char('\\')))
        return;
    require(document.toPlainText() == text, "text comes back");
    require(notes(document) == count, "notes come back");
}
