// SPDX-License-Identifier: MIT
#include <fuzz/Operations.h>

#include <text/MVRNoteEdits.h>
#include <text/MVRTextDoc.h>

#include <QColor>

namespace {

/*! One of the document's notes; one that is nowhere where there is none. */
MVRTextNote note(Call &call)
{
    const MVRTextNotes notes = MVRTextDoc::notes(&call.document);
    return notes.value(call.bytes.upTo(qMax(0, int(notes.size()) - 1)));
}

void add(Call &call)
{
    const MVRTextNote::Kind kind = MVRTextNote::allKinds[call.bytes.byte() % 4];
    MVRNoteEdits::add(call.cursor, kind, call.bytes.text(9));
}

void setContent(Call &call)
{
    const QByteArray text = call.bytes.line(30);
    MVRNoteEdits::setContent(&call.document, note(call), "{\\rtf1 " + text + "}");
}

void setColor(Call &call)
{
    const QColor color
        = call.bytes.flag() ? QColor::fromRgb(QRgb(call.bytes.byte()) << 8) : QColor();
    MVRNoteEdits::setColor(&call.document, note(call), color);
}

void setResolved(Call &call)
{
    MVRNoteEdits::setResolved(&call.document, note(call), call.bytes.flag());
}

void remove(Call &call)
{
    MVRNoteEdits::remove(&call.document, note(call));
}

void enclose(Call &call)
{
    const QString opening = call.bytes.text(3);
    MVRNoteEdits::enclose(&call.document, opening, call.bytes.text(3));
}

template <void (*Edit)(QTextDocument *, const QTextCursor &)> void move(Call &call)
{
    Edit(&call.document, call.cursor);
}

template <void (*Edit)(QTextDocument *)> void change(Call &call)
{
    Edit(&call.document);
}

} // namespace

const QVector<Operation> &operationsAndNoteEdits()
{
    static const QVector<Operation> table = operations()
        + QVector<Operation> {
            {"add note", Operation::EditsAsOne, add},
            {"set content", Operation::EditsAsOne, setContent},
            {"set color", Operation::EditsAsOne, setColor},
            {"set resolved", Operation::EditsAsOne, setResolved},
            {"remove note", Operation::EditsAsOne, remove},
            {"notes to text", Operation::EditsAsOne, move<MVRNoteEdits::moveToText>},
            {"notes to margin", Operation::EditsAsOne, move<MVRNoteEdits::moveToMargin>},
            {"trim notes", Operation::EditsAsOne, change<MVRNoteEdits::trim>},
            {"enclose", Operation::EditsAsOne, enclose},
            {"end notes", Operation::EditsAsOne, change<MVRNoteEdits::footnotesToEndNotes>},
        };
    return table;
}
