// SPDX-License-Identifier: MIT
#include "DeskWindow.h"

#include "Editor.h"
#include "ScenesDock.h"

#include <text/MVRWordCounter.h>
#include <widgets/MVRFindBar.h>
#include <widgets/MVRNoteMargin.h>

#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QTextBlock>
#include <QVBoxLayout>

namespace {

constexpr int recentFiles = 10;
constexpr int countsPause = 50; // ms without an edit before counts are shown
constexpr int pagesPause = 700; // the same for pages

} // namespace

DeskWindow::DeskWindow()
    : m_editor(new Editor(this))
    , m_find(new MVRFindBar(m_editor, this))
    , m_scenes(new ScenesDock(m_editor, this))
    , m_element(new QComboBox(this))
    , m_counts(new QLabel(this))
    , m_pages(new QLabel(this))
    , m_recovery(new MVRRecovery([this] { return m_file.copyWriter(); }, this))
{
    auto *page = new QWidget(this);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_editor);
    layout->addWidget(m_find);
    setCentralWidget(page);
    addDockWidget(Qt::LeftDockWidgetArea, m_scenes);
    statusBar()->addPermanentWidget(m_pages);
    statusBar()->addPermanentWidget(m_counts);
    setAcceptDrops(true);
    makeActions();

    const auto runLater = [this](QTimer &timer, int pause, void (DeskWindow::*run)()) {
        timer.setSingleShot(true);
        timer.setInterval(pause);
        connect(&timer, &QTimer::timeout, this, run);
    };
    runLater(m_pagesTimer, pagesPause, &DeskWindow::refreshPages);
    runLater(m_countsTimer, countsPause, &DeskWindow::showCounts);
    const auto startCounts = QOverload<>::of(&QTimer::start);
    connect(m_editor, &QTextEdit::textChanged, this, &DeskWindow::followEdit);
    connect(m_editor, &QTextEdit::cursorPositionChanged, &m_countsTimer, startCounts);
    connect(m_editor, &QTextEdit::selectionChanged, &m_countsTimer, startCounts);
    connect(m_editor, &Editor::fileDropped, this, &DeskWindow::openAfterAsking,
            Qt::QueuedConnection);
    resize(1200, 800);
    const QSettings settings;
    restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
    restoreState(settings.value(QStringLiteral("state")).toByteArray());
    showText();
}

void DeskWindow::start(bool isScreenplay)
{
    if (!mayLeave())
        return;
    rememberPlace();
    m_file.startNew(isScreenplay);
    showText();
    m_editor->setElement(QStringLiteral("Scene Heading")); // which a text has not
    m_editor->document()->setModified(false);
}

void DeskWindow::showText()
{
    const MVRScreenplayElements elements = m_file.elements();
    m_editor->show(m_file.text(), elements);
    connect(m_editor->document(), &QTextDocument::modificationChanged, this,
            &QWidget::setWindowModified);
    m_recovery->drop();
    fillElements();
    m_scenes->setVisible(m_file.isScreenplay());
    const QString name = QFileInfo(m_file.path()).fileName();
    setWindowTitle((name.isEmpty() ? tr("Untitled") : name) + QLatin1String("[*]"));
    m_editor->document()->setModified(false);
    setWindowModified(false);
    refreshPages();
    showCounts();
    m_editor->setFocus();
}

bool DeskWindow::open(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QString error;
    rememberPlace();
    if (!m_file.open(absolute, &error)) {
        complain(tr("%1 cannot be opened.").arg(path), error);
        return false;
    }
    showText();
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

void DeskWindow::chooseFile()
{
    openAfterAsking(QFileDialog::getOpenFileName(this, tr("Open"), QFileInfo(m_file.path()).path(),
                                                 Manuscript::openFilter()));
}

void DeskWindow::openAfterAsking(const QString &path)
{
    if (!path.isEmpty() && mayLeave())
        open(path);
}

bool DeskWindow::save(const QString &path)
{
    const QFileInfo before(m_file.path());
    const QString kind = m_file.path().isEmpty() ? m_file.copySuffix() : before.suffix();
    if (!exportAs(path))
        return false;
    m_file.setPath(QFileInfo(path).absoluteFilePath());
    m_editor->document()->setModified(false);
    m_recovery->drop();
    setWindowTitle(QFileInfo(path).fileName() + QLatin1String("[*]"));
    // In a file of another kind the text is what that kind can hold.
    const int place = m_editor->textCursor().position();
    if (kind != QFileInfo(path).suffix() && open(path))
        m_editor->jumpTo(place);
    return true;
}

bool DeskWindow::exportAs(const QString &path)
{
    m_editor->margin()->commit();
    QString error;
    if (!m_file.save(QFileInfo(path).absoluteFilePath(), &error)) {
        complain(tr("%1 cannot be saved.").arg(path), error);
        return false;
    }
    say(tr("Saved.") + QLatin1Char(' ') + m_file.fateOfNotes(path));
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

void DeskWindow::askForExport(const QString &suffix)
{
    const QFileInfo from(m_file.path());
    const QString proposal
        = from.path() + QLatin1Char('/') + from.completeBaseName() + QLatin1Char('.') + suffix;
    const QString path
        = QFileDialog::getSaveFileName(this, tr("Export"), proposal, QLatin1String("*.") + suffix);
    if (!path.isEmpty())
        exportAs(path);
}

/*! Whether the text may be closed; asks when it is not saved. */
bool DeskWindow::mayLeave()
{
    m_editor->margin()->commit();
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
    if (event->mimeData()->urls().value(0).isLocalFile())
        event->acceptProposedAction();
}

void DeskWindow::dropEvent(QDropEvent *event)
{
    openAfterAsking(event->mimeData()->urls().value(0).toLocalFile());
}

void DeskWindow::offerRecovery()
{
    for (const MVRRecovery::Copy &copy : MVRRecovery::leftCopies()) {
        const QString name
            = copy.original.isEmpty() ? tr("Untitled") : QFileInfo(copy.original).fileName();
        const auto answer = QMessageBox::question(
            this, QString(), tr("%1 was not saved when the program ended. Restore it?").arg(name),
            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
        if (answer == QMessageBox::Cancel || (answer == QMessageBox::Yes && !mayLeave()))
            continue;
        QString error;
        if (answer == QMessageBox::Yes && !m_file.open(copy.file, &error)) {
            complain(tr("%1 cannot be opened.").arg(copy.file), error);
            continue;
        }
        if (answer == QMessageBox::Yes) {
            m_file.setPath(copy.original);
            showText();
            m_editor->document()->setModified(true);
            followEdit();
            m_recovery->write();
            m_recovery->wait();
            if (!m_recovery->isWritten()) // else the other copy may go
                continue;
        }
        MVRRecovery::remove(copy);
    }
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
    const MVRWordCounter::Words words = m_editor->words().words();
    QStringList parts = {tr("%n words", nullptr, words.all)};
    if (words.outsideNotes != words.all)
        parts << tr("%1 without notes").arg(words.outsideNotes);
    const QTextCursor cursor = m_editor->textCursor();
    if (cursor.hasSelection())
        parts << tr("%1 selected").arg(MVRWordCounter::words(cursor));
    m_counts->setText(parts.join(QStringLiteral(" · ")));
    m_element->setCurrentText(MVRScreenplayElements::elementOf(cursor.block()));
}

void DeskWindow::refreshPages()
{
    if (!m_file.isScreenplay())
        return m_pages->clear();
    QElapsedTimer cost;
    cost.start();
    m_pages->setText(tr("%n pages", nullptr, m_file.pageCount()));
    m_scenes->refresh();
    // A long script has to wait for a longer pause.
    m_pagesTimer.setInterval(pagesPause + 20 * int(qMin(cost.elapsed(), qint64(3000))));
}

void DeskWindow::say(const QString &text)
{
    statusBar()->showMessage(text, 5000);
}

void DeskWindow::complain(const QString &what, const QString &why)
{
    QMessageBox::warning(this, QString(), why.isEmpty() ? what : what + QLatin1Char('\n') + why);
}
