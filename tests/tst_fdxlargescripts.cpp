// SPDX-License-Identifier: MIT
#include "FdxOpened.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTextDocumentFragment>

namespace {

constexpr int count = 8600; // paragraphs; from 8193 on several blocks have one mark
constexpr int truth = QTextFormat::UserProperty + 77; // of a block: number of its paragraph

/*! The text of a paragraph: every fifth has none, every seventh one that is said again and again.
 */
QString textOf(int number)
{
    if (number % 5 == 3)
        return QString();
    return number % 7 == 2 ? QStringLiteral("Yes.") : QStringLiteral("This is line %1").arg(number);
}

bool isUnique(int number)
{
    return textOf(number).size() > 4;
}

/*! A script whose elements can be told by what stands beside their text. */
QByteArray largeScript()
{
    const char *const types[] = {"Action", "Character", "Dialogue"};
    QByteArray paragraphs;
    for (int i = 0; i < count; ++i)
        paragraphs += QByteArray("<Paragraph Type=\"") + types[i % 3] + "\"><Text>"
            + textOf(i).toUtf8() + "</Text><X n=\"" + QByteArray::number(i) + "\"/></Paragraph>\n";
    return script(paragraphs);
}

/*! For each paragraph of a file: the number of its element, -1 for a new one. */
QVector<int> elements(const QByteArray &file)
{
    static const QRegularExpression paragraph(
        QStringLiteral("<Paragraph[^>]*>(?:(?!</Paragraph>).)*</Paragraph>"));
    static const QRegularExpression number(QStringLiteral("<X n=\"([0-9]+)\""));
    QVector<int> found;
    auto it = paragraph.globalMatch(QString::fromUtf8(file));
    while (it.hasNext()) {
        const QRegularExpressionMatch match = number.match(it.next().captured());
        found.append(match.hasMatch() ? match.captured(1).toInt() : -1);
    }
    return found;
}

/*! Edits whole paragraphs of a document, and what they say, at random. */
class Editor
{
public:
    Editor(QTextDocument *document, uint seed)
        : m_document(document)
        , m_random(seed)
    {
    }

    void edit()
    {
        switch (m_random.bounded(8)) {
        case 0:
            select(any(), stretch()).removeSelectedText();
            break;
        case 1:
            move(any(), 1 + m_random.bounded(20), any());
            break;
        case 2: { // two that stand beside each other change places
            const int first = any();
            move(first + 1, 1, first);
            break;
        }
        case 3: {
            const int from = any();
            const QTextDocumentFragment copied(select(from, 1 + m_random.bounded(3)));
            start(m_random.bounded(2) ? from : any()).insertFragment(copied);
            break;
        }
        case 4:
            m_document->undo();
            break;
        case 5: {
            QTextCursor cursor = start(any());
            cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
            break;
        }
        default:
            for (int block = any(), i = m_random.bounded(4); i >= 0; --i)
                start(block + i).insertText(QStringLiteral("now "));
        }
    }

private:
    int any() { return m_random.bounded(m_document->blockCount() - 2); }
    int stretch()
    {
        static const int lengths[] = {1, 2, 100, 300, 511, 512, 513, 1024, 1500};
        return lengths[m_random.bounded(9)];
    }
    QTextCursor start(int block)
    {
        return QTextCursor(
            m_document->findBlockByNumber(qMin(block, m_document->blockCount() - 1)));
    }
    QTextCursor select(int block, int blocks)
    {
        QTextCursor cursor = start(block);
        cursor.setPosition(start(block + blocks).position(), QTextCursor::KeepAnchor);
        return cursor;
    }
    void move(int block, int blocks, int to)
    {
        QTextCursor cursor = select(block, blocks);
        const QTextDocumentFragment moved(cursor);
        cursor.beginEditBlock();
        cursor.removeSelectedText();
        start(to).insertFragment(moved);
        cursor.endEditBlock();
    }

    QTextDocument *m_document;
    QRandomGenerator m_random;
};

/*! The block whose element is not its paragraph's, though its text tells; -1 for none. */
int wrongBlock(const QTextDocument &document, const QVector<int> &elements)
{
    const auto paragraphOf = [](const QTextBlock &block) {
        return block.isValid() ? block.blockFormat().intProperty(truth) : -1;
    };
    QSet<int> seen;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const int is = elements[block.blockNumber()];
        const int was = paragraphOf(block);
        if (seen.contains(was))
            continue; // a copy
        seen.insert(was);
        const bool isTold = isUnique(was) && block.text().contains(textOf(was));
        const bool isInPlace = block.text() == textOf(was) && isUnique(was - 1) && isUnique(was + 1)
            && paragraphOf(block.previous()) == was - 1 && paragraphOf(block.next()) == was + 1
            && block.previous().text() == textOf(was - 1) && block.next().text() == textOf(was + 1);
        if ((isTold || isInPlace) && is != was)
            return block.blockNumber();
    }
    return -1;
}

}

/*! Scripts in which marks are not enough to tell a block's paragraph. */
class TestFdxLargeScripts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomEdits();
    void manyAlike();
};

void TestFdxLargeScripts::randomEdits()
{
    const QByteArray bytes = largeScript();
    const int rounds = qEnvironmentVariableIntValue("MVR_RANDOM_DOCUMENTS") / 10 + 4;
    for (uint seed = 1; seed <= uint(rounds); ++seed) {
        Opened opened(bytes);
        for (QTextBlock block = opened.document.begin(); block.isValid(); block = block.next()) {
            QTextBlockFormat format;
            format.setProperty(truth, block.blockNumber());
            QTextCursor(block).mergeBlockFormat(format);
        }
        opened.document.clearUndoRedoStacks();
        QCOMPARE(opened.written(), bytes);
        Editor editor(&opened.document, seed);
        for (int i = 0; i < 12; ++i) {
            editor.edit();
            if (i % 4 != 3)
                continue;
            const QVector<int> now = elements(opened.written());
            QCOMPARE(now.size(), opened.document.blockCount());
            const int wrong = wrongBlock(opened.document, now);
            QVERIFY2(wrong < 0,
                     qPrintable(QStringLiteral("seed %1, edit %2, block %3 is %4")
                                    .arg(seed)
                                    .arg(i)
                                    .arg(wrong)
                                    .arg(now.value(wrong))));
        }
    }
}

// Where all paragraphs are alike, the nearest one with the block's mark is it.
void TestFdxLargeScripts::manyAlike()
{
    const QByteArray one = "<Paragraph Type=\"Action\"><Text></Text></Paragraph>\n";
    const QByteArray bytes = script(one.repeated(20000));
    Opened opened(bytes);
    QTextCursor cursor(opened.document.findBlockByNumber(700));
    cursor.insertText(QStringLiteral("One"));
    cursor.setPosition(opened.document.findBlockByNumber(9000).position());
    cursor.setPosition(opened.document.findBlockByNumber(9600).position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    QCOMPARE(opened.written(),
             script(one.repeated(700) + QByteArray(one).replace("<Text>", "<Text>One")
                    + one.repeated(19299 - 600)));
}

QTEST_MAIN(TestFdxLargeScripts)
#include "tst_fdxlargescripts.moc"
