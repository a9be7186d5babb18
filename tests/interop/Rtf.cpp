// SPDX-License-Identifier: MIT
#include "Content.h"

#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>

namespace {

QString colorText(const QBrush &brush)
{
    return brush.style() == Qt::NoBrush ? QString() : brush.color().name();
}

QString underlineText(const QTextCharFormat &format)
{
    static const QMap<int, const char *> names {{QTextCharFormat::SingleUnderline, "single"},
                                                {QTextCharFormat::DashUnderline, "dash"},
                                                {QTextCharFormat::DotLine, "dot"},
                                                {QTextCharFormat::DashDotLine, "dot-dash"},
                                                {QTextCharFormat::DashDotDotLine, "dot-dot-dash"},
                                                {QTextCharFormat::WaveUnderline, "wave"}};
    return QString::fromLatin1(names.value(format.underlineStyle()));
}

QString capitalsText(const QTextCharFormat &format)
{
    if (format.fontCapitalization() == QFont::AllUppercase)
        return QStringLiteral("all");
    return format.fontCapitalization() == QFont::SmallCaps ? QStringLiteral("small") : QString();
}

Properties charProperties(const QTextCharFormat &format, const QFont &byDefault)
{
    Properties properties;
    const QString family = MVRToolkit::fontFamily(format);
    setProperty(&properties, "font", family.isEmpty() ? byDefault.family() : family);
    setProperty(
        &properties, "size",
        lengthText(format.fontPointSize() > 0 ? format.fontPointSize() : byDefault.pointSizeF()));
    setProperty(&properties, "bold", format.fontWeight() > QFont::Medium ? "yes" : "");
    setProperty(&properties, "italic", format.fontItalic() ? "yes" : "");
    setProperty(&properties, "underline", underlineText(format));
    if (format.underlineColor().isValid())
        setProperty(&properties, "underline colour", format.underlineColor().name());
    setProperty(&properties, "strike", format.fontStrikeOut() ? "yes" : "");
    setProperty(&properties, "position",
                format.verticalAlignment() == QTextCharFormat::AlignSuperScript     ? "super"
                    : format.verticalAlignment() == QTextCharFormat::AlignSubScript ? "sub"
                                                                                    : "");
    setProperty(&properties, "capitals", capitalsText(format));
    setProperty(&properties, "colour", colorText(format.foreground()));
    setProperty(&properties, "background", colorText(format.background()));
    setProperty(&properties, "letter spacing",
                format.fontLetterSpacingType() == QFont::AbsoluteSpacing
                    ? lengthText(format.fontLetterSpacing())
                    : QString());
    setProperty(&properties, "link", format.anchorHref());
    setProperty(&properties, "bookmark", format.anchorNames().join(QLatin1Char(' ')));
    return properties;
}

QString alignmentText(Qt::Alignment alignment)
{
    if (alignment & Qt::AlignHCenter)
        return QStringLiteral("center");
    if (alignment & Qt::AlignRight)
        return QStringLiteral("right");
    return alignment & Qt::AlignJustify ? QStringLiteral("justify") : QString();
}

QString lineHeightText(const QTextBlockFormat &format)
{
    const QString value = lengthText(format.lineHeight());
    switch (format.lineHeightType()) {
    case QTextBlockFormat::ProportionalHeight:
        return value == QLatin1String("100") ? QString() : value + QLatin1Char('%');
    case QTextBlockFormat::FixedHeight:
        return value + QLatin1String(" exactly");
    case QTextBlockFormat::MinimumHeight:
        return value + QLatin1String(" at least");
    default:
        return QString();
    }
}

QString tabsText(const QTextBlockFormat &format)
{
    static const char *const types[] = {"left", "right", "center", "char"};
    QStringList stops;
    const auto tabs = format.tabPositions();
    for (const QTextOption::Tab &tab : tabs)
        stops += QString::number(qRound(tab.position)) + QLatin1Char(' ')
            + QLatin1String(types[tab.type]);
    return stops.join(QLatin1String(", "));
}

QString listText(const QTextBlock &block)
{
    static const QMap<int, const char *> names {{QTextListFormat::ListDecimal, "1"},
                                                {QTextListFormat::ListLowerAlpha, "a"},
                                                {QTextListFormat::ListUpperAlpha, "A"},
                                                {QTextListFormat::ListLowerRoman, "i"},
                                                {QTextListFormat::ListUpperRoman, "I"}};
    const QTextList *list = block.textList();
    if (!list)
        return QString();
    const QTextListFormat format = list->format();
    const QString level = QLatin1String(" level ") + QString::number(format.indent());
    if (!names.contains(format.style()))
        return QLatin1String("bullet") + level;
    const QString suffix = format.hasProperty(QTextFormat::ListNumberSuffix) ? format.numberSuffix()
                                                                             : QStringLiteral(".");
    return format.numberPrefix() + QLatin1String(names.value(format.style())) + suffix + level;
}

QString tableText(const QTextBlock &block)
{
    QString places;
    const QTextCursor cursor(block);
    for (QTextFrame *frame = cursor.currentFrame(); frame; frame = frame->parentFrame()) {
        const auto *table = qobject_cast<QTextTable *>(frame);
        if (!table)
            continue;
        const QTextTableCell cell = table->cellAt(block.position());
        places.prepend(QStringLiteral("%1,%2 %3x%4 ")
                           .arg(cell.row())
                           .arg(cell.column())
                           .arg(cell.rowSpan())
                           .arg(cell.columnSpan()));
    }
    return places.trimmed();
}

Properties blockProperties(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    Properties properties;
    setProperty(&properties, "alignment", alignmentText(format.alignment()));
    if (!block.textList()) { // the list indents its items, here and there differently
        setProperty(&properties, "left", lengthText(format.leftMargin()));
        setProperty(&properties, "first line", lengthText(format.textIndent()));
    }
    setProperty(&properties, "right", lengthText(format.rightMargin()));
    setProperty(&properties, "before", lengthText(format.topMargin()));
    setProperty(&properties, "after", lengthText(format.bottomMargin()));
    setProperty(&properties, "line height", lineHeightText(format));
    setProperty(&properties, "page break",
                format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore ? "before" : "");
    setProperty(&properties, "keep together", format.nonBreakableLines() ? "yes" : "");
    setProperty(&properties, "direction",
                format.layoutDirection() == Qt::RightToLeft ? "right to left" : "");
    setProperty(&properties, "shading", colorText(format.background()));
    setProperty(&properties, "heading",
                format.headingLevel() > 0 ? QString::number(format.headingLevel()) : QString());
    setProperty(&properties, "tabs", tabsText(format));
    setProperty(&properties, "list", listText(block));
    setProperty(&properties, "cell", tableText(block));
    return properties;
}

Content::Note noteFrom(const MVRTextRtfNote &note, const QTextDocument &document)
{
    QTextDocument content;
    MVRTextRtf::fromRtfCData(note.rtf, &content);
    const QTextBlock block = document.findBlock(note.end);
    const QString before = block.text().left(note.end - block.position()).right(20);
    const QString kind = note.kind == MVRTextRtfNote::Comment ? QStringLiteral("comment")
        : note.isEndNote                                      ? QStringLiteral("endnote")
                                                              : QStringLiteral("footnote");
    return {kind, before, content.toPlainText(), note.author};
}

} // namespace

bool readRtf(const QByteArray &bytes, Content *content)
{
    QTextDocument document;
    document.setDefaultFont(QFont(QStringLiteral("Times New Roman"), 12));
    MVRTextRtfNotes notes;
    if (!MVRTextRtf::fromRtfCData(bytes, &document, &notes))
        return false;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        Content::Paragraph paragraph;
        paragraph.format = blockProperties(block);
        for (auto it = block.begin(); !it.atEnd(); ++it)
            paragraph.append(it.fragment().text(),
                             charProperties(it.fragment().charFormat(), document.defaultFont()));
        content->paragraphs.append(paragraph);
    }
    for (const MVRTextRtfNote &note : qAsConst(notes))
        content->notes.append(noteFrom(note, document));
    return true;
}
