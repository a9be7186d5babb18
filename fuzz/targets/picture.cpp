// SPDX-License-Identifier: MIT
// Gives any bytes as the file of a linked picture and as the picture of an RTF file.
#include <core/MVRTextRtf.h>
#include <fuzz/Require.h>
#include <fuzz/Targets.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>

#include <QDir>
#include <QTemporaryFile>
#include <QTextDocument>

namespace {

void readLinked(const QByteArray &bytes)
{
    QTemporaryFile file;
    require(file.open() && file.write(bytes) == bytes.size() && file.flush(), "a file is written");
    QTextDocument document;
    document.setPlainText(QStringLiteral("{$MVRImageLink[w:20;h:10]=%1}").arg(file.fileName()));
    MVRTextDoc::fromInlineMarkup(&document, MVRPicturePolicy::below(QDir::tempPath()));
    require(document.characterCount() == 2, "the code becomes a picture");
    MVRTextRtf::toRtfCData(&document, false);
}

void readEmbedded(const QByteArray &bytes)
{
    for (const char *kind : {"\\pngblip", "\\jpegblip", "\\dibitmap0", "\\wmetafile8"}) {
        QTextDocument document;
        MVRTextRtf::fromRtfCData(QByteArray("{\\rtf1{\\pict") + kind + "\\picw9\\pich9 "
                                     + bytes.toHex() + "}x}",
                                 &document);
        require(document.toPlainText().endsWith(QLatin1Char('x')), "text behind a picture stays");
        const QByteArray written = MVRTextRtf::toRtfCData(&document, false);
        QTextDocument again;
        require(MVRTextRtf::fromRtfCData(written, &again)
                    && again.characterCount() == document.characterCount(),
                "a picture comes back");
    }
}

}

void fuzz_picture(const QByteArray &input)
{
    readLinked(input);
    readEmbedded(input);
}
