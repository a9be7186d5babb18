// SPDX-License-Identifier: MIT
#include "Tints.h"

#include <QPalette>
#include <QTextBlock>
#include <QWidget>

Tints::Tints(QTextDocument *document, const QWidget *page)
    : MVRNoteHighlighter(document)
    , m_page(page)
{
    rehighlight(); // with the looks of this class
}

QVector<QTextLayout::FormatRange> Tints::looks(const QTextBlock &block) const
{
    QVector<QTextLayout::FormatRange> looks = MVRNoteHighlighter::looks(block);
    const QPalette palette = m_page->palette();
    if (palette.color(QPalette::Base).lightness() > 127)
        return looks;
    QVector<QTextLayout::FormatRange> all;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        QTextLayout::FormatRange range;
        range.start = it.fragment().position() - block.position();
        range.length = it.fragment().length();
        for (const QTextLayout::FormatRange &tint : qAsConst(looks)) {
            if (tint.start <= range.start && range.start < tint.start + tint.length)
                range.format = tint.format;
        }
        if (it.fragment().charFormat().foreground().color() == QColor(Qt::black))
            range.format.setForeground(palette.color(QPalette::Text));
        if (!range.format.isEmpty())
            all.append(range);
    }
    return all;
}
