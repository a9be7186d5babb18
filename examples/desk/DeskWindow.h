// SPDX-License-Identifier: MIT
#pragma once

#include "Manuscript.h"

#include <text/MVRTextNote.h>

#include <QMainWindow>

class Editor;
class MVRFindBar;
class ScenesDock;
class QComboBox;
class QLabel;

/*! A window with one text, its notes in the margin. */
class DeskWindow : public QMainWindow
{
    Q_OBJECT

public:
    DeskWindow();

    Editor *editor() const { return m_editor; }
    MVRFindBar *findBar() const { return m_find; }
    /*! Opens a file in place of the one before; says so and returns false where that fails. */
    bool open(const QString &path);
    bool save(const QString &path);
    /*! Writes a file that is not opened for it: ODT, PDF. */
    bool exportAs(const QString &path);
    /*! Asks what to do with the copies that a crash left. */
    void offerRecovery();
    static void setDark(bool isDark);

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    // DeskActions.cpp: menus, and what they do to notes
    void makeActions();
    void makeViewActions(QMenu *menu);
    void makeToolBar();
    void fillRecentFiles(QMenu *menu);
    void fillColors(QMenu *menu);
    void fillElements();
    void addNote(MVRTextNote::Kind kind);
    int currentNote() const;
    void jumpToNote(int direction);
    void changeNote(const std::function<void(QTextDocument *, const MVRTextNote &)> &change);
    void encloseNotes();
    void showMarkup();

    // DeskWindow.cpp
    void start(bool isScreenplay);
    void openAfterAsking(const QString &path);
    void chooseFile();
    bool saveFile();
    bool saveAs();
    bool mayLeave();
    void rememberPlace();
    void askForExport(const QString &suffix);
    void showText();
    void followEdit();
    void showCounts();
    void refreshPages();
    void say(const QString &text);
    void complain(const QString &what, const QString &why);

    Manuscript m_file;
    Editor *m_editor;
    MVRFindBar *m_find;
    ScenesDock *m_scenes;
    QMenu *m_elements = nullptr;
    QComboBox *m_element;
    QLabel *m_counts;
    QLabel *m_pages;
    MVRRecovery *m_recovery;
    QTimer m_pagesTimer; // counts pages when nobody types
    QTimer m_countsTimer;
};
