// SPDX-License-Identifier: MIT
#include <tool/formats/Writers.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/TitlePage.h>
#include <tool/pages/Lengths.h>
#include <tool/pages/Pages.h>

#include <bbcode/MVRBbCodeConverter.h>
#include <core/document/FormatEdits_p.h>
#include <finaldraft/MVRFinalDraftWriter.h>
#include <text/MVRTextDoc.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocumentWriter>

namespace {

constexpr double metersPerInch = 0.0254;

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

QByteArray withFinalNewline(QString text)
{
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    return text.toUtf8();
}

// Paragraphs that only take up space on a page; one empty line is space enough elsewhere.
void dropBlankParagraphs(QString &text)
{
    static const QRegularExpression blankLines(QStringLiteral("\\n(?:[ \\t]*\\n){2,}"));
    text.replace(blankLines, QStringLiteral("\n\n"));
    text = text.trimmed();
}

// Final Draft sets off elements by space before them, plain text by an empty line.
bool hasSpaceBefore(const QTextBlock &block)
{
    return block.blockNumber() > 0 && block.blockFormat().topMargin() >= 6.0;
}

// A forum page has a colour of its own for text, and BBCode neither backgrounds nor link targets.
void leaveForumFormats(QTextCharFormat &format)
{
    if (format.foreground().color() == QColor(Qt::black))
        format.clearForeground();
    format.clearBackground();
    format.clearProperty(QTextFormat::AnchorName);
}

// Headings, rules and unbreakable lines would not even begin a line in BBCode.
void leaveForumFormats(QTextBlockFormat &format)
{
    format.clearProperty(QTextFormat::HeadingLevel);
    format.clearProperty(QTextFormat::BlockTrailingHorizontalRulerWidth);
    format.clearProperty(QTextFormat::BlockNonBreakableLines);
}

void prepareForForum(Document &document)
{
    QTextCursor cursor(&document.text);
    const EditBlock editBlock(cursor);
    const auto change = [](QTextCharFormat &format) { leaveForumFormats(format); };
    const QVector<FormatEdit> edits
        = collectFormatEdits(&document.text, -1, document.text.characterCount() - 1, change);
    for (const FormatEdit &edit : edits)
        edit.apply(cursor);
    for (QTextBlock block = document.text.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        leaveForumFormats(format);
        cursor.setPosition(block.position());
        if (format != block.blockFormat())
            cursor.setBlockFormat(format);
        if (document.isScreenplay && hasSpaceBefore(block))
            cursor.insertText(QString(QChar::LineSeparator), QTextCharFormat());
    }
}

}

bool writeFdx(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    Q_UNUSED(options)
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    MVRFinalDraftWriter writer;
    if (writer.write(&buffer, &document.text, document.elements)) {
        buffer.close();
        *bytes = withTitlePage(*bytes, document);
        return true;
    }
    *error = QStringLiteral("cannot be written as a Final Draft file");
    return false;
}

bool writeRtf(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    Q_UNUSED(options)
    Q_UNUSED(error)
    document.text.setMetaInformation(QTextDocument::DocumentTitle, document.title);
    *bytes = MVRTextDoc::toRtf(&document.text);
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

bool writeText(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    Q_UNUSED(options)
    Q_UNUSED(error)
    QString text;
    for (QTextBlock block = document.text.begin(); block.isValid(); block = block.next()) {
        if (document.isScreenplay && hasSpaceBefore(block))
            text += QLatin1Char('\n');
        // Empty paragraphs of a screenplay come as one blank.
        text += (document.isScreenplay && block.text() == QLatin1String(" ") ? QString()
                                                                             : block.text())
            + QLatin1Char('\n');
    }
    text.chop(1);
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    text.remove(QChar::ObjectReplacementCharacter);
    *bytes = withFinalNewline(text);
    return true;
}

bool writeMarkdown(Document &document, const WriteOptions &options, QByteArray *bytes,
                   QString *error)
{
    Q_UNUSED(options)
    Q_UNUSED(error)
    QString text = document.text.toMarkdown();
    if (document.isScreenplay)
        dropBlankParagraphs(text);
    *bytes = withFinalNewline(text);
    return true;
}

bool writeBbCode(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    Q_UNUSED(options)
    prepareForForum(document);
    QString fault;
    QString text = MVRBbCodeConverter().fromHtml(document.text.toHtml(), &fault);
    if (text.isNull()) {
        *error = QStringLiteral("cannot be written as BBCode: %1").arg(fault.simplified());
        return false;
    }
    if (text.startsWith(QLatin1Char('\n'))) // each paragraph comes behind its line feed
        text.remove(0, 1);
    if (document.isScreenplay)
        dropBlankParagraphs(text);
    *bytes = withFinalNewline(text);
    return true;
}

bool writeOdt(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    prepareForQt(document, options.paper, pixelsPerPoint);
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    QTextDocumentWriter writer(&buffer, "odf");
    if (writer.write(&document.text))
        return true;
    *error = QStringLiteral("cannot be written as ODT");
    return false;
}

bool writePdf(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    const Pages pages(document, options.paper);
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(Pages::resolution);
    writer.setPageSize(options.paper);
    writer.setPageMargins(QMarginsF());
    writer.setTitle(document.title);
    writer.setCreator(QStringLiteral("mvrtext"));
    QPainter painter;
    if (!painter.begin(&writer)) {
        *error = QStringLiteral("cannot be written as PDF");
        return false;
    }
    for (int page = 0; page < pages.count(); ++page) {
        if (page > 0)
            writer.newPage();
        pages.paint(painter, page);
    }
    return painter.end();
}

bool writePng(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    const Pages pages(document, options.paper);
    if (options.page > pages.count()) {
        *error = QStringLiteral("has %1, no page %2")
                     .arg(counted(pages.count(), "page", "pages"))
                     .arg(options.page);
        return false;
    }
    QImage image(options.paper.sizePixels(options.dpi), QImage::Format_RGB32);
    if (image.isNull()) {
        *error = QStringLiteral("the picture is too large");
        return false;
    }
    image.setDotsPerMeterX(qRound(options.dpi / metersPerInch));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing
                           | QPainter::SmoothPixmapTransform);
    painter.scale(double(options.dpi) / Pages::resolution, double(options.dpi) / Pages::resolution);
    pages.paint(painter, options.page - 1);
    painter.end();
    if (image.allGray())
        image = image.convertToFormat(QImage::Format_Grayscale8);
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG");
}
