// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/pages/Lengths.h>
#include <tool/pages/Pages.h>

#include <core/document/SafeHtml_p.h>

#include <QBuffer>
#include <QTextDocumentWriter>

namespace {

bool writeOdt(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    prepareForQt(document, options.paperOrLetter(), pixelsPerPoint);
    dropScriptLinks(&document.text);
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    QTextDocumentWriter writer(&buffer, "odf");
    if (writer.write(&document.text))
        return true;
    *error = Tool::tr("cannot be written as ODT");
    return false;
}

}

const Format odtFormat
    = {"odt", "ODT", "", nullptr, writeOdt, NoteSupport::None, PictureSupport::Held, false};
