#include <text/MVRTextDoc.h>

#include <core/EditBlock_p.h>
#include <core/FormatEdits_p.h>
#include <core/MVRFormat.h>
#include <core/MVRTextFormat.h>
#include <core/Pictures_p.h>
#include <core/TextFragments_p.h>

#include <QTextDocumentFragment>

namespace {

/*! Writes the marks that stand in the text for notes elsewhere. */
class ReferenceMarks
{
public:
    explicit ReferenceMarks(const MVRFormat &format)
        : m_isMmd(MVRFormat::isMmdVariant(format.format()))
        , m_isEBook(!m_isMmd && MVRFormat::isEBook(format.format()))
    {
    }

    /*!
        Replaces the selection by the mark of a note.

        \param format  of the text that the mark stands for
    */
    void insert(QTextCursor &cursor, QTextCharFormat format, qint64 number) const
    {
        format.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
        // Where the note ended with a picture, its mark is text all the same.
        clearPicture(format);
        const QString digits = QString::number(number);
        if (m_isEBook) {
            const QString name = QLatin1String("fn") + digits;
            format.setAnchor(true);
            format.setAnchorHref(QLatin1String("footnotes.xhtml#") + name);
            format.setAnchorNames({name});
        }
        cursor.insertText(m_isMmd ? QStringLiteral("[^fn%1]").arg(digits) : digits, format);
    }

private:
    bool m_isMmd;
    bool m_isEBook;
};

/*! True when no text but that of \a run is selected, for instance a table that is all footnote. */
bool selectsOnly(const QTextCursor &cursor, const MVRTextRange &run)
{
    if (cursor.hasComplexSelection())
        return false;
    const FragmentWalker first(cursor.document(), cursor.selectionStart());
    const FragmentWalker behind(cursor.document(), run.end);
    return first.isValid() && first.start() >= run.start
        && (!behind.isValid() || behind.start() >= cursor.selectionEnd());
}

/*! Appends \a run in parts, each in one cell of a table or outside of it. */
void appendByCells(const QTextDocument *document, const MVRTextRange &run,
                   QVector<MVRTextRange> *parts)
{
    QTextBlock last;
    FragmentWalker walker(document, run.start);
    for (; walker.isValid() && walker.start() < run.end; walker.next()) {
        bool continues = last.isValid();
        for (QTextBlock block = walker.block(); continues && block != last;
             block = block.previous())
            continues = followsParagraph(block);
        if (continues)
            parts->last().end = walker.end();
        else
            parts->append(MVRTextRange(walker.start(), walker.end()));
        last = walker.block();
    }
}

/*! The footnotes in document order; each can be selected without any other text. */
QVector<MVRTextRange> footnotesOf(QTextDocument *document)
{
    const FormatPattern footnote(MVRTextFormat::InlineFootnoteProperty, true);
    const QVector<MVRTextRange> runs
        = runsBehind(document, 0, [&footnote](const QTextFormat &candidate) {
              return footnote.matches(candidate);
          });
    QVector<MVRTextRange> notes;
    notes.reserve(runs.size());
    QTextCursor cursor(document);
    for (const MVRTextRange &run : runs) {
        if (selectRange(cursor, run.start, run.end) || selectsOnly(cursor, run))
            notes.append(run);
        else
            appendByCells(document, run, &notes);
    }
    return notes;
}

} // namespace

QList<QTextDocumentFragment>
MVRTextDoc::inlineFootnotesToEndNotes(QTextDocument *document, int firstNumber,
                                      const QTextCharFormat &noteFormat, const MVRFormat &format)
{
    QList<QTextDocumentFragment> endNotes;
    if (!document)
        return endNotes;
    const QVector<MVRTextRange> notes = footnotesOf(document);
    if (notes.isEmpty())
        return endNotes;
    const EditBlock undoStep(document);
    const ReferenceMarks marks(format);
    endNotes.reserve(notes.size());
    QTextCursor cursor(document);
    qint64 number = firstNumber; // so that no number of notes is too large for it
    const int sizeBefore = document->characterCount();
    for (const MVRTextRange &note : notes) {
        const int growth = document->characterCount() - sizeBefore;
        cursor.setPosition(note.start + growth);
        cursor.setPosition(note.end + growth, QTextCursor::KeepAnchor);
        const QTextCharFormat markFormat = cursor.charFormat();
        cursor.mergeCharFormat(noteFormat);
        endNotes.append(cursor.selection());
        marks.insert(cursor, markFormat, number++);
    }
    return endNotes;
}

QList<QTextDocumentFragment> MVRTextDoc::inlineFootnotesToEndNotes(QTextDocument *document,
                                                                   int firstNumber)
{
    return inlineFootnotesToEndNotes(document, firstNumber, QTextCharFormat(),
                                     MVRFormat(MVRFormat::NoFormat));
}
