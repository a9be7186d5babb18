// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/formats/ScreenplayElements.h>
#include <tool/formats/TextDecoding.h>
#include <tool/formats/TextOutput.h>
#include <tool/pages/Lengths.h>
#include <tool/pages/Pages.h>

#include <QRegularExpression>
#include <QSet>
#include <QTextCodec>

namespace {

// Qt's HTML parser walks up the open elements for each new one.
constexpr int maxElementDepth = 1000;

// Elements that need no end tag, or have none: they do not nest.
bool isNesting(const QString &tag)
{
    static const QSet<QString> others = [] {
        const QString names = QStringLiteral(
            "area base br col dd dt embed hr img input li link meta option p param source tbody td "
            "tfoot th thead tr track wbr");
        const QStringList list = names.split(QLatin1Char(' '));
        return QSet<QString>(list.cbegin(), list.cend());
    }();
    return !others.contains(tag);
}

int elementDepth(const QString &html)
{
    static const QRegularExpression tag(QStringLiteral("<(/?)([a-zA-Z][a-zA-Z0-9]*+)"));
    int depth = 0;
    int deepest = 0;
    auto tags = tag.globalMatch(html);
    while (tags.hasNext()) {
        const QRegularExpressionMatch match = tags.next();
        if (isNesting(match.captured(2).toLower()))
            depth = qMax(0, depth + (match.capturedLength(1) > 0 ? -1 : 1));
        deepest = qMax(deepest, depth);
    }
    return deepest;
}

// HTML itself ends spans at 1000 columns; Qt would make room for any number.
QString withBoundedSpans(QString html)
{
    static const QRegularExpression longSpan(
        QStringLiteral("((?:col|row)span\\s*+=\\s*+[\"']?\\s*+)[0-9]{4,}"),
        QRegularExpression::CaseInsensitiveOption);
    return html.replace(longSpan, QStringLiteral("\\11000")); // there is one group only
}

// Browsers know neither Final Draft's face nor what to show in its place.
void nameSimilarFaces(QString &html)
{
    html.replace(QLatin1String("font-family:'Courier Final Draft'"),
                 QLatin1String("font-family:'Courier Final Draft','Courier Prime','Courier New',"
                               "monospace"));
}

// A screenplay's lines are as long as its page is wide, whatever the window.
void limitWidth(QString &html, const WriteOptions &options, double margin)
{
    const double width = options.paper.size(QPageSize::Point).width() - 2 * margin;
    const QLatin1String styleStart("<style type=\"text/css\">\n");
    const int start = html.indexOf(styleStart);
    if (start >= 0)
        html.insert(start + styleStart.size(),
                    QStringLiteral("body { max-width:%1pt; }\n").arg(width));
}

bool readHtml(const QByteArray &bytes, const ReadOptions &options, Document &document,
              QString *error)
{
    Q_UNUSED(options)
    const QTextCodec *codec = QTextCodec::codecForHtml(bytes, QTextCodec::codecForName("UTF-8"));
    const QString html = codec->toUnicode(bytes);
    if (html.contains(QChar::Null)) {
        *error = notTextError();
        return false;
    }
    if (elementDepth(html) > maxElementDepth) {
        *error = nestingError();
        return false;
    }
    document.text.setHtml(withBoundedSpans(html));
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
    prepareForQt(document, options.paper, pixelsPerPoint);
    document.text.setMetaInformation(QTextDocument::DocumentTitle, document.title);
    QString html = document.text.toHtml("utf-8");
    nameSimilarFaces(html);
    if (document.isScreenplay)
        limitWidth(html, options, margin);
    *bytes = withFinalNewline(html);
    return true;
}

}

const Format htmlFormat
    = {"html", "HTML", "htm xhtml", readHtml, writeHtml, NoteSupport::None, PictureSupport::Named,
       false};
