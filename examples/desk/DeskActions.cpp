// SPDX-License-Identifier: MIT
// The window's menus: a row for each command.
#include "CardColumn.h"
#include "DeskWindow.h"
#include "Docks.h"
#include "Editor.h"
#include "FindBar.h"
#include "NoteEdits.h"

#include <QAction>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QToolBar>

namespace {

struct Command
{
    const char *menu; // where a new menu begins; null: in the one before
    const char *text; // null: a line between commands
    const char *keys;
    void (*run)(DeskWindow &window);
};

struct NoteColor
{
    const char *name;
    const char *color;
};

constexpr NoteColor noteColors[] = {
    {QT_TRANSLATE_NOOP("DeskWindow", "Yellow"), "#ffd23c"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Orange"), "#ff9a3c"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Red"), "#f06464"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Green"), "#78c878"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Blue"), "#6ea0f0"},
    {QT_TRANSLATE_NOOP("DeskWindow", "Violet"), "#b482dc"},
};

/*! The text that has the keyboard: the page's, or that of a card. */
QTextEdit *focusedText(const DeskWindow &window)
{
    auto *focused = qobject_cast<QTextEdit *>(QApplication::focusWidget());
    return focused ? focused : window.editor();
}

void toggle(DeskWindow &window, void (*change)(QTextCharFormat &format))
{
    QTextCharFormat format = focusedText(window)->currentCharFormat();
    change(format);
    focusedText(window)->mergeCurrentCharFormat(format);
}

QIcon colorIcon(const QColor &color)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(color);
    return QIcon(pixmap);
}

QString plainText(QString text)
{
    return text.remove(QLatin1Char('&'));
}

} // namespace

void DeskWindow::makeActions()
{
    static const Command commands[] = {
        {QT_TR_NOOP("&File"), QT_TR_NOOP("&New text"), "Ctrl+N", [](auto &w) { w.start(false); }},
        {nullptr, QT_TR_NOOP("New &screenplay"), "Ctrl+Shift+N", [](auto &w) { w.start(true); }},
        {nullptr, QT_TR_NOOP("&Open…"), "Ctrl+O", [](auto &w) { w.openDialog(); }},
        {nullptr, QT_TR_NOOP("&Save"), "Ctrl+S", [](auto &w) { w.saveFile(); }},
        {nullptr, QT_TR_NOOP("Save &as…"), "Ctrl+Shift+S", [](auto &w) { w.saveAs(); }},
        {nullptr, nullptr, nullptr, nullptr},
        {nullptr, QT_TR_NOOP("Export O&DT…"), "",
         [](auto &w) { w.exportFile(QStringLiteral("odt")); }},
        {nullptr, QT_TR_NOOP("Export &PDF…"), "Ctrl+P",
         [](auto &w) { w.exportFile(QStringLiteral("pdf")); }},
        {nullptr, QT_TR_NOOP("Copy as &BBCode"), "Ctrl+Alt+B", [](auto &w) { w.copyBbCode(); }},
        {nullptr, nullptr, nullptr, nullptr},
        {nullptr, QT_TR_NOOP("&Quit"), "Ctrl+Q", [](auto &w) { w.close(); }},

        {QT_TR_NOOP("&Edit"), QT_TR_NOOP("&Undo"), "Ctrl+Z",
         [](auto &w) { focusedText(w)->undo(); }},
        {nullptr, QT_TR_NOOP("&Redo"), "Ctrl+Shift+Z", [](auto &w) { focusedText(w)->redo(); }},
        {nullptr, QT_TR_NOOP("Cu&t"), "Ctrl+X", [](auto &w) { focusedText(w)->cut(); }},
        {nullptr, QT_TR_NOOP("&Copy"), "Ctrl+C", [](auto &w) { focusedText(w)->copy(); }},
        {nullptr, QT_TR_NOOP("&Paste"), "Ctrl+V", [](auto &w) { focusedText(w)->paste(); }},
        {nullptr, nullptr, nullptr, nullptr},
        {nullptr, QT_TR_NOOP("&Find and replace…"), "Ctrl+F", [](auto &w) { w.m_find->open(); }},
        {nullptr, QT_TR_NOOP("Find &next"), "F3", [](auto &w) { w.m_find->findNext(); }},
        {nullptr, QT_TR_NOOP("Find &previous"), "Shift+F3",
         [](auto &w) { w.m_find->findPrevious(); }},

        {QT_TR_NOOP("F&ormat"), QT_TR_NOOP("&Bold"), "Ctrl+B",
         [](auto &w) {
             toggle(w, [](QTextCharFormat &format) {
                 const bool isBold = format.fontWeight() > QFont::Normal;
                 format.setFontWeight(isBold ? QFont::Normal : QFont::Bold);
             });
         }},
        {nullptr, QT_TR_NOOP("&Italic"), "Ctrl+I",
         [](auto &w) {
             toggle(w, [](QTextCharFormat &format) { format.setFontItalic(!format.fontItalic()); });
         }},
        {nullptr, QT_TR_NOOP("&Underline"), "Ctrl+U",
         [](auto &w) {
             toggle(w, [](QTextCharFormat &format) {
                 format.setFontUnderline(!format.fontUnderline());
             });
         }},

        {QT_TR_NOOP("&Notes"), QT_TR_NOOP("Add &comment"), "Ctrl+Alt+C",
         [](auto &w) { w.addNote(MVRTextNote::Comment); }},
        {nullptr, QT_TR_NOOP("Add &footnote"), "Ctrl+Alt+F",
         [](auto &w) { w.addNote(MVRTextNote::Footnote); }},
        {nullptr, QT_TR_NOOP("Mark as &annotation"), "Ctrl+Alt+A",
         [](auto &w) { w.addNote(MVRTextNote::InlineAnnotation); }},
        {nullptr, QT_TR_NOOP("Mark as footnote in the te&xt"), "Ctrl+Alt+X",
         [](auto &w) { w.addNote(MVRTextNote::InlineFootnote); }},
        {nullptr, nullptr, nullptr, nullptr},
        {nullptr, QT_TR_NOOP("&Edit the note"), "F2", [](auto &w) { w.goToCard(); }},
        {nullptr, QT_TR_NOOP("&Resolve (remove)"), "Ctrl+Alt+R", [](auto &w) { w.removeNote(); }},
        {nullptr, QT_TR_NOOP("&Next note"), "F8", [](auto &w) { w.jumpToNote(1); }},
        {nullptr, QT_TR_NOOP("&Previous note"), "Shift+F8", [](auto &w) { w.jumpToNote(-1); }},
        {nullptr, nullptr, nullptr, nullptr},
        {nullptr, QT_TR_NOOP("Move into the &text"), "Ctrl+Alt+T",
         [](auto &w) { NoteEdits::moveToText(w.m_editor->document(), w.m_editor->textCursor()); }},
        {nullptr, QT_TR_NOOP("Move into the &margin"), "Ctrl+Alt+M",
         [](auto &w) {
             NoteEdits::moveToMargin(w.m_editor->document(), w.m_editor->textCursor());
         }},
        {nullptr, QT_TR_NOOP("Tr&im"), "",
         [](auto &w) { NoteEdits::trim(w.m_editor->document()); }},
        {nullptr, QT_TR_NOOP("Enc&lose annotations…"), "", [](auto &w) { w.encloseNotes(); }},
        {nullptr, QT_TR_NOOP("Footnotes to en&d notes"), "",
         [](auto &w) { NoteEdits::footnotesToEndNotes(w.m_editor->document()); }},
        {nullptr, QT_TR_NOOP("&Your name…"), "", [](auto &w) { w.askForName(); }},

        {QT_TR_NOOP("&View"), QT_TR_NOOP("&Markup codes"), "Ctrl+Alt+K",
         [](auto &w) { w.showMarkup(); }},
    };
    QMenu *menu = nullptr;
    for (const Command &command : commands) {
        if (command.menu)
            menu = menuBar()->addMenu(tr(command.menu));
        if (!command.text) {
            menu->addSeparator();
            continue;
        }
        QAction *action = menu->addAction(tr(command.text));
        action->setObjectName(plainText(QString::fromUtf8(command.text)));
        action->setShortcut(QKeySequence(QLatin1String(command.keys)));
        connect(action, &QAction::triggered, this, [this, run = command.run] { run(*this); });
        if (action->objectName() == QStringLiteral("Open…"))
            fillRecentFiles(menu->addMenu(tr("Open &recent")));
        if (action->shortcut() == QKeySequence(Qt::Key_F2))
            fillColors(menu->addMenu(tr("C&olor")));
    }
    makeViewActions(menu);
}

void DeskWindow::makeViewActions(QMenu *menu)
{
    menu->addAction(m_notesDock->toggleViewAction());
    m_notesDock->toggleViewAction()->setShortcut(QKeySequence(QStringLiteral("F9")));
    menu->addAction(m_scenesDock->toggleViewAction());
    m_scenesDock->toggleViewAction()->setShortcut(QKeySequence(QStringLiteral("F10")));
    QAction *dark = menu->addAction(tr("&Dark"));
    dark->setCheckable(true);
    dark->setChecked(QSettings().value(QStringLiteral("dark")).toBool());
    connect(dark, &QAction::toggled, this, [](bool isDark) {
        QSettings().setValue(QStringLiteral("dark"), isDark);
        setDark(isDark);
    });
    QMenu *elements = menuBar()->addMenu(tr("E&lement"));
    connect(elements, &QMenu::aboutToShow, this, [this, elements] { fillElements(elements); });

    QToolBar *bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("Tools"));
    for (const char *name :
         {"Open…", "Save", "Add comment", "Add footnote", "Previous note", "Next note"})
        bar->addAction(findChild<QAction *>(QString::fromUtf8(name)));
    m_element->setAccessibleName(tr("Screenplay element"));
    m_element->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    bar->addSeparator();
    bar->addWidget(m_element);
}

void DeskWindow::fillRecentFiles(QMenu *menu)
{
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        const QStringList recent = QSettings().value(QStringLiteral("recent")).toStringList();
        for (const QString &path : recent)
            menu->addAction(path, this, [this, path] { openDropped(path); });
    });
}

void DeskWindow::fillColors(QMenu *menu)
{
    for (const NoteColor &row : noteColors) {
        const QColor color(QLatin1String(row.color));
        menu->addAction(colorIcon(color), tr(row.name), this,
                        [this, color] { setNoteColor(color); });
    }
    menu->addAction(tr("&Other…"), this,
                    [this] { setNoteColor(QColorDialog::getColor(Qt::white, this)); });
}

/*! The elements with the keys that the file gives them. */
void DeskWindow::fillElements(QMenu *menu)
{
    menu->clear();
    const Elements &elements = m_editor->elements();
    const QStringList names = elements.names();
    for (const QString &name : names) {
        QAction *action = menu->addAction(name, this, [this, name] { m_editor->setElement(name); });
        if (!elements.shortcut(name).isEmpty())
            action->setShortcut(QKeySequence(QLatin1String("Ctrl+") + elements.shortcut(name)));
    }
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
