// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRNotesModel.h>

#include <QWidget>

class MVRNotesFilter;
class QFormLayout;

/*! All notes as a list, with the choice which of them are to be seen, here and in a margin. */
class MVRNotesList : public QWidget
{
    Q_OBJECT

public:
    /*! \param filter  which notes are seen, not null; the choice changes it */
    explicit MVRNotesList(MVRNotesFilter *filter, QWidget *parent = nullptr);

Q_SIGNALS:
    /*! Somebody wants to go to the note at a position of the text. */
    void chosen(int position);

private:
    void addChoice(QFormLayout *layout, const QString &name, MVRNotesModel::Column column);

    MVRNotesFilter *m_filter;
};
