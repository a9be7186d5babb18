// SPDX-License-Identifier: MIT
#include "NoteEdits.h"

#include <core/MVRFormat.h>
#include <core/MVRTextUtil.h>
#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

class UndoStep
{
public:
    explicit UndoStep(QTextDocument *document)
        : m_cursor(document)
    {
        m_cursor.beginEditBlock();
    }
    ~UndoStep() { m_cursor.endEditBlock(); }
    Q_DISABLE_COPY_MOVE(UndoStep)

private:
    QTextCursor m_cursor;
};

QTextCursor word(const QTextCursor &at)
{
    for (const auto direction : {MVRTextUtil::Backward, MVRTextUtil::Forward}) {
        const QTextCursor found = MVRTextUtil::closestWordCursor(at, true, direction, nullptr);
        if (found.hasSelection())
            return found;
    }
    return at;
}

void attach(QTextDocument *document, const MVRTextNote &note)
{
    MVRTextCommentLink link;
    link.isFootnote = note.isFootnote();
    link.color = note.color;
    link.cdata = note.cdata;
    MVRTextDoc::setComment(note.range.toTextCursor(document), link, note.author, note.date);
}

// A null cursor stands for the whole document.
QTextCursor scope(const QTextCursor &selection)
{
    return selection.hasSelection() ? selection : QTextCursor();
}

} // namespace

MVRTextRange NoteEdits::add(QTextCursor at, MVRTextNote::Kind kind, const QString &author)
{
    if (!at.hasSelection())
        at = word(at);
    if (!at.hasSelection())
        return MVRTextRange();
    const MVRTextRange range(at.selectionStart(), at.selectionEnd());
    const UndoStep step(at.document());
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

void NoteEdits::setContent(QTextDocument *document, const MVRTextNote &note, const QByteArray &rtf)
{
    MVRTextNote changed = note;
    changed.cdata = rtf;
    const UndoStep step(document);
    attach(document, changed);
}

void NoteEdits::setColor(QTextDocument *document, const MVRTextNote &note, const QColor &color)
{
    MVRTextNote changed = note;
    changed.color = color;
    const UndoStep step(document);
    attach(document, changed);
}

void NoteEdits::remove(QTextDocument *document, const MVRTextNote &note)
{
    QTextCursor cursor = note.range.toTextCursor(document);
    const UndoStep step(document);
    if (note.isInline())
        MVRTextDoc::removeInlineNotes(document, MVRTextNote::property(note.kind), cursor);
    else
        MVRTextDoc::removeComment(cursor);
}

void NoteEdits::moveToText(QTextDocument *document, const QTextCursor &selection)
{
    const QTextCursor where = scope(selection);
    const UndoStep step(document);
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, where);
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(document, where);
}

void NoteEdits::moveToMargin(QTextDocument *document, const QTextCursor &selection)
{
    const QTextCursor where = scope(selection);
    const UndoStep step(document);
    MVRTextDoc::convertInlineAnnotationsToInspectorComments(document, true, where);
    MVRTextDoc::convertInlineFootnotesToInspectorFootnotes(document, true, where);
}

void NoteEdits::trim(QTextDocument *document)
{
    const UndoStep step(document);
    for (const MVRTextNote::Kind kind : MVRTextNote::allKinds) {
        const int property = MVRTextNote::property(kind);
        if (MVRTextNote::isInline(kind))
            MVRTextDoc::trimInlineNotes(document, property, true, 0, 0, QTextCursor());
        else
            MVRTextDoc::trimInspectorNotes(document, property, true, 0, 0);
    }
}

void NoteEdits::enclose(QTextDocument *document, const QString &opening, const QString &closing)
{
    const UndoStep step(document);
    MVRTextDoc::encloseAnnotations(document, opening, closing, true);
}

void NoteEdits::footnotesToEndNotes(QTextDocument *document)
{
    const UndoStep step(document);
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(document, QTextCursor());
    MVRTextDoc::trimInlineNotes(document, MVRTextFormat::InlineFootnoteProperty, false, 0, 0,
                                QTextCursor());
    QTextCharFormat plain; // where the notes stand now they are text like any other
    plain.setProperty(MVRTextFormat::InlineFootnoteProperty, false);
    const QList<QTextDocumentFragment> notes
        = MVRTextDoc::inlineFootnotesToEndNotes(document, 1, plain, MVRFormat());
    // The numbers are no footnotes.
    STextDoc::clearAllProperty(document, MVRTextFormat::InlineFootnoteProperty, true, true);
    QTextCursor end(document);
    for (int i = 0; i < notes.size(); ++i) {
        end.movePosition(QTextCursor::End);
        end.insertBlock(QTextBlockFormat(), QTextCharFormat());
        end.insertText(QStringLiteral("%1. ").arg(i + 1));
        MVRTextDoc::appendFragment(end, notes[i]);
    }
}
