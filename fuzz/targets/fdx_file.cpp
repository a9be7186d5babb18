// SPDX-License-Identifier: MIT
// Loads any bytes as a Final Draft file that is edited in place: it must come back, also after a
// word was typed, as a file that is loaded again with the same text.
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

void checkAgain(const QByteArray &bytes, const QString &text)
{
    MVRFinalDraftFile again;
    QTextDocument copy;
    require(loadFdx(&again, bytes) && again.read(&copy), "what was written is read");
    require(copy.toPlainText() == text, "text comes back");
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
    if (file.elementXml(QStringLiteral("Content")).isEmpty())
        return; // there is no place for a word
    QTextCursor(&document).insertText(QStringLiteral("word"));
    checkAgain(written(&file, document), document.toPlainText());
}
