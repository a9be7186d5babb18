// SPDX-License-Identifier: MIT
#include <tool/formats/ElementMapping.h>

#include <tool/Messages.h>

#include <core/MVRScriptElement.h>
#include <core/document/EditBlock_p.h>
#include <finaldraft/MVRFinalDraftFile.h>

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

namespace {

bool readsLikeScene(const QString &heading)
{
    static const QRegularExpression start(QStringLiteral("^\\s*(?:INT|EXT|EST|I/E)(?:\\.|\\s|/)"),
                                          QRegularExpression::CaseInsensitiveOption);
    return start.match(heading).hasMatch();
}

/*! The level of a heading, from 1 on; 0 for other paragraphs. */
int headingLevel(const QTextBlockFormat &format)
{
    const QVariant level = format.property(QTextFormat::HeadingLevel);
    // A line spacing has the same number, and is a double.
    return level.userType() == QMetaType::Int ? qBound(0, level.toInt(), 6) : 0;
}

// A heading looks like its element; notes on it stay.
void clearHeadingLook(const QTextBlock &block, QTextCursor &cursor)
{
    const QVector<QTextLayout::FormatRange> ranges = block.textFormats();
    for (const QTextLayout::FormatRange &range : ranges) {
        QTextCharFormat format = range.format;
        for (const int property : {QTextFormat::FontWeight, QTextFormat::FontPointSize,
                                   QTextFormat::FontPixelSize, QTextFormat::FontSizeAdjustment})
            format.clearProperty(property);
        cursor.setPosition(block.position() + range.start);
        cursor.setPosition(block.position() + range.start + range.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }
}

// Spaces and indents of other documents are not those of a script.
void nameBlock(const QTextBlock &block, const QString &name, bool keepsAlignment,
               QTextCursor &cursor)
{
    const QTextBlockFormat old = block.blockFormat();
    QTextBlockFormat format;
    if (!name.isEmpty())
        format.setProperty(MVRScriptElement::NameProperty, name);
    if (old.hasProperty(QTextFormat::PageBreakPolicy))
        format.setPageBreakPolicy(old.pageBreakPolicy());
    if (keepsAlignment && old.hasProperty(QTextFormat::BlockAlignment))
        format.setAlignment(old.alignment());
    cursor.setPosition(block.position());
    cursor.setBlockFormat(format);
}

/*! Takes one pair, "h2=Outline 1". */
bool readPair(const QString &source, const QString &name, ElementMapping *mapping)
{
    if (source == QLatin1String("scenes"))
        mapping->scene = name;
    else if (source == QLatin1String("text"))
        mapping->text = name;
    else if (source == QLatin1String("headings"))
        mapping->headings.fill(name);
    else if (source.size() == 2 && source.startsWith(QLatin1Char('h'))
             && source.at(1) >= QLatin1Char('1') && source.at(1) <= QLatin1Char('6'))
        mapping->headings[size_t(source.at(1).digitValue() - 1)] = name;
    else
        return false;
    return true;
}

}

QStringList ElementMapping::names() const
{
    QStringList all {scene, text};
    for (const QString &heading : headings)
        all.append(heading);
    all.removeAll(QString());
    all.removeDuplicates();
    return all;
}

bool readElementMapping(const QString &words, ElementMapping *mapping, QString *error)
{
    const QStringList pairs = words.split(QLatin1Char(','));
    for (const QString &pair : pairs) {
        const QString source = pair.section(QLatin1Char('='), 0, 0).trimmed();
        const QString name = pair.section(QLatin1Char('='), 1).trimmed();
        if (pair.trimmed() == QLatin1String("outline")) {
            for (int level = 0; level < int(mapping->headings.size()); ++level)
                mapping->headings[size_t(level)]
                    = QStringLiteral("Outline %1").arg(qMin(level + 1, 4));
        } else if (name.isEmpty() || !readPair(source, name, mapping)) {
            *error = Tool::tr("--elements: \"%1\" is neither \"outline\" nor a pair such as "
                              "\"h1=Act\" (of scenes, headings, h1 to h6, text)")
                         .arg(pair.trimmed());
            return false;
        }
    }
    return true;
}

void nameElements(QTextDocument &document, const ElementMapping &mapping)
{
    QTextCursor cursor(&document);
    const EditBlock editBlock(cursor);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const int level = headingLevel(block.blockFormat());
        if (level > 0) {
            const QString name = readsLikeScene(block.text()) ? mapping.scene
                                                              : mapping.headings[size_t(level - 1)];
            nameBlock(block, name, false, cursor);
            if (name != ElementMapping::general())
                clearHeadingLook(block, cursor);
        } else if (!mapping.text.isEmpty()
                   && !block.blockFormat().hasProperty(MVRScriptElement::NameProperty)
                   && !block.blockFormat().hasProperty(MVRFinalDraftFile::TitlePageProperty)) {
            nameBlock(block, mapping.text, true, cursor);
        }
    }
}
