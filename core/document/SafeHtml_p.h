// SPDX-License-Identifier: MIT
#pragma once

#include <core/document/FormatEdits_p.h>
#include <core/document/TextEdits_p.h>

#include <QFont>
#include <QSet>
#include <QStringList>
#include <QTextDocument>
#include <QTextList>

#include <algorithm>

/*! Whether \a target would run a script, or open a page made of itself, in a browser. */
inline bool isScriptLink(const QString &target)
{
    QString start; // browsers skip blanks and control characters, also between letters
    for (const QChar c : target) {
        if (c > QLatin1Char(' '))
            start += c.toLower();
        if (c == QLatin1Char(':'))
            break;
    }
    return start == QLatin1String("javascript:") || start == QLatin1String("vbscript:")
        || start == QLatin1String("data:");
}

/*! Makes ordinary text of links for which isScriptLink() holds. */
inline void dropScriptLinks(QTextDocument *document)
{
    changeAllFormats(document, [](QTextCharFormat &format) {
        if (!isScriptLink(format.anchorHref()))
            return;
        format.clearProperty(QTextFormat::AnchorHref);
        if (format.anchorNames().isEmpty())
            format.clearProperty(QTextFormat::IsAnchor);
    });
}

/*! \a name without what would end a quoted name in a style sheet. */
inline QString quotableName(QString name)
{
    const auto endsName = [](QChar c) {
        return c < QLatin1Char(' ') || c == QLatin1Char('"') || c == QLatin1Char('\\');
    };
    name.truncate(int(std::remove_if(name.begin(), name.end(), endsName) - name.begin()));
    return name;
}

/*! Takes from the names of fonts what would end them in a style sheet. */
inline void makeFontNamesQuotable(QTextDocument *document)
{
    changeAllFormats(document, [](QTextCharFormat &format) {
        const QMap<int, QVariant> properties = format.properties();
        auto property = properties.lowerBound(QTextFormat::FirstFontProperty);
        for (; property != properties.cend() && property.key() <= QTextFormat::LastFontProperty;
             ++property) {
            if (property->userType() == QMetaType::QString) {
                format.setProperty(property.key(), quotableName(property->toString()));
            } else if (property->userType() == QMetaType::QStringList) {
                QStringList names = property->toStringList();
                std::transform(names.begin(), names.end(), names.begin(), quotableName);
                format.setProperty(property.key(), names);
            }
        }
    });
    QFont font = document->defaultFont();
    font.setFamily(quotableName(font.family()));
    if (font != document->defaultFont())
        document->setDefaultFont(font);
}

/*! Escapes what stands beside the numbers of lists, where the toolkit writes it as it is. */
inline void makeListAffixesQuotable(QTextDocument *document)
{
    const auto escaped = [](const QString &affix) {
        return quotableName(affix).replace(QLatin1Char('&'), QLatin1String("&amp;"));
    };
    if (!hasFormat(*document, [](const QTextFormat &format) {
            return format.hasProperty(QTextFormat::ListNumberPrefix)
                || format.hasProperty(QTextFormat::ListNumberSuffix);
        }))
        return;
    QSet<QTextList *> lists;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QTextList *list = block.textList();
        if (!list || lists.contains(list))
            continue;
        lists.insert(list);
        QTextListFormat format = list->format();
        if (format.hasProperty(QTextFormat::ListNumberPrefix))
            format.setNumberPrefix(escaped(format.numberPrefix()));
        if (format.hasProperty(QTextFormat::ListNumberSuffix))
            format.setNumberSuffix(escaped(format.numberSuffix()));
        if (format != list->format())
            list->setFormat(format);
    }
}

/*! Takes the sign of an object from text that is none: the toolkit leaves out all of its run. */
inline void dropStrayObjects(QTextDocument *document)
{
    changeTexts(document, [](QString text, const QTextCharFormat &format) {
        if (format.objectType() == QTextFormat::NoObject)
            text.remove(QChar::ObjectReplacementCharacter);
        return text;
    });
}

/*!
    Changes a document of which nothing is needed but its HTML: neither text, title nor names, which
    may come from anybody, become markup, style or script when QTextDocument::toHtml() writes it.
    That leaves the title and the affixes of list numbers as they are, and lets quotes end the name
    of a font.
*/
inline void makeSafeForHtml(QTextDocument *document)
{
    dropScriptLinks(document);
    makeFontNamesQuotable(document);
    makeListAffixesQuotable(document);
    dropStrayObjects(document);
    const QString title = document->metaInformation(QTextDocument::DocumentTitle);
    document->setMetaInformation(QTextDocument::DocumentTitle, title.toHtmlEscaped());
}
