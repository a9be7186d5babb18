// SPDX-License-Identifier: MIT
#include "NoteFilter.h"

#include <QSet>

NoteFilter::NoteFilter(MVRNotesModel *notes, QObject *parent)
    : QSortFilterProxyModel(parent)
    , m_notes(notes)
{
    setSourceModel(notes);
    connect(notes, &MVRNotesModel::notesChanged, this, &NoteFilter::changed);
}

QString NoteFilter::value(int row, int column) const
{
    return m_notes->index(row, column).data().toString();
}

void NoteFilter::setWanted(MVRNotesModel::Column column, const QString &value)
{
    m_wanted[column] = value;
    invalidateFilter();
    Q_EMIT changed();
}

QStringList NoteFilter::values(MVRNotesModel::Column column) const
{
    QStringList values;
    QSet<QString> known;
    for (int row = 0; row < m_notes->rowCount(); ++row) {
        const QString one = value(row, column);
        if (!one.isEmpty() && !known.contains(one))
            values += one;
        known.insert(one);
    }
    values.sort();
    values.prepend(QString());
    return values;
}

bool NoteFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    Q_UNUSED(parent)
    for (const int column : {int(MVRNotesModel::KindColumn), int(MVRNotesModel::AuthorColumn),
                             int(MVRNotesModel::ColorColumn)}) {
        if (!m_wanted[column].isEmpty() && value(row, column) != m_wanted[column])
            return false;
    }
    return true;
}

MVRTextNote NoteFilter::note(int row) const
{
    return m_notes->note(mapToSource(index(row, 0)).row());
}

int NoteFilter::firstFrom(int position) const
{
    int first = 0;
    int last = rowCount();
    while (first < last) {
        const int middle = (first + last) / 2;
        if (index(middle, 0).data(MVRNotesModel::StartRole).toInt() < position)
            first = middle + 1;
        else
            last = middle;
    }
    return first;
}
