// SPDX-License-Identifier: MIT
#include <text/NoteLabel_p.h>

#include <core/MVRTextRange.h>
#include <core/STextDoc.h>
#include <core/document/NoteFormat_p.h>
#include <core/document/Pictures_p.h>

#include <QTextDocument>

namespace {

QString labelText(bool footnote)
{
    static const QString footnoteLabel = QObject::tr("(Linked Footnote)");
    static const QString commentLabel = QObject::tr("(Linked Comment)");
    return footnote ? footnoteLabel : commentLabel;
}

} // namespace

QTextCursor insertNoteLabel(QTextDocument *document, int position, bool footnote)
{
    QTextCursor cursor(document);
    cursor.setPosition(position);
    // The label continues no note, link or picture that it happens to stand behind.
    QTextCharFormat format = cursor.charFormat();
    clearNoteProperties(format);
    STextDoc::clearLinkProperties(&format);
    clearPicture(format);
    cursor.insertText(labelText(footnote), format);
    return MVRTextRange(position, cursor.position()).toTextCursor(document);
}
