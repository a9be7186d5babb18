// SPDX-License-Identifier: MIT
#include <tool/pages/PageNotes.h>

#include <tool/pages/PageFloats.h>
#include <tool/pages/PageText.h>
#include <tool/pages/PageWidths.h>

#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>
#include <core/STextDoc.h>
#include <core/document/LongParagraphs_p.h>
#include <text/MVRTextDoc.h>

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>

namespace {

constexpr double maxNoteSize = 10.0; // points
const QColor defaultColor(255, 236, 139); // of comments that have none

QTextCharFormat numberFormat(const QTextCharFormat &around)
{
    QTextCharFormat format;
    const QString family = MVRToolkit::fontFamily(around);
    if (!family.isEmpty())
        MVRToolkit::setFontFamily(&format, family);
    if (around.fontPointSize() > 0.0)
        format.setFontPointSize(around.fontPointSize());
    format.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
    return format;
}

// Notes are never larger than what they are about.
double noteSize(QTextDocument &text, const MVRTextNote &note)
{
    const double size = note.range.toTextCursor(&text).charFormat().fontPointSize();
    return size > 0.0 ? qMin(size, maxNoteSize) : maxNoteSize;
}

std::unique_ptr<OfflineDocument> noteText(const PageFootnote &note, const QFont &font)
{
    auto text = std::make_unique<OfflineDocument>();
    text->setUndoRedoEnabled(false);
    text->setDefaultFont(font);
    if (!MVRTextRtf::fromRtfCData(note.cdata, text.get()))
        text->clear();
    QTextCursor cursor(text.get());
    cursor.select(QTextCursor::Document);
    QTextCharFormat size;
    size.setFontPointSize(note.fontSize);
    cursor.mergeCharFormat(size);
    cursor.movePosition(QTextCursor::Start);
    QTextCharFormat format = numberFormat(cursor.block().charFormat());
    format.setFontPointSize(note.fontSize);
    cursor.insertText(note.number, format);
    if (!text->characterAt(cursor.position()).isSpace())
        cursor.insertText(QStringLiteral(" "), format);
    return text;
}

/*! Behind the last item that stays with that at \a first. */
int endOfPart(const QVector<FlowItem> &items, int first)
{
    int end = first + 1;
    while (end < items.size() && !items[end].mayStartPage)
        ++end;
    return end;
}

double heightOf(const QVector<FlowItem> &items, int first, int end)
{
    return items[end - 1].bottom - items[first].top;
}

/*! Where the numbers of footnotes go, and where all else is once they stand. */
class NumberPlaces
{
public:
    /*! Adds a number at \a position, none before the last one; \return it. */
    QString add(int position)
    {
        const QString number = QString::number(m_positions.size() + 1);
        m_positions.append(m_positions.isEmpty() ? position : qMax(position, m_positions.last()));
        m_shifts.append(m_shifts.last() + number.size());
        return number;
    }

    void insertNumbers(QTextDocument &text) const
    {
        QTextCursor cursor(&text);
        cursor.beginEditBlock();
        for (int i = m_positions.size() - 1; i >= 0; --i) {
            cursor.setPosition(m_positions[i]);
            cursor.insertText(QString::number(i + 1), numberFormat(cursor.charFormat()));
        }
        cursor.endEditBlock();
    }

    int placeOf(int index) const { return m_positions[index] + m_shifts[index]; }

    int shifted(int position) const
    {
        const auto behind = std::upper_bound(m_positions.cbegin(), m_positions.cend(), position);
        return position + m_shifts[int(behind - m_positions.cbegin())];
    }

private:
    QVector<int> m_positions; // while no number stands
    QVector<int> m_shifts = {0}; // letters that the first so many numbers have
};

}

PageNotes takeNotes(QTextDocument &text)
{
    const MVRTextNotes listed = MVRTextDoc::notes(&text);
    PageNotes notes;
    NumberPlaces places;
    for (const MVRTextNote &note : listed) {
        if (note.kind == MVRTextNote::Comment) {
            notes.comments.push_back({note.range.start, note.range.end,
                                      note.contentText(text).trimmed(), note.author,
                                      note.color.isValid() ? note.color : defaultColor, note.date});
        } else if (note.kind == MVRTextNote::Footnote) {
            PageFootnote footnote;
            footnote.number = places.add(note.range.end);
            footnote.cdata = note.cdata;
            footnote.fontSize = noteSize(text, note);
            notes.footnotes.push_back(footnote);
        }
    }
    STextDoc::removeInspectorCommentsAndFootnotes(&text);
    places.insertNumbers(text);
    for (size_t i = 0; i < notes.footnotes.size(); ++i)
        notes.footnotes[i].position = places.placeOf(int(i));
    for (PageComment &comment : notes.comments) {
        comment.start = places.shifted(comment.start);
        comment.end = places.shifted(comment.end - 1) + 1;
    }
    return notes;
}

NoteLayout::NoteLayout(const QFont &font, const QSizeF &room, double unitsPerPoint)
    : m_font(font)
    , m_room(room)
    , m_unitsPerPoint(unitsPerPoint)
{
}

const NoteLayout::Note *NoteLayout::layOut(const PageFootnote &note)
{
    if (m_number != note.number) {
        m_note = {noteText(note, m_font), {}};
        m_number = note.number;
        if (!prepare(*m_note.text))
            m_note = {};
        else
            m_note.items = itemsOf(*m_note.text);
    }
    return m_note.text ? &m_note : nullptr;
}

QVector<double> NoteLayout::cuts(const Note &note) const
{
    QVector<double> cuts;
    for (int first = 0; first < note.items.size();) {
        const int end = endOfPart(note.items, first);
        const bool hasRoom = heightOf(note.items, first, end) <= m_room.height();
        for (int i = first; i < (hasRoom ? first + 1 : end); ++i)
            cuts.append(note.items[i].top);
        first = end;
    }
    return cuts;
}

/*! The rows of tables without room become paragraphs, which pages can part. */
QVector<FlowItem> NoteLayout::itemsOf(QTextDocument &text) const
{
    const QVector<FlowItem> items = flowItems(text);
    for (int first = 0; first < items.size();) {
        const int end = endOfPart(items, first);
        const bool hasRow
            = std::any_of(items.cbegin() + first, items.cbegin() + end,
                          [](const FlowItem &item) { return !item.columns.isEmpty(); });
        if (hasRow && heightOf(items, first, end) > m_room.height()) {
            STextDoc::tablesToText(&text);
            text.documentLayout()->documentSize();
            keepLongParagraphs(text);
            return flowItems(text);
        }
        first = end;
    }
    return items;
}

/*! \return false for a text that is too high */
bool NoteLayout::prepare(QTextDocument &text) const
{
    breakLongWords(text);
    preparePageText(text, {m_room.width(), 0.0}, m_unitsPerPoint);
    fitPagePictures(text, m_room, m_unitsPerPoint);
    if (!setLongPage(text, m_room.width(), m_unitsPerPoint))
        return false;
    text.documentLayout()->documentSize();
    if (takePicturesFromTables(text, m_room.width()))
        text.documentLayout()->documentSize();
    if (keepTablesOnPage(text, {m_room.width(), 0.0}))
        text.documentLayout()->documentSize();
    keepLongParagraphs(text);
    return true;
}
