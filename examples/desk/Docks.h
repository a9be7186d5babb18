// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRNotesModel.h>

#include <QDockWidget>

class Editor;
class QComboBox;
class QFormLayout;
class QListWidget;

/*! All notes as a list, with the choice which of them are to be seen here and in the margin. */
class NotesDock : public QDockWidget
{
    Q_OBJECT

public:
    NotesDock(Editor *editor, QWidget *parent);

private:
    void addChoice(QFormLayout *layout, const QString &name, MVRNotesModel::Column column);

    Editor *m_editor;
};

/*! The scenes of a screenplay. */
class ScenesDock : public QDockWidget
{
    Q_OBJECT

public:
    ScenesDock(Editor *editor, QWidget *parent);

    /*! Lists the scenes anew; for a time when nobody types. */
    void refresh();

private:
    Editor *m_editor;
    QListWidget *m_list;
};
