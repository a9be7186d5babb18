// SPDX-License-Identifier: MIT
// Marks runs of any text as footnotes and takes them out: each is given back, and nothing else
// goes.
#include <core/MVRFormat.h>
#include <core/MVRTextFormat.h>
#include <fuzz/Bytes.h>
#include <fuzz/Require.h>
#include <fuzz/Targets.h>
#include <text/MVRTextDoc.h>

#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

int markedCharacters(const QTextDocument &document)
{
    int count = 0;
    QTextCursor cursor(const_cast<QTextDocument *>(&document));
    for (int position = 0; position < document.characterCount() - 1; ++position) {
        cursor.setPosition(position + 1);
        const QChar character = document.characterAt(position);
        count += int(character != QChar::ParagraphSeparator
                     && cursor.charFormat().boolProperty(MVRTextFormat::InlineFootnoteProperty));
    }
    return count;
}

}

void fuzz_end_notes(const QByteArray &input)
{
    Bytes bytes(input);
    const MVRFormat format(MVRFormat::Format(bytes.upTo(MVRFormat::Kindle)));
    const int first = bytes.upTo(1000) - 500;
    QVector<MVRTextRange> ranges;
    for (int i = bytes.byte() % 8; i > 0; --i)
        ranges.append(MVRTextRange(bytes.upTo(300), bytes.upTo(300)));
    QTextDocument document;
    document.setPlainText(QString::fromUtf8(bytes.rest()));
    for (const MVRTextRange &range : qAsConst(ranges))
        MVRTextDoc::setInlineFootnoteAnnotation(range.toTextCursor(&document), true, true);

    const int length = document.characterCount();
    const int marked = markedCharacters(document);
    const QList<QTextDocumentFragment> notes
        = MVRTextDoc::inlineFootnotesToEndNotes(&document, first, QTextCharFormat(), format);
    require(marked > 0 || (notes.isEmpty() && document.characterCount() == length),
            "without notes nothing is changed");
    int given = 0;
    for (const QTextDocumentFragment &note : notes) {
        QString text = note.toPlainText();
        given += text.remove(QLatin1Char('\n')).size();
    }
    require(given == marked, "all text of notes is given back");
}
