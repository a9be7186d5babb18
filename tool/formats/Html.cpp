// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/HtmlLimits.h>
#include <tool/formats/HtmlLists.h>
#include <tool/formats/Pictures.h>
#include <tool/formats/ScreenplayElements.h>
#include <tool/formats/TextDecoding.h>
#include <tool/formats/TextOutput.h>
#include <tool/pages/Lengths.h>
#include <tool/pages/Pages.h>

#include <core/document/SafeHtml_p.h>

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>

namespace {

// Browsers know neither Final Draft's face nor what to show in its place.
void nameSimilarFaces(QString &html)
{
    html.replace(QLatin1String("font-family:'Courier Final Draft'"),
                 QLatin1String("font-family:'Courier Final Draft','Courier Prime','Courier New',"
                               "monospace"));
}

// Qt gives an item of a list a style for its letters and one for its paragraph; readers take the
// first alone.
void joinStyles(QString &html)
{
    const QLatin1String item("<li style=\"");
    const QLatin1String style(" style=\"");
    QString joined;
    int written = 0;
    for (int tag = html.indexOf(item); tag >= 0; tag = html.indexOf(item, tag + 1)) {
        const int end = html.indexOf(QLatin1Char('>'), tag);
        const int firstEnd = html.indexOf(QLatin1Char('"'), tag + item.size());
        const int second = firstEnd
            + int(QStringView(html).mid(firstEnd, qMax(0, end - firstEnd)).indexOf(style));
        if (second < firstEnd)
            continue;
        const int start = second + style.size();
        const int secondEnd = html.indexOf(QLatin1Char('"'), start);
        joined += QStringView(html).mid(written, firstEnd - written);
        joined += QStringView(html).mid(start, secondEnd - start);
        joined += QStringView(html).mid(firstEnd, second - firstEnd);
        written = secondEnd + 1;
    }
    html = joined + html.mid(written);
}

// A screenplay's lines are as long as its page is wide, whatever the window.
void limitWidth(QString &html, const WriteOptions &options, double margin)
{
    const double width = options.paperOrLetter().size(QPageSize::Point).width() - 2 * margin;
    const QLatin1String styleStart("<style type=\"text/css\">\n");
    const int start = html.indexOf(styleStart);
    if (start >= 0)
        html.insert(start + styleStart.size(),
                    QStringLiteral("body { max-width:%1pt; }\n").arg(width));
}

// Where a link is a place too, Qt marks its first letter alone as a link. Without the name of the
// place the formats of both are the same then, for which their properties need the same order.
void joinLinks(QTextDocument *document)
{
    changeAllFormats(document, [](QTextCharFormat &format) {
        const QStringList names = format.anchorNames();
        if (format.anchorHref().isEmpty() || (format.isAnchor() && names.isEmpty()))
            return;
        format.clearProperty(QTextFormat::AnchorName);
        format.clearProperty(QTextFormat::IsAnchor);
        format.setAnchor(true);
        if (!names.isEmpty())
            format.setAnchorNames(names);
    });
}

// Lines of ordinary paragraphs are kept together too where RTF says so.
void nameListings(QTextDocument *document)
{
    QTextCursor cursor(document);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        if (!format.nonBreakableLines())
            continue;
        format.setProperty(QTextFormat::BlockCodeLanguage, QString());
        cursor.setPosition(block.position());
        cursor.setBlockFormat(format);
    }
}

// Qt reads a character of no number as one, which no reader takes for text.
void replaceNullCharacters(QString *html)
{
    static const QRegularExpression null(QStringLiteral("&#(?:0+|[xX]0+);"));
    if (html->contains(QLatin1String("&#")))
        html->replace(null, QString(QChar::ReplacementCharacter));
}

bool readHtml(const QByteArray &bytes, const ReadOptions &options, Document &document,
              QString *error)
{
    Q_UNUSED(options)
    QString html = decodeHtml(bytes);
    if (html.contains(QChar::Null)) {
        *error = notTextError();
        return false;
    }
    replaceNullCharacters(&html);
    const BoundedHtml bounded = boundedHtml(html);
    if (!bounded.error.isNull()) {
        *error = bounded.error;
        return false;
    }
    if (bounded.hasLostStyles)
        document.losses.append(Tool::tr("style rules, of which there are too many"));
    if (bounded.hasLostPlaces)
        document.losses.append(Tool::tr("places that links lead to, of which there are too many"));
    if (bounded.hasLostPictures)
        document.losses.append(Tool::tr("pictures, of which a paragraph has too many"));
    document.text.setHtml(bounded.html);
    joinLinks(&document.text);
    nameListings(&document.text);
    takeEmbeddedPictures(document.text);
    pixelFontsToPoints(document.text);
    scaleLengths(document.text, pointsPerPixel);
    document.title = document.text.metaInformation(QTextDocument::DocumentTitle);
    giveStandards(document);
    return true;
}

bool writeHtml(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    Q_UNUSED(error)
    const double margin = document.text.documentMargin();
    prepareForQt(document, options.paperOrLetter(), pixelsPerPoint);
    document.text.setMetaInformation(QTextDocument::DocumentTitle, document.title);
    makeSafeForHtml(&document.text);
    QString html = htmlWithWholeLists(&document.text);
    joinStyles(html);
    nameSimilarFaces(html);
    if (document.isScreenplay)
        limitWidth(html, options, margin);
    *bytes = withFinalNewline(std::move(html));
    return true;
}

}

const Format htmlFormat
    = {"html", "HTML", "htm xhtml", readHtml, writeHtml, NoteSupport::None, PictureSupport::Named,
       false};
