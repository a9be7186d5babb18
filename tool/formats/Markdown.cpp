// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/Pictures.h>
#include <tool/formats/ScreenplayElements.h>
#include <tool/formats/TextDecoding.h>
#include <tool/formats/TextOutput.h>
#include <tool/formats/markdown/MarkdownReader.h>
#include <tool/formats/markdown/MarkdownWriter.h>

#include <core/document/SafeHtml_p.h>

namespace {

QString refusalText(MarkdownResult::Refusal refusal)
{
    if (refusal == MarkdownResult::TooDense)
        return Tool::tr("a paragraph has too many marks of emphasis or \"<?\"");
    return refusal == MarkdownResult::TooDeep ? nestingError() : Tool::tr("it has too many lists");
}

bool readMarkdownFile(const QByteArray &bytes, const ReadOptions &options, Document &document,
                      QString *error)
{
    QString text;
    if (!decodeText(bytes, &text)) {
        *error = notTextError();
        return false;
    }
    MarkdownOptions markdownOptions;
    markdownOptions.hasSmartPunctuation = options.hasSmartPunctuation;
    const MarkdownResult result = readMarkdown(text, markdownOptions, &document.text);
    if (result.refusal != MarkdownResult::NotRefused) {
        *error = refusalText(result.refusal);
        return false;
    }
    takeEmbeddedPictures(document.text);
    if (result.lacksMetadata)
        document.losses << Tool::tr("metadata other than title and author");
    addCounted(&document.losses, result.lostNotes, QT_TRANSLATE_NOOP("Tool", "repeated note"),
               QT_TRANSLATE_NOOP("Tool", "repeated notes"));
    document.notePictures = result.notePictures;
    document.title = document.text.metaInformation(QTextDocument::DocumentTitle);
    giveStandards(document);
    return true;
}

bool writeMarkdownFile(Document &document, const WriteOptions &options, QByteArray *bytes,
                       QString *error)
{
    Q_UNUSED(options)
    Q_UNUSED(error)
    dropScriptLinks(&document.text);
    *bytes = withFinalNewline(writeMarkdown(document.text));
    return true;
}

}

const Format markdownFormat = {"md",
                               "Markdown",
                               "markdown",
                               readMarkdownFile,
                               writeMarkdownFile,
                               NoteSupport::Attached,
                               PictureSupport::Named,
                               false};
