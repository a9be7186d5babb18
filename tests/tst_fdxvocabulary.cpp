// SPDX-License-Identifier: MIT
#include <core/MVRDomDoc.h>
#include <core/MVRTextFormat.h>
#include <core/MVRToolkit.h>
#include <finaldraft/MVRFinalDraft.h>

#include <QtTest>

using namespace MVRFinalDraft;

class TestFdxVocabulary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void convertsKeywordsBothWays();
    void convertsColors_data();
    void convertsColors();
    void carriesFontSettings();
    void choosesColorsOfText_data();
    void choosesColorsOfText();
    void readsRunAttributes_data();
    void readsRunAttributes();
    void carriesParagraphSettings();
    void movesIndentsToThePaperEdge();
    void refusesAbsurdNumbers();
    void formatsParagraphAttributes_data();
    void formatsParagraphAttributes();
    void readsAndWritesElementSettings();
    void defaultsAreThoseOfAnEmptyScript();
};

namespace {

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

/*! The cursor on the root element of \a xml. */
void parse(MVRDomDoc *dom, const char *xml)
{
    QVERIFY2(dom->setContent(s(xml)), qPrintable(dom->errorString()));
}

}

void TestFdxVocabulary::convertsKeywordsBothWays()
{
    QCOMPARE(int(toElementType(s("Scene Heading"))), int(SceneHeading));
    QCOMPARE(int(toElementType(s("dialogue"))), int(NoElement));
    QCOMPARE(int(toElementType(QString())), int(NoElement));
    QVERIFY(MVRFinalDraft::toString(NoElement).isNull());
    QVERIFY(MVRFinalDraft::toString(ElementType(10)).isNull());
    // This keyword is read in one form and written in another.
    QCOMPARE(int(toElementType(s("Cast List"))), int(CastList));
    QCOMPARE(MVRFinalDraft::toString(CastList), s("CastList"));
    QCOMPARE(int(toElementType(s("CastList"))), int(NoElement));

    QCOMPARE(int(toLeadingParStyle(s("Normal"))), int(Normal));
    QCOMPARE(MVRFinalDraft::toString(Normal), s("Regular"));
    QVERIFY(MVRFinalDraft::toString(LeadingParStyle(6)).isNull());

    QCOMPARE(MVRFinalDraft::toString(Strikeout | AllCaps | Bold), s("Bold+AllCaps+Strikeout"));
    QCOMPARE(MVRFinalDraft::toString(FontStyleFlags()), s(""));
    QCOMPARE(int(toFontFlags(s("Italic++Bogus+Bold+bold"))), int(Italic | Bold));

    QCOMPARE(toAlignment(s("Full"), Qt::AlignLeft), Qt::Alignment(Qt::AlignJustify));
    QCOMPARE(toAlignment(s("center"), Qt::AlignRight), Qt::Alignment(Qt::AlignRight));
    QCOMPARE(MVRFinalDraft::toString(Qt::Alignment(Qt::AlignCenter)), s("Center"));
    QCOMPARE(MVRFinalDraft::toString(Qt::AlignRight | Qt::AlignTop), s("Left"));
}

void TestFdxVocabulary::convertsColors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("color");

    const QColor fallback(1, 2, 3);
    QTest::newRow("low bytes count") << "#FF00800000FF" << QColor(0, 0, 255);
    QTest::newRow("any first character") << "X123412341234" << QColor(0x34, 0x34, 0x34);
    QTest::newRow("digits behind are ignored") << "#000000000000FF" << QColor(0, 0, 0);
    QTest::newRow("too short") << "#FFF" << fallback;
    QTest::newRow("empty") << "" << fallback;
    QTest::newRow("no digits") << "#00000000GGGG" << fallback;
}

void TestFdxVocabulary::convertsColors()
{
    QFETCH(const QString, text);
    QFETCH(const QColor, color);
    QCOMPARE(toColor(text, QColor(1, 2, 3)), color);
    QCOMPARE(MVRFinalDraft::toString(QColor(255, 0, 128)), s("#FFFF00008080"));
}

void TestFdxVocabulary::carriesFontSettings()
{
    TextAttr attr;
    attr.style = Bold | Italic | DottedUnderline | AllCaps | Strikeout;
    attr.color = Qt::red;
    attr.background = QColor(0, 255, 0);
    attr.size = 13.5;
    const QTextCharFormat format = attr.toCharFormat();
    QCOMPARE(format.fontWeight(), int(QFont::Bold));
    QVERIFY(format.fontItalic() && format.fontUnderline() && format.fontStrikeOut());
    QCOMPARE(format.font().capitalization(), QFont::MixedCase);
    QCOMPARE(MVRToolkit::fontFamily(format), s("Courier Final Draft"));

    TextAttr back;
    back.style = WordUnderline; // what is set stays set
    back.fromCharFormat(format, QColor());
    QCOMPARE(int(back.style), int(Bold | Italic | Underline | WordUnderline | Strikeout));
    QCOMPARE(back.size, 13.5);
    QCOMPARE(back.color, QColor(Qt::red));
    QCOMPARE(back.background, QColor(0, 255, 0));
    QVERIFY(!TextAttr().toCharFormat().hasProperty(QTextFormat::BackgroundBrush));
}

void TestFdxVocabulary::choosesColorsOfText_data()
{
    QTest::addColumn<QColor>("foregroundBrush"); // invalid: none
    QTest::addColumn<QColor>("backgroundBrush");
    QTest::addColumn<QColor>("defaultBackground");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("background");

    const QColor none;
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    const QColor blue(Qt::blue);
    QTest::newRow("no brushes") << none << none << white << black << white;
    QTest::newRow("no brushes, no default") << none << none << none << black << white;
    QTest::newRow("default as dark as the text") << none << none << black << black << white;
    QTest::newRow("white text on nothing") << white << none << white << black << white;
    QTest::newRow("both set") << white << blue << white << white << blue;
}

void TestFdxVocabulary::choosesColorsOfText()
{
    QFETCH(const QColor, foregroundBrush);
    QFETCH(const QColor, backgroundBrush);
    QFETCH(const QColor, defaultBackground);
    QTextCharFormat format;
    if (foregroundBrush.isValid())
        format.setForeground(foregroundBrush);
    if (backgroundBrush.isValid())
        format.setBackground(backgroundBrush);
    TextAttr attr;
    attr.fromCharFormat(format, defaultBackground);
    QTEST(attr.color, "color");
    QTEST(attr.background, "background");
}

void TestFdxVocabulary::readsRunAttributes_data()
{
    QTest::addColumn<QString>("attributes");
    QTest::addColumn<bool>("adorned");
    QTest::addColumn<int>("style");
    QTest::addColumn<double>("size");

    // Each starts from an adorned bold run of 10 points.
    QTest::newRow("nothing") << "" << false << int(Bold) << 10.0;
    QTest::newRow("spelling mark") << "AdornmentStyle='-1'" << true << int(Bold) << 10.0;
    QTest::newRow("other mark") << "AdornmentStyle='1'" << true << int(Bold) << 10.0;
    QTest::newRow("empty style") << "Style=''" << false << int(Bold) << 10.0;
    QTest::newRow("other style") << "Style='Italic'" << false << int(Italic) << 10.0;
    QTest::newRow("size") << "Size='14.5'" << false << int(Bold) << 14.5;
    QTest::newRow("no size") << "Size='big'" << false << int(Bold) << 10.0;
    QTest::newRow("absurd size") << "Size='1e9'" << false << int(Bold) << 10.0;
}

void TestFdxVocabulary::readsRunAttributes()
{
    QFETCH(const QString, attributes);
    MVRDomDoc dom;
    QVERIFY(dom.setContent(s("<Text %1/>").arg(attributes)));
    TextAttr attr;
    attr.adornmentStyle = true;
    attr.style = Bold;
    attr.size = 10;
    QVERIFY(attr.fromDomElement(dom.currentElement()));
    QTEST(attr.adornmentStyle, "adorned");
    QTEST(int(attr.style), "style");
    QTEST(attr.size, "size");
}

void TestFdxVocabulary::carriesParagraphSettings()
{
    ParagraphAttr attr;
    attr.alignment = Qt::AlignCenter;
    attr.firstIndent = -0.1;
    attr.leftIndent = 2;
    attr.rightIndent = 4.5;
    attr.spaceBefore = 22;
    attr.spacing = 1.5;
    attr.startsNewPage = true;
    const QTextBlockFormat format = attr.toBlockFormat();
    QCOMPARE(format.textIndent(), 136.8);
    QCOMPARE(format.doubleProperty(MVRTextFormat::BlockLeftIndentProperty), 144.0);
    QCOMPARE(format.doubleProperty(MVRTextFormat::BlockRightIndentProperty), 324.0);
    QCOMPARE(format.topMargin(), 22.0);
    QCOMPARE(int(format.alignment()), 0x84);
    QVERIFY(format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore);
    QVERIFY(!ParagraphAttr().toBlockFormat().hasProperty(QTextFormat::PageBreakPolicy));

    ParagraphAttr back;
    back.leading = Tight;
    back.fromBlockFormat(format, 0);
    QCOMPARE(back.alignment, attr.alignment);
    QCOMPARE(back.firstIndent, attr.firstIndent);
    QCOMPARE(back.rightIndent, attr.rightIndent);
    QCOMPARE(back.spaceBefore, 22);
    QCOMPARE(back.spacing, 1.5);
    QVERIFY(back.startsNewPage);
    QCOMPARE(int(back.leading), int(Tight));

    const QPair<int, int> alignments[] = {{Qt::AlignRight | Qt::AlignVCenter, Qt::AlignRight},
                                          {Qt::AlignLeft | Qt::AlignAbsolute, Qt::AlignLeft},
                                          {Qt::AlignHCenter, Qt::AlignHCenter},
                                          {Qt::AlignJustify, Qt::AlignJustify},
                                          {Qt::AlignTop, Qt::AlignLeft}};
    for (const auto &[given, shown] : alignments) {
        ParagraphAttr aligned;
        aligned.alignment = Qt::Alignment(given);
        QCOMPARE(int(aligned.toBlockFormat().alignment() & Qt::AlignHorizontal_Mask), shown);
    }

    QTextBlockFormat heading;
    heading.setHeadingLevel(3); // has the number of our line spacing
    back.fromBlockFormat(heading, 0);
    QCOMPARE(back.spacing, 1.0);
    QVERIFY(!back.startsNewPage);
}

void TestFdxVocabulary::movesIndentsToThePaperEdge()
{
    MVRDomDoc dom;
    parse(&dom, "<P LeftIndent='1.50' RightIndent='7.50' FirstIndent='-0.10' Leading='Loose'/>");
    ParagraphAttr attr;
    attr.fromDomElement(dom.currentElement(), 72);
    QCOMPARE(attr.leftIndent, 0.5);
    QCOMPARE(attr.rightIndent, 6.5);
    QCOMPARE(attr.firstIndent, -0.1);
    QCOMPARE(int(attr.leading), int(Loose));

    attr.fromBlockFormat(attr.toBlockFormat(), 72);
    MVRDomDoc written;
    QVERIFY(attr.toDomDoc(&written, s("P")));
    const QDomElement element = written.find(s("/P"));
    QCOMPARE(element.attribute(s("LeftIndent")), s("1.50"));
    QCOMPARE(element.attribute(s("RightIndent")), s("7.50"));
    QCOMPARE(element.attribute(s("FirstIndent")), s("-0.10"));
}

void TestFdxVocabulary::refusesAbsurdNumbers()
{
    MVRDomDoc dom;
    parse(&dom,
          "<P LeftIndent='1e300' RightIndent='nan' SpaceBefore='2147483647' Spacing='1e9'"
          " StartsNewPage='perhaps'/>");
    ParagraphAttr attr;
    attr.fromDomElement(dom.currentElement(), 0);
    QCOMPARE(attr.leftIndent, 0.5);
    QCOMPARE(attr.rightIndent, 6.5);
    QCOMPARE(attr.spaceBefore, 0);
    QCOMPARE(attr.spacing, 1.0);
    QVERIFY(!attr.startsNewPage);
    parse(&dom, "<P SpaceBefore='-2147483648'/>");
    attr.fromDomElement(dom.currentElement(), 0);
    QCOMPARE(attr.spaceBefore, 0);

    QTextBlockFormat format;
    format.setTopMargin(1e300);
    attr.fromBlockFormat(format, 0);
    QVERIFY(attr.spaceBefore > 0);
}

void TestFdxVocabulary::formatsParagraphAttributes_data()
{
    QTest::addColumn<double>("spacing");
    QTest::addColumn<int>("style");
    QTest::addColumn<QString>("spacingText");

    QTest::newRow("single") << 1.0 << 0 << "1";
    QTest::newRow("double") << 2.0 << int(AllCaps) << "2";
    QTest::newRow("one and a half") << 1.5 << 0 << "1.5";
    QTest::newRow("triple") << 3.0 << 0 << "3.0";
}

void TestFdxVocabulary::formatsParagraphAttributes()
{
    QFETCH(const double, spacing);
    QFETCH(const int, style);
    ParagraphAttr attr;
    attr.spacing = spacing;
    attr.style = FontStyleFlags(style);
    MVRDomDoc dom;
    QVERIFY(attr.toDomDoc(&dom, s("ParagraphSpec")));
    const QDomElement element = dom.find(s("/ParagraphSpec"));
    QTEST(element.attribute(s("Spacing")), "spacingText");
    QCOMPARE(element.hasAttribute(s("Style")), style != 0);
    QCOMPARE(element.attribute(s("StartsNewPage")), s("No"));
}

void TestFdxVocabulary::readsAndWritesElementSettings()
{
    MVRDomDoc dom;
    parse(&dom,
          "<ElementSettings Type='Montage'><FontSpec Font='Arial' Style='Bold'/>"
          "<ParagraphSpec LeftIndent='2.50'/>"
          "<Behavior PaginateAs='Action' ReturnKey='Bogus' Shortcut='7'/></ElementSettings>");
    ElementSettings settings;
    QVERIFY(settings.fromDomDoc(&dom, 36));
    QCOMPARE(dom.currentElement().tagName(), s("ElementSettings"));
    QCOMPARE(settings.type, s("Montage"));
    QCOMPARE(settings.fontSpec.font, s("Arial"));
    QCOMPARE(settings.paragraphSpec.leftIndent, 2.0);
    QCOMPARE(int(settings.returnKey), int(NoElement));
    QCOMPARE(settings.shortcut, s("7"));

    MVRDomDoc written;
    QVERIFY(written.create(s("FinalDraft")));
    QVERIFY(settings.toDomDoc(&written));
    QCOMPARE(written.currentElement().tagName(), s("FinalDraft"));
    const QDomElement behavior = written.find(s("ElementSettings/Behavior"));
    QCOMPARE(behavior.attribute(s("PaginateAs")), s("Action"));
    const QDomElement font = written.find(s("ElementSettings/FontSpec"));
    QCOMPARE(font.attribute(s("Size")), s("12"));
    QVERIFY(font.text().isEmpty() && font.hasAttribute(s("Color")));

    parse(&dom, "<ElementSettings Type=''><FontSpec Font='Courier'/></ElementSettings>");
    QVERIFY(!settings.fromDomDoc(&dom, 0));
    QCOMPARE(settings.fontSpec.font, s("Arial"));
}

void TestFdxVocabulary::defaultsAreThoseOfAnEmptyScript()
{
    // What a new script of version 6 says; the older defaults have other spaces before paragraphs.
    MVRDomDoc dom;
    QFile file(s(MVR_TEST_DATA "/fdx/finaldraft-v6-empty.fdx"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    parse(&dom, file.readAll());
    int compared = 0;
    for (QDomElement element = dom.find(s("/FinalDraft/ElementSettings")); !element.isNull();
         element = element.nextSiblingElement(s("ElementSettings"))) {
        const ElementType type = toElementType(element.attribute(s("Type")));
        if (type < SceneHeading || type > Dialogue)
            continue;
        const QDomElement behavior = element.firstChildElement(s("Behavior"));
        const QDomElement font = element.firstChildElement(s("FontSpec"));
        ParagraphAttr read;
        read.fromDomElement(element.firstChildElement(s("ParagraphSpec")), 72);
        ElementSettings defaults;
        defaults.paragraphSpec.startsNewPage = true; // no default's business
        defaults.applyFdxAppDefaults(type);
        QCOMPARE(defaults.type, element.attribute(s("Type")));
        QCOMPARE(toString(defaults.paginateAs), behavior.attribute(s("PaginateAs")));
        QCOMPARE(toString(defaults.returnKey), behavior.attribute(s("ReturnKey")));
        QCOMPARE(bool(defaults.paragraphSpec.style & AllCaps),
                 font.attribute(s("Style")) == s("AllCaps"));
        QCOMPARE(defaults.paragraphSpec.leftIndent, read.leftIndent);
        QCOMPARE(defaults.paragraphSpec.firstIndent, read.firstIndent);
        QVERIFY(defaults.paragraphSpec.startsNewPage);
        ++compared;
    }
    QCOMPARE(compared, 5);
}

QTEST_MAIN(TestFdxVocabulary)

#include "tst_fdxvocabulary.moc"
