// SPDX-License-Identifier: MIT
#include <core/MVRTextFormat.h>
#include <finaldraft/MVRFinalDraftWriter.h>

#include <QBuffer>
#include <QDomDocument>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>
#include <QtTest>

class TestFdxWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placesNotes_data();
    void placesNotes();
    void keepsItsStateBetweenWrites();
    void typesParagraphs();
    void prefersTheNotedElement();
    void writesElementSettings();
    void writesTablesByColumn();
    void writesPageBreaks_data();
    void writesPageBreaks();
    void writesRunsExactly();
    void keepsSurrogatePairsWhole();
    void writesPageLayoutOnRequest();
    void tellsNotesOfRuns();
    void writesTheTitlePage();
    void refusesWhatItCannotWrite();
};

namespace {

using State = MVRFinalDraftWriter::FragmentState;

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

QDomDocument written(const QTextDocument &document, const QList<MVRScriptElement> &elements = {})
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    MVRFinalDraftWriter writer;
    QDomDocument dom;
    if (writer.write(&buffer, &document, elements))
        dom.setContent(buffer.data());
    return dom;
}

QDomElement content(const QDomDocument &dom)
{
    return dom.documentElement().firstChildElement(s("Content"));
}

/*! The tree below \a element: P for a paragraph, N for a note, texts as they are. */
QString outline(const QDomElement &element)
{
    QStringList children;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == s("Text"))
            children << child.text();
        else
            children << child.tagName().left(1).replace(QLatin1Char('S'), QLatin1Char('N'))
                    + outline(child);
    }
    return QLatin1Char('(') + children.join(QLatin1Char(' ')) + QLatin1Char(')');
}

/*! Makes text of a script: "[" and "]" hold an annotation, "{" and "}" a footnote, "<" and ">"
    carry an inspector comment, "/" ends a paragraph. */
void typeText(QTextDocument *document, const QString &text)
{
    const QString codes = s("[]{}<>");
    QTextCursor cursor(document);
    QTextCharFormat format;
    for (const QChar character : text) {
        switch (codes.indexOf(character)) {
        case 0:
            format.setProperty(MVRTextFormat::InlineAnnotationProperty, true);
            break;
        case 2:
            format.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
            break;
        case 4:
            format.setProperty(MVRTextFormat::InspectorCommentProperty, true);
            format.setProperty(MVRTextFormat::CommentCDataProperty, QByteArray("{\\rtf1 n}"));
            break;
        case 1:
        case 3:
        case 5:
            format = QTextCharFormat();
            break;
        default:
            if (character == QLatin1Char('/'))
                cursor.insertBlock();
            else
                cursor.insertText(character, format);
        }
    }
}

MVRScriptElement element(const char *name, double leftIndent)
{
    MVRScriptElement element {s(name)};
    QTextBlockFormat format;
    format.setProperty(MVRTextFormat::BlockLeftIndentProperty, leftIndent);
    element.setBlockFormat(format);
    return element;
}

}

void TestFdxWriter::placesNotes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tree");

    QTest::newRow("empty document") << ""
                                    << "(P())";
    QTest::newRow("within a paragraph") << "a[n]b"
                                        << "(P(a N(P(n)) b))";
    QTest::newRow("two notes in a paragraph") << "a[m]b[n]c"
                                              << "(P(a N(P(m)) b N(P(n)) c))";
    QTest::newRow("footnote beside an annotation") << "a[m]{n}b"
                                                   << "(P(a N(P(m)) N(P(n)) b))";
    QTest::newRow("at a paragraph's end") << "a[n]/b"
                                          << "(P(a N(P(n))) P(b))";
    QTest::newRow("over a paragraph's end") << "a[m/n]b/c"
                                            << "(P(a N(P(m) P(n)) b) P(c))";
    QTest::newRow("at a paragraph's start") << "[n]a/b"
                                            << "(N(P(P(n)) a) P(b))";
    QTest::newRow("open at the end") << "a[n"
                                     << "(P(a N(P(n))))";
    QTest::newRow("annotated text is text") << "a<b>c"
                                            << "(P(a b c))";
}

void TestFdxWriter::placesNotes()
{
    QFETCH(const QString, text);
    QTextDocument document;
    typeText(&document, text);
    const QDomDocument dom = written(document);
    QTEST(outline(content(dom)), "tree");
    const QDomNodeList notes = dom.elementsByTagName(s("ScriptNote"));
    for (int i = 0; i < notes.size(); ++i) {
        QCOMPARE(notes.at(i).toElement().attribute(s("ID")), s("1"));
        QVERIFY(notes.at(i).firstChildElement().hasAttribute(s("LeftIndent")));
    }
    QCOMPARE(dom.elementsByTagName(s("ScriptNoteDefinition")).size(), 3);
}

void TestFdxWriter::keepsItsStateBetweenWrites()
{
    QTextDocument annotated;
    typeText(&annotated, s("a[n"));
    QTextDocument followUp;
    typeText(&followUp, s("[m"));
    MVRFinalDraftWriter writer;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QVERIFY(writer.write(&buffer, &annotated, {}));
    buffer.buffer().clear();
    buffer.seek(0);
    QVERIFY(writer.write(&buffer, &followUp, {}));
    QDomDocument dom;
    QVERIFY(dom.setContent(buffer.data()));
    QCOMPARE(outline(content(dom)), s("(P(m))")); // the note is taken for still open
}

void TestFdxWriter::typesParagraphs()
{
    const QList<MVRScriptElement> elements {element("Narrow", 100), element("Wide", 20),
                                            element("Wide Too", 20)};
    MVRFinalDraftWriter writer;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTextDocument document;
    QVERIFY(writer.write(&buffer, &document, elements));

    QTextBlockFormat format = element("", 20).blockFormat();
    QCOMPARE(writer.findScriptElementName(format), s("Wide"));
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    format.setProperty(MVRTextFormat::BlockLeftIndentProperty, 20.36); // rounded on its way
    QCOMPARE(writer.findScriptElementName(format), s("Wide"));
    format.setProperty(MVRTextFormat::BlockLeftIndentProperty, 20.5);
    QCOMPARE(writer.findScriptElementName(format), s("Action"));
    format.setProperty(MVRTextFormat::BlockLeftIndentProperty, 20.0);
    format.setAlignment(Qt::AlignRight);
    QCOMPARE(writer.findScriptElementName(format), s("Action"));
    QVERIFY(writer.findScriptElement(format).name().isEmpty());
}

void TestFdxWriter::prefersTheNotedElement()
{
    const QList<MVRScriptElement> elements {element("Narrow", 100), element("Wide", 20),
                                            element("Wide Too", 20)};
    MVRFinalDraftWriter writer;
    const auto type = [&](const char *noted, double leftIndent) {
        QTextDocument document;
        QTextBlockFormat format = element("", leftIndent).blockFormat();
        format.setProperty(MVRScriptElement::NameProperty, s(noted));
        QTextCursor(&document).setBlockFormat(format);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QDomDocument dom;
        if (!writer.write(&buffer, &document, elements) || !dom.setContent(buffer.data()))
            return QString();
        return content(dom).firstChildElement().attribute(s("Type"));
    };
    // Shapes alone decide, unless a host asks for names.
    QCOMPARE(type("Wide Too", 20), s("Wide"));
    QCOMPARE(type("Wide Too", 55), s("Action"));
    writer.setElementChoice(MVRFinalDraftWriter::ChooseByName);
    QCOMPARE(type("Wide Too", 20), s("Wide Too")); // shapes are equal: the note decides
    QCOMPARE(type("Narrow", 20), s("Wide")); // the paragraph was given another shape since
    QCOMPARE(type("Wide Too", 55), s("Wide Too")); // a shape of its own
    QCOMPARE(type("Gone", 55), s("Action"));
}

void TestFdxWriter::writesElementSettings()
{
    MVRScriptElement cast = element("Cast List", 36);
    QTextBlockFormat format = cast.blockFormat();
    format.setTopMargin(9.9);
    format.setAlignment(Qt::AlignRight);
    cast.setBlockFormat(format);
    QTextDocument document;
    document.setDocumentMargin(72);
    const QDomDocument dom = written(document, {MVRScriptElement(), cast, element("Montage", 0)});

    const QDomElement root = dom.documentElement();
    const QDomElement first = root.firstChildElement(s("ElementSettings"));
    QCOMPARE(first.previousSiblingElement().tagName(), s("ScriptNoteDefinitions"));
    QCOMPARE(first.attribute(s("Type")), s("Cast List"));
    const QDomElement shape = first.firstChildElement(s("ParagraphSpec"));
    QCOMPARE(shape.attribute(s("LeftIndent")), s("1.50"));
    QCOMPARE(shape.attribute(s("SpaceBefore")), s("9"));
    QCOMPARE(shape.attribute(s("Alignment")), s("Right"));
    QCOMPARE(shape.attribute(s("Style")), s("AllCaps"));
    const QDomElement behavior = first.firstChildElement(s("Behavior"));
    QCOMPARE(behavior.attribute(s("Shortcut")), s("1"));
    QCOMPARE(behavior.attribute(s("PaginateAs")), s("Action"));

    const QDomElement second = first.nextSiblingElement();
    QCOMPARE(second.attribute(s("Type")), s("Montage"));
    QVERIFY(!second.firstChildElement(s("ParagraphSpec")).hasAttribute(s("Style")));
    QVERIFY(second.nextSiblingElement().isNull());
}

void TestFdxWriter::writesTablesByColumn()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextTable *table = cursor.insertTable(2, 2);
    const char *const texts[2][2] = {{"a", "c"}, {"b", "d"}};
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 2; ++column)
            table->cellAt(row, column).firstCursorPosition().insertText(s(texts[row][column]));
    }
    QCOMPARE(outline(content(written(document))), s("(P() P(a) P(b) P(c) P(d) P())"));
}

void TestFdxWriter::writesPageBreaks_data()
{
    QTest::addColumn<int>("policy");
    QTest::addColumn<QString>("attribute");

    QTest::newRow("before") << 1 << "Yes";
    QTest::newRow("after") << 2 << "";
    QTest::newRow("before and after") << 3 << "Yes";
}

void TestFdxWriter::writesPageBreaks()
{
    QFETCH(const int, policy);
    QTextDocument document;
    QTextBlockFormat format;
    format.setProperty(QTextFormat::PageBreakPolicy, policy);
    QTextCursor(&document).setBlockFormat(format);
    QTEST(content(written(document)).firstChildElement().attribute(s("StartsNewPage")),
          "attribute");
}

void TestFdxWriter::writesRunsExactly()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    bold.setFontPointSize(12.5);
    cursor.insertText(s("  two "));
    cursor.insertText(QString::fromUtf8("\xF0\x9F\x8E\xAC <&>\tx\xE2\x80\xA8y") + QChar(0x3), bold);
    const QDomElement paragraph = content(written(document)).firstChildElement();
    QCOMPARE(paragraph.firstChildElement().text(), s("  two "));
    const QDomElement run = paragraph.lastChildElement();
    QCOMPARE(run.text(), QString::fromUtf8("\xF0\x9F\x8E\xAC <&>\tx\xE2\x80\xA8y"));
    QCOMPARE(run.attribute(s("Style")), s("Bold"));
    QCOMPARE(run.attribute(s("Size")), s("12.5"));
    QCOMPARE(run.attribute(s("Background")), s("#FFFFFFFFFFFF"));
    QVERIFY(paragraph.firstChildElement().hasAttribute(s("Style")));
}

void TestFdxWriter::keepsSurrogatePairsWhole()
{
    QTextDocument document;
    typeText(&document, s("x"));
    QTextCursor cursor(&document);
    cursor.insertText(QString::fromUtf8("a\xF0\x9F\x8E\xAC"));
    cursor.setPosition(2);
    cursor.setPosition(0, QTextCursor::KeepAnchor);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    cursor.mergeCharFormat(bold); // ends between the halves
    QCOMPARE(outline(content(written(document))), QString::fromUtf8("(P(a \xF0\x9F\x8E\xACx))"));
}

void TestFdxWriter::writesPageLayoutOnRequest()
{
    QTextDocument document;
    QVERIFY(written(document).documentElement().firstChildElement(s("PageLayout")).isNull());
    MVRFinalDraftWriter writer;
    writer.writePageLayout(); // outside a write there is nothing to write to
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly) && writer.write(&buffer, &document, {}));
    writer.writePageLayout(); // nor behind one
    QVERIFY(!writer.writeElementSettings());
    QVERIFY(writer.processFrameIterator(document.rootFrame()->begin()));
    QVERIFY(!writer.processBlock(document.firstBlock()));
}

void TestFdxWriter::tellsNotesOfRuns()
{
    using Fragment = MVRFinalDraftWriter::FragmentState;
    const QPair<int, Fragment::Kind> kinds[]
        = {{MVRTextFormat::InlineAnnotationProperty, Fragment::InlineAnnotation},
           {MVRTextFormat::InlineFootnoteProperty, Fragment::InlineFootnote},
           {MVRTextFormat::InspectorCommentProperty, Fragment::InspectorComment},
           {MVRTextFormat::InspectorFootnoteProperty, Fragment::InspectorFootnote},
           {MVRTextFormat::PreserveFormattingProperty, Fragment::PlainText}};
    MVRFinalDraftWriter writer;
    for (const auto &[property, kind] : kinds) {
        QTextCharFormat format;
        format.setProperty(property, true);
        format.setProperty(MVRTextFormat::CommentCDataProperty, QByteArray("note"));
        const Fragment state = writer.toFragmentState(format);
        QCOMPARE(int(state.kind), int(kind));
        const bool isInspectors
            = kind == Fragment::InspectorComment || kind == Fragment::InspectorFootnote;
        QCOMPARE(state.noteData, isInspectors ? QByteArray("note") : QByteArray());
        format.setProperty(property, false);
        QCOMPARE(int(writer.toFragmentState(format).kind), int(Fragment::PlainText));
    }
}

void TestFdxWriter::writesTheTitlePage()
{
    QTextDocument document;
    typeText(&document, s("[TITLE]/by/FADE IN/[a] b"));
    QTextBlockFormat centred;
    centred.setAlignment(Qt::AlignCenter);
    centred.setProperty(MVRTextFormat::BlockRightIndentProperty, 468.0);
    QTextCursor(document.begin()).setBlockFormat(centred);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    MVRFinalDraftWriter writer;
    writer.setTitlePageBlockCount(2);
    QVERIFY(writer.write(&buffer, &document, {}));
    QDomDocument dom;
    QVERIFY(dom.setContent(buffer.data()));
    const QDomElement page = dom.documentElement().lastChildElement(s("TitlePage"));
    // Its notes stay inside their paragraphs.
    QCOMPARE(outline(page), s("(C(P(N(P(TITLE))) P(by)))"));
    QCOMPARE(outline(content(dom)), s("(P(FADE IN) N(P(P(a))  b))"));
    const QDomElement title = page.firstChildElement().firstChildElement();
    QCOMPARE(title.attribute(s("Alignment")), s("Center"));
    QVERIFY(!title.hasAttribute(s("Type")));
}

void TestFdxWriter::refusesWhatItCannotWrite()
{
    QTextDocument document;
    MVRFinalDraftWriter writer;
    QBuffer buffer;
    QVERIFY(!writer.write(static_cast<QIODevice *>(nullptr), &document, {}));
    buffer.open(QIODevice::WriteOnly);
    QVERIFY(!writer.write(&buffer, nullptr, {}));
    QVERIFY(buffer.data().isEmpty());
    QTemporaryDir folder;
    QVERIFY(!writer.write(folder.filePath(s("none/x.fdx")), &document, {}));
    QVERIFY(writer.write(folder.filePath(s("x.fdx")), &document, {}));
    if (QFile::exists(s("/dev/full")))
        QVERIFY(!writer.write(s("/dev/full"), &document, {}));
}

QTEST_MAIN(TestFdxWriter)

#include "tst_fdxwriter.moc"
