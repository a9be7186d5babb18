// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>

class Editor;
class QListWidget;

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
