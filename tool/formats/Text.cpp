// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/formats/ScreenplayElements.h>
#include <tool/formats/TextDecoding.h>
#include <tool/formats/TextOutput.h>

#include <QTextBlock>

namespace {

bool readText(const QByteArray &bytes, const ReadOptions &options, Document &document,
              QString *error)
{
    Q_UNUSED(options)
    QString text;
    if (!decodeText(bytes, &text)) {
        *error = notTextError();
        return false;
    }
    giveStandards(document);
    document.text.setPlainText(text);
    return true;
}

bool writeText(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    Q_UNUSED(options)
    Q_UNUSED(error)
    QString text;
    for (QTextBlock block = document.text.begin(); block.isValid(); block = block.next()) {
        if (document.isScreenplay && hasSpaceBefore(block))
            text += QLatin1Char('\n');
        // Empty paragraphs of a screenplay come as one blank.
        text += (document.isScreenplay && block.text() == QLatin1String(" ") ? QString()
                                                                             : block.text())
            + QLatin1Char('\n');
    }
    text.chop(1);
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    text.remove(QChar::ObjectReplacementCharacter);
    *bytes = withFinalNewline(std::move(text));
    return true;
}

}

const Format textFormat
    = {"txt", "plain text", "text", readText, writeText, NoteSupport::None, PictureSupport::None,
       false};
