// SPDX-License-Identifier: MIT
// Final Draft files that other programs wrote: no text is lost on the way in, and none, nor any
// format or type, on the way out and in again.

#include <finaldraft/MVRFinalDraftReader.h>
#include <finaldraft/MVRFinalDraftWriter.h>

#include <QBuffer>
#include <QDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>
#include <iterator>

class TestFdxSamples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryText_data() { addFiles(); }
    void readsEveryText();
    void comesBackTheSame_data() { addFiles(); }
    void comesBackTheSame();

private:
    static void addFiles();
};

namespace {

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

/*! An element as the file has it, read apart from the library's own tree. */
struct Element
{
    QString tag;
    QString type;
    QString text;
    QVector<Element> children;

    QVector<Element> childrenOf(const char *childTag) const
    {
        QVector<Element> found;
        std::copy_if(children.begin(), children.end(), std::back_inserter(found),
                     [&](const Element &child) { return child.tag == s(childTag); });
        return found;
    }
    Element child(const char *childTag) const { return childrenOf(childTag).value(0); }
};

Element readElement(QXmlStreamReader &xml)
{
    Element element;
    element.tag = xml.name().toString();
    element.type = xml.attributes().value(s("Type")).toString();
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement())
            element.children << readElement(xml);
        else if (xml.isCharacters())
            element.text += xml.text();
        else if (xml.isEndElement())
            break;
    }
    return element;
}

/*! The text of the paragraphs below \a parent; \a types are those with settings so far. */
QStringList paragraphTexts(const Element &parent, QSet<QString> *types)
{
    static const QSet<QString> standardTypes {s("General"),   s("Scene Heading"), s("Action"),
                                              s("Character"), s("Parenthetical"), s("Dialogue"),
                                              s("Shot"),      s("Transition"),    s("Cast List")};

    QStringList texts;
    const QVector<Element> paragraphs = parent.childrenOf("Paragraph");
    for (const Element &paragraph : paragraphs) {
        if (!paragraph.child("DualDialogue").tag.isEmpty()) {
            texts << paragraphTexts(paragraph.child("DualDialogue"), types);
            continue;
        }
        if (standardTypes.contains(paragraph.type))
            types->insert(paragraph.type);
        if (!types->contains(paragraph.type) && !types->contains(s("Action")))
            continue; // a paragraph without settings has no place
        QString text;
        const QVector<Element> runs = paragraph.childrenOf("Text");
        for (const Element &run : runs)
            text += run.text.isEmpty() ? s(" ") : run.text;
        texts << text.split(QLatin1Char('\n'));
    }
    return texts;
}

QStringList blockTexts(const QTextDocument &document)
{
    QStringList texts;
    for (QTextBlock block = document.begin(); block != document.lastBlock(); block = block.next())
        texts << block.text();
    return texts;
}

/*! Every paragraph's type and runs, with the formats that files can tell. */
QStringList describe(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block != document.lastBlock(); block = block.next()) {
        QString line = block.blockFormat().stringProperty(MVRScriptElement::NameProperty);
        QString format;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            MVRFinalDraft::TextAttr attr;
            attr.fromCharFormat(it.fragment().charFormat(), Qt::white);
            const QString runFormat
                = s("|%1 %2 %3 %4:")
                      .arg(attr.font, MVRFinalDraft::toString(attr.style),
                           MVRFinalDraft::toString(attr.color), QString::number(attr.size));
            if (format != runFormat) // what only a note divides is one run
                line += runFormat;
            format = runFormat;
            line += it.fragment().text();
        }
        lines << line;
    }
    return lines;
}

}

void TestFdxSamples::addFiles()
{
    QTest::addColumn<QString>("path");
    const QDir folder(s(MVR_TEST_DATA "/fdx"));
    const QStringList names = folder.entryList({s("*.fdx")}, QDir::Files, QDir::Name);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
    QVERIFY(names.size() >= 17);
}

void TestFdxSamples::readsEveryText()
{
    QFETCH(const QString, path);
    MVRFinalDraftReader reader;
    QVERIFY2(reader.load(path), qPrintable(reader.errorString()));
    QTextDocument document;
    QVERIFY2(reader.read(&document, {}), qPrintable(reader.errorString()));

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(file.readAll().trimmed());
    QVERIFY(xml.readNextStartElement());
    const Element root = readElement(xml);
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));

    QSet<QString> types;
    const QVector<Element> settings = root.childrenOf("ElementSettings");
    for (const Element &setting : settings)
        types << setting.type;
    QStringList expected = paragraphTexts(root.child("TitlePage").child("Content"), &types);
    QCOMPARE(reader.titlePageBlockCount(), expected.size());
    expected << paragraphTexts(root.child("Content"), &types);
    QStringList actual = blockTexts(document);
    QCOMPARE(actual.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i) {
        // A note that finds no word before it leaves a stand-in.
        while (actual.at(i) != expected.at(i) && actual.at(i).contains(s("Comment")))
            actual[i].remove(actual.at(i).indexOf(s("Comment")), 7);
        QCOMPARE(actual.at(i), expected.at(i));
    }
}

void TestFdxSamples::comesBackTheSame()
{
    QFETCH(const QString, path);
    MVRFinalDraftReader reader;
    QTextDocument document;
    QVERIFY(reader.load(path));
    QVERIFY(reader.read(&document, {}));
    QHash<QString, MVRFinalDraft::ElementSettings> settings;
    QVERIFY(reader.readElements(&settings));
    QList<MVRScriptElement> elements;
    for (const MVRFinalDraft::ElementSettings &setting : qAsConst(settings)) {
        MVRScriptElement element(setting.type);
        element.setBlockFormat(setting.parBlockFormat());
        element.setCharFormat(setting.textCharFormat());
        elements << element;
    }

    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    MVRFinalDraftWriter writer;
    writer.setElementChoice(MVRFinalDraftWriter::ChooseByName);
    QVERIFY(writer.write(&buffer, &document, elements));
    buffer.seek(0);
    MVRFinalDraftReader again;
    QTextDocument copy;
    QVERIFY2(again.load(&buffer), qPrintable(again.errorString()));
    QVERIFY(again.read(&copy, {}));
    QStringList expected = describe(document);
    expected << describe(document).last().section(QLatin1Char('|'), 0, 0); // its empty last block
    const QStringList actual = describe(copy);
    for (int i = 0; i < qMin(actual.size(), expected.size()); ++i)
        QCOMPARE(actual.at(i), expected.at(i));
    QCOMPARE(actual.size(), expected.size());
}

QTEST_MAIN(TestFdxSamples)

#include "tst_fdxsamples.moc"
