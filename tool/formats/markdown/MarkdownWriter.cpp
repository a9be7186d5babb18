// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownWriter.h>

#include <tool/formats/markdown/MarkdownBlocks.h>
#include <tool/formats/markdown/MarkdownFormat.h>
#include <tool/formats/markdown/MarkdownFrontMatter.h>
#include <tool/formats/markdown/MarkdownLook.h>
#include <tool/formats/markdown/MarkdownParagraphs.h>
#include <tool/formats/markdown/MarkdownTables.h>

#include <core/MVRTextRtf.h>
#include <core/document/NoteFormat_p.h>
#include <core/document/OfflineDocument_p.h>

#include <QTextDocument>
#include <QTextTable>

namespace {

/*!
    Other paragraphs of which RTF keeps the lines together are none. What carries a note becomes a
    paragraph: a listing has room for none.
*/
bool isCode(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    const bool isNamed = format.hasProperty(QTextFormat::BlockCodeFence)
        || format.hasProperty(QTextFormat::BlockCodeLanguage);
    if (!isNamed && !format.nonBreakableLines())
        return false;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat letters = it.fragment().charFormat();
        if (!noteContent(letters).isEmpty() || !(isNamed || letters.fontFixedPitch()))
            return false;
    }
    return true;
}

/*! Lines of one listing may be paragraphs of their own, as web pages have them. */
bool goesOnAsCode(const QTextBlock &block)
{
    return isCode(block) && !block.blockFormat().hasProperty(QTextFormat::BlockCodeFence)
        && followsParagraph(block);
}

/*! Whether \a next is another line of the listing: only the ends of one have room around them. */
bool isLineOf(const QTextBlock &first, const QTextBlock &next)
{
    QTextBlockFormat a = first.blockFormat();
    QTextBlockFormat b = next.blockFormat();
    if (b.topMargin() > 0)
        return false;
    for (QTextBlockFormat *format : {&a, &b}) {
        format->clearProperty(QTextFormat::BlockTopMargin);
        format->clearProperty(QTextFormat::BlockBottomMargin);
    }
    return a == b;
}

/*! Goes through the blocks of one document. */
class Writer
{
public:
    Writer(const QTextDocument &document, const QString &label, int firstNote)
        : m_document(document)
        , m_blocks(label)
        , m_paragraphs(document, firstNote)
    {
    }

    QString write();
    const QVector<MVRTextNote> &footnotes() const { return m_paragraphs.footnotes(); }

private:
    QTextBlock writeBlock(const QTextBlock &block);
    QTextBlock writeCode(const QTextBlock &first);
    void writeParagraph(const QTextBlock &block);

    const QTextDocument &m_document;
    MarkdownBlocks m_blocks;
    MarkdownParagraphs m_paragraphs;
};

/*! \return the last block of the listing */
QTextBlock Writer::writeCode(const QTextBlock &first)
{
    QStringList lines;
    QTextBlock last = first;
    for (QTextBlock block = first;; block = block.next()) {
        lines += block.text().remove(QChar::ObjectReplacementCharacter).split(QChar::LineSeparator);
        last = block;
        if (!block.next().isValid() || first.blockFormat().hasProperty(QTextFormat::BlockCodeFence)
            || !goesOnAsCode(block.next()) || !isLineOf(first, block.next()))
            break;
    }
    int longest = 2;
    for (const QString &line : qAsConst(lines)) {
        int ticks = 0;
        for (const QChar c : line.trimmed()) {
            if (c != QLatin1Char('`'))
                break;
            ++ticks;
        }
        longest = qMax(longest, ticks);
    }
    const QString fence(longest + 1, QLatin1Char('`'));
    QString language = first.blockFormat().stringProperty(QTextFormat::BlockCodeLanguage);
    language.remove(QLatin1Char('`'));
    m_blocks.enter(first, false);
    m_blocks.write(fence + language.simplified() + QLatin1Char('\n') + lines.join(QLatin1Char('\n'))
                   + QLatin1Char('\n') + fence);
    return last;
}

void Writer::writeParagraph(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    // A line spacing has the same number and is no int.
    const bool isHeading = format.property(QTextFormat::HeadingLevel).userType() == QMetaType::Int
        && format.headingLevel() > 0;
    const bool hasRule = format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth);
    QString text
        = m_paragraphs.text(block, isHeading ? MarkdownPlace::Line : MarkdownPlace::Paragraph,
                            isHeading ? MarkdownLook::Bold : 0);
    if (text.isEmpty() && !hasRule && !block.textList())
        return;
    m_blocks.setIsNoteBody(format.boolProperty(MarkdownFormat::noteBodyProperty));
    m_blocks.enter(block, !isHeading && !text.isEmpty());
    if (isHeading && !text.isEmpty()) {
        if (text.endsWith(QLatin1Char('#')))
            text.insert(text.size() - 1, QLatin1Char('\\'));
        text.prepend(
            QString(qMin(format.headingLevel(), MarkdownLook::maxHeadingLevels), QLatin1Char('#'))
            + QLatin1Char(' '));
    }
    if (!text.isEmpty())
        m_blocks.write(text);
    if (hasRule)
        m_blocks.write(QStringLiteral("***"));
}

/*! \return the last block that was written with it */
QTextBlock Writer::writeBlock(const QTextBlock &block)
{
    if (isCode(block) && !block.text().isEmpty())
        return writeCode(block);
    writeParagraph(block);
    return block;
}

QString Writer::write()
{
    for (QTextBlock block = m_document.begin(); block.isValid();) {
        QTextFrame *frame = QTextCursor(block).currentFrame();
        QTextTable *table = nullptr;
        for (; frame; frame = frame->parentFrame()) {
            if (auto *outer = qobject_cast<QTextTable *>(frame))
                table = outer;
        }
        if (!table) {
            block = writeBlock(block).next();
            continue;
        }
        m_blocks.enterTable();
        m_blocks.write(markdownTable(*table, &m_paragraphs));
        block = m_document.findBlock(table->lastPosition() + 1);
    }
    return m_blocks.take();
}

/*! Text that begins like metadata is not to be taken for it. */
QString withSafeStart(QString text)
{
    const int end = int(text.indexOf(QLatin1Char('\n')));
    if (beginsMetadata(text.left(end)))
        text.insert(text.indexOf(QLatin1Char(':')), QLatin1Char('\\'));
    return text;
}

} // namespace

QString writeMarkdown(const QTextDocument &document)
{
    MarkdownFrontMatter frontMatter;
    frontMatter.title = document.metaInformation(QTextDocument::DocumentTitle);
    frontMatter.author = document.property(MVRTextRtf::authorProperty).toString();
    QString text = frontMatter.toYaml();
    Writer writer(document, QString(), 1);
    text += text.isEmpty() ? withSafeStart(writer.write()) : writer.write();
    int number = 0;
    for (const MVRTextNote &note : writer.footnotes()) {
        OfflineDocument content;
        content.setUndoRedoEnabled(false);
        if (note.isInline())
            content.setPlainText(note.contentText(document));
        else
            MVRTextRtf::fromRtfCData(note.cdata, &content);
        text += QLatin1Char('\n')
            + Writer(content, QStringLiteral("[^%1]: ").arg(++number), 0).write();
    }
    return text;
}
