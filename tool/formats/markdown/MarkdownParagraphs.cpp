// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownParagraphs.h>

#include <tool/formats/markdown/MarkdownEscapes.h>
#include <tool/formats/markdown/MarkdownFormat.h>
#include <tool/formats/markdown/MarkdownLook.h>

#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/document/NoteFormat_p.h>
#include <core/document/OfflineDocument_p.h>
#include <core/document/SafeHtml_p.h>
#include <text/MVRTextDoc.h>

#include <QFileInfo>
#include <QRegularExpression>
#include <QTextImageFormat>

#include <algorithm>

using namespace MarkdownLook;

namespace {

QString linkOf(const QTextCharFormat &format)
{
    const QString covered = format.stringProperty(MVRTextFormat::CoveredLinkProperty);
    const QString target = covered.isEmpty() ? format.anchorHref() : covered;
    return !format.isAnchor() || target.isEmpty() || isNoteAnchor(target) || isScriptLink(target)
        ? QString()
        : target;
}

MarkdownStyle styleOf(const QTextCharFormat &format, int ignoredStyles)
{
    MarkdownStyle style;
    style.bits = stylesOf(format) & ~ignoredStyles;
    style.link = linkOf(format);
    if (!style.link.isNull()) {
        style.linkTitle = format.toolTip();
        style.bits &= ~Underline; // which links are anyway
    }
    return style;
}

/*! Whether \a text may stand between angle brackets. */
bool isAddress(const QString &text)
{
    static const QRegularExpression address(QStringLiteral("^(?:https?|ftp)://[!-;=?-~]+$"));
    return address.match(text).hasMatch();
}

QString pictureMarkup(const QTextImageFormat &image)
{
    const QString name = image.name();
    QString alternative = image.stringProperty(QTextFormat::ImageAltText);
    if (alternative.isEmpty())
        alternative = QFileInfo(name).completeBaseName();
    return QLatin1String("![") + MarkdownEscapes::escaped(alternative.simplified())
        + QLatin1String("](")
        + MarkdownEscapes::destination(name, image.stringProperty(QTextFormat::ImageTitle))
        + QLatin1Char(')');
}

/*! Where the last paragraph of a range begins to belong to it. */
int startInLastBlock(const QTextDocument &document, const MVRTextRange &range)
{
    return qMax(range.start, document.findBlock(qMax(range.start, range.end - 1)).position());
}

/*! Where a footnote's mark stands: in front of the blank that it has where a link is before. */
int markPosition(const QTextDocument &document, const MVRTextRange &range)
{
    int position = range.start;
    while (position < range.end && document.characterAt(position).isSpace())
        ++position;
    return position < range.end ? range.end : range.start;
}

bool isInlineNote(const QTextCharFormat &format)
{
    return format.boolProperty(MVRTextFormat::InlineAnnotationProperty)
        || format.boolProperty(MVRTextFormat::InlineFootnoteProperty);
}

} // namespace

MarkdownParagraphs::MarkdownParagraphs(const QTextDocument &document, int firstNote)
    : m_document(document)
    , m_walker(&document, 0)
    , m_firstNote(firstNote)
{
    if (firstNote > 0)
        collectMarks();
}

void MarkdownParagraphs::collectMarks()
{
    m_notes = MVRTextDoc::notes(&m_document);
    for (const MVRTextNote &note : qAsConst(m_notes)) {
        if (note.kind == MVRTextNote::Comment)
            m_marks.append({startInLastBlock(m_document, note.range), true, nullptr});
        m_marks.append({note.kind == MVRTextNote::Footnote ? markPosition(m_document, note.range)
                                                           : note.range.end,
                        false, &note});
    }
    // Behind a text come the marks of what ends there, then what begins.
    std::stable_sort(m_marks.begin(), m_marks.end(), [](const Mark &a, const Mark &b) {
        return a.position != b.position ? a.position < b.position : !a.isBefore && b.isBefore;
    });
}

/*! The content of a comment or annotation; each of its paragraphs is a line. */
QString MarkdownParagraphs::commentMarkup(const MVRTextNote &note) const
{
    OfflineDocument content;
    content.setUndoRedoEnabled(false);
    if (note.isInline())
        content.setPlainText(note.contentText(m_document));
    else
        MVRTextRtf::fromRtfCData(note.cdata, &content);
    MarkdownInlineWriter writer(MarkdownPlace::Line, true);
    for (FragmentWalker walker(&content, 0); walker.isValid(); walker.next()) {
        const bool breaks = walker.isAtBlockStart() && walker.start() > 0;
        if (breaks)
            writer.addText(QString(QChar::LineSeparator), MarkdownStyle());
        const QTextCharFormat format = walker.format();
        const QString text = textBetween(walker.block(), walker.start(), walker.end());
        if (!format.isImageFormat())
            writer.addText(text, styleOf(format, 0));
    }
    const QString head
        = note.kind == MVRTextNote::Comment ? QStringLiteral("==}{>>") : QStringLiteral("{>>");
    return head + writer.write() + QLatin1String("<<}");
}

/*! Adds the marks of \a position; \a isAtEnd: of a paragraph, where nothing begins. */
void MarkdownParagraphs::addMarks(int position, bool isAtEnd, MarkdownInlineWriter *writer)
{
    for (; m_nextMark < m_marks.size(); ++m_nextMark) {
        const Mark &mark = m_marks.at(m_nextMark);
        if (mark.position > position || (mark.position == position && mark.isBefore && isAtEnd))
            return;
        if (!mark.note) {
            writer->addMarkup(QStringLiteral("{=="));
        } else if (mark.note->isFootnote()) {
            m_footnotes.append(*mark.note);
            writer->addMarkup(QStringLiteral("[^%1]").arg(m_firstNote - 1 + m_footnotes.size()));
        } else {
            writer->addMarkup(commentMarkup(*mark.note));
        }
    }
}

void MarkdownParagraphs::addFragment(const FragmentWalker &walker, int from, int to,
                                     int ignoredStyles, MarkdownInlineWriter *writer)
{
    const QTextCharFormat format = walker.format();
    const QTextBlock &block = walker.block();
    if (m_firstNote > 0 && isInlineNote(format))
        return; // stands at its end
    const MarkdownStyle style = styleOf(format, ignoredStyles);
    if (format.isImageFormat()) {
        for (int at = from; at < to && !format.toImageFormat().name().isEmpty(); ++at)
            writer->addMarkup(pictureMarkup(format.toImageFormat()), style);
        return;
    }
    QString text = textBetween(block, from, to);
    text.remove(QChar::ObjectReplacementCharacter);
    if (format.boolProperty(MarkdownFormat::literalProperty))
        writer->addMarkup(text);
    else if (style.link == text && style.bits == 0 && isAddress(text) && style.linkTitle.isEmpty())
        writer->addMarkup(QLatin1Char('<') + text + QLatin1Char('>'), MarkdownStyle());
    else
        writer->addText(text, style);
}

QString MarkdownParagraphs::text(const QTextBlock &block, MarkdownPlace place, int ignoredStyles)
{
    MarkdownInlineWriter writer(place);
    const int end = block.position() + block.length() - 1;
    while (m_walker.isValid() && m_walker.start() < block.position())
        m_walker.next();
    for (; m_walker.isValid() && m_walker.start() < end; m_walker.next()) {
        for (int from = m_walker.start(); from < m_walker.end();) {
            addMarks(from, false, &writer);
            int to = m_walker.end();
            if (m_nextMark < m_marks.size())
                to = qBound(from + 1, m_marks.at(m_nextMark).position, to);
            addFragment(m_walker, from, to, ignoredStyles, &writer);
            from = to;
        }
    }
    addMarks(end, true, &writer);
    return writer.write();
}
