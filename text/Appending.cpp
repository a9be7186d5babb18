// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/STextDoc.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/TextFragments_p.h>

#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

constexpr int policyProperty = QTextFormat::PageBreakPolicy;

/*! The text of a fragment; a picture that it lacks is not looked for elsewhere. */
class FragmentDocument : public QTextDocument
{
public:
    explicit FragmentDocument(const QTextDocumentFragment &fragment)
    {
        setUndoRedoEnabled(false);
        QTextCursor(this).insertFragment(fragment);
    }

protected:
    QVariant loadResource(int, const QUrl &) override { return QVariant(); }
};

/*! A paragraph without text. */
struct EmptyParagraph
{
    QTextBlockFormat format;
    QTextCharFormat charFormat;
};

// An empty one in a list shows its number, one before a table belongs to that.
bool isEmptyParagraph(const QTextBlock &block)
{
    const QTextBlock next = block.next();
    return block.length() == 1 && !block.textList() && (!next.isValid() || followsParagraph(next));
}

/*!
    The empty paragraphs that \a source begins with; not its last paragraph, unless it is the only
    one.
*/
QVector<EmptyParagraph> leadingEmptyParagraphs(const QTextDocument &source)
{
    QVector<EmptyParagraph> paragraphs;
    for (QTextBlock block = source.begin(); isEmptyParagraph(block); block = block.next()) {
        if (!block.next().isValid() && block != source.begin())
            break;
        paragraphs.append({block.blockFormat(), block.charFormat()});
    }
    return paragraphs;
}

/*! Makes the first of \a paragraphs of the cursor's one, which keeps its page break, and inserts
    one for the text to come behind each. */
void insertParagraphs(QTextCursor &cursor, const QVector<EmptyParagraph> &paragraphs,
                      const QVariant &policy)
{
    EmptyParagraph first = paragraphs.first();
    first.format.setProperty(policyProperty, policy);
    cursor.setBlockFormat(first.format);
    cursor.setBlockCharFormat(first.charFormat);
    first.format.clearProperty(policyProperty);
    cursor.insertBlock(first.format, first.charFormat);
    for (auto next = paragraphs.cbegin() + 1; next != paragraphs.cend(); ++next)
        cursor.insertBlock(next->format, next->charFormat);
}

} // namespace

void MVRTextDoc::appendDocument(QTextCursor &cursor, QTextDocument *source)
{
    STextDoc::appendDocument(cursor, source);
}

void MVRTextDoc::appendFragment(QTextCursor &cursor, const QTextDocumentFragment &fragment)
{
    STextDoc::appendFragment(cursor, fragment);
}

void MVRTextDoc::appendDocumentPreservePageBreak(QTextCursor &cursor, QTextDocument *source)
{
    if (cursor.isNull() || !source)
        return;
    const QVariant policy = cursor.blockFormat().property(policyProperty);
    if (!policy.isValid()) {
        STextDoc::appendDocument(cursor, source);
        return;
    }
    const EditBlock undoStep(cursor);
    cursor.removeSelectedText();
    const QVector<EmptyParagraph> paragraphs = leadingEmptyParagraphs(*source);
    if (paragraphs.isEmpty()) {
        QTextBlockFormat format;
        format.setProperty(policyProperty, policy);
        QTextCursor(source).mergeBlockFormat(format);
    } else {
        insertParagraphs(cursor, paragraphs, policy);
        removeFirstParagraphs(source, paragraphs.size());
    }
    STextDoc::appendDocument(cursor, source);
}

void MVRTextDoc::appendFragmentPreservePageBreak(QTextCursor &cursor,
                                                 const QTextDocumentFragment &fragment)
{
    if (cursor.isNull() || fragment.isEmpty())
        return;
    if (cursor.blockFormat().hasProperty(policyProperty)) {
        FragmentDocument content(fragment);
        appendDocumentPreservePageBreak(cursor, &content);
    } else {
        STextDoc::appendFragment(cursor, fragment);
    }
}
