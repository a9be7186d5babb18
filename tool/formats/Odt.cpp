// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/OdtTables.h>
#include <tool/pages/Lengths.h>
#include <tool/pages/Pages.h>

#include <core/MVRToolkit.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/PointSize_p.h>
#include <core/document/SafeHtml_p.h>
#include <core/document/TextEdits_p.h>
#include <core/xml/XmlText_p.h>

#include <QBuffer>
#include <QSet>
#include <QTextDocumentWriter>
#include <QTextList>
#include <QTextTable>

#include <algorithm>

namespace {

// Qt's writer says no sizes that count from another one, as those of headings do, and takes text
// that names no font for one in "Sans".
void nameFonts(QTextDocument *text)
{
    constexpr double usualSize = 12;
    const double base
        = text->defaultFont().pointSizeF() > 0 ? text->defaultFont().pointSizeF() : usualSize;
    const QString family = text->defaultFont().family();
    changeAllFormats(text, [base, family](QTextCharFormat &format) {
        if (MVRToolkit::fontFamily(format).isEmpty())
            MVRToolkit::setFontFamily(&format, family);
        // With Qt 6 it writes FontFamilies, but only beside this one.
        format.setProperty(QTextFormat::FontFamily, MVRToolkit::fontFamily(format));
        const double size = pointSizeOf(format, base);
        if (size > 0 && format.hasProperty(QTextFormat::FontSizeAdjustment)) {
            format.setFontPointSize(size);
            format.clearProperty(QTextFormat::FontSizeAdjustment);
        }
    });
}

// Qt's writer goes through the widths of all columns for each of them.
void leaveWidthsOfManyColumns(QTextDocument *text)
{
    constexpr int maxColumns = 500;
    QVector<QTextFrame *> open {text->rootFrame()};
    while (!open.isEmpty()) {
        QTextFrame *frame = open.takeLast();
        auto *table = qobject_cast<QTextTable *>(frame);
        if (table && table->columns() > maxColumns) {
            QTextTableFormat format = table->format();
            format.clearColumnWidthConstraints();
            table->setFormat(format);
        }
        open += frame->childFrames().toVector();
    }
}

QVariant withoutOddCharacters(const QVariant &value)
{
    if (value.userType() == QMetaType::QString)
        return xmlText(value.toString());
    if (value.userType() != QMetaType::QStringList)
        return value;
    QStringList texts = value.toStringList();
    std::transform(texts.begin(), texts.end(), texts.begin(), xmlText);
    return texts;
}

// Qt's writer gets out of step at half a surrogate pair, and writes control characters.
void dropOddCharacters(QTextDocument *text)
{
    changeAllFormats(text, [](QTextCharFormat &format) {
        const QMap<int, QVariant> properties = format.properties();
        for (auto property = properties.cbegin(); property != properties.cend(); ++property)
            format.setProperty(property.key(), withoutOddCharacters(*property));
    });
    changeTexts(text, [](const QString &part, const QTextCharFormat &) { return xmlText(part); });
}

// Qt's writer knows no names of places, and puts a line feed between the parts of a link: a blank.
// A link around a picture it never ends, so that all the rest would stand in it.
void keepLinksOfText(QTextDocument *text)
{
    changeAllFormats(text, [](QTextCharFormat &format) {
        format.clearProperty(QTextFormat::AnchorName);
        if (format.objectType() != QTextFormat::NoObject)
            format.clearProperty(QTextFormat::AnchorHref);
        if (format.anchorHref().isEmpty())
            format.clearProperty(QTextFormat::IsAnchor);
    });
}

// Qt's writer opens a list in a list for each step of an indent, and none without a step.
void boundLists(QTextDocument *text)
{
    constexpr int deepest = 10; // of the levels of ODT
    QSet<QTextList *> seen;
    for (QTextBlock block = text->begin(); block.isValid(); block = block.next()) {
        QTextList *list = block.textList();
        if (!list || seen.contains(list))
            continue;
        seen.insert(list);
        QTextListFormat format = list->format();
        format.setIndent(qBound(1, format.indent(), deepest));
        for (const int affix : {QTextFormat::ListNumberPrefix, QTextFormat::ListNumberSuffix}) {
            if (format.hasProperty(affix))
                format.setProperty(affix, xmlText(format.stringProperty(affix)));
        }
        if (format != list->format())
            list->setFormat(format);
    }
}

bool writeOdt(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    prepareForQt(document, options.paperOrLetter(), pixelsPerPoint);
    dropScriptLinks(&document.text);
    keepLinksOfText(&document.text);
    dropStrayObjects(&document.text);
    fitTablesForOdt(&document.text);
    nameFonts(&document.text);
    dropOddCharacters(&document.text);
    boundLists(&document.text);
    leaveWidthsOfManyColumns(&document.text);
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    QTextDocumentWriter writer(&buffer, "odf");
    if (writer.write(&document.text))
        return true;
    *error = Tool::tr("cannot be written as ODT");
    return false;
}

}

const Format odtFormat
    = {"odt", "ODT", "", nullptr, writeOdt, NoteSupport::None, PictureSupport::Held, false};
