// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownNotes.h>

#include <core/MVRSettings.h>
#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <core/document/EditBlock_p.h>
#include <core/document/ForeignFormat_p.h>
#include <core/document/OfflineDocument_p.h>
#include <text/MVRTextDoc.h>
#include <text/NoteLabel_p.h>
#include <text/RtfAttachments_p.h>

#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

/*! What several notes on one text say, one after the other. */
QByteArray joinedContent(const MVRTextRtfNotes &notes, const QVector<int> &numbers)
{
    OfflineDocument joined;
    joined.setUndoRedoEnabled(false);
    QTextCursor cursor(&joined);
    for (const int number : numbers) {
        OfflineDocument content;
        content.setUndoRedoEnabled(false);
        MVRTextRtf::fromRtfCData(notes.at(number).rtf, &content);
        if (!cursor.atStart())
            insertBlockLike(cursor, content.begin());
        STextDoc::appendFragment(cursor, QTextDocumentFragment(&content));
    }
    return MVRTextRtf::toRtfCData(&joined, false);
}

}

QByteArray markdownCommentContent(const MarkdownRuns &comment)
{
    OfflineDocument content;
    content.setUndoRedoEnabled(false);
    QTextCursor cursor(&content);
    for (const MarkdownRun &run : comment) {
        QTextCharFormat format = run.format;
        format.clearProperty(QTextFormat::ObjectType);
        const QStringList lines = run.text.split(QChar::LineSeparator);
        for (int i = 0; i < lines.size(); ++i) {
            if (i > 0)
                cursor.insertBlock();
            QString line = lines.at(i);
            line.remove(QChar::ObjectReplacementCharacter);
            cursor.insertText(line, format);
        }
    }
    return MVRTextRtf::toRtfCData(&content, false);
}

void attachMarkdownNotes(QTextDocument *document, const MVRTextRtfNotes &notes)
{
    const QVector<RtfAttachment> places = attachmentsForNotes(document, notes);
    const QColor color = mvrOptions().value(MVRSettings::CommentColorSetting);
    const EditBlock edit(document);
    // From the last to the first, so that a label moves no place still to be used.
    for (auto place = places.crbegin(); place != places.crend(); ++place) {
        MVRTextCommentLink link;
        link.isFootnote = place->kind == MVRTextRtfNote::Footnote;
        if (!link.isFootnote)
            link.color = color;
        link.cdata = place->notes.size() == 1 ? notes.at(place->notes.first()).rtf
                                              : joinedContent(notes, place->notes);
        if (place->range.start < place->range.end)
            MVRTextDoc::setComment(document, place->range, link);
        else
            MVRTextDoc::setComment(insertNoteLabel(document, place->range.end, link.isFootnote),
                                   link);
    }
}
