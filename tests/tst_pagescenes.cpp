// SPDX-License-Identifier: MIT
#include "PageDump.h"

#include <QtTest>

/*! Scenes on pages: what a break says of them, which of them stay, how long they are. */
class TestPageScenes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsContinuedsByScene();
    void keepsScenesAndPages();
    void measuresScenes();
};

void TestPageScenes::countsContinuedsByScene()
{
    MVRScreenplay script;
    script.settings.continuesBrokenScene = script.settings.countsContinueds = true;
    for (int scene = 0; scene < 2; ++scene) {
        script.body.append(
            scriptParagraph(QStringLiteral("Scene Heading"), QStringLiteral("int. room")));
        script.body.last().attr.startsNewPage = true;
        script.body.append(scriptParagraph(QStringLiteral("Action"),
                                           QStringLiteral("It rains again. ").repeated(500)));
    }
    QStringList tops;
    const QVector<MVRScreenplayPage> pages = MVRScreenplayPages(script).pages();
    for (const MVRScreenplayPage &page : pages) {
        for (const MVRScreenplayLine &line : page.lines) {
            if (line.kind == MVRScreenplayLine::SceneTop)
                tops.append(line.text());
        }
    }
    const QStringList ofScene = {QStringLiteral("CONTINUED:"), QStringLiteral("CONTINUED: (2)")};
    QCOMPARE(tops, ofScene + ofScene);
}

void TestPageScenes::keepsScenesAndPages()
{
    MVRScreenplay script;
    for (const char *number : {"1", "2", "2A", "3", "4"}) {
        script.body.append(
            scriptParagraph(QStringLiteral("Scene Heading"), QStringLiteral("int. room")));
        script.body.last().sceneNumber = QLatin1String(number);
        script.body.append(scriptParagraph(
            QStringLiteral("Action"),
            QStringLiteral("Text of %1. ").arg(QLatin1String(number)).repeated(120)));
    }
    MVRScreenplayPages pages(script);
    const int all = pages.pages().size();
    QVERIFY(!pages.keepScenes(QStringLiteral("5"), QStringLiteral("6")));
    QVERIFY(!pages.keepScenes(QStringLiteral("3"), QStringLiteral("2")));
    QCOMPARE(pages.pages().size(), all);
    QVERIFY(pages.keepScenes(QStringLiteral("2"), QStringLiteral("2a")));
    const QByteArray sides = dumpOf(pages);
    QVERIFY(sides.contains("Text of 2.") && sides.contains("Text of 2A."));
    QVERIFY(!sides.contains("Text of 1.") && !sides.contains("Text of 3."));
    QVERIFY(pages.pages().first().number > 0);

    MVRScreenplayPages some(script);
    QVERIFY(!some.keepPages(100, 200));
    QVERIFY(some.keepPages(2, 3));
    QCOMPARE(some.pages().size(), 2);
    QCOMPARE(some.pages().first().number, 2);
}

void TestPageScenes::measuresScenes()
{
    // 54 lines: a scene of 27, one of 2 (and two above it), one over the page's end.
    MVRScreenplay script;
    const auto line = [](int count) {
        QStringList lines;
        for (int i = 0; i < count; ++i)
            lines << QStringLiteral("Line %1.").arg(i + 1);
        return lines.join(QLatin1Char('\n'));
    };
    for (const int lines : {25, 1, 60}) {
        script.body.append(
            scriptParagraph(QStringLiteral("Scene Heading"), QStringLiteral("int. room")));
        script.body.append(scriptParagraph(QStringLiteral("Action"), line(lines)));
    }
    const MVRScreenplayPages pages(script);
    const QVector<MVRScreenplayScene> scenes = pages.scenes();
    QCOMPARE(scenes.size(), 3);
    QCOMPARE(scenes[0].eighths, 4);
    QCOMPARE(scenes[1].eighths, 1);
    QCOMPARE(scenes[2].eighths, 9);
    const QVector<MVRScreenplaySceneLength> parts = pages.sceneLengths();
    QCOMPARE(parts.size(), 4);
    QCOMPARE(parts[1].firstLine, 27);
    QCOMPARE(parts[1].lastLine, 28);
    QCOMPARE(parts[2].firstText, QStringLiteral("INT. ROOM"));
    QCOMPARE(parts[3].page, 1);
    QCOMPARE(parts[3].firstLine, 1);
    QCOMPARE(parts[3].lastText, QStringLiteral("Line 60."));

    // What a break brings along is no line of the script.
    script.settings.marksBrokenScene = script.settings.continuesBrokenScene = true;
    const QVector<MVRScreenplaySceneLength> marked = MVRScreenplayPages(script).sceneLengths();
    QVERIFY2(marked[2].lastText.startsWith(QLatin1String("Line ")), qPrintable(marked[2].lastText));
    QVERIFY(marked[3].firstText.startsWith(QLatin1String("Line ")));
    QCOMPARE(marked[3].firstLine, 2);
}

QTEST_MAIN(TestPageScenes)
#include "tst_pagescenes.moc"
