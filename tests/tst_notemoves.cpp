// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRSettings.h>
#include <core/MVRTextRtf.h>
#include <text/MVRTextDoc.h>

#include <QImage>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextDocumentFragment>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

#include <functional>

using MarkedText::select;

class TestNoteMoves : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void keepsContentsThereAndBack_data();
    void keepsContentsThereAndBack();
    void takesNoWordOfWhichLettersAreNoted();
    void keepsEmptyParagraphsInside();
    void undoesAndRedoesExactly_data();
    void undoesAndRedoesExactly();
    void turnsTablesOfContentsIntoText();
    void leavesOtherCellsAlone();
    void keepsLinksUnderNotes_data();
    void keepsLinksUnderNotes();

private:
    QTemporaryDir m_dir;
};

namespace {

/*! Draws documents whose notes hold what a writer puts into them. */
class Generator
{
public:
    explicit Generator(quint32 seed)
        : m_random(seed)
    {
    }

    void fill(QTextDocument *document)
    {
        document->clear();
        QTextCursor cursor(document);
        for (int paragraph = bounded(6); paragraph >= 0; --paragraph) {
            QTextBlockFormat format;
            format.setAlignment(bounded(2) ? Qt::AlignLeft : Qt::AlignHCenter);
            format.setTextIndent(10.0 * bounded(3));
            cursor.setBlockFormat(format);
            for (int words = bounded(8); words > 0; --words)
                insertWord(cursor);
            if (paragraph > 0)
                cursor.insertBlock();
        }
        document->clearUndoRedoStacks();
    }

    int bounded(int highest) { return m_random.bounded(highest); }

private:
    void insertWord(QTextCursor &cursor)
    {
        const int start = cursor.position();
        cursor.insertText(word(), charFormat());
        QTextCursor note = select(cursor.document(), start + bounded(2), cursor.position());
        if (bounded(2))
            MVRTextDoc::setCommentCData(note, content(), bounded(2));
        cursor.insertText(QString(1 + bounded(2), QLatin1Char(' ')), QTextCharFormat());
    }

    QString word()
    {
        static const QStringList words
            = QString::fromUtf8("one two's слово 語 ελλάδα don’t שלום x2 😀 re-entry")
                  .split(QLatin1Char(' '));
        return words.at(bounded(words.size()));
    }

    QTextCharFormat charFormat()
    {
        QTextCharFormat format;
        if (!bounded(3))
            format.setFontWeight(QFont::Bold);
        if (!bounded(4))
            format.setFontItalic(true);
        if (!bounded(6)) {
            format.setAnchor(true);
            format.setAnchorHref(QStringLiteral("https://example.org/%1").arg(bounded(9)));
        }
        return format;
    }

    QByteArray content()
    {
        QTextDocument document;
        QTextCursor cursor(&document);
        // Touching notes of equal content would be one note.
        cursor.insertText(QStringLiteral("note %1 ").arg(m_notes++), charFormat());
        if (!bounded(4)) {
            QImage image(3, 2, QImage::Format_RGB32);
            image.fill(Qt::red);
            cursor.insertImage(image);
        }
        // The paragraphs at both ends become part of paragraphs of prose: their own form goes.
        if (!bounded(3)) {
            cursor.insertBlock();
            cursor.insertText(word(), charFormat());
            if (bounded(2))
                cursor.createList(QTextListFormat::ListDecimal);
            cursor.insertBlock(QTextBlockFormat(), charFormat());
        }
        cursor.insertText(word() + QLatin1Char('.'), charFormat());
        return MVRTextRtf::toRtfCData(&document, false);
    }

    QRandomGenerator m_random;
    int m_notes = 0;
};

/*! What to say when a random document fails; lives until the next call. */
const char *nameOf(quint32 seed)
{
    static QByteArray name;
    name = "seed " + QByteArray::number(seed);
    return name.constData();
}

/*! What a note says and looks like, a line per paragraph. */
QString described(const QByteArray &cdata)
{
    QTextDocument content;
    MVRTextRtf::fromRtfCData(cdata, &content);
    QString text;
    for (QTextBlock block = content.begin(); block.isValid(); block = block.next()) {
        if (block.textList())
            text += QStringLiteral("(%1) ").arg(block.textList()->format().style());
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            text += QStringLiteral("%1[%2 %3 %4]")
                        .arg(it.fragment().text())
                        .arg(format.fontWeight())
                        .arg(format.fontItalic())
                        .arg(format.anchorHref());
        }
        text += QLatin1Char('\n');
    }
    return text;
}

QStringList describedNotes(const QTextDocument &document)
{
    QStringList notes;
    const MVRTextCommentLinkMap map = MVRTextDoc::commentsMap(&document, -1, -1);
    for (const MVRTextCommentLink &link : map)
        notes << QString::number(link.isFootnote) + QLatin1Char(' ') + described(link.cdata);
    return notes;
}

/*! Everything that undo has to bring back. */
struct State
{
    explicit State(const QTextDocument &document)
        : html(document.toHtml())
    {
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            formats << block.blockFormat() << block.charFormat();
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                texts << it.fragment().text();
                formats << it.fragment().charFormat();
            }
        }
    }
    bool operator==(const State &other) const
    {
        return html == other.html && texts == other.texts && formats == other.formats;
    }

    QString html;
    QStringList texts;
    QVector<QTextFormat> formats;
};

using Operation = std::function<void(QTextDocument *)>;

void toText(QTextDocument *document)
{
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, QTextCursor());
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(document, QTextCursor());
}

void toInspector(QTextDocument *document)
{
    MVRTextDoc::convertInlineAnnotationsToInspectorComments(document, true, QTextCursor());
    MVRTextDoc::convertInlineFootnotesToInspectorFootnotes(document, true, QTextCursor());
}

} // namespace

Q_DECLARE_METATYPE(Operation)

void TestNoteMoves::initTestCase()
{
    QVERIFY(m_dir.isValid());
    mvrOptions().setFileName(m_dir.filePath(QStringLiteral("settings.ini")));
}

void TestNoteMoves::keepsContentsThereAndBack_data()
{
    QTest::addColumn<bool>("leaveParagraph");
    QTest::newRow("words of the paragraph") << false;
    QTest::newRow("words of any paragraph") << true;
}

void TestNoteMoves::keepsContentsThereAndBack()
{
    QFETCH(const bool, leaveParagraph);
    mvrOptions().setValue(MVRSettings::WordSearchSetting, leaveParagraph);
    int moved = 0;
    for (quint32 seed = 1; seed <= 100; ++seed) {
        QTextDocument document;
        Generator(seed).fill(&document);
        const QStringList notes = describedNotes(document);
        toText(&document);
        QVERIFY2(describedNotes(document).isEmpty(), nameOf(seed));
        toInspector(&document);
        QVERIFY2(describedNotes(document) == notes, nameOf(seed));
        moved += notes.size();
    }
    mvrOptions().remove(MVRSettings::WordSearchSetting);
    QVERIFY(moved > 500);
}

void TestNoteMoves::takesNoWordOfWhichLettersAreNoted()
{
    QTextDocument document(QStringLiteral("one two"));
    const QString content = QStringLiteral("of letters");
    QTextDocument note(content);
    MVRTextCommentLink link;
    link.cdata = MVRTextRtf::toRtfCData(&note, false);
    MVRTextDoc::setComment(MVRTextRange(4, 6).toTextCursor(&document), link);
    QTextCursor end(&document);
    end.movePosition(QTextCursor::End);
    QTextCharFormat annotation;
    annotation.setProperty(MVRTextFormat::InlineAnnotationProperty, true);
    end.insertText(QStringLiteral(" inline"), annotation);
    MVRTextDoc::moveInlineBesideText(&document, MVRTextFormat::InlineAnnotationProperty, false,
                                     false, QTextCursor());
    QCOMPARE(document.toPlainText(), QStringLiteral("one two(Linked Comment)"));
    const QStringList notes = describedNotes(document);
    QCOMPARE(notes.size(), 2);
    QVERIFY2(notes.first().contains(content), qPrintable(notes.first()));
}

void TestNoteMoves::keepsEmptyParagraphsInside()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("word"));
    MVRTextDoc::setCommentCData(select(&document, 0, 4),
                                "{\\rtf1 \\par a\\par\\par\\par b\\par\\par}", false);
    toText(&document);
    QCOMPARE(document.toPlainText(), QStringLiteral("word a\n\n\nb"));
}

void TestNoteMoves::undoesAndRedoesExactly_data()
{
    using Document = QTextDocument *;
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<int>("steps");

    // A move and the removal of what it leaves behind are a step each.
    QTest::newRow("comments into the text") << Operation([](Document document) {
        MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, QTextCursor());
    }) << 1;
    QTest::newRow("annotations to the inspector") << Operation([](Document document) {
        MVRTextDoc::convertInlineAnnotationsToInspectorComments(document, false, QTextCursor());
    }) << 2;
    QTest::newRow("footnotes to comments") << Operation([](Document document) {
        MVRTextDoc::convertInlineFootnotesToInspectorComments(document, true, QTextCursor());
    }) << 2;
    QTest::newRow("kinds in the text") << Operation([](Document document) {
        MVRTextDoc::convertInlineAnnotationsToInlineFootnotes(document, QTextCursor());
    }) << 1;
    QTest::newRow("kinds in the inspector") << Operation([](Document document) {
        MVRTextDoc::convertInspectorCommentsToInspectorFootnotes(document, QTextCursor());
    }) << 1;
    QTest::newRow("trimming in the text") << Operation([](Document document) {
        MVRTextDoc::trimInlineNotes(document, MVRTextFormat::InlineAnnotationProperty, true, 0, 0,
                                    QTextCursor());
    }) << 1;
}

void TestNoteMoves::undoesAndRedoesExactly()
{
    QFETCH(const Operation, operation);
    QFETCH(const int, steps);
    int changed = 0;
    for (quint32 seed = 1; seed <= 40; ++seed) {
        QTextDocument document;
        Generator generator(seed);
        generator.fill(&document);
        MVRTextDoc::swapInspectorToInline(&document, MVRTextFormat::InspectorFootnoteProperty,
                                          generator.bounded(2), QTextCursor());
        document.clearUndoRedoStacks();
        QTextCursor(document.lastBlock()).insertText(QStringLiteral("typed ")); // stays when undone
        const State before(document);
        operation(&document);
        const State after(document);
        if (after == before)
            continue;
        ++changed;
        int undone = 0;
        for (; document.isUndoAvailable() && !(State(document) == before); ++undone)
            document.undo();
        QVERIFY2(State(document) == before, nameOf(seed));
        QVERIFY2(undone <= steps, qPrintable(QStringLiteral("%1 steps").arg(undone)));
        while (document.isRedoAvailable())
            document.redo();
        QVERIFY2(State(document) == after, nameOf(seed));
    }
    QVERIFY(changed > 5);
}

void TestNoteMoves::turnsTablesOfContentsIntoText()
{
    QTextDocument content;
    QTextCursor cursor(&content);
    cursor.insertText(QStringLiteral("before"));
    QTextTable *table = cursor.insertTable(1, 2);
    table->cellAt(0, 0).firstCursorPosition().insertText(QStringLiteral("left"));
    table->cellAt(0, 1).firstCursorPosition().insertText(QStringLiteral("right"));
    QTextDocument document;
    document.setPlainText(QStringLiteral("word after"));
    MVRTextDoc::setCommentCData(select(&document, 0, 4), MVRTextRtf::toRtfCData(&content, false),
                                false);
    toText(&document);
    toInspector(&document);
    const QStringList notes = MVRTextDoc::inspectorNotesToPlainText(&document);
    QCOMPARE(notes, QStringList(QStringLiteral("before\nleft\tright")));
    // A word that ever carried a note counts as one of a note.
    QCOMPARE(document.toPlainText(), QStringLiteral("word(Linked Comment) after"));
}

// The cursor would select the whole table.
void TestNoteMoves::leavesOtherCellsAlone()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertText(QStringLiteral("word"));
    QTextTable *table = cursor.insertTable(1, 3);
    for (int column = 0; column < 3; ++column)
        table->cellAt(0, column).firstCursorPosition().insertText(QString(3, QChar(u'a' + column)));
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("end"));
    MVRTextDoc::setInlineFootnoteAnnotation(select(&document, 4, cursor.position() - 3), false,
                                            true);
    MVRTextDoc::setInlineFootnoteAnnotation(document.find(QStringLiteral("bbb")), false, false);
    MVRTextDoc::trimInlineNotes(&document, MVRTextFormat::InlineAnnotationProperty, false, 0, 0,
                                QTextCursor());
    MVRTextDoc::encloseAnnotations(&document, QStringLiteral("["), QStringLiteral("]"), false);
    QCOMPARE(document.toPlainText(), QStringLiteral("word\n[aaa]\nbbb\n[ccc]\nend"));
    MVRTextDoc::convertInlineAnnotationsToInspectorComments(&document, true, QTextCursor());
    QCOMPARE(table->cellAt(0, 1).firstCursorPosition().block().text(), QStringLiteral("bbb"));
    QCOMPARE(MVRTextDoc::inspectorNotesToPlainText(&document),
             QStringList({QStringLiteral("[aaa]"), QStringLiteral("[ccc]")}));
}

void TestNoteMoves::keepsLinksUnderNotes_data()
{
    QTest::addColumn<Operation>("operation");
    const auto row
        = [](const char *name, const Operation &operation) { QTest::newRow(name) << operation; };
    const QTextCursor all;
    row("nothing", [](QTextDocument *) {});
    row("trim", [](QTextDocument *document) {
        MVRTextDoc::trimInspectorNotes(document, MVRTextFormat::InspectorCommentProperty, true, 0,
                                       0);
    });
    row("other kind", [all](QTextDocument *document) {
        MVRTextDoc::convertInspectorCommentsToInspectorFootnotes(document, all);
    });
    row("into the text", [all](QTextDocument *document) {
        MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, all);
    });
    row("there and back", [all](QTextDocument *document) {
        MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, all);
        MVRTextDoc::convertInlineAnnotationsToInspectorComments(document, false, all);
    });
    row("append", [](QTextDocument *document) {
        const QScopedPointer<QTextDocument> copy(document->clone());
        document->clear();
        QTextCursor cursor(document);
        MVRTextDoc::appendDocument(cursor, copy.data());
    });
    row("file", [](QTextDocument *document) {
        MVRTextDoc::fromRtf(MVRTextDoc::toRtf(document), document);
    });
    row("codes", [](QTextDocument *document) {
        MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, QTextCursor());
        MVRTextDoc::toInlineMarkup(document);
        MVRTextDoc::fromInlineMarkup(document);
    });
}

// The note has the link's place as long as it is there.
void TestNoteMoves::keepsLinksUnderNotes()
{
    QFETCH(const std::function<void(QTextDocument *)>, operation);
    QTextDocument document;
    document.setPlainText(QStringLiteral("see the site here"));
    QTextCharFormat link;
    link.setAnchor(true);
    link.setAnchorHref(QStringLiteral("http://x.y/"));
    document.find(QStringLiteral("site")).mergeCharFormat(link);
    MVRTextDoc::setComment(document.find(QStringLiteral("the site")), QStringLiteral(" said "),
                           false);
    operation(&document);
    MVRTextDoc::setComments(&document, {});
    QTextCursor cursor(&document);
    for (int position = 1; position < document.characterCount(); ++position) {
        cursor.setPosition(position);
        const bool isSite = position > 8 && position <= 12;
        QCOMPARE(cursor.charFormat().anchorHref(), isSite ? link.anchorHref() : QString());
    }
    QVERIFY(document.toPlainText().startsWith(QLatin1String("see the site")));
}

QTEST_MAIN(TestNoteMoves)
#include "tst_notemoves.moc"
