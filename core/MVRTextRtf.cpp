// SPDX-License-Identifier: MIT
#include <core/MVRTextRtf.h>

#include <core/MVRToolkit.h>
#include <core/document/UndoRecordingOff_p.h>
#include <core/rtf/read/RtfOwnContentReader.h>
#include <core/rtf/read/RtfParser.h>
#include <core/rtf/write/RtfWriter.h>

#include <QFont>
#include <QTextBlock>
#include <QTextDocument>

namespace {

// A document that was just made needs no clearing, which for a note costs more than reading it.
bool isPristine(const QTextDocument &document)
{
    return document.isEmpty() && document.begin().blockFormat().isEmpty()
        && document.begin().charFormat().isEmpty();
}

QByteArray writeContent(const QTextDocument &content, const RtfInfo &info)
{
    RtfWriter writer;
    writer.setInfo(info);
    return writer.write(content, false);
}

// What cannot be read is an empty note.
RtfInfo readContent(const QByteArray &rtf, QTextDocument *content)
{
    if (!MVRTextRtf::isRtf(rtf))
        return {};
    RtfParser reader(rtf, content);
    reader.read();
    return reader.info();
}

/*! An empty value takes the property away. Most documents have none, and looking for one costs
    as much as a word of a note. */
template <typename Value>
void setOrClear(QTextDocument *document, const char *name, const Value &value)
{
    if (!value.isEmpty())
        document->setProperty(name, value);
    else if (!document->dynamicPropertyNames().isEmpty())
        document->setProperty(name, QVariant());
}

void readInto(const QByteArray &rtf, QTextDocument *document, MVRTextRtfNotes *notes,
              MVRTextRtfLeftOut *leftOut)
{
    RtfParser reader(rtf, document, notes, writeContent);
    {
        QTextCursor cursor(document);
        cursor.beginEditBlock();
        reader.read();
        cursor.endEditBlock();
    }
    if (leftOut)
        *leftOut = reader.leftOut();
    if (!reader.info().title.isEmpty())
        document->setMetaInformation(QTextDocument::DocumentTitle, reader.info().title);
    setOrClear(document, MVRTextRtf::authorProperty, reader.info().author);
    setOrClear(document, MVRTextRtf::pageProperty,
               reader.page() ? reader.page()->toMap() : QVariantMap());
    setOrClear(document, MVRTextRtf::pageTextsProperty, reader.pageTexts());
    if (!reader.defaultFormat().isEmpty())
        document->setDefaultFont(reader.defaultFormat().font());
}

// Only what the font says: a default value that is spelled out would override its surroundings.
QTextCharFormat formatOf(const QFont &font)
{
    QTextCharFormat format;
    MVRToolkit::setFontFamily(&format, font.family());
    if (font.pointSizeF() > 0)
        format.setFontPointSize(font.pointSizeF());
    else
        format.setProperty(QTextFormat::FontPixelSize, font.pixelSize());
    if (font.weight() != QFont::Normal)
        format.setFontWeight(font.weight());
    if (font.italic())
        format.setFontItalic(true);
    if (font.underline())
        format.setFontUnderline(true);
    if (font.strikeOut())
        format.setFontStrikeOut(true);
    if (font.capitalization() != QFont::MixedCase)
        format.setFontCapitalization(font.capitalization());
    return format;
}

} // namespace

bool MVRTextRtf::isRtf(const QByteArray &rtf)
{
    return RtfParser::isRtf(rtf);
}

bool MVRTextRtf::fromRtfCData(const QByteArray &rtf, QTextDocument *document)
{
    return fromRtfCData(rtf, document, nullptr);
}

bool MVRTextRtf::fromRtfCData(const QByteArray &rtf, QTextDocument *document,
                              MVRTextRtfNotes *notes, MVRTextRtfLeftOut *leftOut)
{
    if (!document || !isRtf(rtf))
        return false;
    const UndoRecordingOff pause(document);
    if (!isPristine(*document))
        document->clear();
    readInto(rtf, document, notes, leftOut);
    return true;
}

QByteArray MVRTextRtf::toRtfCData(const QTextDocument *document, bool withDefaults)
{
    return toRtfCData(document, withDefaults, {});
}

QByteArray MVRTextRtf::toRtfCData(const QTextDocument *document, bool withDefaults,
                                  const MVRTextRtfNotes &notes)
{
    if (!document)
        return {};
    RtfWriter writer;
    writer.setNotes(notes, {RtfOwnContentReader::read, readContent});
    return writer.write(*document, withDefaults);
}

QByteArray MVRTextRtf::textToRtf(const QString &text, const QFont *font)
{
    return RtfWriter().write(text, font ? formatOf(*font) : QTextCharFormat());
}
