#include "ToolRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

/*! The commands that count, replace in and append documents. */
class TestToolDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void countsFiles();
    void replacesText();
    void appendsDocuments();
    void tellsFigures();

private:
    QString path(const QString &name) const { return m_folder->path(name); }
    QString write(const QString &name, const QByteArray &content) const
    {
        return m_folder->write(name, content);
    }
    QByteArray read(const QString &name) const { return m_folder->read(name); }

    QScopedPointer<ToolFolder> m_folder;
};

void TestToolDocuments::init()
{
    m_folder.reset(new ToolFolder);
    QVERIFY(m_folder->isValid());
}

void TestToolDocuments::countsFiles()
{
    const QString one = write(QStringLiteral("one.txt"), "Well-known words\nhere");
    const QString rtf = write(QStringLiteral("two.rtf"),
                              "{\\rtf1 Text{\\footnote \\pard the foot note} more.\\par}");
    const QStringList command {QStringLiteral("count"), one, path(QStringLiteral("none.txt")), rtf};
    const Run table = mvrtext(command);
    QCOMPARE(table.exitCode, 1);
    QVERIFY2(QRegularExpression(QStringLiteral("one.txt +3 +21\n.*two.rtf +2 +10\ntotal +5 +31\n$"))
                 .match(QString::fromUtf8(table.output))
                 .hasMatch(),
             table.output.constData());
    QVERIFY2(table.errors.contains("none.txt: "), table.errors.constData());

    const Run json = mvrtext({QStringLiteral("count"), QStringLiteral("--json"),
                              QStringLiteral("--with-footnotes"), rtf});
    QCOMPARE(json.exitCode, 0);
    const QJsonObject counts = QJsonDocument::fromJson(json.output).object();
    QCOMPARE(counts.value(QLatin1String("words")).toInt(), 5);
    const QJsonObject file = counts.value(QLatin1String("files")).toArray().at(0).toObject();
    QCOMPARE(file.value(QLatin1String("characters")).toInt(), 10 + 13);
}

void TestToolDocuments::replacesText()
{
    const QString in = write(QStringLiteral("in.txt"), "Cat, cat.\n\nCatalogue\n");
    const QString out = path(QStringLiteral("out.txt"));
    const auto replaced = [&](const QString &options) {
        const QStringList command
            = QStringLiteral("replace %1 -o %2 %3").arg(in, out, options).split(QLatin1Char(' '));
        const Run run = mvrtext(command);
        return run.exitCode == 0
            ? run.errors.mid(run.errors.lastIndexOf(": ") + 2) + read(QStringLiteral("out.txt"))
            : QByteArray();
    };
    QCOMPARE(replaced(QStringLiteral("--find cat --with dog")),
             QByteArray("3 places replaced\ndog, dog.\n\ndogalogue\n"));
    QCOMPARE(replaced(QStringLiteral("--find cat --with dog --match-case")),
             QByteArray("1 place replaced\nCat, dog.\n\nCatalogue\n"));
    QCOMPARE(replaced(QStringLiteral("--regexp --find [,.].* --with !")),
             QByteArray("1 place replaced\nCat!\n\nCatalogue\n"));
    QCOMPARE(replaced(QStringLiteral("--find , --with=")),
             QByteArray("1 place replaced\nCat cat.\n\nCatalogue\n"));

    // A line feed does not push the title page's end into the script.
    const QString script = path(QStringLiteral("script.fdx"));
    QCOMPARE(mvrtext({QStringLiteral("replace"), example(), QStringLiteral("-o"), script,
                      QStringLiteral("--find"), QStringLiteral("by"), QStringLiteral("--with"),
                      QStringLiteral("by\nhand of")})
                 .exitCode,
             0);
    const auto titlePage = [](const QString &file) {
        const Run info = mvrtext({QStringLiteral("info"), QStringLiteral("--json"), file});
        return QJsonDocument::fromJson(info.output)
            .object()
            .value(QLatin1String("titlePageParagraphs"))
            .toInt();
    };
    QCOMPARE(titlePage(script), titlePage(example()) + 1);
}

void TestToolDocuments::appendsDocuments()
{
    const QString one = write(QStringLiteral("one.rtf"), "{\\rtf1{\\info{\\title First}}one\\par}");
    const QString two = write(QStringLiteral("two.txt"), "two\n\nthree\n");
    const QString empty = write(QStringLiteral("empty.txt"), "");
    const QString out = path(QStringLiteral("out.rtf"));
    QCOMPARE(mvrtext({QStringLiteral("append"), one, empty, two, one, QStringLiteral("-o"), out,
                      QStringLiteral("--page-break")})
                 .exitCode,
             0);
    QCOMPARE(read(QStringLiteral("out.rtf")).count("\\pagebb"), 2);
    QVERIFY(read(QStringLiteral("out.rtf")).contains("First"));
    const QString text = path(QStringLiteral("out.txt"));
    QCOMPARE(mvrtext({QStringLiteral("convert"), out, text}).exitCode, 0);
    QCOMPARE(read(QStringLiteral("out.txt")), QByteArray("one\ntwo\n\nthree\n\none\n"));

    // The elements of the first screenplay stay, with those that only the second one has.
    const QString plain
        = write(QStringLiteral("plain.fdx"), script("<Paragraph Type=\"Action\"/>"));
    const QString play = path(QStringLiteral("play.fdx"));
    QCOMPARE(
        mvrtext({QStringLiteral("append"), plain, example(), QStringLiteral("-o"), play}).exitCode,
        0);
    QVERIFY(read(QStringLiteral("play.fdx")).contains("Type=\"Scene Heading\""));
    QVERIFY(read(QStringLiteral("play.fdx")).contains("ScriptNote"));

    QCOMPARE(mvrtext({QStringLiteral("append"), one, two, QStringLiteral("-o"), two}).exitCode, 1);
    QCOMPARE(read(QStringLiteral("two.txt")), QByteArray("two\n\nthree\n"));
}

void TestToolDocuments::tellsFigures()
{
    const QString text
        = write(QStringLiteral("a.txt"), "Don\xe2\x80\x99t stop \xe2\x80\x94 now.\n\nTwo");
    const QStringList info {QStringLiteral("info"), QStringLiteral("--json")};
    const QJsonObject plain
        = QJsonDocument::fromJson(mvrtext(info + QStringList(text)).output).object();
    QCOMPARE(plain.value(QLatin1String("paragraphs")).toInt(), 3);
    QCOMPARE(plain.value(QLatin1String("words")).toInt(), 4);
    QCOMPARE(plain.value(QLatin1String("characters")).toInt(), 22);
    QCOMPARE(plain.value(QLatin1String("pages")).toInt(), 1);
    QVERIFY(!plain.contains(QLatin1String("elements")));

    const QJsonObject play
        = QJsonDocument::fromJson(mvrtext(info + QStringList(example())).output).object();
    const QJsonObject elements = play.value(QLatin1String("elements")).toObject();
    QCOMPARE(elements.value(QLatin1String("Scene Heading")).toInt(), 4); // three and a shot
    QCOMPARE(elements.value(QLatin1String("Dialogue")).toInt(), 26);
    QCOMPARE(play.value(QLatin1String("notes")).toObject().value(QLatin1String("comment")).toInt(),
             5);
    QCOMPARE(play.value(QLatin1String("scaling")).toDouble(), 100.0);
    QCOMPARE(play.value(QLatin1String("showInvisibles")), QJsonValue(false));
    QCOMPARE(play.value(QLatin1String("pages")).toInt(), 5);
}

QTEST_GUILESS_MAIN(TestToolDocuments)
#include "tst_tooldocuments.moc"
