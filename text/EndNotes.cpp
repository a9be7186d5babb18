// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRFormat.h>
#include <core/MVRTextFormat.h>
#include <core/document/EditBlock_p.h>
#include <core/document/Pictures_p.h>
#include <text/NoteRuns_p.h>

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

} // namespace

void MVRTextDoc::inlineFootnotesToEndNotes(
    QTextDocument *document, int firstNumber, const QTextCharFormat &noteFormat,
    const MVRFormat &format, const std::function<void(const QTextDocumentFragment &)> &take)
{
    if (!document)
        return;
    const QVector<MVRTextRange> notes
        = inlineNotesIn(MVRTextFormat::InlineFootnoteProperty, Selection(document)).runs;
    if (notes.isEmpty())
        return;
    const EditBlock undoStep(document);
    const ReferenceMarks marks(format);
    QTextCursor cursor(document);
    qint64 number = firstNumber; // so that no number of notes is too large for it
    const int sizeBefore = document->characterCount();
    for (const MVRTextRange &note : notes) {
        const int growth = document->characterCount() - sizeBefore;
        cursor.setPosition(note.start + growth);
        cursor.setPosition(note.end + growth, QTextCursor::KeepAnchor);
        const QTextCharFormat markFormat = cursor.charFormat();
        cursor.mergeCharFormat(noteFormat);
        if (take)
            take(cursor.selection());
        marks.insert(cursor, markFormat, number++);
    }
}

QList<QTextDocumentFragment>
MVRTextDoc::inlineFootnotesToEndNotes(QTextDocument *document, int firstNumber,
                                      const QTextCharFormat &noteFormat, const MVRFormat &format)
{
    QList<QTextDocumentFragment> endNotes;
    inlineFootnotesToEndNotes(
        document, firstNumber, noteFormat, format,
        [&endNotes](const QTextDocumentFragment &note) { endNotes.append(note); });
    return endNotes;
}

QList<QTextDocumentFragment> MVRTextDoc::inlineFootnotesToEndNotes(QTextDocument *document,
                                                                   int firstNumber)
{
    return inlineFootnotesToEndNotes(document, firstNumber, QTextCharFormat(),
                                     MVRFormat(MVRFormat::NoFormat));
}
