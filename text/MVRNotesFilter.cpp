// SPDX-License-Identifier: MIT
#include <text/MVRNotesFilter.h>

#include <QSet>

MVRNotesFilter::MVRNotesFilter(MVRNotesModel *notes, QObject *parent)
    : QSortFilterProxyModel(parent)
    , m_notes(notes)
{
    setSourceModel(notes);
    if (notes)
        connect(notes, &MVRNotesModel::notesChanged, this, &MVRNotesFilter::changed);
}

void MVRNotesFilter::setWanted(MVRNotesModel::Column column, const QString &value)
{
    m_wanted[column] = value;
    invalidateFilter();
    Q_EMIT changed();
}

void MVRNotesFilter::setShowsResolved(bool on)
{
    m_showsResolved = on;
    invalidateFilter();
    Q_EMIT changed();
}

QStringList MVRNotesFilter::values(MVRNotesModel::Column column) const
{
    QSet<QString> known;
    for (int row = 0; m_notes && row < m_notes->rowCount(); ++row)
        known.insert(m_notes->index(row, column).data().toString());
    known.remove(QString());
    QStringList values = known.values();
    values.sort();
    return values;
}

bool MVRNotesFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    Q_UNUSED(parent)
    if (!m_showsResolved && m_notes->note(row).isResolved)
        return false;
    for (int column = 0; column < MVRNotesModel::columns; ++column) {
        if (!m_wanted[column].isEmpty()
            && m_notes->index(row, column).data().toString() != m_wanted[column])
            return false;
    }
    return true;
}

MVRTextNote MVRNotesFilter::note(int row) const
{
    return !m_notes ? MVRTextNote() : m_notes->note(mapToSource(index(row, 0)).row());
}

int MVRNotesFilter::firstFrom(int position) const
{
    int first = 0;
    int last = rowCount();
    while (first < last) {
        const int middle = first + (last - first) / 2;
        if (index(middle, 0).data(MVRNotesModel::StartRole).toInt() < position)
            first = middle + 1;
        else
            last = middle;
    }
    return first;
}
