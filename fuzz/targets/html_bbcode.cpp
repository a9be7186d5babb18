// SPDX-License-Identifier: MIT
// Takes any text as HTML for BBCode, and makes a document of it whose HTML must be converted.
#include <bbcode/MVRBbCodeConverter.h>
#include <core/MVRTextXhtmlExporter.h>
#include <core/MVRToolkit.h>
#include <fuzz/Bytes.h>
#include <fuzz/Require.h>
#include <fuzz/Targets.h>

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

namespace {

void checkToolkitsHtml(const QTextDocument &document)
{
    QString error;
    const QString text = MVRBbCodeConverter().fromHtml(document.toHtml(), &error);
    require(!text.isNull(), "what the toolkit wrote is converted");
    require(error.isNull(), "what the toolkit wrote has no error");
}

/*! A document whose title, links, font and list come from the input. */
void fill(QTextDocument *document, Bytes bytes)
{
    document->setMetaInformation(QTextDocument::DocumentTitle, bytes.text());
    QTextCharFormat format;
    format.setAnchor(true);
    format.setAnchorHref(bytes.text());
    MVRToolkit::setFontFamily(&format, bytes.text());
    format.setToolTip(bytes.text());
    QTextListFormat list;
    list.setStyle(QTextListFormat::Style(-bytes.upTo(8)));
    list.setNumberPrefix(bytes.text());
    list.setNumberSuffix(bytes.text());
    QTextCursor cursor(document);
    cursor.insertText(bytes.text(), format);
    cursor.insertList(list);
    cursor.insertText(QString::fromUtf8(bytes.rest()), format);
}

}

void fuzz_html_bbcode(const QByteArray &input)
{
    const QString html = QString::fromUtf8(input);
    QString error;
    const QString text = MVRBbCodeConverter().fromHtml(html, &error);
    require(error.isNull() || text.isNull(), "an error comes with no text");
    MVRTextXhtmlExporter::htmlToXhtml(html);

    QTextDocument document;
    document.setUndoRedoEnabled(false);
    fill(&document, Bytes(input));
    checkToolkitsHtml(document);
}
