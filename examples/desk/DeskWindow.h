// SPDX-License-Identifier: MIT
#pragma once

#include "Manuscript.h"
#include "Recovery.h"

#include <text/MVRTextNote.h>

#include <QMainWindow>

class Editor;
class FindBar;
class NotesDock;
class QComboBox;
class QLabel;
class ScenesDock;

/*! A window with one text, its notes in the margin. */
class DeskWindow : public QMainWindow
{
    Q_OBJECT

public:
    DeskWindow();
    ~DeskWindow() override;

    Editor *editor() const { return m_editor; }
    FindBar *findBar() const { return m_find; }
    /*! Opens a file in place of the one before; says so and returns false where that fails. */
    bool open(const QString &path);
    bool save(const QString &path);
    /*! Asks what to do with the copies that a crash left. */
    void offerRecovery();
    /*! Adds a note and lets the writer write it. */
    void addNote(MVRTextNote::Kind kind);
    static void setDark(bool isDark);

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    // DeskActions.cpp
    void makeActions();
    void makeViewActions(QMenu *menu);
    void fillRecentFiles(QMenu *menu);
    void fillColors(QMenu *menu);
    void fillElements(QMenu *menu);

    // DeskNotes.cpp
    int currentNote() const;
    void jumpToNote(int direction);
    void setNoteColor(const QColor &color);
    void removeNote();
    void goToCard();
    void encloseNotes();
    void askForName();
    QString author() const;

    // DeskWindow.cpp
    void start(bool isScreenplay);
    void openDialog();
    void openDropped(const QString &path);
    bool saveFile();
    bool saveAs();
    bool mayLeave();
    void rememberPlace();
    void exportFile(const QString &suffix);
    void copyBbCode();
    void showMarkup();
    void showDocument(std::unique_ptr<QTextDocument> document);
    void followEdit();
    void showCounts();
    void refreshPages();
    void complain(const QString &what, const QString &why);

    Manuscript m_file;
    Editor *m_editor;
    FindBar *m_find;
    NotesDock *m_notesDock;
    ScenesDock *m_scenesDock;
    QComboBox *m_element;
    QLabel *m_counts;
    QLabel *m_pages;
    Recovery *m_recovery;
    QTimer m_pagesTimer; // counts pages when nobody types
    QTimer m_countsTimer;
};
