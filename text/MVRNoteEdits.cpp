// SPDX-License-Identifier: MIT
#include <text/MVRNoteEdits.h>

#include <core/MVRFormat.h>
#include <core/MVRTextUtil.h>
#include <core/STextDoc.h>
#include <core/document/EditBlock_p.h>
#include <core/document/FormatEdits_p.h>
#include <text/MVRTextDoc.h>

#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

QTextCursor word(const QTextCursor &at)
{
    for (const auto direction : {MVRTextUtil::Backward, MVRTextUtil::Forward}) {
        const QTextCursor found = MVRTextUtil::closestWordCursor(at, true, direction, nullptr);
        if (found.hasSelection())
            return found;
    }
    return at;
}

void markResolved(QTextDocument *document, const MVRTextNote &note, bool isResolved)
{
    QTextCharFormat mark;
    mark.setProperty(MVRTextFormat::CommentResolvedProperty, isResolved);
    const MVRTextRange range(note.range.toTextCursor(document)); // within the document
    QTextCursor text(document);
    mergeIntoRange(text, range.start, range.end, mark);
}

void attach(QTextDocument *document, const MVRTextNote &note)
{
    MVRTextCommentLink link;
    link.isFootnote = note.isFootnote();
    link.color = note.color;
    link.cdata = note.cdata;
    MVRTextDoc::setComment(note.range.toTextCursor(document), link, note.author, note.date);
    if (note.isResolved) // which a note that is written anew is not
        markResolved(document, note, true);
}

// A null cursor stands for the whole document.
QTextCursor scope(const QTextCursor &selection)
{
    return selection.hasSelection() ? selection : QTextCursor();
}

} // namespace

MVRTextRange MVRNoteEdits::add(QTextCursor at, MVRTextNote::Kind kind, const QString &author)
{
    if (at.isNull()) // one whose document is gone, too, which says that it has a selection
        return MVRTextRange();
    if (!at.hasSelection())
        at = word(at);
    if (!at.hasSelection())
        return MVRTextRange();
    const MVRTextRange range(at.selectionStart(), at.selectionEnd());
    const EditBlock undoStep(at.document());
    if (MVRTextNote::isInline(kind)) {
        MVRTextDoc::setInlineFootnoteAnnotation(at, MVRTextNote::isFootnote(kind), true);
        return range;
    }
    MVRTextNote note;
    note.kind = kind;
    note.range = range;
    note.author = author;
    note.date = QDateTime::currentDateTime();
    attach(at.document(), note);
    return range;
}

void MVRNoteEdits::setContent(QTextDocument *document, const MVRTextNote &note,
                              const QByteArray &rtf)
{
    if (!document || note.isInline() || note.cdata == rtf)
        return;
    MVRTextNote changed = note;
    changed.cdata = rtf;
    const EditBlock undoStep(document);
    attach(document, changed);
}

void MVRNoteEdits::setColor(QTextDocument *document, const MVRTextNote &note, const QColor &color)
{
    if (!document || note.kind != MVRTextNote::Comment || note.color == color)
        return;
    MVRTextNote changed = note;
    changed.color = color;
    const EditBlock undoStep(document);
    attach(document, changed);
}

void MVRNoteEdits::setResolved(QTextDocument *document, const MVRTextNote &note, bool isResolved)
{
    if (!document || note.isInline() || note.isResolved == isResolved)
        return;
    const EditBlock undoStep(document);
    markResolved(document, note, isResolved);
}

void MVRNoteEdits::remove(QTextDocument *document, const MVRTextNote &note)
{
    if (!document)
        return;
    QTextCursor cursor = note.range.toTextCursor(document);
    const EditBlock undoStep(document);
    if (note.isInline())
        MVRTextDoc::removeInlineNotes(document, MVRTextNote::property(note.kind), cursor);
    else
        MVRTextDoc::removeComment(cursor);
}

void MVRNoteEdits::moveToText(QTextDocument *document, const QTextCursor &selection)
{
    if (!document)
        return;
    const QTextCursor where = scope(selection);
    const EditBlock undoStep(document);
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, where);
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(document, where);
}

void MVRNoteEdits::moveToMargin(QTextDocument *document, const QTextCursor &selection)
{
    if (!document)
        return;
    const QTextCursor where = scope(selection);
    const EditBlock undoStep(document);
    MVRTextDoc::moveInlineBesideText(document, MVRTextFormat::InlineAnnotationProperty, false, true,
                                     where);
    MVRTextDoc::moveInlineBesideText(document, MVRTextFormat::InlineFootnoteProperty, true, true,
                                     where);
}

void MVRNoteEdits::trim(QTextDocument *document)
{
    if (!document)
        return;
    const EditBlock undoStep(document);
    for (const MVRTextNote::Kind kind : MVRTextNote::allKinds) {
        const int property = MVRTextNote::property(kind);
        if (MVRTextNote::isInline(kind))
            MVRTextDoc::trimInlineNotes(document, property, true, 0, 0, QTextCursor());
        else
            MVRTextDoc::trimInspectorNotes(document, property, true, 0, 0);
    }
}

void MVRNoteEdits::enclose(QTextDocument *document, const QString &opening, const QString &closing)
{
    if (!document)
        return;
    const EditBlock undoStep(document);
    MVRTextDoc::encloseAnnotations(document, opening, closing, true);
}

void MVRNoteEdits::footnotesToEndNotes(QTextDocument *document)
{
    if (!document)
        return;
    const EditBlock undoStep(document);
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(document, QTextCursor());
    MVRTextDoc::trimInlineNotes(document, MVRTextFormat::InlineFootnoteProperty, false, 0, 0,
                                QTextCursor());
    QTextCharFormat plain; // where the notes stand now they are text like any other
    plain.setProperty(MVRTextFormat::InlineFootnoteProperty, false);
    QTextDocument list;
    list.setUndoRedoEnabled(false);
    QTextCursor end(&list);
    int number = 0;
    MVRTextDoc::inlineFootnotesToEndNotes(
        document, 1, plain, MVRFormat(), [&](const QTextDocumentFragment &note) {
            if (number > 0)
                end.insertBlock(QTextBlockFormat(), QTextCharFormat());
            end.insertText(QStringLiteral("%1. ").arg(++number), QTextCharFormat());
            MVRTextDoc::appendFragment(end, note);
        });
    // The numbers are no footnotes.
    STextDoc::clearAllProperty(document, MVRTextFormat::InlineFootnoteProperty, true, true);
    if (number == 0)
        return;
    QTextCursor behind(document);
    behind.movePosition(QTextCursor::End);
    behind.insertBlock(QTextBlockFormat(), QTextCharFormat());
    behind.insertFragment(QTextDocumentFragment(&list));
}
