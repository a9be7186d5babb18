// SPDX-License-Identifier: MIT
// Reads any bytes as a Final Draft file; what was read must come through writing and reading again
// with its text unchanged.
#include <finaldraft/MVRFinalDraftReader.h>
#include <finaldraft/MVRFinalDraftWriter.h>
#include <fuzz/Targets.h>

#include <QBuffer>
#include <QTextBlock>
#include <QTextDocument>

#include <cstdlib>

namespace {

bool read(MVRFinalDraftReader *reader, const QByteArray &bytes, QTextDocument *document)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return reader->load(&buffer) && reader->read(document, {});
}

QList<MVRScriptElement> elements(MVRFinalDraftReader *reader)
{
    QHash<QString, MVRFinalDraft::ElementSettings> settings;
    reader->readElements(&settings);
    QList<MVRScriptElement> list;
    for (const MVRFinalDraft::ElementSettings &setting : qAsConst(settings)) {
        MVRScriptElement element(setting.type);
        element.setBlockFormat(setting.parBlockFormat());
        element.setCharFormat(setting.textCharFormat());
        list.append(element);
    }
    return list;
}

}

void fuzz_fdx_reader(const QByteArray &input)
{
    MVRFinalDraftReader reader;
    QTextDocument document;
    if (!read(&reader, input, &document))
        return;
    QBuffer output;
    output.open(QIODevice::WriteOnly);
    MVRFinalDraftWriter writer;
    if (!writer.write(&output, &document, elements(&reader)))
        std::abort();
    MVRFinalDraftReader again;
    QTextDocument copy;
    if (!read(&again, output.data(), &copy))
        std::abort();
    // A paragraph that says nothing else comes back as it went; an empty run is a blank.
    QTextBlock block = document.begin();
    QTextBlock other = copy.begin();
    for (; block.isValid() && other.isValid(); block = block.next(), other = other.next()) {
        if (block.text() != other.text())
            std::abort();
    }
    if (block.isValid())
        std::abort();
}
