// SPDX-License-Identifier: MIT
#include <core/MVRDomDoc.h>

#include <QBuffer>
#include <QtTest>

class TestDomDoc : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsText_data();
    void keepsText();
    void refusesHostileText_data();
    void refusesHostileText();
    void leavesTheTreeEmptyAfterAFault();
    void movesItsCursor();
    void readsTypedAttributes();
    void writesWhatItReadsBack();
    void indentsOnlyElements();
    void reportsADeviceThatTakesLess();
};

namespace {

bool parse(MVRDomDoc *dom, const QByteArray &xml)
{
    QBuffer buffer;
    buffer.setData(xml);
    buffer.open(QIODevice::ReadOnly);
    return dom->setContent(&buffer);
}

QByteArray saved(const MVRDomDoc &dom)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return dom.save(buffer) ? buffer.data() : QByteArray("not saved");
}

/*! A device with room for a few bytes only. */
class FullDevice : public QIODevice
{
protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 size) override { return qMin<qint64>(size, 10); }
};

}

void TestDomDoc::keepsText_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("text");

    QTest::newRow("only blanks") << QByteArray("<a>   </a>") << "   ";
    QTest::newRow("tab and line feed") << QByteArray("<a>\t\n x</a>") << "\t\n x";
    QTest::newRow("line ends of other systems") << QByteArray("<a>x\r\ny</a>") << "x\ny";
    QTest::newRow("beyond the first plane") << QByteArray("<a>&#x1F600;\xF0\x9F\x98\x80</a>")
                                            << QString::fromUcs4(U"\U0001F600\U0001F600");
    QTest::newRow("entities and CDATA are one text")
        << QByteArray("<a>x&amp;<![CDATA[<b>]]>y</a>") << "x&<b>y";
    QTest::newRow("blank before the declaration")
        << QByteArray("\n <?xml version=\"1.0\" encoding=\"UTF-8\"?><a>x</a>") << "x";
    QTest::newRow("another encoding")
        << QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xE9</a>")
        << QString(QChar(0xE9));
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF<a>x</a>") << "x";
    QTest::newRow("blank behind a byte order mark")
        << QByteArray("\xEF\xBB\xBF\n<?xml version=\"1.0\"?>"
                      "<a>x</a>")
        << "x";
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE<\0a\0>\0x\0<\0/\0a\0>\0", 18) << "x";
    QTest::newRow("control character in another encoding")
        << QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\x01\xE9</a>")
        << QString(QChar(0xE9));
    QTest::newRow("a few entities")
        << QByteArray("<!DOCTYPE a [<!ENTITY e \"and so on\">]><a>&e;&e;</a>")
        << "and so onand so on";
    QTest::newRow("declared in no document type")
        << QByteArray("<a><![CDATA[<!DOCTYPE a [<!ATTLIST]]></a>") << "<!DOCTYPE a [<!ATTLIST";
    QTest::newRow("comment of many equals signs") << "<a><!--" + QByteArray(5000, '=') + "-->x</a>"
                                                  << "x";
    const QByteArray many = "<x" + QByteArray(" a=1").repeated(300);
    const QString manyText = QString::fromLatin1(many + '>');
    QTest::newRow("what looks like many attributes in a section")
        << "<a><![CDATA[" + many + ">]]></a>" << manyText;
    QTest::newRow("what looks like many attributes in a comment")
        << "<a><!-- " + many + "> --><?p " + many + ">?>x</a>"
        << "x";
    QTest::newRow("a later version") << QByteArray("<?xml version = '1.1'?><a>1.1</a>") << "1.1";
    const QString later
        = QChar(QChar::ByteOrderMark) + QStringLiteral("<?xml version=\"1.1\"?><a>x</a>");
    QTest::newRow("a later version in UTF-16")
        << QByteArray(reinterpret_cast<const char *>(later.utf16()), later.size() * 2) << "x";
    QTest::newRow("bytes that are no UTF-8") << QByteArray("<a b=\"\x01\xFF\">x</a>") << "x";
}

void TestDomDoc::keepsText()
{
    QFETCH(const QByteArray, xml);
    QFETCH(const QString, text);
    MVRDomDoc dom;
    QVERIFY2(parse(&dom, xml), qPrintable(dom.errorString()));
    QCOMPARE(dom.currentElement().text(), text);
    QVERIFY(dom.errorString().isNull());
}

void TestDomDoc::refusesHostileText_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("reason");

    QTest::newRow("nothing") << QByteArray() << "Line 1";
    QTest::newRow("wrong end tag") << QByteArray("<a>\n<b></a>") << "Line 2, column";
    QTest::newRow("one element too deep")
        << QByteArray("<a>").repeated(MVRDomDoc::maxDepth + 1) << "256 levels";
    QTest::newRow("a million elements deep") << QByteArray("<a>").repeated(1000000) << "256 levels";

    QByteArray bomb = "<!DOCTYPE a [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 8; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ';';
        bomb += "<!ENTITY e" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    QTest::newRow("entities in entities") << bomb + "]><a>&e7;</a>"
                                          << "grow";
    QTest::newRow("one entity many times") << "<!DOCTYPE a [<!ENTITY e \"" + QByteArray(3000, 'x')
            + "\">]><a>" + QByteArray("&e;").repeated(10000) + "</a>"
                                           << "grow";
    QTest::newRow("entity in a file")
        << QByteArray("<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/hostname\">]><a>&e;</a>")
        << "outside";

    QTest::newRow("one large entity")
        << "<!DOCTYPE a [<!ENTITY e \"" + QByteArray(100000, 'x') + "\">]><a>&e;</a>"
        << "grow";

    const QByteArray attributes = "<!ATTLIST a b CDATA 'x'>";
    const char *declared = "declares attributes";
    const auto typed = [](const QByteArray &declarations) {
        return "<?xml version=\"1.0\"?><!-- < --><!DOCTYPE a [" + declarations + "]><a/>";
    };
    QTest::newRow("attributes of the document type") << typed(attributes) << declared;
    QTest::newRow("attributes behind what looks like the end")
        << typed("<!ENTITY e ']><a>'><!-- \"]><a> --><?p ']>?>" + attributes) << declared;
    QTest::newRow("declarations in an entity")
        << typed("<!ENTITY \n% e \"&#60;!ATTLIST a b CDATA 'x'>\">%e;") << declared;
    const QString wide = QChar(QChar::ByteOrderMark) + QString::fromLatin1(typed(attributes));
    QTest::newRow("attributes in UTF-16")
        << QByteArray(reinterpret_cast<const char *>(wide.utf16()), wide.size() * 2) << declared;
    QTest::newRow("attributes in an encoding without angle brackets") // known to few
        << QByteArray("<?xml version=\"1.0\" encoding = 'UTF-7'?><!DOCTYPE a ["
                      "+ADw-!ATTLIST a b CDATA 'x'>]><a/>")
        << "";

    QByteArray flood = "<a";
    for (int i = 0; i < 100000; ++i)
        flood += " a" + QByteArray::number(i) + "=\"\"";
    QTest::newRow("attributes without end") << "<r>\n" + flood + "/>"
                                            << "Line 2, column 1: An element has more than";
    QTest::newRow("attributes behind the start of a comment in an entity")
        << "<!DOCTYPE a [<!ENTITY e '<!-- '>]>" + flood + "/>"
        << "attributes";
}

void TestDomDoc::refusesHostileText()
{
    QFETCH(const QByteArray, xml);
    QFETCH(const QString, reason);
    MVRDomDoc dom;
    QVERIFY(!parse(&dom, xml));
    QVERIFY2(dom.errorString().contains(reason), qPrintable(dom.errorString()));
}

void TestDomDoc::leavesTheTreeEmptyAfterAFault()
{
    MVRDomDoc dom;
    QVERIFY(dom.setContent(QStringLiteral("<a><b/></a>")));
    QVERIFY(!dom.setContent(QStringLiteral("<a><b>")));
    QVERIFY(dom.currentElement().isNull());
    QVERIFY(!dom.cd(QStringLiteral("/a")));
    QVERIFY(!dom.setContent(static_cast<QIODevice *>(nullptr)));
    QVERIFY(!dom.errorString().isEmpty());
}

void TestDomDoc::movesItsCursor()
{
    MVRDomDoc dom;
    QVERIFY(dom.setContent(QStringLiteral("<r>x<a i='1'/><b><c/></b><a i='2'/></r>")));
    const auto attribute = [&] { return dom.currentElement().attribute(QStringLiteral("i")); };

    QVERIFY(!dom.cd(QStringLiteral("c")));
    QCOMPARE(dom.currentElement().tagName(), QStringLiteral("r"));
    QVERIFY(dom.currentChild().isText());
    QVERIFY(dom.cd(QStringLiteral("a")));
    QCOMPARE(attribute(), QStringLiteral("1"));
    QVERIFY(dom.cdNext(QStringLiteral("a"))); // over the other tag
    QCOMPARE(attribute(), QStringLiteral("2"));
    QVERIFY(!dom.cdNext(QStringLiteral("a")));
    QCOMPARE(attribute(), QStringLiteral("2"));

    QVERIFY(dom.cd(QStringLiteral("/r/b/c")));
    QVERIFY(!dom.cd(QStringLiteral("/b/c")));
    QCOMPARE(dom.find(), dom.currentElement());
    QVERIFY(dom.cdUp(2));
    QCOMPARE(dom.currentElement().tagName(), QStringLiteral("r"));
    QVERIFY(!dom.cdUp(1));
    QCOMPARE(dom.find(QStringLiteral("b/c")).tagName(), QStringLiteral("c"));
    QVERIFY(dom.find(QStringLiteral("b/d")).isNull());
}

void TestDomDoc::readsTypedAttributes()
{
    MVRDomDoc dom;
    QVERIFY(dom.setContent(
        QStringLiteral("<a yes='Yes' no='No' soup='maybe' n='-12' d='1.5' inf='inf' empty=''/>")));
    const QDomElement element = dom.currentElement();

    bool flag = false;
    QVERIFY(dom.getAttr(QStringLiteral("yes"), &flag, element));
    QCOMPARE(flag, true);
    QVERIFY(dom.getAttr(QStringLiteral("no"), &flag, element));
    QCOMPARE(flag, false);
    flag = true;
    QVERIFY(!dom.getAttr(QStringLiteral("soup"), &flag, element));
    QCOMPARE(flag, true);

    int number = 7;
    QVERIFY(dom.getAttr(QStringLiteral("n"), &number, element));
    QCOMPARE(number, -12);
    QVERIFY(!dom.getAttr(QStringLiteral("d"), &number, element));
    QVERIFY(!dom.getAttr(QStringLiteral("absent"), &number, element));
    QCOMPARE(number, -12);

    double real = 0.5;
    QVERIFY(!dom.getAttr(QStringLiteral("inf"), &real, element));
    QVERIFY(!dom.getAttr(QStringLiteral("empty"), &real, element));
    QCOMPARE(real, 0.5);
    QVERIFY(dom.getAttr(QStringLiteral("d"), &real, element));
    QCOMPARE(real, 1.5);

    QString text = QStringLiteral("before");
    QVERIFY(!dom.getAttr(QStringLiteral("absent"), &text, element));
    QCOMPARE(text, QStringLiteral("before"));
    QVERIFY(dom.getAttr(QStringLiteral("empty"), &text, element));
    QVERIFY(text.isEmpty());
    QVERIFY(!dom.getAttr(QStringLiteral("yes"), &flag, QDomElement()));
}

void TestDomDoc::writesWhatItReadsBack()
{
    const QString text = QString::fromUcs4(U"  <&>\"'\t\u2028 \U0001F3AC  ");
    MVRDomDoc dom;
    QVERIFY(dom.create(QStringLiteral("root")));
    QVERIFY(dom.create(QStringLiteral("child")));
    QVERIFY(!dom.create(QStringLiteral("no name")));
    QVERIFY(dom.set(QStringLiteral("."), text + QChar(0x1) + QChar(0xD83C)));
    QVERIFY(dom.setAttr(QStringLiteral("size"), 12.0));
    QVERIFY(dom.setAttr(QStringLiteral("half"), 10.5));
    QVERIFY(dom.setAttr(QStringLiteral("empty"), QString()));
    QVERIFY(dom.setAttr(QStringLiteral("text"), QStringLiteral("a\n\"b\"\t<")));
    QVERIFY(!dom.setAttr(QStringLiteral("x"), 1, QStringLiteral("nowhere")));
    QVERIFY(!dom.setAttr(QStringLiteral("a b"), 1));

    MVRDomDoc copy;
    QVERIFY2(parse(&copy, saved(dom)), qPrintable(copy.errorString()));
    const QDomElement child = copy.find(QStringLiteral("/root/child"));
    QCOMPARE(child.text(), text);
    QCOMPARE(child.attribute(QStringLiteral("size")), QStringLiteral("12"));
    QCOMPARE(child.attribute(QStringLiteral("half")), QStringLiteral("10.5"));
    QVERIFY(child.hasAttribute(QStringLiteral("empty")));
    QCOMPARE(child.attribute(QStringLiteral("text")), QStringLiteral("a\n\"b\"\t<"));
}

void TestDomDoc::indentsOnlyElements()
{
    MVRDomDoc dom;
    QVERIFY(dom.setContent(QStringLiteral(
        "<?xml version='1.0'?><r>\n\n<a><b> </b><b/></a>   \n<p>x <i>y</i> <b>z</b></p></r>")));
    QCOMPARE(saved(dom),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n"
                        "<r>\n <a>\n  <b> </b>\n  <b/>\n </a>\n"
                        " <p>x <i>y</i> <b>z</b></p>\n</r>\n"));
    QVERIFY(dom.setContent(QStringLiteral("<r><a/><!-- c --><b/></r>")));
    QVERIFY2(saved(dom).endsWith("<r>\n <a/>\n <!-- c -->\n <b/>\n</r>\n"), saved(dom));
}

void TestDomDoc::reportsADeviceThatTakesLess()
{
    MVRDomDoc dom;
    QVERIFY(dom.setContent(QStringLiteral("<a>longer than ten bytes</a>")));
    FullDevice device;
    QVERIFY(device.open(QIODevice::WriteOnly));
    QVERIFY(!dom.save(device));
}

QTEST_APPLESS_MAIN(TestDomDoc)

#include "tst_domdoc.moc"
