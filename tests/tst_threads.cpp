// SPDX-License-Identifier: MIT
#include "DocumentGenerator.h"
#include "MarkedText.h"

#include <bbcode/MVRBbCodeConverter.h>
#include <core/MVRCoreUtil.h>
#include <core/MVRDomDoc.h>
#include <core/MVRFormat.h>
#include <core/MVRParagraphView.h>
#include <core/MVRSettings.h>
#include <core/MVRTextFinder.h>
#include <core/MVRTextRtf.h>
#include <core/MVRTextUtil.h>
#include <core/MVRTextXhtmlExporter.h>
#include <core/MVRToolkit.h>
#include <core/STextDoc.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/MVRFinalDraftReader.h>
#include <finaldraft/MVRFinalDraftWriter.h>
#include <finaldraft/MVRScreenplayElements.h>
#include <pages/MVRPagePainter.h>
#include <text/MVRNoteEdits.h>
#include <text/MVRNoteHighlighter.h>
#include <text/MVRNotesFilter.h>
#include <text/MVRTextDoc.h>
#include <text/MVRWordCounter.h>

#include <QBuffer>
#include <QLoggingCategory>
#include <QMimeData>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextDocumentFragment>
#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

using MarkedText::select;

/*! A document belongs to one thread at a time; no operation needs a lock. */
class TestThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void worksInManyThreads_data();
    void worksInManyThreads();
    void readsSettingsThatChange();

private:
    QTemporaryDir m_dir;
};

namespace {

constexpr int threadCount = 8;

/*! What a thread does, told as text that is the same for each of them. */
using Job = std::function<QString()>;

/*! Runs \a job in all threads at once and returns what they said. */
std::vector<QString> runTogether(const Job &job)
{
    std::vector<QString> said(threadCount);
    std::vector<std::thread> threads;
    std::atomic<int> ready {0};
    for (QString &answer : said) {
        threads.emplace_back([&] {
            ++ready;
            while (ready < threadCount) // so that the first calls of all meet
                std::this_thread::yield();
            answer = job();
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    return said;
}

void fillWithNotes(QTextDocument *document)
{
    document->setPlainText(QStringLiteral("one two three four five six\n\nseven eight nine ten"));
    MVRTextDoc::setComment(select(document, 0, 3), QStringLiteral("a comment"), false);
    MVRTextDoc::setComment(select(document, 4, 7), QStringLiteral(" a footnote "), true);
    MVRTextDoc::setInlineFootnoteAnnotation(select(document, 8, 13), true, true);
    MVRTextDoc::setInlineFootnoteAnnotation(select(document, 34, 39), false, true);
    MVRTextDoc::setPreserveFormatting(select(document, 14, 18), true);
    MVRTextInternalLinkMap links;
    links.links.insert(MVRTextRange(19, 23), 42);
    MVRTextDoc::setInternalLinks(document, links);
}

QString settings()
{
    const MVRSettings &options = mvrOptions();
    return options.value(MVRSettings::CommentColorSetting).name()
        + options.value(MVRSettings::FootnoteFontSetting).family()
        + QString::number(options.value(MVRSettings::WordSearchSetting));
}

QString notes()
{
    QTextDocument document;
    fillWithNotes(&document);
    MVRTextDoc::trimInspectorNotes(&document, MVRTextFormat::CommentLinkProperty, true, 0, 0);
    MVRTextDoc::convertInlineFootnotesToInspectorFootnotes(&document, true, QTextCursor());
    MVRTextDoc::convertInlineAnnotationsToInspectorComments(&document, false, QTextCursor());
    QString said = MVRTextDoc::inspectorNotesToPlainText(&document).join(QLatin1Char('|'));
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(&document, QTextCursor());
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(&document, QTextCursor());
    MVRTextDoc::convertInlineAnnotationsToInlineFootnotes(&document, QTextCursor());
    MVRTextDoc::encloseAnnotations(&document, QStringLiteral("["), QStringLiteral("]"), true);
    const int words = MVRTextDoc::wordCount(document, true, true);
    MVRTextDoc::inlineFootnotesToEndNotes(&document, 1, QTextCharFormat(), MVRFormat::EPub3);
    MVRTextDoc::convertMovarinLinksToText(&document);
    MVRTextDoc::replace(QRegularExpression(QStringLiteral("n\\w+")), QStringLiteral("N"),
                        QTextCursor(&document));
    return said + document.toPlainText() + QString::number(words);
}

QString markup()
{
    QTextDocument document;
    fillWithNotes(&document);
    QTextCursor(&document).insertText(QStringLiteral("{$MVRImageLink[w:9;h:9]=none.png}"));
    MVRTextDoc::toInlineMarkup(&document);
    const QString codes = document.toPlainText();
    MVRTextDoc::fromInlineMarkup(&document);
    QMimeData data;
    MVRTextDoc::setMovarinMarkupRtfMimeData(&data, &document);
    QTextDocument pasted;
    MVRTextDoc::fromMovarinMarkupRtfMimeData(&data, &pasted);
    return codes + MarkedText::marks(pasted);
}

QString rtf()
{
    QTextDocument document;
    DocumentGenerator(7).fill(&document);
    QTextDocument read;
    const bool isRead = MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &read);
    QTextDocument codePages;
    for (const int codePage : {437, 850, 874, 932, 936, 949, 950, 1250, 1251, 1256, 1361})
        MVRTextRtf::fromRtfCData("{\\rtf1\\ansicpg" + QByteArray::number(codePage)
                                     + "{\\fonttbl{\\f0\\fcharset238 A;}}\\'e4\\'a4 \\f0 \\'e8}",
                                 &codePages);
    return QString::number(isRead) + read.toPlainText() + codePages.toPlainText();
}

QString screenplays()
{
    QFile file(QStringLiteral(MVR_SOURCE_DIR "/examples/screenplay.fdx"));
    MVRFinalDraftReader reader;
    QTextDocument script;
    const bool isRead = reader.load(file.fileName()) && reader.read(&script, {});
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    MVRFinalDraftWriter writer;
    const bool isWritten = writer.write(&buffer, &script, {});
    MVRDomDoc dom;
    buffer.close();
    buffer.open(QIODevice::ReadOnly);
    const bool isXml = dom.setContent(&buffer);
    return QString::number(isRead + isWritten + isXml) + script.toPlainText().left(2000);
}

/*! Files that stay themselves, and their pages. */
QString pages()
{
    QFile file(QStringLiteral(MVR_SOURCE_DIR "/examples/screenplay.fdx"));
    MVRFinalDraftFile script;
    QTextDocument document;
    const bool isRead
        = file.open(QIODevice::ReadOnly) && script.load(&file) && script.read(&document);
    QTextCursor(&document).insertText(QStringLiteral("x"));
    QBuffer written;
    QBuffer pdf;
    MVRScreenplay screenplay;
    const bool isWritten = written.open(QIODevice::WriteOnly) && pdf.open(QIODevice::WriteOnly)
        && script.write(&written, &document)
        && MVRScreenplay::fromFinalDraft(&script, &document, &screenplay, nullptr);
    MVRScreenplayPages composed(screenplay);
    composed.keepPages(1, 2);
    const bool isPdf = MVRPagePainter::writePdf(&pdf, composed, QStringLiteral("title"));
    const MVRScreenplayElements elements(script.elementSettings());
    elements.cycle(QTextCursor(&document), 1);
    return QString::number(isRead + isWritten + isPdf) + QString::number(composed.pages().size())
        + QString::fromUtf8(written.data()) + MVRScreenplayElements::elementOf(document.begin());
}

/*! What shows and edits the notes of a document, in the document's thread. */
QString views()
{
    QTextDocument document;
    fillWithNotes(&document);
    MVRNotesModel model;
    model.setDocument(&document);
    MVRNotesFilter filter(&model);
    const MVRNoteHighlighter highlighter(&document);
    const MVRWordCounter counter(&document);
    MVRParagraphView view(&document);
    view.setTextWidth(300);
    MVRNoteEdits::add(select(&document, 24, 27), MVRTextNote::Comment, QStringLiteral("new"));
    MVRNoteEdits::moveToText(&document, QTextCursor());
    MVRNoteEdits::trim(&document);
    MVRNoteEdits::footnotesToEndNotes(&document);
    const MVRTextNotes notes = MVRTextDoc::notes(&document);
    QString said = QString::number(filter.rowCount()) + QString::number(counter.words().all);
    for (const MVRTextNote &note : notes)
        said += note.text(document) + note.contentHtml(document);
    MVRTextFinder::findAllAnchors(QTextCursor(&document), false);
    MVRTextUtil::trim(&document, true, 0, 0, nullptr);
    return said + document.toPlainText() + QString::number(MVRCoreUtil::CreateUUID().size());
}

QString documents()
{
    QTextDocument document;
    fillWithNotes(&document);
    MVRTextDoc::setFont(&document, QFont(QStringLiteral("Serif"), 11));
    MVRTextDoc::setTypographyPen(&document, QPen(Qt::red));
    const std::unique_ptr<QTextDocument> clone(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    MVRTextDoc::appendDocumentPreservePageBreak(cursor, clone.get());
    MVRToolkit::toStockParagraphs(&document, 400);
    QString error;
    const QString html = MVRTextXhtmlExporter::htmlToXhtml(document.toHtml());
    return MVRBbCodeConverter().fromHtml(html, &error) + error + document.toPlainText()
        + QString::number(MVRTextDoc::pageCount(&document, QSizeF(200, 100)));
}

} // namespace

Q_DECLARE_METATYPE(Job)

void TestThreads::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
}

void TestThreads::worksInManyThreads_data()
{
    QTest::addColumn<Job>("job");
    QTest::newRow("settings") << Job(settings);
    QTest::newRow("notes") << Job(notes);
    QTest::newRow("markup") << Job(markup);
    QTest::newRow("RTF") << Job(rtf);
    QTest::newRow("screenplays") << Job(screenplays);
    QTest::newRow("pages") << Job(pages);
    QTest::newRow("views") << Job(views);
    QTest::newRow("documents") << Job(documents);
}

/*! One thread changes settings while the others read them. */
void TestThreads::readsSettingsThatChange()
{
    mvrOptions().setFileName(m_dir.filePath(QStringLiteral("changing.ini")));
    const QColor colors[] = {Qt::red, Qt::green};
    std::atomic<bool> isEnding {false};
    std::thread writer([&] {
        for (int i = 0; !isEnding; ++i) {
            mvrOptions().setValue(MVRSettings::CommentColorSetting, colors[i % 2]);
            mvrOptions().setValue(MVRSettings::WordSearchSetting, i % 3 == 0);
            if (i % 7 == 0)
                mvrOptions().remove(MVRSettings::WordSearchSetting);
        }
    });
    std::atomic<int> odd {0};
    mvrOptions().setValue(MVRSettings::CommentColorSetting, colors[0]);
    runTogether([&] {
        for (int i = 0; i < 200; ++i) {
            const QColor color = mvrOptions().value(MVRSettings::CommentColorSetting);
            odd += color != colors[0] && color != colors[1];
            notes();
        }
        return QString();
    });
    isEnding = true;
    writer.join();
    QCOMPARE(odd.load(), 0);
}

void TestThreads::worksInManyThreads()
{
    QFETCH(const Job, job);
    bool isNumber = false;
    const int asked = qEnvironmentVariableIntValue("MVR_THREAD_ROUNDS", &isNumber);
    const int rounds = isNumber ? asked : 20;
    for (int round = 0; round < rounds; ++round) {
        // The settings are opened anew, by whichever thread comes first.
        mvrOptions().setFileName(m_dir.filePath(QString::number(round) + QStringLiteral(".ini")));
        const std::vector<QString> said = runTogether(job);
        const QString alone = job();
        QVERIFY(!alone.isEmpty());
        for (const QString &answer : said)
            QCOMPARE(answer, alone);
    }
}

QTEST_MAIN(TestThreads)
#include "tst_threads.moc"
