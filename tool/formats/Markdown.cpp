// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/formats/ScreenplayElements.h>
#include <tool/formats/TextDecoding.h>
#include <tool/formats/TextOutput.h>
#include <tool/pages/Lengths.h>

#include <core/document/SafeHtml_p.h>

#include <QRegularExpression>

namespace {

// Qt's Markdown writer runs out of memory on deep lists.
bool hasDeepLists(const QString &markdown)
{
    static const QRegularExpression deepLine(
        QStringLiteral("^(?:[ \\t]*+(?:>|[*+-][ \\t]|[0-9]{1,9}[.)][ \\t])){100}"),
        QRegularExpression::MultilineOption);
    return deepLine.match(markdown).hasMatch();
}

bool readMarkdown(const QByteArray &bytes, const ReadOptions &options, Document &document,
                  QString *error)
{
    Q_UNUSED(options)
    QString text;
    if (!decodeText(bytes, &text)) {
        *error = notTextError();
        return false;
    }
    if (hasDeepLists(text)) {
        *error = nestingError();
        return false;
    }
    // HTML inside is not taken as markup: it stays as text.
    document.text.setMarkdown(text,
                              QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub
                                                              | QTextDocument::MarkdownNoHTML));
    scaleLengths(document.text, pointsPerPixel);
    giveStandards(document);
    return true;
}

bool writeMarkdown(Document &document, const WriteOptions &options, QByteArray *bytes,
                   QString *error)
{
    Q_UNUSED(options)
    Q_UNUSED(error)
    dropScriptLinks(&document.text);
    QString text = document.text.toMarkdown();
    if (document.isScreenplay)
        dropBlankParagraphs(text);
    *bytes = withFinalNewline(text);
    return true;
}

}

const Format markdownFormat = {"md",
                               "Markdown",
                               "markdown",
                               readMarkdown,
                               writeMarkdown,
                               NoteSupport::None,
                               PictureSupport::Named,
                               false};
