// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>
#include <QTimer>

class Editor;
class QComboBox;
class QListWidget;
class QTreeView;

/*! All notes as a list, with the choice which of them are to be seen here and in the margin. */
class NotesDock : public QDockWidget
{
    Q_OBJECT

public:
    NotesDock(Editor *editor, QWidget *parent);

private:
    QComboBox *addChoice(int column, const QString &name);
    void fill(QComboBox *choice, int column);

    Editor *m_editor;
    QTreeView *m_list;
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
