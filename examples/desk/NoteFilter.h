// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRNotesModel.h>

#include <QSortFilterProxyModel>

/*! The notes that are to be seen, in the order of the text: by kind, author and colour. */
class NoteFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    NoteFilter(MVRNotesModel *notes, QObject *parent);

    /*! Shows notes with this value in a column only; an empty value shows all. */
    void setWanted(MVRNotesModel::Column column, const QString &value);
    /*! The values that notes have in a column, each once, with nothing for "all" in front. */
    QStringList values(MVRNotesModel::Column column) const;

    MVRTextNote note(int row) const;
    /*! The first row of a note that begins at \a position or behind it. */
    int firstFrom(int position) const;

    /*! Other notes are to be seen, or the same at other places. */
    Q_SIGNAL void changed();

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    QString value(int row, int column) const;

    MVRNotesModel *m_notes;
    QString m_wanted[MVRNotesModel::columns];
};
