// SPDX-License-Identifier: MIT
// The window's menus, a row for each command, and what they do to notes.
#include "DeskWindow.h"
#include "Editor.h"
#include "ScenesDock.h"

#include <text/MVRNoteEdits.h>
#include <text/MVRNotesFilter.h>
#include <widgets/MVRFindBar.h>
#include <widgets/MVRNoteMargin.h>
#include <widgets/MVRNotesList.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QInputDialog>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSettings>
#include <QToolBar>

namespace {

struct Command
{
    const char *text; // null: a line between commands
    const char *keys;
    void (*run)(DeskWindow &window); // null: begins a menu
};
constexpr Command line {nullptr, nullptr, nullptr};

constexpr const char *noteColors[][2] = {
    {QT_TRANSLATE_NOOP("DeskWindow", "Yellow"), "#ffd23c"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Orange"), "#ff9a3c"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Red"), "#f06464"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Green"), "#78c878"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Blue"), "#6ea0f0"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Violet"), "#b482dc"},
};

/*! The text that has the keyboard: the page's, or that of a card. */
QTextEdit *focused(const DeskWindow &window)
{
    auto *text = qobject_cast<QTextEdit *>(QApplication::focusWidget());
    return text ? text : window.editor();
}

void toggleBold(DeskWindow &window)
{
    const bool isBold = focused(window)->fontWeight() > QFont::Normal;
    focused(window)->setFontWeight(isBold ? QFont::Normal : QFont::Bold);
}

QString author()
{
    return QSettings().value(QStringLiteral("author"), qEnvironmentVariable("USER")).toString();
}

} // namespace

void DeskWindow::makeActions()
{
    using Edits = MVRNoteEdits;
    static const Command commands[] = {
        {QT_TR_NOOP("&File"), nullptr, nullptr},
        {QT_TR_NOOP("&New text"), "Ctrl+N", [](auto &w) { w.start(false); }},
        {QT_TR_NOOP("New scr&eenplay"), "Ctrl+Shift+N", [](auto &w) { w.start(true); }},
        {QT_TR_NOOP("&Open…"), "Ctrl+O", [](auto &w) { w.chooseFile(); }},
        {QT_TR_NOOP("&Save"), "Ctrl+S", [](auto &w) { w.saveFile(); }},
        {QT_TR_NOOP("Save &as…"), "Ctrl+Shift+S", [](auto &w) { w.saveAs(); }},
        line,
        {QT_TR_NOOP("Export O&DT…"), "", [](auto &w) { w.askForExport(QStringLiteral("odt")); }},
        {QT_TR_NOOP("Export &PDF…"), "Ctrl+P",
         [](auto &w) { w.askForExport(QStringLiteral("pdf")); }},
        {QT_TR_NOOP("Copy as &BBCode"), "Ctrl+Alt+B",
         [](auto &w) {
             const QByteArray code = w.m_file.inFormat(QStringLiteral("bbcode"));
             QApplication::clipboard()->setText(QString::fromUtf8(code));
             w.say(tr("BBCode is on the clipboard, without notes."));
         }},
        line,
        {QT_TR_NOOP("&Quit"), "Ctrl+Q", [](auto &w) { w.close(); }},

        {QT_TR_NOOP("&Edit"), nullptr, nullptr},
        {QT_TR_NOOP("&Undo"), "Ctrl+Z", [](auto &w) { focused(w)->undo(); }},
        {QT_TR_NOOP("&Redo"), "Ctrl+Shift+Z", [](auto &w) { focused(w)->redo(); }},
        {QT_TR_NOOP("Cu&t"), "Ctrl+X", [](auto &w) { focused(w)->cut(); }},
        {QT_TR_NOOP("&Copy"), "Ctrl+C", [](auto &w) { focused(w)->copy(); }},
        {QT_TR_NOOP("&Paste"), "Ctrl+V", [](auto &w) { focused(w)->paste(); }},
        line,
        {QT_TR_NOOP("&Find and replace…"), "Ctrl+F", [](auto &w) { w.m_find->open(); }},
        {QT_TR_NOOP("Find &next"), "F3", [](auto &w) { w.m_find->find(); }},
        {QT_TR_NOOP("Find pre&vious"), "Shift+F3",
         [](auto &w) { w.m_find->find(QTextDocument::FindBackward); }},

        {QT_TR_NOOP("F&ormat"), nullptr, nullptr},
        {QT_TR_NOOP("&Bold"), "Ctrl+B", toggleBold},
        {QT_TR_NOOP("&Italic"), "Ctrl+I",
         [](auto &w) { focused(w)->setFontItalic(!focused(w)->fontItalic()); }},
        {QT_TR_NOOP("&Underline"), "Ctrl+U",
         [](auto &w) { focused(w)->setFontUnderline(!focused(w)->fontUnderline()); }},

        {QT_TR_NOOP("&Notes"), nullptr, nullptr},
        {QT_TR_NOOP("Add &comment"), "Ctrl+Alt+C",
         [](auto &w) { w.addNote(MVRTextNote::Comment); }},
        {QT_TR_NOOP("Add &footnote"), "Ctrl+Alt+F",
         [](auto &w) { w.addNote(MVRTextNote::Footnote); }},
        {QT_TR_NOOP("Mark as &annotation"), "Ctrl+Alt+A",
         [](auto &w) { w.addNote(MVRTextNote::InlineAnnotation); }},
        {QT_TR_NOOP("Mark as footnote in the te&xt"), "Ctrl+Alt+X",
         [](auto &w) { w.addNote(MVRTextNote::InlineFootnote); }},
        line,
        {QT_TR_NOOP("&Edit the note"), "F2", [](auto &w) { w.m_editor->margin()->editNote(); }},
        {QT_TR_NOOP("&Resolve, or take up again"), "Ctrl+Alt+R",
         [](auto &w) {
             w.changeNote(
                 [](auto *text, auto &note) { Edits::setResolved(text, note, !note.isResolved); });
         }},
        {QT_TR_NOOP("Remo&ve"), "Ctrl+Alt+D", [](auto &w) { w.changeNote(Edits::remove); }},
        {QT_TR_NOOP("&Next note"), "F8", [](auto &w) { w.jumpToNote(1); }},
        {QT_TR_NOOP("&Previous note"), "Shift+F8", [](auto &w) { w.jumpToNote(-1); }},
        line,
        {QT_TR_NOOP("Move into the &text"), "Ctrl+Alt+T",
         [](auto &w) { Edits::moveToText(w.m_editor->document(), w.m_editor->textCursor()); }},
        {QT_TR_NOOP("Move into the &margin"), "Ctrl+Alt+M",
         [](auto &w) { Edits::moveToMargin(w.m_editor->document(), w.m_editor->textCursor()); }},
        {QT_TR_NOOP("Tr&im"), "", [](auto &w) { Edits::trim(w.m_editor->document()); }},
        {QT_TR_NOOP("Enc&lose annotations…"), "", [](auto &w) { w.encloseNotes(); }},
        {QT_TR_NOOP("Footnotes to en&d notes"), "",
         [](auto &w) { Edits::footnotesToEndNotes(w.m_editor->document()); }},
        {QT_TR_NOOP("&Your name…"), "",
         [](auto &w) {
             bool isGiven = false;
             const QString name
                 = QInputDialog::getText(&w, tr("Your name"), tr("Who writes the notes:"),
                                         QLineEdit::Normal, author(), &isGiven);
             if (isGiven)
                 QSettings().setValue(QStringLiteral("author"), name);
         }},

        {QT_TR_NOOP("&View"), nullptr, nullptr},
        {QT_TR_NOOP("&Markup codes"), "Ctrl+Alt+K", [](auto &w) { w.showMarkup(); }},
    };
    QMenu *menu = nullptr;
    for (const Command &command : commands) {
        if (!command.text) {
            menu->addSeparator();
            continue;
        }
        if (!command.run) {
            menu = menuBar()->addMenu(tr(command.text));
            continue;
        }
        QAction *action = menu->addAction(tr(command.text));
        action->setObjectName(QString::fromUtf8(command.text).remove(QLatin1Char('&')));
        action->setShortcut(QKeySequence(QLatin1String(command.keys)));
        connect(action, &QAction::triggered, this, [this, run = command.run] { run(*this); });
        if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::Key_O))
            fillRecentFiles(menu->addMenu(tr("Open &recent")));
        if (action->shortcut() == QKeySequence(Qt::Key_F2))
            fillColors(menu->addMenu(tr("C&olor")));
    }
    makeViewActions(menu);
    makeToolBar();
}

void DeskWindow::makeViewActions(QMenu *menu)
{
    auto *notes = new QDockWidget(tr("Notes"), this);
    notes->setObjectName(QStringLiteral("NotesDock"));
    auto *list = new MVRNotesList(m_editor->filter(), notes);
    connect(list, &MVRNotesList::chosen, m_editor, &Editor::jumpTo);
    notes->setWidget(list);
    addDockWidget(Qt::LeftDockWidgetArea, notes);
    notes->hide();
    menu->addAction(notes->toggleViewAction());
    notes->toggleViewAction()->setShortcut(QKeySequence(Qt::Key_F9));
    menu->addAction(m_scenes->toggleViewAction());
    m_scenes->toggleViewAction()->setShortcut(QKeySequence(Qt::Key_F10));
    QAction *dark = menu->addAction(tr("&Dark"));
    dark->setCheckable(true);
    dark->setChecked(QSettings().value(QStringLiteral("dark")).toBool());
    connect(dark, &QAction::toggled, this, [](bool isDark) {
        QSettings().setValue(QStringLiteral("dark"), isDark);
        setDark(isDark);
    });
    m_elements = menuBar()->addMenu(tr("E&lement"));
}

void DeskWindow::makeToolBar()
{
    QToolBar *bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("Tools"));
    for (const char *name :
         {"Open…", "Save", "Add comment", "Add footnote", "Previous note", "Next note"})
        bar->addAction(findChild<QAction *>(QString::fromUtf8(name)));
    m_element->setAccessibleName(tr("Screenplay element"));
    m_element->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    bar->addSeparator();
    bar->addWidget(m_element);
    connect(m_element, &QComboBox::textActivated, this, [this](const QString &name) {
        m_editor->setElement(name);
        m_editor->setFocus();
    });
}

void DeskWindow::fillRecentFiles(QMenu *menu)
{
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        const QStringList recent = QSettings().value(QStringLiteral("recent")).toStringList();
        for (const QString &path : recent)
            menu->addAction(path, this, [this, path] { openAfterAsking(path); });
    });
}

void DeskWindow::fillColors(QMenu *menu)
{
    const auto colorNote = [this](const QColor &color) {
        if (!color.isValid())
            return;
        changeNote([color](auto *text, auto &note) { MVRNoteEdits::setColor(text, note, color); });
    };
    for (const auto &[name, value] : noteColors) {
        const auto color = QColor(QLatin1String(value));
        QPixmap sample(16, 16);
        sample.fill(color);
        menu->addAction(sample, tr(name), this, [colorNote, color] { colorNote(color); });
    }
    menu->addAction(tr("&Other…"), this,
                    [this, colorNote] { colorNote(QColorDialog::getColor(Qt::white, this)); });
}

/*! Menu and box of the elements, with the keys that the file gives them. */
void DeskWindow::fillElements()
{
    const MVRScreenplayElements &elements = m_editor->elements();
    m_element->clear();
    m_element->addItems(elements.names());
    m_element->setEnabled(m_file.isScreenplay());
    m_elements->clear();
    m_elements->setEnabled(m_file.isScreenplay());
    for (const QString &name : elements.names()) {
        QAction *action
            = m_elements->addAction(name, this, [this, name] { m_editor->setElement(name); });
        if (!elements.shortcut(name).isEmpty())
            action->setShortcut(QKeySequence(QLatin1String("Ctrl+") + elements.shortcut(name)));
    }
}

void DeskWindow::addNote(MVRTextNote::Kind kind)
{
    const MVRTextRange range = MVRNoteEdits::add(m_editor->textCursor(), kind, author());
    if (range.start == range.end)
        return say(tr("There is no word for the note."));
    m_editor->jumpTo(range.start);
    if (!MVRTextNote::isInline(kind))
        m_editor->margin()->editNote();
}

/*! The row of the note at the text cursor; -1 where there is none. */
int DeskWindow::currentNote() const
{
    const int position = m_editor->textCursor().position();
    const int row = m_editor->notes()->rowAt(position);
    return row < 0 && position > 0 ? m_editor->notes()->rowAt(position - 1) : row;
}

void DeskWindow::jumpToNote(int direction)
{
    const MVRNotesFilter *filter = m_editor->filter();
    const int position = m_editor->textCursor().position();
    const int row
        = direction > 0 ? filter->firstFrom(position + 1) : filter->firstFrom(position) - 1;
    if (row >= 0 && row < filter->rowCount())
        m_editor->jumpTo(filter->note(row).range.start);
}

/*! Does something to the note at the text cursor. */
void DeskWindow::changeNote(const std::function<void(QTextDocument *, const MVRTextNote &)> &change)
{
    m_editor->margin()->commit();
    if (currentNote() >= 0)
        change(m_editor->document(), m_editor->notes()->note(currentNote()));
    m_editor->setFocus();
}

void DeskWindow::encloseNotes()
{
    bool isGiven = false;
    const QString marks
        = QInputDialog::getText(this, tr("Enclose annotations"),
                                tr("What stands in front of an annotation, a blank, what behind:"),
                                QLineEdit::Normal, QStringLiteral("[ ]"), &isGiven);
    if (isGiven)
        MVRNoteEdits::enclose(m_editor->document(), marks.section(QLatin1Char(' '), 0, 0),
                              marks.section(QLatin1Char(' '), 1));
}

void DeskWindow::showMarkup()
{
    auto *view = new QPlainTextEdit(m_file.markup(), this);
    view->setWindowFlags(Qt::Dialog);
    view->setAttribute(Qt::WA_DeleteOnClose);
    view->setWindowTitle(tr("Markup codes"));
    view->setAccessibleName(view->windowTitle());
    view->setReadOnly(true);
    view->resize(700, 500);
    view->show();
}

void DeskWindow::setDark(bool isDark)
{
    if (!isDark) {
        QApplication::setPalette(QPalette());
        return;
    }
    QPalette palette(QColor(60, 60, 64), QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 33));
    palette.setColor(QPalette::AlternateBase, QColor(40, 40, 44));
    palette.setColor(QPalette::Mid, QColor(80, 80, 86));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, QColor(222, 222, 222));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(150, 150, 150));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(150, 150, 150));
    palette.setColor(QPalette::Highlight, QColor(60, 100, 160));
    QApplication::setPalette(palette);
}
