// SPDX-License-Identifier: MIT
#include <tool/formats/Readers.h>

#include <tool/Document.h>
#include <tool/formats/ScreenplayElements.h>
#include <tool/formats/TextDecoding.h>
#include <tool/pages/Lengths.h>

#include <finaldraft/MVRFinalDraftReader.h>
#include <text/MVRTextDoc.h>

#include <QBuffer>
#include <QFont>
#include <QRegularExpression>
#include <QSet>
#include <QTextBlock>
#include <QTextCodec>
#include <QTextCursor>

namespace {

// The distance of text from the paper's edge where a document does not give one, in points.
constexpr double defaultMargin = 72.0;

// Qt's HTML parser walks up the open elements for each new one.
constexpr int maxElementDepth = 1000;

const char notText[] = "not a text file";
const char nestedTooDeep[] = "its elements are nested too deep";

bool loadFdx(MVRFinalDraftReader &reader, const QByteArray &bytes, QString *error)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    if (reader.load(&buffer))
        return true;
    *error = reader.errorString();
    return false;
}

// The reader closes each paragraph, so that an empty one is left that nobody wrote.
void dropLastBlock(QTextDocument &document)
{
    const QTextBlock last = document.lastBlock();
    const QTextBlock before = last.previous();
    if (!before.isValid() || last.length() > 1)
        return;
    const QTextBlockFormat blockFormat = before.blockFormat();
    const QTextCharFormat charFormat = before.charFormat();
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    cursor.deletePreviousChar();
    // An empty paragraph takes the format of the one that is deleted behind it.
    cursor.setBlockFormat(blockFormat);
    if (cursor.block().length() == 1)
        cursor.setBlockCharFormat(charFormat);
}

// Qt's Markdown writer runs out of memory on deep lists.
bool hasDeepLists(const QString &markdown)
{
    static const QRegularExpression deepLine(
        QStringLiteral("^(?:[ \\t]*+(?:>|[*+-][ \\t]|[0-9]{1,9}[.)][ \\t])){100}"),
        QRegularExpression::MultilineOption);
    return deepLine.match(markdown).hasMatch();
}

// Settings count indents from a margin of 72 points, the document from its own.
void moveToMargin(ElementSettingsMap &settings, double margin)
{
    const double inches = (defaultMargin - margin) / 72.0;
    for (MVRFinalDraft::ElementSettings &entry : settings) {
        entry.paragraphSpec.leftIndent += inches;
        entry.paragraphSpec.rightIndent += inches;
    }
}

QString firstWords(const QTextDocument &document, int blocks)
{
    QTextBlock block = document.begin();
    for (int i = 0; i < blocks && block.isValid(); ++i, block = block.next()) {
        const QString text = block.text().simplified();
        if (!text.isEmpty())
            return text;
    }
    return QString();
}

bool setPlainText(Document &document, const QString &text)
{
    document.text.setDocumentMargin(defaultMargin);
    document.text.setPlainText(text);
    document.elements = elementsForWriting(standardSettings());
    return true;
}

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

}

bool readFdx(const QByteArray &bytes, const ReadOptions &options, Document &document,
             QString *error)
{
    MVRFinalDraftReader reader;
    ElementSettingsMap settings;
    if (!loadFdx(reader, bytes, error))
        return false;
    reader.readElements(&settings);
    if (!loadFdx(reader, withStandardSettings(bytes, settings), error))
        return false;
    reader.readElements(&settings);
    if (!reader.read(&document.text, elementsForReading(settings, options.capitals))) {
        *error = reader.errorString();
        return false;
    }
    dropLastBlock(document.text);
    document.text.setDefaultFont(QFont(QStringLiteral("Courier Final Draft"), 12));
    moveToMargin(settings, document.text.documentMargin());
    document.elements = elementsForWriting(settings);
    document.isScreenplay = true;
    document.titlePageBlocks = reader.titlePageBlockCount();
    document.title = firstWords(document.text, document.titlePageBlocks);
    document.scaling = reader.scaling();
    document.showInvisibles = reader.showInvisibles();
    document.losses = countFdxLosses(bytes);
    return true;
}

bool readRtf(const QByteArray &bytes, const ReadOptions &options, Document &document,
             QString *error)
{
    Q_UNUSED(options)
    if (!MVRTextDoc::fromRtf(bytes, &document.text)) {
        *error = QStringLiteral("not an RTF file");
        return false;
    }
    document.title = document.text.metaInformation(QTextDocument::DocumentTitle);
    document.text.setDocumentMargin(defaultMargin);
    document.elements = elementsForWriting(standardSettings());
    return true;
}

bool readHtml(const QByteArray &bytes, const ReadOptions &options, Document &document,
              QString *error)
{
    Q_UNUSED(options)
    const QTextCodec *codec = QTextCodec::codecForHtml(bytes, QTextCodec::codecForName("UTF-8"));
    const QString html = codec->toUnicode(bytes);
    if (html.contains(QChar::Null)) {
        *error = QLatin1String(notText);
        return false;
    }
    if (elementDepth(html) > maxElementDepth) {
        *error = QLatin1String(nestedTooDeep);
        return false;
    }
    document.text.setHtml(withBoundedSpans(html));
    pixelFontsToPoints(document.text);
    scaleLengths(document.text, pointsPerPixel);
    document.text.setDocumentMargin(defaultMargin);
    document.title = document.text.metaInformation(QTextDocument::DocumentTitle);
    document.elements = elementsForWriting(standardSettings());
    return true;
}

bool readText(const QByteArray &bytes, const ReadOptions &options, Document &document,
              QString *error)
{
    Q_UNUSED(options)
    QString text;
    if (decodeText(bytes, &text))
        return setPlainText(document, text);
    *error = QLatin1String(notText);
    return false;
}

bool readMarkdown(const QByteArray &bytes, const ReadOptions &options, Document &document,
                  QString *error)
{
    Q_UNUSED(options)
    QString text;
    if (!decodeText(bytes, &text)) {
        *error = QLatin1String(notText);
        return false;
    }
    if (hasDeepLists(text)) {
        *error = QLatin1String(nestedTooDeep);
        return false;
    }
    // HTML inside is not taken as markup: it stays as text.
    document.text.setMarkdown(text,
                              QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub
                                                              | QTextDocument::MarkdownNoHTML));
    scaleLengths(document.text, pointsPerPixel);
    document.text.setDocumentMargin(defaultMargin);
    document.elements = elementsForWriting(standardSettings());
    return true;
}
