// SPDX-License-Identifier: MIT
#pragma once

#include <tool/formats/markdown/MarkdownInlineReader.h>

#include <QTextBlockFormat>
#include <QTextCursor>
#include <QVector>

class QTextList;

/*! Puts the blocks under a node of the tree into a document. */
class MarkdownBuilder
{
public:
    explicit MarkdownBuilder(QTextDocument *document);

    /*! \return false when lists and quotes are nested too deep */
    bool build(cmark_node *root);

    /*! The notes that stand in the text, in its order. */
    const QVector<MarkdownNote> &notes() const { return m_notes; }
    /*! The definitions of footnotes below the root, which are passed over. */
    const QVector<cmark_node *> &definitions() const { return m_definitions; }

private:
    struct List
    {
        QTextList *list = nullptr; // made with its first item
        cmark_node *node = nullptr;
        bool isItemOpen = false; // and still lacks its paragraph
        int items = 0; // that have theirs
    };

    bool enter(cmark_node *node);
    bool takeLeaf(cmark_node *node);
    void leave(cmark_node *node);
    QTextBlockFormat blockFormat() const;
    void startBlock(QTextBlockFormat format, const QTextCharFormat &charFormat);
    void startItems();
    void addText(const MarkdownText &text);
    void addParagraph(cmark_node *node, const QTextBlockFormat &format,
                      const QTextCharFormat &charFormat);
    void addCode(cmark_node *node);
    void addHtml(cmark_node *node);
    void addRule();
    void addTable(cmark_node *node);

    QTextCursor m_cursor;
    QVector<List> m_lists;
    int m_quotes = 0;
    bool m_isBlockFree = true; // the cursor's has no text yet and may be used
    QVector<MarkdownNote> m_notes;
    QVector<MarkdownNote> m_early; // comments with no text before them in their paragraph
    QVector<cmark_node *> m_definitions;
};
