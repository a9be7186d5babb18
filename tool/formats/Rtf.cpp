// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/ScreenplayElements.h>

#include <core/MVRTextRtfLeftOut.h>
#include <text/MVRTextDoc.h>

namespace {

bool readRtf(const QByteArray &bytes, const ReadOptions &options, Document &document,
             QString *error)
{
    Q_UNUSED(options)
    MVRTextRtfLeftOut leftOut;
    if (!MVRTextDoc::fromRtf(bytes, &document.text, &leftOut)) {
        *error = Tool::tr("not an RTF file");
        return false;
    }
    addCounted(&document.losses, leftOut.hiddenCharacters,
               QT_TRANSLATE_NOOP("Tool", "character of hidden text"),
               QT_TRANSLATE_NOOP("Tool", "characters of hidden text"));
    addCounted(&document.losses, leftOut.deletedCharacters,
               QT_TRANSLATE_NOOP("Tool", "character of deleted text"),
               QT_TRANSLATE_NOOP("Tool", "characters of deleted text"));
    addCounted(&document.losses, leftOut.pictures,
               QT_TRANSLATE_NOOP("Tool", "picture that cannot be shown"),
               QT_TRANSLATE_NOOP("Tool", "pictures that cannot be shown"));
    addCounted(&document.losses, leftOut.notes, QT_TRANSLATE_NOOP("Tool", "note"),
               QT_TRANSLATE_NOOP("Tool", "notes"));
    document.title = document.text.metaInformation(QTextDocument::DocumentTitle);
    giveStandards(document);
    return true;
}

bool writeRtf(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    Q_UNUSED(options)
    Q_UNUSED(error)
    document.text.setMetaInformation(QTextDocument::DocumentTitle, document.title);
    *bytes = MVRTextDoc::toRtf(&document.text);
    return true;
}

}

const Format rtfFormat
    = {"rtf", "RTF", "", readRtf, writeRtf, NoteSupport::Attached, PictureSupport::Held, false};
