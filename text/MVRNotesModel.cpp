// SPDX-License-Identifier: MIT
#include <text/MVRNotesModel.h>

#include <core/document/ChangedText_p.h>
#include <text/MVRTextDoc.h>

#include <QAbstractTextDocumentLayout>
#include <QLocale>
#include <QTextDocument>

#include <algorithm>
#include <iterator>

namespace {

constexpr const char *kindNames[]
    = {QT_TRANSLATE_NOOP("QObject", "Comment"), QT_TRANSLATE_NOOP("QObject", "Footnote"),
       QT_TRANSLATE_NOOP("QObject", "Inline annotation"),
       QT_TRANSLATE_NOOP("QObject", "Inline footnote")};

constexpr const char *columnNames[]
    = {QT_TRANSLATE_NOOP("QObject", "Kind"),   QT_TRANSLATE_NOOP("QObject", "Text"),
       QT_TRANSLATE_NOOP("QObject", "Note"),   QT_TRANSLATE_NOOP("QObject", "Color"),
       QT_TRANSLATE_NOOP("QObject", "Author"), QT_TRANSLATE_NOOP("QObject", "Date")};
static_assert(std::size(columnNames) == MVRNotesModel::columns, "each column has a name");

bool isSameNote(const MVRTextNote &a, const MVRTextNote &b)
{
    return a.kind == b.kind && a.anchor == b.anchor && a.isInline() == b.isInline();
}

bool isEqual(const MVRTextNote &a, const MVRTextNote &b)
{
    return isSameNote(a, b) && a.range == b.range && a.color == b.color && a.author == b.author
        && a.date == b.date && a.cdata == b.cdata && a.isResolved == b.isResolved;
}

MVRTextNote moved(MVRTextNote note, int by)
{
    note.range.start += by;
    note.range.end += by;
    return note;
}

} // namespace

MVRNotesModel::MVRNotesModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

MVRNotesModel::~MVRNotesModel() = default;

void MVRNotesModel::setDocument(QTextDocument *document)
{
    if (m_document)
        m_document->disconnect(this);
    m_document = document;
    if (document) {
        document->documentLayout();
        connect(document, &QTextDocument::contentsChange, this, &MVRNotesModel::follow);
        connect(document, &QObject::destroyed, this, &MVRNotesModel::reset);
    }
    reset();
}

QTextDocument *MVRNotesModel::document() const
{
    return m_document;
}

void MVRNotesModel::reset()
{
    beginResetModel();
    m_rows.clear();
    const MVRTextNotes notes = MVRTextDoc::notes(m_document);
    m_rows.reserve(size_t(notes.size()));
    for (const MVRTextNote &note : notes)
        m_rows.push_back({note, QString(), false});
    endResetModel();
    Q_EMIT notesChanged();
}

MVRTextNote MVRNotesModel::note(int row) const
{
    return row >= 0 && row < rowCount() ? m_rows[size_t(row)].note : MVRTextNote();
}

int MVRNotesModel::rowAt(int position) const
{
    int found = -1;
    for (size_t row = 0; row < m_rows.size(); ++row) {
        const MVRTextRange &range = m_rows[row].note.range;
        if (range.start > position)
            break;
        if (range.end > position)
            found = int(row); // a later one begins later: it lies inside
    }
    return found;
}

int MVRNotesModel::rowOf(const MVRTextNote &note) const
{
    int found = -1;
    for (size_t row = 0; row < m_rows.size(); ++row) {
        const MVRTextNote &other = m_rows[row].note;
        if (!isSameNote(other, note) || other.cdata != note.cdata)
            continue;
        found = int(row);
        if (other.range == note.range)
            break;
    }
    return found;
}

int MVRNotesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int MVRNotesModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columns;
}

QString MVRNotesModel::content(const Row &row) const
{
    // What an inline note says is text of the document, which changes without the note's record.
    if (row.note.isInline())
        return row.note.contentText(*m_document);
    if (!row.hasContent) {
        row.content = row.note.contentText(*m_document);
        row.hasContent = true;
    }
    return row.content;
}

QVariant MVRNotesModel::text(const Row &row, int column) const
{
    switch (column) {
    case KindColumn:
        return QObject::tr(kindNames[row.note.kind]);
    case TextColumn:
        return row.note.text(*m_document);
    case ContentColumn:
        return content(row);
    case ColorColumn:
        return row.note.color.isValid() ? row.note.color.name() : QString();
    case AuthorColumn:
        return row.note.author;
    default:
        return QLocale().toString(row.note.date, QLocale::ShortFormat);
    }
}

QVariant MVRNotesModel::data(const QModelIndex &index, int role) const
{
    if (!m_document || !index.isValid() || index.row() >= rowCount())
        return QVariant();
    const Row &row = m_rows[size_t(index.row())];
    switch (role) {
    case StartRole:
        return row.note.range.start;
    case EndRole:
        return row.note.range.end;
    case ResolvedRole:
        return row.note.isResolved;
    case SortRole:
        if (index.column() == KindColumn)
            return int(row.note.kind);
        if (index.column() == DateColumn)
            return row.note.date;
        return text(row, index.column());
    case Qt::DisplayRole:
        return text(row, index.column());
    case Qt::DecorationRole:
        if (index.column() == ColorColumn && row.note.color.isValid())
            return row.note.color;
        break;
    default:
        break;
    }
    return QVariant();
}

QVariant MVRNotesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0
        || section >= columns)
        return QAbstractTableModel::headerData(section, orientation, role);
    return QObject::tr(columnNames[section]);
}

void MVRNotesModel::follow(int position, int removed, int added)
{
    // Qt counts the document's closing paragraph in when everything is replaced.
    const int most = m_document->characterCount() - position;
    added = qMin(added, most);
    const int more = qMin(leftOutOfChange(*m_document, position, added), most - added);
    const Edit edit {position, removed + more, added + more};
    const Span span = changedSpan(edit);
    followEdit(span.last, edit);
    if (replaceRows(span, edit))
        Q_EMIT notesChanged();
    if (edit.growth() != 0 && span.first < rowCount())
        Q_EMIT notesMoved(span.first);
}

/*!
    The rows that an edit may have changed, and the notes that stand there now.

    Notes that the edit touches count whole; what is listed behind the edit may reach further than
    the notes before it did, since text that is removed joins what stood apart.
*/
MVRNotesModel::Span MVRNotesModel::changedSpan(const Edit &edit) const
{
    Span span {int(m_rows.size()), 0, {}};
    int start = edit.position; // both as they were before the edit
    int end = edit.oldEnd();
    int listedEnd = edit.newEnd() + 1;
    for (bool isSettled = false; !isSettled;) {
        isSettled = true;
        for (int row = 0; row < int(m_rows.size()); ++row) {
            const MVRTextRange &range = m_rows[size_t(row)].note.range;
            if (range.start > qMax(edit.oldEnd(), end) && row >= span.last)
                break; // those behind begin later still
            const bool isTouched = range.end >= edit.position && range.start <= edit.oldEnd();
            const bool isInside = range.end > start && range.start < end;
            const bool isBetween = row >= span.first && row < span.last;
            if (!isTouched && !isInside && !isBetween)
                continue;
            isSettled = isSettled && row >= span.first && row < span.last && range.start >= start
                && range.end <= end;
            span.first = qMin(span.first, row);
            span.last = qMax(span.last, row + 1);
            start = qMin(start, range.start);
            end = qMax(end, range.end);
        }
        listedEnd = qMax(listedEnd, end + edit.growth());
        span.notes = MVRTextDoc::notes(m_document, start, listedEnd);
        for (const MVRTextNote &note : qAsConst(span.notes)) {
            const int oldEnd = note.range.end - edit.growth();
            isSettled = isSettled && note.range.start >= start
                && (oldEnd <= end || note.range.end <= edit.newEnd());
            start = qMin(start, note.range.start);
            if (note.range.end > edit.newEnd())
                end = qMax(end, oldEnd);
        }
    }
    if (span.last == 0) { // none was there: what came stands before the first row behind it
        const auto behind = std::lower_bound(
            m_rows.cbegin(), m_rows.cend(), edit.oldEnd(),
            [](const Row &row, int position) { return row.note.range.start < position; });
        span.first = span.last = int(behind - m_rows.cbegin());
    }
    return span;
}

void MVRNotesModel::followEdit(int from, const Edit &edit)
{
    if (edit.growth() == 0)
        return;
    for (size_t row = size_t(from); row < m_rows.size(); ++row) {
        m_rows[row].note.range.start += edit.growth();
        m_rows[row].note.range.end += edit.growth();
    }
}

/*! Puts the notes of \a span into the model; false when they are what stood there. */
bool MVRNotesModel::replaceRows(const Span &span, const Edit &edit)
{
    const auto isWhatStood = [&edit](const MVRTextNote &old, const MVRTextNote &note) {
        if (old.range.end < edit.position)
            return isEqual(old, note);
        return old.range.start > edit.oldEnd() && isEqual(moved(old, edit.growth()), note);
    };
    int front = 0; // notes that stay rows, at both ends
    int back = 0;
    const int oldCount = span.last - span.first;
    const int newCount = int(span.notes.size());
    const int shared = qMin(oldCount, newCount);
    const auto rowAt = [this](int row) -> Row & { return m_rows[size_t(row)]; };
    while (front < shared && isSameNote(rowAt(span.first + front).note, span.notes[front]))
        ++front;
    while (back < shared - front
           && isSameNote(rowAt(span.last - 1 - back).note, span.notes[newCount - 1 - back]))
        ++back;

    bool isChanged = false;
    const auto take = [&](int row, const MVRTextNote &note) {
        const bool isKept = isWhatStood(rowAt(row).note, note);
        const bool isContentKept = rowAt(row).note.cdata == note.cdata;
        rowAt(row).note = note;
        rowAt(row).hasContent = rowAt(row).hasContent && isContentKept;
        if (isKept)
            return;
        isChanged = true;
        Q_EMIT dataChanged(index(row, 0), index(row, columns - 1));
    };
    for (int i = 0; i < front; ++i)
        take(span.first + i, span.notes[i]);
    for (int i = 0; i < back; ++i)
        take(span.last - 1 - i, span.notes[newCount - 1 - i]);

    const int first = span.first + front;
    if (front + back < oldCount) {
        beginRemoveRows(QModelIndex(), first, span.last - back - 1);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + span.last - back);
        endRemoveRows();
        isChanged = true;
    }
    if (front + back < newCount) {
        beginInsertRows(QModelIndex(), first, first + newCount - front - back - 1);
        std::vector<Row> rows;
        for (int i = front; i < newCount - back; ++i)
            rows.push_back({span.notes[i], QString(), false});
        m_rows.insert(m_rows.begin() + first, rows.begin(), rows.end());
        endInsertRows();
        isChanged = true;
    }
    return isChanged;
}
