// SPDX-License-Identifier: MIT
// A real window of the desk, for its tests.
#pragma once

#include "DeskWindow.h"
#include "Editor.h"

#include <core/MVRTextRtf.h>
#include <pages/MVRScreenplayFace.h>
#include <text/MVRTextDoc.h>
#include <widgets/MVRFindBar.h>
#include <widgets/MVRNoteMargin.h>
#include <widgets/NoteCard_p.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QtTest>

#include <memory>

inline QString exampleScreenplay()
{
    return QStringLiteral(MVR_SOURCE_DIR "/examples/screenplay.fdx");
}

/*! A window with a text, in sight and with the keyboard. */
class Desk : public DeskWindow
{
public:
    explicit Desk(const QString &text = QString())
    {
        resize(1200, 800);
        show();
        activateWindow(); // no window manager does it
        if (!QTest::qWaitForWindowActive(this))
            qWarning("the window is not active");
        editor()->setFocus();
        editor()->insertPlainText(text);
        editor()->moveCursor(QTextCursor::Start);
    }
    ~Desk() override { editor()->document()->setModified(false); }

    void run(const char *command)
    {
        auto *action = findChild<QAction *>(QString::fromUtf8(command));
        QVERIFY2(action, command);
        action->trigger();
    }
    void select(int start, int end)
    {
        QTextCursor cursor = editor()->textCursor();
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        editor()->setTextCursor(cursor);
    }
    QVector<NoteCard *> cards()
    {
        editor()->margin()->follow();
        return editor()->margin()->cards();
    }
    MVRTextNotes notes() const { return MVRTextDoc::notes(editor()->document()); }
    QString text() const { return editor()->toPlainText(); }
    static QTextEdit *body(const NoteCard *card) { return card->findChild<QTextEdit *>(); }
};

/*! Does something to the next dialog of a kind that appears. */
template <typename Dialog> void answerNext(std::function<void(Dialog &)> answer)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, answer] {
        if (auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget())) {
            timer->deleteLater();
            answer(*dialog);
        }
    });
    timer->start(10);
}

/*! Clicks a button of the next message box that appears. */
inline void clickNext(QMessageBox::StandardButton button)
{
    answerNext<QMessageBox>([button](QMessageBox &box) { box.button(button)->click(); });
}

/*! A text of so many words in paragraphs of a hundred, a note at every twentieth word. */
inline void fill(QTextDocument *document, int words)
{
    document->setUndoRedoEnabled(false);
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    const QByteArray content = MVRTextRtf::textToRtf(QStringLiteral("A short note."), nullptr);
    for (int word = 0; word < words; ++word) {
        if (word > 0 && word % 100 == 0)
            cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
        QTextCharFormat format;
        if (word % 20 == 10) {
            format.setProperty(MVRTextFormat::CommentLinkProperty, true);
            format.setProperty(MVRTextFormat::InspectorCommentProperty, true);
            format.setProperty(MVRTextFormat::CommentCDataProperty, content);
            format.setProperty(MVRTextFormat::CommentColorProperty, QColor(Qt::yellow));
            format.setAnchorHref(QStringLiteral("Comment:%1").arg(word));
        }
        cursor.insertText(QStringLiteral("lorem"), format);
        cursor.insertText(QStringLiteral(" "), QTextCharFormat());
    }
    cursor.endEditBlock();
    document->setUndoRedoEnabled(true);
}

/*! A class of tests whose settings and files are its own. */
class DeskTest : public QObject
{
protected:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QSettings().clear();
        QSettings().setValue(QStringLiteral("author"), QStringLiteral("Ada"));
        m_watch.callOnTimeout(this, [] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                qWarning("nobody answers: %s", qPrintable(box->text()));
                box->reject();
            }
        });
        m_watch.start(4000);
    }
    void cleanup()
    {
        QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).removeRecursively();
        m_folder.reset();
    }

    QString filePath(const char *name) const { return m_folder->filePath(QLatin1String(name)); }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QTimer m_watch; // closes boxes that no test expects
};

/*! The program around a test; \a settings is the folder of its settings and, where it shares no
    other one's, of its data. */
inline void setUp(const QString &settings, bool sharesData = false)
{
    if (!sharesData)
        qputenv("XDG_DATA_HOME", (settings + QLatin1String("/data")).toLocal8Bit());
    QCoreApplication::setOrganizationName(QStringLiteral("mvrtext-test"));
    QCoreApplication::setApplicationName(
        QFileInfo(QCoreApplication::applicationFilePath()).fileName());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings);
    QFont::insertSubstitution(QStringLiteral("Courier Final Draft"), MVRScreenplayFace::family());
}
