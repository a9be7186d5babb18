// SPDX-License-Identifier: MIT
// Loads any bytes as a Final Draft file that is edited in place: it must come back, also after
// an edit, as a file that is loaded again with the same text.
#include <core/document/WellFormed_p.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <fuzz/Require.h>
#include <fuzz/Targets.h>
#include <tests/FdxBytes.h>

#include <QTextCursor>
#include <QTextDocument>

namespace {

QByteArray written(MVRFinalDraftFile *file, const QTextDocument &document)
{
    const QByteArray bytes = writtenFdx(file, document);
    require(!bytes.isNull(), "a file that was read is written");
    return bytes;
}

/*! What XML cannot hold comes back as U+FFFD from a run that was edited. */
QString asXml(QString text)
{
    for (QChar &c : text) {
        const bool isControl
            = c < QLatin1Char(' ') && c != QLatin1Char('\t') && c != QLatin1Char('\n');
        if (isControl || c.unicode() >= 0xfffe)
            c = QChar::ReplacementCharacter;
    }
    return wellFormed(text);
}

void checkAgain(const QByteArray &bytes, const QString &text)
{
    MVRFinalDraftFile again;
    QTextDocument copy;
    require(loadFdx(&again, bytes) && again.read(&copy), "what was written is read");
    require(asXml(copy.toPlainText()) == asXml(text), "text comes back");
}

/*! One of the edits that a writer makes, at one of the places, by what the file is. */
void edit(QTextDocument *document, uint seed)
{
    QTextCursor cursor(document);
    cursor.setPosition(int(seed / 8 % uint(document->characterCount())));
    if (document->characterAt(cursor.position()).isLowSurrogate())
        cursor.movePosition(QTextCursor::NextCharacter);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    switch (seed % 8) {
    case 0:
        cursor.insertBlock();
        break;
    case 1:
        cursor.deletePreviousChar();
        break;
    case 2:
        cursor.movePosition(QTextCursor::NextWord, QTextCursor::KeepAnchor, 3);
        cursor.mergeCharFormat(bold);
        break;
    case 3:
        cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        break;
    default:
        cursor.insertText(QStringLiteral("word"));
    }
}

}

void fuzz_fdx_file(const QByteArray &input)
{
    MVRFinalDraftFile file;
    QTextDocument document;
    if (!loadFdx(&file, input)) {
        require(!file.errorString().isEmpty(), "a fault has a message");
        return;
    }
    if (!file.read(&document))
        return;
    file.notes();
    file.scenes();
    file.elementSettings();
    const QByteArray same = written(&file, document);
    require(same == input, "a file that nobody edited comes back byte for byte");
    checkAgain(same, document.toPlainText());
    edit(&document, qHash(input));
    checkAgain(written(&file, document), document.toPlainText());
}
