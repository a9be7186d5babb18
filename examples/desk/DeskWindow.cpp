// SPDX-License-Identifier: MIT
#include "DeskWindow.h"

#include "CardColumn.h"
#include "Counts.h"
#include "Docks.h"
#include "Editor.h"
#include "Exports.h"
#include "FindBar.h"

#include <pages/MVRScreenplayPages.h>

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSettings>
#include <QStatusBar>
#include <QTextBlock>
#include <QVBoxLayout>

namespace {

constexpr int recentFiles = 10;
constexpr int pagesPause = 700; // ms without an edit before pages are counted

} // namespace

DeskWindow::DeskWindow()
    : m_editor(new Editor(this))
    , m_find(new FindBar(m_editor, this))
    , m_notesDock(new NotesDock(m_editor, this))
    , m_scenesDock(new ScenesDock(m_editor, this))
    , m_element(new QComboBox(this))
    , m_counts(new QLabel(this))
    , m_pages(new QLabel(this))
    , m_recovery(new Recovery(
          [this](const QString &path) { return m_file.saveCopy(*m_editor->document(), path); },
          this))
{
    auto *page = new QWidget(this);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_editor);
    layout->addWidget(m_find);
    setCentralWidget(page);
    addDockWidget(Qt::LeftDockWidgetArea, m_scenesDock);
    addDockWidget(Qt::LeftDockWidgetArea, m_notesDock);
    m_notesDock->hide();
    statusBar()->addPermanentWidget(m_pages);
    statusBar()->addPermanentWidget(m_counts);
    setAcceptDrops(true);
    makeActions();

    m_pagesTimer.setSingleShot(true);
    m_pagesTimer.setInterval(pagesPause);
    connect(&m_pagesTimer, &QTimer::timeout, this, &DeskWindow::refreshPages);
    m_countsTimer.setSingleShot(true);
    m_countsTimer.setInterval(50);
    connect(&m_countsTimer, &QTimer::timeout, this, &DeskWindow::showCounts);
    connect(m_editor, &QTextEdit::textChanged, this, &DeskWindow::followEdit);
    connect(m_editor, &QTextEdit::cursorPositionChanged, &m_countsTimer,
            QOverload<>::of(&QTimer::start));
    connect(m_editor, &QTextEdit::selectionChanged, &m_countsTimer,
            QOverload<>::of(&QTimer::start));
    connect(m_editor, &Editor::fileDropped, this, &DeskWindow::openDropped, Qt::QueuedConnection);
    connect(m_element, &QComboBox::textActivated, this, [this](const QString &name) {
        m_editor->setElement(name);
        m_editor->setFocus();
    });
    resize(1200, 800);
    const QSettings settings;
    restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
    restoreState(settings.value(QStringLiteral("state")).toByteArray());
    start(false);
}

DeskWindow::~DeskWindow() = default;

void DeskWindow::start(bool isScreenplay)
{
    if (!mayLeave())
        return;
    rememberPlace();
    showDocument(m_file.startNew(isScreenplay));
    if (isScreenplay)
        m_editor->elements().apply(m_editor->textCursor(), QStringLiteral("Scene Heading"));
    m_editor->document()->setModified(false);
}

void DeskWindow::showDocument(std::unique_ptr<QTextDocument> document)
{
    Elements elements;
    if (m_file.isScreenplay())
        elements = Elements(m_file.script()->elementSettings());
    m_editor->show(std::move(document), elements);
    connect(m_editor->document(), &QTextDocument::modificationChanged, this,
            &QWidget::setWindowModified);
    m_recovery->drop();
    m_element->clear();
    m_element->addItems(elements.names());
    m_element->setEnabled(m_file.isScreenplay());
    m_scenesDock->setVisible(m_file.isScreenplay());
    const QString name = QFileInfo(m_file.path()).fileName();
    setWindowTitle((name.isEmpty() ? tr("Untitled") : name) + QLatin1String("[*]"));
    setWindowModified(m_editor->document()->isModified());
    refreshPages();
    showCounts();
    m_editor->setFocus();
}

bool DeskWindow::open(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QString error;
    rememberPlace();
    auto document = m_file.open(absolute, &error);
    if (!document) {
        complain(tr("%1 cannot be opened.").arg(path), error);
        return false;
    }
    showDocument(std::move(document));
    QSettings settings;
    QStringList recent = settings.value(QStringLiteral("recent")).toStringList();
    recent.removeAll(absolute);
    recent.prepend(absolute);
    settings.setValue(QStringLiteral("recent"), QStringList(recent.mid(0, recentFiles)));
    const QVariantMap places = settings.value(QStringLiteral("places")).toMap();
    m_editor->jumpTo(places.value(absolute).toInt());
    return true;
}

/*! Where the cursor stands in the file, for the next time that it is open. */
void DeskWindow::rememberPlace()
{
    if (m_file.path().isEmpty())
        return;
    QSettings settings;
    const QStringList recent = settings.value(QStringLiteral("recent")).toStringList();
    QVariantMap places = settings.value(QStringLiteral("places")).toMap();
    places.insert(m_file.path(), m_editor->textCursor().position());
    for (const QString &path : places.keys()) {
        if (!recent.contains(path))
            places.remove(path);
    }
    settings.setValue(QStringLiteral("places"), places);
}

void DeskWindow::openDialog()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open"), QFileInfo(m_file.path()).path(), Manuscript::openFilter());
    openDropped(path);
}

void DeskWindow::openDropped(const QString &path)
{
    if (!path.isEmpty() && mayLeave())
        open(path);
}

bool DeskWindow::save(const QString &path)
{
    m_editor->cards()->commit();
    QString error;
    if (!m_file.save(*m_editor->document(), QFileInfo(path).absoluteFilePath(), &error)) {
        complain(tr("%1 cannot be saved.").arg(path), error);
        return false;
    }
    m_editor->document()->setModified(false);
    m_recovery->drop();
    setWindowTitle(QFileInfo(path).fileName() + QLatin1String("[*]"));
    statusBar()->showMessage(tr("Saved"), 3000);
    return true;
}

bool DeskWindow::saveFile()
{
    return m_file.path().isEmpty() ? saveAs() : save(m_file.path());
}

bool DeskWindow::saveAs()
{
    QString path = QFileDialog::getSaveFileName(this, tr("Save as"), m_file.path(),
                                                Manuscript::saveFilter());
    if (path.isEmpty())
        return false;
    if (QFileInfo(path).suffix().isEmpty())
        path += QLatin1Char('.') + m_file.copySuffix();
    return save(path);
}

/*! Whether the text may be closed; asks when it is not saved. */
bool DeskWindow::mayLeave()
{
    m_editor->cards()->commit();
    if (!isWindowModified())
        return true;
    const auto answer = QMessageBox::question(
        this, QString(), tr("Save the changes?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Save ? saveFile() : answer == QMessageBox::Discard;
}

void DeskWindow::closeEvent(QCloseEvent *event)
{
    if (!mayLeave())
        return event->ignore();
    rememberPlace();
    m_recovery->drop();
    QSettings settings;
    settings.setValue(QStringLiteral("geometry"), saveGeometry());
    settings.setValue(QStringLiteral("state"), saveState());
}

void DeskWindow::dragEnterEvent(QDragEnterEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && Manuscript::canOpen(urls.first().toLocalFile()))
        event->acceptProposedAction();
}

void DeskWindow::dropEvent(QDropEvent *event)
{
    openDropped(event->mimeData()->urls().value(0).toLocalFile());
}

void DeskWindow::offerRecovery()
{
    for (const Recovery::Copy &copy : Recovery::leftCopies()) {
        const QString name
            = copy.original.isEmpty() ? tr("Untitled") : QFileInfo(copy.original).fileName();
        const auto answer = QMessageBox::question(
            this, QString(), tr("%1 was not saved when the program ended. Restore it?").arg(name),
            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
        QString error;
        if (answer == QMessageBox::Cancel || (answer == QMessageBox::Yes && !mayLeave()))
            continue;
        if (answer == QMessageBox::Yes) {
            auto document = m_file.open(copy.file, &error);
            if (!document) {
                complain(tr("%1 cannot be opened.").arg(copy.file), error);
                continue;
            }
            m_file.setPath(copy.original);
            showDocument(std::move(document));
            m_editor->document()->setModified(true);
            followEdit();
            m_recovery->write();
        }
        Recovery::remove(copy);
    }
}

void DeskWindow::exportFile(const QString &suffix)
{
    const QFileInfo from(m_file.path());
    const QString proposal
        = from.path() + QLatin1Char('/') + from.completeBaseName() + QLatin1Char('.') + suffix;
    const QString path
        = QFileDialog::getSaveFileName(this, tr("Export"), proposal, QLatin1String("*.") + suffix);
    if (path.isEmpty())
        return;
    const bool isWritten = suffix == QLatin1String("odt")
        ? Exports::writeOdt(*m_editor->document(), path)
        : Exports::writePdf(*m_editor->document(), m_file, path);
    if (!isWritten)
        complain(tr("%1 cannot be saved.").arg(path), QString());
}

void DeskWindow::copyBbCode()
{
    QApplication::clipboard()->setText(Exports::bbCode(*m_editor->document()));
    statusBar()->showMessage(tr("BBCode is on the clipboard"), 3000);
}

void DeskWindow::showMarkup()
{
    auto *view = new QPlainTextEdit(Exports::markup(*m_editor->document()), this);
    view->setWindowFlags(Qt::Dialog);
    view->setAttribute(Qt::WA_DeleteOnClose);
    view->setWindowTitle(tr("Markup codes"));
    view->setAccessibleName(view->windowTitle());
    view->setReadOnly(true);
    view->resize(700, 500);
    view->show();
}

/*! Costs nothing that grows with the text: it runs at every key. */
void DeskWindow::followEdit()
{
    if (!m_editor->document()->isModified())
        return;
    m_recovery->noteEdit(m_file.path(), m_file.copySuffix());
    m_countsTimer.start();
    if (m_file.isScreenplay())
        m_pagesTimer.start();
}

void DeskWindow::showCounts()
{
    const Counts::Words words = m_editor->counts().words();
    QStringList parts = {tr("%n words", nullptr, words.all)};
    if (words.outsideNotes != words.all)
        parts << tr("%1 without notes").arg(words.outsideNotes);
    const QTextCursor cursor = m_editor->textCursor();
    if (cursor.hasSelection())
        parts << tr("%1 selected").arg(Counts::words(cursor));
    m_counts->setText(parts.join(QStringLiteral(" · ")));
    m_element->setCurrentText(Elements::of(cursor.block()));
}

void DeskWindow::refreshPages()
{
    if (!m_file.isScreenplay())
        return m_pages->clear();
    QElapsedTimer cost;
    cost.start();
    const int count = m_file.pages(*m_editor->document()).pages().size();
    m_pages->setText(tr("%n pages", nullptr, count));
    m_scenesDock->refresh();
    // A long script has to wait for a longer pause.
    m_pagesTimer.setInterval(pagesPause + 20 * int(qMin(cost.elapsed(), qint64(3000))));
}

void DeskWindow::complain(const QString &what, const QString &why)
{
    QMessageBox::warning(this, QString(), why.isEmpty() ? what : what + QLatin1Char('\n') + why);
}
