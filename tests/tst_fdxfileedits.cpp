// SPDX-License-Identifier: MIT
#include "FdxOpened.h"
#include "FdxSchemaReader.h"

#include <QRandomGenerator>
#include <QTextDocumentFragment>

namespace {

QString describe(const QTextCharFormat &format)
{
    return QStringLiteral("%1%2%3%4%5 ")
        .arg(format.fontWeight() > QFont::Normal)
        .arg(format.fontItalic())
        .arg(format.fontUnderline())
        .arg(format.fontStrikeOut())
        .arg(format.fontCapitalization());
}

/*! A document as text: type, and text of each look. */
QStringList described(const QTextDocument &document, bool withLooks)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QString line
            = block.blockFormat().stringProperty(MVRScriptElement::NameProperty) + QLatin1Char('|');
        QString last;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QString look = describe(it.fragment().charFormat());
            if (withLooks && look != last)
                line += QLatin1Char('<') + look + QLatin1Char('>');
            last = look;
            line += it.fragment().text();
        }
        // Paragraphs of the title page that have no type get none.
        lines.append(line.startsWith(QLatin1String("General|")) ? line.mid(7) : line);
    }
    return lines;
}

/*! What the file of a document has to be: read by others, and as it was where nobody edited. */
class Judge
{
public:
    explicit Judge(const Opened &opened, const QByteArray &bytes)
        : m_before(FdxSchemaReader(bytes).paragraphs())
        , m_lines(described(opened.document, true))
    {
        for (QTextBlock block = opened.document.begin(); block.isValid(); block = block.next())
            m_blocks.insert(sourceOf(block.blockFormat()),
                            {block.blockNumber(), block.blockFormat()});
    }

    /*! What is wrong with the file of an edited document; empty when nothing is. */
    QString fault(const QTextDocument &document, const QByteArray &bytes) const
    {
        const FdxSchemaReader reader(bytes);
        const QVector<FdxSchemaReader::Paragraph> now = reader.paragraphs();
        if (!reader.error().isNull() || now.size() != document.blockCount())
            return QStringLiteral("%1 %2").arg(reader.error()).arg(now.size());
        const QStringList lines = described(document, true);
        QHash<int, int> blocks; // by paragraph of the file
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            ++blocks[sourceOf(block.blockFormat())];
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            const int i = block.blockNumber();
            if (now[i].text != block.text())
                return QStringLiteral("text of %1: %2").arg(i).arg(now[i].text);
            const int source = sourceOf(block.blockFormat());
            const auto [old, format] = m_blocks.value(source, {-1, QTextBlockFormat()});
            const bool keepsPage = (i < reader.titlePageCount())
                == format.boolProperty(MVRFinalDraftFile::TitlePageProperty);
            const bool isUntouched = old >= 0 && blocks[source] == 1 && keepsPage
                && format == block.blockFormat() && m_lines[old] == lines[i];
            if (isUntouched && m_before[old].xml != now[i].xml)
                return QStringLiteral("%1\nwas %2").arg(now[i].xml, m_before[old].xml);
        }
        return QString();
    }

private:
    static int sourceOf(const QTextBlockFormat &format)
    {
        return format.hasProperty(MVRFinalDraftFile::SourceParagraphProperty)
            ? format.intProperty(MVRFinalDraftFile::SourceParagraphProperty)
            : -1;
    }

    QVector<FdxSchemaReader::Paragraph> m_before;
    QStringList m_lines;
    QHash<int, QPair<int, QTextBlockFormat>> m_blocks; // by paragraph of the file: as it was
};

/*! Edits a document at random; the same seed makes the same edits. */
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
        QTextCursor cursor = place(0);
        switch (m_random.bounded(10)) {
        case 0:
        case 1: {
            // Text without any format would take the look of its element.
            QTextCharFormat format = cursor.charFormat();
            if (format.isEmpty())
                format.setFontCapitalization(QFont::MixedCase);
            cursor.insertText(word(), format);
            break;
        }
        case 2:
            select(12).removeSelectedText();
            break;
        case 3:
            cursor.insertBlock();
            break;
        case 4:
            cursor.deletePreviousChar();
            break;
        case 5:
            select(20).mergeCharFormat(look());
            break;
        case 6: {
            QTextCursor moved = select(60);
            const QTextDocumentFragment fragment(moved);
            if (m_random.bounded(2) == 0)
                moved.removeSelectedText();
            place(0).insertFragment(fragment);
            break;
        }
        case 7:
            select(200).removeSelectedText();
            break;
        case 8:
            carryOn(place(0).block());
            break;
        default:
            m_document->undo();
        }
    }

private:
    /*! Puts a paragraph behind the next one, or a copy of it. */
    void carryOn(const QTextBlock &block)
    {
        if (!block.next().isValid() || !block.next().next().isValid())
            return;
        QTextCursor cursor(block);
        cursor.setPosition(block.next().position(), QTextCursor::KeepAnchor);
        const QTextDocumentFragment fragment(cursor);
        QTextCursor behind(block.next().next());
        if (m_random.bounded(2) == 0)
            cursor.removeSelectedText();
        behind.insertFragment(fragment);
    }

    QTextCursor place(int behind)
    {
        QTextCursor cursor(m_document);
        cursor.setPosition(qMin(m_document->characterCount() - 1,
                                m_random.bounded(m_document->characterCount()) + behind));
        return whole(cursor);
    }

    QTextCursor select(int most)
    {
        QTextCursor cursor = place(0);
        cursor.setPosition(
            qMin(m_document->characterCount() - 1, cursor.position() + m_random.bounded(most)),
            QTextCursor::KeepAnchor);
        return whole(cursor);
    }

    // Half a character is nothing that an editor would stand before.
    QTextCursor whole(QTextCursor cursor)
    {
        if (m_document->characterAt(cursor.position()).isLowSurrogate())
            cursor.setPosition(cursor.position() + 1,
                               cursor.hasSelection() ? QTextCursor::KeepAnchor
                                                     : QTextCursor::MoveAnchor);
        return cursor;
    }

    QTextCharFormat look()
    {
        QTextCharFormat format;
        const bool on = m_random.bounded(2);
        switch (m_random.bounded(3)) {
        case 0:
            format.setFontWeight(on ? QFont::Bold : QFont::Normal);
            break;
        case 1:
            format.setFontItalic(on);
            break;
        default:
            format.setFontUnderline(on);
        }
        return format;
    }

    QString word()
    {
        static const QStringList words
            = {QStringLiteral("a"), QStringLiteral(" & <b> "), QString::fromUtf8("é🎬"),
               QStringLiteral("two words"), QString(QChar::LineSeparator)};
        return words[m_random.bounded(words.size())];
    }

    QTextDocument *m_document;
    QRandomGenerator m_random;
};

}

/*! A Final Draft file after edits at random. */
class TestFdxFileEdits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomEdits_data();
    void randomEdits();
};

void TestFdxFileEdits::randomEdits_data()
{
    addSampleRows();
}

void TestFdxFileEdits::randomEdits()
{
    QFETCH(const QByteArray, bytes);
    static const int rounds = qEnvironmentVariableIntValue("MVR_RANDOM_DOCUMENTS") + 20;
    for (uint seed = 1; seed <= uint(rounds); ++seed) {
        Opened opened(bytes);
        const Judge judge(opened, bytes);
        Editor editor(&opened.document, seed);
        for (int i = 0; i < 12; ++i) {
            editor.edit();
            if (i % 4 != 3)
                continue;
            const QByteArray output = opened.written();
            Opened again(output);
            QVERIFY2(
                again.isRead,
                qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(again.file.errorString())));
            const QString fault = judge.fault(opened.document, output);
            QVERIFY2(
                fault.isEmpty(),
                qPrintable(QStringLiteral("seed %1, edit %2: %3").arg(seed).arg(i).arg(fault)));
            const QStringList is = described(again.document, true);
            const QStringList was = described(opened.document, true);
            QVERIFY2(is.size() == was.size(), qPrintable(QStringLiteral("seed %1").arg(seed)));
            for (int line = 0; line < was.size(); ++line) {
                // A block that lost its type is shown as some other one.
                const QString &lost = was[line];
                const int from
                    = lost.startsWith(QLatin1Char('|')) ? is[line].indexOf(QLatin1Char('|')) : 0;
                const QString found = is[line].mid(from);
                QVERIFY2(found == lost,
                         qPrintable(QStringLiteral("seed %1, edit %2, block %3 is\n%4\nand was\n%5")
                                        .arg(seed)
                                        .arg(i)
                                        .arg(line)
                                        .arg(is.value(line), lost)));
            }
        }
    }
}

QTEST_MAIN(TestFdxFileEdits)
#include "tst_fdxfileedits.moc"
