// SPDX-License-Identifier: MIT
// Loads any bytes as a Final Draft file that is edited in place: it must come back, also after a
// word was typed, as a file that is loaded again with the same text.
#include <finaldraft/MVRFinalDraftFile.h>
#include <fuzz/Require.h>
#include <fuzz/Targets.h>

#include <QBuffer>
#include <QTextCursor>
#include <QTextDocument>

namespace {

bool load(MVRFinalDraftFile *file, const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return file->load(&buffer);
}

QByteArray written(MVRFinalDraftFile *file, const QTextDocument &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    require(file->write(&buffer, &document), "a file that was read is written");
    return buffer.data();
}

void checkAgain(const QByteArray &bytes, const QString &text)
{
    MVRFinalDraftFile again;
    QTextDocument copy;
    require(load(&again, bytes) && again.read(&copy), "what was written is read");
    require(copy.toPlainText() == text, "text comes back");
}

}

void fuzz_fdx_file(const QByteArray &input)
{
    MVRFinalDraftFile file;
    QTextDocument document;
    if (!load(&file, input)) {
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
    QTextCursor(&document).insertText(QStringLiteral("word"));
    written(&file, document);
}
