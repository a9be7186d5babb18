// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/ScreenplayElements.h>
#include <tool/formats/ScreenplayPages.h>

#include <finaldraft/MVRFinalDraftReader.h>
#include <finaldraft/MVRFinalDraftWriter.h>

#include <QBuffer>
#include <QFont>
#include <QTextBlock>
#include <QTextCursor>

namespace {

// The reader closes each paragraph, so that an empty one is left that nobody wrote.
void dropLastBlock(QTextDocument &document)
{
    const QTextBlock last = document.lastBlock();
    const QTextBlock before = last.previous();
    if (!before.isValid() || last.length() > 1)
        return;
    const QTextBlockFormat blockFormat = before.blockFormat();
    const QTextCharFormat charFormat = before.charFormat();
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    cursor.deletePreviousChar();
    // An empty paragraph takes the format of the one that is deleted behind it.
    cursor.setBlockFormat(blockFormat);
    if (cursor.block().length() == 1)
        cursor.setBlockCharFormat(charFormat);
}

// Settings count indents from a margin of 72 points, the document from its own.
void moveToMargin(ElementSettingsMap &settings, double margin)
{
    const double inches = (defaultMargin - margin) / 72.0;
    for (MVRFinalDraft::ElementSettings &entry : settings) {
        entry.paragraphSpec.leftIndent += inches;
        entry.paragraphSpec.rightIndent += inches;
    }
}

QString firstWords(const QTextDocument &document, int blocks)
{
    QTextBlock block = document.begin();
    for (int i = 0; i < blocks && block.isValid(); ++i, block = block.next()) {
        const QString text = block.text().simplified();
        if (!text.isEmpty())
            return text;
    }
    return QString();
}

/*! What the file holds that has no place in a document, in words. */
QStringList lossWords(const MVRFinalDraft::LeftOut &leftOut)
{
    QStringList words;
    const auto add = [&words](int count, const char *singular, const char *plural) {
        if (count > 0)
            words << counted(count, singular, plural);
    };
    add(leftOut.detachedNotes, "note kept beside the script", "notes kept beside the script");
    add(leftOut.alternates, "alternate", "alternates");
    add(leftOut.omittedParagraphs, "paragraph of omitted scenes", "paragraphs of omitted scenes");
    add(leftOut.summaries, "scene summary", "scene summaries");
    return words;
}

bool readFdx(const QByteArray &bytes, const ReadOptions &options, Document &document,
             QString *error)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    MVRFinalDraftReader reader;
    reader.setFallbackSettings(fallbackSettings());
    ElementSettingsMap settings;
    const bool isRead = reader.load(&buffer)
        && (reader.readElements(&settings), // of a file that is none of Final Draft's: no settings
            reader.read(&document.text, elementsForReading(settings, options.capitals)));
    if (!isRead) {
        *error = reader.errorString();
        return false;
    }
    dropLastBlock(document.text);
    document.text.setDefaultFont(QFont(QStringLiteral("Courier Final Draft"), 12));
    moveToMargin(settings, document.text.documentMargin());
    document.elements = elementsForWriting(settings);
    document.isScreenplay = true;
    document.titlePageBlocks = reader.titlePageBlockCount();
    document.title = firstWords(document.text, document.titlePageBlocks);
    document.scaling = reader.scaling();
    document.showInvisibles = reader.showInvisibles();
    noteSource(document, bytes);
    document.losses = lossWords(reader.leftOut());
    return true;
}

bool writeFdx(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    Q_UNUSED(options)
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    MVRFinalDraftWriter writer;
    writer.setTitlePageBlockCount(document.titlePageBlocks);
    if (writer.write(&buffer, &document.text, document.elements))
        return true;
    *error = QStringLiteral("cannot be written as a Final Draft file");
    return false;
}

}

const Format fdxFormat = {
    "fdx", "Final Draft", "", readFdx, writeFdx, NoteSupport::InText, PictureSupport::None, true};
