// SPDX-License-Identifier: MIT
#include <tool/pages/PageBreaks.h>

#include <core/MVRScriptElement.h>

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <QVector>

namespace {

// So much of a paragraph stays with the heading in front of it.
constexpr int linesKept = 2;

/*! What of a paragraph counts for page breaks. */
struct Extent
{
    double spaceBefore;
    double lineHeight;
    int lines;
    bool startsPage;
    bool keepsWithNext;
};

bool keepsWithNext(const QTextBlock &block)
{
    static const QStringList elements {QStringLiteral("Scene Heading"), QStringLiteral("Shot"),
                                       QStringLiteral("Character"),
                                       QStringLiteral("Parenthetical")};
    const QString element = block.blockFormat().stringProperty(MVRScriptElement::NameProperty);
    return elements.contains(element);
}

Extent extentOf(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    const int lines = qMax(1, block.layout()->lineCount());
    const double height = format.lineHeightType() == QTextBlockFormat::FixedHeight
        ? format.lineHeight()
        : block.layout()->boundingRect().height() / lines;
    const bool startsPage = format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore;
    return {format.topMargin(), height, lines, startsPage, keepsWithNext(block)};
}

// The height of a heading and all that must follow it on its page; more than a page is as good as
// a page, and bounds the search.
double heightKept(const QVector<Extent> &extents, int first, double bodyHeight)
{
    double height = 0.0;
    for (int i = first; i < extents.size() && height <= bodyHeight; ++i) {
        const Extent &extent = extents[i];
        if (i > first && extent.startsPage)
            break;
        const int lines = extent.keepsWithNext ? extent.lines : qMin(extent.lines, linesKept);
        height += extent.spaceBefore + lines * extent.lineHeight;
        if (!extent.keepsWithNext)
            break;
    }
    return height;
}

// Follows the layout down the pages and gives the paragraphs that are to begin one.
QVector<int> firstOfPages(const QVector<Extent> &extents, double bodyHeight)
{
    QVector<int> firsts;
    double y = 0.0;
    for (int i = 0; i < extents.size(); ++i) {
        const Extent &extent = extents[i];
        const double kept = extent.keepsWithNext ? heightKept(extents, i, bodyHeight) : 0.0;
        if (extent.startsPage || (y + kept > bodyHeight && kept <= bodyHeight)) {
            firsts.append(i);
            y = 0.0;
        }
        y += y > 0.0 ? extent.spaceBefore : 0.0;
        for (int line = 0; line < extent.lines; ++line) {
            if (y > 0.0 && y + extent.lineHeight > bodyHeight)
                y = 0.0;
            y += extent.lineHeight;
        }
    }
    return firsts;
}

}

void breakPages(QTextDocument &text, double bodyHeight)
{
    QVector<QTextBlock> blocks;
    QVector<Extent> extents;
    text.documentLayout()->documentSize(); // finishes the layout
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        blocks.append(block);
        extents.append(extentOf(block));
    }
    QTextCursor cursor(&text);
    cursor.beginEditBlock();
    for (const int first : firstOfPages(extents, bodyHeight)) {
        QTextBlockFormat format = blocks[first].blockFormat();
        format.setPageBreakPolicy(format.pageBreakPolicy() | QTextFormat::PageBreak_AlwaysBefore);
        format.setTopMargin(0.0);
        cursor.setPosition(blocks[first].position());
        cursor.setBlockFormat(format);
    }
    cursor.endEditBlock();
}
