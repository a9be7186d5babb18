// SPDX-License-Identifier: MIT
// Reads any bytes as the record of a note; what was read must come through writing and reading.
#include <fuzz/Bytes.h>
#include <fuzz/Require.h>
#include <fuzz/Targets.h>
#include <text/MVRTextCommentLink.h>
#include <text/MVRTextDoc.h>

#include <QDataStream>
#include <QIODevice>
#include <QTextDocument>

void fuzz_note_record(const QByteArray &input)
{
    Bytes bytes(input);
    const int version = bytes.upTo(QDataStream::Qt_DefaultCompiledVersion);
    const auto order = bytes.flag() ? QDataStream::LittleEndian : QDataStream::BigEndian;
    QDataStream stream(bytes.rest());
    stream.setVersion(version);
    stream.setByteOrder(order);
    MVRTextCommentLink link;
    stream >> link;

    QByteArray record;
    QDataStream writing(&record, QIODevice::WriteOnly);
    writing << link;
    MVRTextCommentLink again;
    QDataStream reading(record);
    reading >> again;
    require(again.isFootnote == link.isFootnote && again.extraFlag == link.extraFlag
                && again.cdata == link.cdata,
            "a record comes back");
    require(again.color == link.color, "the colour of a record comes back");

    QTextDocument document;
    document.setPlainText(QStringLiteral("a word"));
    MVRTextDoc::setComment(&document, MVRTextRange(2, 6), link);
    MVRTextDoc::inspectorNotesToPlainText(&document);
    MVRTextDoc::toRtf(&document);
}
