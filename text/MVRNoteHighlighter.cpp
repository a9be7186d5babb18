// SPDX-License-Identifier: MIT
#include <text/MVRNoteHighlighter.h>

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>

MVRNoteHighlighter::MVRNoteHighlighter(QTextDocument *document)
    : QSyntaxHighlighter(document)
    , m_tints {QColor(255, 210, 60, 90), QColor(120, 170, 255, 80), QColor(255, 150, 60, 60),
               QColor(120, 210, 170, 70)}
{
    if (document)
        document->documentLayout(); // without one Qt tells nothing of edits
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
    if (!format.boolProperty(MVRTextFormat::CommentLinkProperty))
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

void MVRNoteHighlighter::highlightBlock(const QString &)
{
    const QTextBlock block = currentBlock();
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const QColor color = background(fragment.charFormat());
        if (!color.isValid())
            continue;
        QTextCharFormat look;
        look.setBackground(color);
        setFormat(fragment.position() - block.position(), fragment.length(), look);
    }
}
