// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/ScreenplayElements.h>

#include <text/MVRTextDoc.h>

namespace {

bool readRtf(const QByteArray &bytes, const ReadOptions &options, Document &document,
             QString *error)
{
    Q_UNUSED(options)
    if (!MVRTextDoc::fromRtf(bytes, &document.text)) {
        *error = Tool::tr("not an RTF file");
        return false;
    }
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
