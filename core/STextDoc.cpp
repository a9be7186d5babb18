// SPDX-License-Identifier: MIT
#include <core/STextDoc.h>

#include <core/MVRToolkit.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/NoteFormat_p.h>

#include <QTextDocumentFragment>
#include <QTextOption>
#include <QTextTable>

namespace {

void removeNotesOfKind(QTextDocument *document, bool footnotes)
{
    changeAllFormats(document, [footnotes](QTextCharFormat &format) {
        const bool isFootnote = format.boolProperty(MVRTextFormat::InspectorFootnoteProperty);
        if (format.boolProperty(MVRTextFormat::CommentLinkProperty) && isFootnote == footnotes)
            clearNoteProperties(format);
    });
}

/*! All tables of the document, each behind the table that it stands in. */
QVector<QTextTable *> tablesOf(const QTextDocument *document)
{
    QVector<QTextTable *> tables;
    QVector<QTextFrame *> frames = {document->rootFrame()};
    while (!frames.isEmpty()) {
        QTextFrame *frame = frames.takeLast();
        if (auto *table = qobject_cast<QTextTable *>(frame))
            tables.append(table);
        for (QTextFrame *child : frame->childFrames())
            frames.append(child);
    }
    return tables;
}

void writeTableText(const QTextTable &table, QTextDocument *text)
{
    QTextCursor out(text);
    for (int row = 0; row < table.rows(); ++row) {
        if (row > 0)
            out.insertBlock(QTextBlockFormat(), QTextCharFormat());
        for (int column = 0; column < table.columns(); ++column) {
            if (column > 0)
                out.insertText(QStringLiteral("\t"));
            const QTextTableCell cell = table.cellAt(row, column);
            if (cell.row() != row || cell.column() != column)
                continue; // covered by a cell that spans several rows or columns
            QTextCursor content = cell.firstCursorPosition();
            content.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
            out.insertFragment(content.selection());
        }
    }
}

void replaceByText(QTextTable *table)
{
    QTextDocument text;
    text.setUndoRedoEnabled(false);
    writeTableText(*table, &text);

    QTextCursor cursor = table->firstCursorPosition();
    cursor.setPosition(table->firstPosition() - 1);
    const bool hasTextBefore = !cursor.atBlockStart();
    const QTextBlock behind = cursor.document()->findBlock(table->lastPosition() + 1);
    const QTextBlockFormat formatBehind = behind.blockFormat();
    const QTextCharFormat charFormatBehind = behind.charFormat();
    const bool hasTextBehind = behind.length() > 1;

    // Without its borders the table's surroundings would be one paragraph.
    table->removeRows(0, table->rows());
    if (hasTextBefore)
        cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    if (hasTextBehind) {
        cursor.insertBlock(formatBehind, charFormatBehind);
        cursor.movePosition(QTextCursor::PreviousBlock); // which is empty
    }
    cursor.insertFragment(QTextDocumentFragment(&text));
}

/*! A paragraph's new page-break policy. */
struct PageBreakEdit
{
    int position;
    int policy;
};

QVector<PageBreakEdit> pageBreakEdits(const QTextDocument *document)
{
    QVector<PageBreakEdit> edits;
    bool breakBefore = false;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const QTextBlockFormat format = block.blockFormat();
        const int oldPolicy = format.pageBreakPolicy();
        int policy = oldPolicy | (breakBefore ? QTextFormat::PageBreak_AlwaysBefore : 0);
        breakBefore = (policy & QTextFormat::PageBreak_AlwaysAfter) && block.next().isValid()
            && followsParagraph(block.next());
        if (breakBefore)
            policy &= ~QTextFormat::PageBreak_AlwaysAfter;
        const bool saysNothing = policy == 0 && format.hasProperty(QTextFormat::PageBreakPolicy);
        if (policy != oldPolicy || saysNothing)
            edits.append({block.position(), policy});
    }
    return edits;
}

} // namespace

void STextDoc::clearAll(QTextDocument *document, const QTextCharFormat &format, bool onlyEqual)
{
    const QMap<int, QVariant> properties = format.properties();
    changeAllFormats(document, [&properties, onlyEqual](QTextCharFormat &target) {
        for (auto it = properties.cbegin(); it != properties.cend(); ++it) {
            const QVariant value = target.property(it.key());
            if (value.isValid() && (!onlyEqual || value == it.value()))
                target.clearProperty(it.key());
        }
    });
}

void STextDoc::clearAllProperty(QTextDocument *document, int property, const QVariant &value,
                                bool anyValue)
{
    QTextCharFormat format;
    format.setProperty(property, value);
    clearAll(document, format, !anyValue);
}

void STextDoc::clearCommentPropertiesCursor(QTextCursor *cursor)
{
    if (!cursor)
        return;
    const Selection selection(*cursor);
    applyFormatEdits(selection.document(), collectCharacterEdits(selection, clearNoteProperties));
}

void STextDoc::clearLinkProperties(QTextCharFormat *format)
{
    if (!format)
        return;
    format->clearProperty(QTextFormat::IsAnchor);
    format->clearProperty(QTextFormat::AnchorName);
    format->clearProperty(MVRTextFormat::CoveredLinkProperty);
    if (!isNoteAnchor(format->anchorHref()))
        format->clearProperty(QTextFormat::AnchorHref);
    MVRToolkit::clearLinkLook(format);
}

void STextDoc::removeInspectorComments(QTextDocument *document)
{
    removeNotesOfKind(document, false);
}

void STextDoc::removeInspectorFootnotes(QTextDocument *document)
{
    removeNotesOfKind(document, true);
}

void STextDoc::removeInspectorCommentsAndFootnotes(QTextDocument *document)
{
    changeAllFormats(document, clearNoteProperties);
}

void STextDoc::tablesToText(QTextDocument *document)
{
    if (!document)
        return;
    const QVector<QTextTable *> tables = tablesOf(document);
    if (tables.isEmpty())
        return;
    const EditBlock undoStep(document);
    for (auto it = tables.crbegin(); it != tables.crend(); ++it)
        replaceByText(*it);
}

void STextDoc::clearDefaultTextOptionFlags(QTextDocument *document)
{
    if (!document)
        return;
    QTextOption option = document->defaultTextOption();
    if (option.flags() == 0)
        return;
    option.setFlags(QTextOption::Flags());
    document->setDefaultTextOption(option);
}

void STextDoc::normalizePageBreaks(QTextDocument *document)
{
    if (!document)
        return;
    const QVector<PageBreakEdit> edits = pageBreakEdits(document);
    if (edits.isEmpty())
        return;
    const EditBlock undoStep(document);
    QTextCursor cursor(document);
    for (const PageBreakEdit &edit : edits) {
        cursor.setPosition(edit.position);
        QTextBlockFormat format = cursor.blockFormat();
        if (edit.policy == 0)
            format.clearProperty(QTextFormat::PageBreakPolicy);
        else
            format.setPageBreakPolicy(QTextFormat::PageBreakFlags(edit.policy));
        cursor.setBlockFormat(format);
    }
}
