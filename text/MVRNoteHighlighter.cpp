// SPDX-License-Identifier: MIT
#include <text/MVRNoteHighlighter.h>

#include <core/document/ChangedText_p.h>

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextDocument>

MVRNoteHighlighter::MVRNoteHighlighter(QTextDocument *document)
    : QObject(document)
    , m_document(document)
    , m_tints {QColor(255, 210, 60, 90), QColor(120, 170, 255, 80), QColor(255, 150, 60, 60),
               QColor(120, 210, 170, 70)}
{
    if (!document)
        return;
    document->documentLayout(); // without one Qt tells nothing of edits
    connect(document, &QTextDocument::contentsChange, this, &MVRNoteHighlighter::follow);
    rehighlight();
}

MVRNoteHighlighter::~MVRNoteHighlighter()
{
    if (!m_document) // as a child of its document it goes when that one is none any more
        return;
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next())
        show(block, {});
    m_document->markContentsDirty(0, m_document->characterCount());
}

QTextDocument *MVRNoteHighlighter::document() const
{
    return m_document;
}

void MVRNoteHighlighter::setTint(MVRTextNote::Kind kind, const QColor &color)
{
    if (m_tints[kind] == color)
        return;
    m_tints[kind] = color;
    rehighlight();
}

QColor MVRNoteHighlighter::tint(MVRTextNote::Kind kind) const
{
    return m_tints[kind];
}

QColor MVRNoteHighlighter::background(const QTextCharFormat &format) const
{
    for (const MVRTextNote::Kind kind :
         {MVRTextNote::InlineFootnote, MVRTextNote::InlineAnnotation}) {
        if (format.boolProperty(MVRTextNote::property(kind)))
            return m_tints[kind];
    }
    if (!format.boolProperty(MVRTextFormat::CommentLinkProperty)
        || format.boolProperty(MVRTextFormat::CommentResolvedProperty))
        return QColor();
    if (format.boolProperty(MVRTextFormat::InspectorFootnoteProperty))
        return m_tints[MVRTextNote::Footnote];
    const QColor tint = m_tints[MVRTextNote::Comment];
    QColor own = format.colorProperty(MVRTextFormat::CommentColorProperty);
    if (!tint.isValid() || !own.isValid())
        return tint;
    own.setAlpha(tint.alpha());
    return own;
}

void MVRNoteHighlighter::setTextColor(const QColor &color)
{
    if (m_textColor == color)
        return;
    m_textColor = color;
    rehighlight();
}

QTextCharFormat MVRNoteHighlighter::look(const QTextCharFormat &format) const
{
    QTextCharFormat look;
    const QColor tint = background(format);
    if (tint.isValid())
        look.setBackground(tint);
    const bool hasColor = format.hasProperty(QTextFormat::ForegroundBrush);
    if (m_textColor.isValid() && (!hasColor || format.foreground().color() == QColor(Qt::black)))
        look.setForeground(m_textColor);
    return look;
}

QVector<QTextLayout::FormatRange> MVRNoteHighlighter::looks(const QTextBlock &block) const
{
    QVector<QTextLayout::FormatRange> looks;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        QTextLayout::FormatRange range;
        range.format = look(fragment.charFormat());
        if (range.format.isEmpty())
            continue;
        range.start = fragment.position() - block.position();
        range.length = fragment.length();
        if (!looks.isEmpty() && looks.last().start + looks.last().length == range.start
            && looks.last().format == range.format)
            looks.last().length += range.length;
        else
            looks.append(range);
    }
    return looks;
}

/*! Shows a paragraph so; what an input method is composing keeps its own look. */
void MVRNoteHighlighter::show(const QTextBlock &block,
                              QVector<QTextLayout::FormatRange> looks) const
{
    QTextLayout *layout = block.layout();
    const int composed = layout->preeditAreaText().size();
    const int at = layout->preeditAreaPosition();
    if (composed > 0) {
        for (QTextLayout::FormatRange &range : looks) {
            if (range.start >= at)
                range.start += composed;
            else if (range.start + range.length > at)
                range.length += composed;
        }
        const QVector<QTextLayout::FormatRange> before = layout->formats();
        for (const QTextLayout::FormatRange &range : before) {
            if (range.start >= at && range.start + range.length <= at + composed)
                looks.append(range);
        }
    }
    layout->setFormats(looks);
}

void MVRNoteHighlighter::follow(int position, int removed, int added)
{
    Q_UNUSED(removed)
    const int end = position + added + leftOutOfChange(*m_document, position, added);
    QTextBlock block = m_document->findBlock(position);
    for (; block.isValid() && block.position() <= end; block = block.next()) {
        const QVector<QTextLayout::FormatRange> wanted = looks(block);
        if (wanted.isEmpty() && block.layout()->formats().isEmpty())
            continue;
        show(block, wanted);
        // Qt adds it to the edit that it is telling about: there is one layout for both.
        m_document->markContentsDirty(block.position(), block.length());
    }
}

void MVRNoteHighlighter::rehighlight()
{
    if (!m_document)
        return;
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next())
        show(block, looks(block));
    m_document->markContentsDirty(0, m_document->characterCount());
}
