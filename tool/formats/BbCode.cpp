// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/TextOutput.h>

#include <bbcode/MVRBbCodeConverter.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/SafeHtml_p.h>

#include <QSet>
#include <QTextList>

namespace {

// A forum page has a colour of its own for text, and BBCode neither backgrounds nor link targets.
void leaveForumFormats(QTextCharFormat &format)
{
    if (format.foreground().color() == QColor(Qt::black))
        format.clearForeground();
    format.clearBackground();
    format.clearProperty(QTextFormat::AnchorName);
    if (format.anchorHref().isEmpty()) // or a word would end behind the letter that was a place
        format.clearProperty(QTextFormat::IsAnchor);
}

// Headings, rules and unbreakable lines would not even begin a line in BBCode.
void leaveForumFormats(QTextBlockFormat &format)
{
    format.clearProperty(QTextFormat::HeadingLevel);
    format.clearProperty(QTextFormat::BlockTrailingHorizontalRulerWidth);
    format.clearProperty(QTextFormat::BlockNonBreakableLines);
}

/*!
    Makes one list of each run of items. A list that stands between the items of another one is
    nested in HTML, and its text would come twice.
*/
void flattenLists(QTextDocument &text)
{
    constexpr int maxItems = 500; // each that joins a list makes Qt go through all of them
    QSet<QTextList *> known;
    QTextCursor cursor(&text);
    QTextList *list = nullptr; // of the run
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        QTextList *own = block.textList();
        if (!own || !followsParagraph(block))
            list = nullptr;
        if (!own || own == list)
            continue;
        cursor.setPosition(block.position());
        if (list && list->count() < maxItems)
            list->add(block);
        else if (known.contains(own))
            list = cursor.createList(list ? list->format() : own->format());
        else
            list = own;
        known << own << list;
    }
}

void prepareForForum(Document &document)
{
    QTextCursor cursor(&document.text);
    const EditBlock editBlock(cursor);
    flattenLists(document.text);
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

/*!
    \a html, in which formats end with each line and begin again. The converter would put all lines
    of one format in front of the line feeds between them.
*/
QString withFormatsOfLines(const QString &html)
{
    const QLatin1String spanStart("<span");
    const QLatin1String spanEnd("</span>");
    const QLatin1String lineFeed("<br />");
    QString lines;
    QString span; // the tag of the open one
    int copied = 0;
    for (int at = int(html.indexOf(QLatin1Char('<'))); at >= 0;
         at = int(html.indexOf(QLatin1Char('<'), at + 1))) {
        const QStringView rest = QStringView(html).mid(at);
        if (rest.startsWith(spanStart)) {
            span = html.mid(at, html.indexOf(QLatin1Char('>'), at) + 1 - at);
        } else if (rest.startsWith(spanEnd)) {
            span.clear();
        } else if (rest.startsWith(lineFeed) && !span.isEmpty()) {
            lines.append(html.constData() + copied, at - copied);
            if (lines.endsWith(span))
                lines.chop(span.size());
            else
                lines += spanEnd;
            lines += lineFeed;
            copied = at + lineFeed.size();
            if (rest.mid(lineFeed.size()).startsWith(spanEnd))
                copied += spanEnd.size();
            else
                lines += span;
        }
    }
    return lines + html.mid(copied);
}

bool writeBbCode(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    Q_UNUSED(options)
    prepareForForum(document);
    makeSafeForHtml(&document.text);
    QString fault;
    QString text
        = MVRBbCodeConverter().fromHtml(withFormatsOfLines(document.text.toHtml()), &fault);
    if (text.isNull()) {
        *error = Tool::tr("cannot be written as BBCode: %1").arg(fault.simplified());
        return false;
    }
    if (text.startsWith(QLatin1Char('\n'))) // each paragraph comes behind its line feed
        text.remove(0, 1);
    if (document.isScreenplay)
        dropBlankParagraphs(text);
    *bytes = withFinalNewline(std::move(text));
    return true;
}

}

const Format bbCodeFormat = {
    "bbcode", "BBCode", "", nullptr, writeBbCode, NoteSupport::None, PictureSupport::None, false};
