// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextFormat.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

/*!
    Test documents drawn as two lines: the text, and below each character a mark for its format.

    '.' plain, 'B' bold, 'a' inline annotation, 'A' the same in bold, 'f' inline footnote, 'p'
    preserved formatting, 'P' a footnote in it, '1'-'4' inspector comments and '5'-'8' inspector
    footnotes with the digit as content. A line feed stands for a paragraph end, whose mark is the
    character format of the next paragraph.
*/
namespace MarkedText {

inline QTextCharFormat formatOf(QChar mark)
{
    QTextCharFormat format;
    if (mark == QLatin1Char('a') || mark == QLatin1Char('A'))
        format.setProperty(MVRTextFormat::InlineAnnotationProperty, true);
    if (mark == QLatin1Char('A') || mark == QLatin1Char('B'))
        format.setFontWeight(QFont::Bold);
    if (mark == QLatin1Char('f') || mark == QLatin1Char('P'))
        format.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
    if (mark == QLatin1Char('p') || mark == QLatin1Char('P'))
        format.setProperty(MVRTextFormat::PreserveFormattingProperty, true);
    if (mark.isDigit()) {
        const bool isFootnote = mark >= QLatin1Char('5');
        format.setProperty(MVRTextFormat::CommentLinkProperty, true);
        format.setProperty(MVRTextFormat::CommentCDataProperty, QByteArray(1, mark.toLatin1()));
        format.setProperty(MVRTextFormat::InspectorFootnoteProperty, isFootnote);
        format.setProperty(MVRTextFormat::InspectorCommentProperty, !isFootnote);
    }
    return format;
}

/*! Replaces the content of \a document; its undo history begins afterwards. */
inline void fill(QTextDocument *document, const QString &text, const QString &marks)
{
    Q_ASSERT(text.size() == marks.size());
    document->clear();
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('\n'))
            cursor.insertBlock(QTextBlockFormat(), formatOf(marks[i]));
        else
            cursor.insertText(QString(text[i]), formatOf(marks[i]));
    }
    cursor.endEditBlock();
    document->clearUndoRedoStacks();
}

inline QChar markOf(const QTextCharFormat &format)
{
    const bool isBold = format.fontWeight() > QFont::Normal;
    if (format.boolProperty(MVRTextFormat::CommentLinkProperty)) {
        const QByteArray content
            = format.property(MVRTextFormat::CommentCDataProperty).toByteArray();
        return QLatin1Char(content.isEmpty() ? '0' : content.at(0));
    }
    if (format.boolProperty(MVRTextFormat::InlineAnnotationProperty))
        return QLatin1Char(isBold ? 'A' : 'a');
    const bool isPreserved = format.boolProperty(MVRTextFormat::PreserveFormattingProperty);
    if (format.boolProperty(MVRTextFormat::InlineFootnoteProperty))
        return QLatin1Char(isPreserved ? 'P' : 'f');
    if (isPreserved)
        return QLatin1Char('p');
    return QLatin1Char(isBold ? 'B' : '.');
}

/*! The marks of the whole document, as fill() takes them. */
inline QString marks(const QTextDocument &document)
{
    QString result;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block != document.begin())
            result += markOf(block.charFormat());
        for (auto it = block.begin(); !it.atEnd(); ++it)
            result += QString(it.fragment().length(), markOf(it.fragment().charFormat()));
    }
    return result;
}

/*! A selection from \a anchor to \a position. */
inline QTextCursor select(QTextDocument *document, int anchor, int position)
{
    QTextCursor cursor(document);
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    return cursor;
}

/*! The format of the character at \a position. */
inline QTextCharFormat formatAt(QTextDocument *document, int position)
{
    return select(document, position + 1, position + 1).charFormat();
}

} // namespace MarkedText
