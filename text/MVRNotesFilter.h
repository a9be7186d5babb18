// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRNotesModel.h>

#include <QPointer>
#include <QSortFilterProxyModel>

/*!
    The notes that a reader wants to see: of one kind, author or colour, with those that are
    resolved or without. They stay in the order of the text as long as nobody sorts them.
*/
class MVRTEXT_EXPORT MVRNotesFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /*! All notes of \a notes, which is not owned; none for null, and when it is gone. */
    explicit MVRNotesFilter(MVRNotesModel *notes, QObject *parent = nullptr);

    /*! All notes; null when they are gone. */
    MVRNotesModel *notes() const { return m_notes; }

    /*! Shows notes with this text in a column only; an empty one shows all. */
    void setWanted(MVRNotesModel::Column column, const QString &value);
    /*! The texts that notes have in a column, sorted, each once; none that are empty. */
    QStringList values(MVRNotesModel::Column column) const;
    /*! Whether notes that are resolved are shown; true before the first call. */
    void setShowsResolved(bool on);

    /*! The note of a row; a default one for a bad row. */
    MVRTextNote note(int row) const;
    /*!
        The first row whose note begins at \a position or behind it; rowCount() when there is none.
        Of use as long as nobody sorts; costs a binary search.
    */
    int firstFrom(int position) const;

Q_SIGNALS:
    /*! Other notes are shown, or the same ones changed. */
    void changed();

protected:
    /*! Whether the note of a row of the model is one of those that are wanted. */
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    QPointer<MVRNotesModel> m_notes;
    QString m_wanted[MVRNotesModel::columns];
    bool m_showsResolved = true;
};
