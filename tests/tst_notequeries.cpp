// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <text/MVRTextDoc.h>

#include <QtTest>

/*! What the menus of an application ask about a selection. */
class TestNoteQueries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
    void answersForDocuments();
};

namespace {

/*! The queries that are true of a selection, each by a letter. */
QString answersFor(const QTextCursor &cursor)
{
    const std::pair<char, bool (*)(const QTextCursor &)> queries[] = {
        {'n', &MVRTextDoc::hasInspectorCommentsOrFootnotes},
        {'c', &MVRTextDoc::hasInspectorComment},
        {'o', &MVRTextDoc::hasInspectorFootnote},
        {'a', &MVRTextDoc::hasInlineAnnotation},
        {'f', &MVRTextDoc::hasInlineFootnote},
        {'A', &MVRTextDoc::isInInlineAnnotation},
        {'F', &MVRTextDoc::isInInlineFootnote},
        {'x', &MVRTextDoc::isInlineAnnotationChecked},
        {'y', &MVRTextDoc::isInlineFootnoteChecked},
    };
    QString answers;
    for (const auto &query : queries) {
        if (query.second(cursor))
            answers += QLatin1Char(query.first);
    }
    return answers;
}

}

void TestNoteQueries::answers_data()
{
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("anchor");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("answers");
    const auto row
        = [](const char *name, const char *marks, int anchor, int position, const char *answers) {
              QTest::newRow(name) << QString::fromUtf8(marks) << anchor << position
                                  << QString::fromUtf8(answers);
          };

    row("plain text beside all kinds", "..afaf15", 0, 2, "");
    row("annotation", ".aa.", 1, 3, "aAx");
    row("annotation and more", ".aa.", 1, 4, "a");
    row("footnote", ".ff.", 3, 1, "fFy");
    row("footnote and more", ".ff.", 0, 2, "f");
    row("both inline kinds", "aaff", 0, 4, "af");
    row("in an annotation", "aaff", 1, 1, "aAx");
    row("behind the last of a footnote", ".f.", 2, 2, "fFy");
    row("inspector comment", ".1.", 1, 2, "nc");
    row("part of an inspector footnote", ".55.", 1, 4, "no");
    row("both inspector kinds", "1.5", 0, 3, "nco");
    row("behind an inspector comment", "1..", 1, 1, "nc");
    row("nothing at the position", "1..", 2, 2, "");
}

void TestNoteQueries::answers()
{
    QFETCH(const QString, marks);
    QFETCH(const int, anchor);
    QFETCH(const int, position);
    QTextDocument document;
    MarkedText::fill(&document, QString(marks.size(), QLatin1Char('t')), marks);
    QTEST(answersFor(MarkedText::select(&document, anchor, position)), "answers");
}

void TestNoteQueries::answersForDocuments()
{
    QTextDocument document;
    for (const char *marks : {"..1", "5.."}) {
        MarkedText::fill(&document, QStringLiteral("abc"), QString::fromUtf8(marks));
        QVERIFY(MVRTextDoc::hasInspectorCommentsOrFootnotes(&document));
    }
    MarkedText::fill(&document, QStringLiteral("abc"), QStringLiteral("af."));
    QVERIFY(!MVRTextDoc::hasInspectorCommentsOrFootnotes(&document));
    QVERIFY(!MVRTextDoc::hasInspectorCommentsOrFootnotes(static_cast<QTextDocument *>(nullptr)));
    QCOMPARE(answersFor(QTextCursor()), QString());
}

QTEST_MAIN(TestNoteQueries)
#include "tst_notequeries.moc"
