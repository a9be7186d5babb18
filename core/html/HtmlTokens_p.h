// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <algorithm>
#include <vector>

/*! Where an attribute stands in a text; without a value both ends of the value are equal. */
struct HtmlAttribute
{
    int start;
    int nameEnd;
    int valueStart; /*!< behind the quote */
    int valueEnd;
    int end; /*!< behind the closing quote */
};

/*! Where a tag stands in a text. */
struct HtmlTag
{
    int start;
    int nameStart;
    int nameEnd;
    int end; /*!< behind the ">" */
    bool isEnd; /*!< "</p>" */
    bool isSelfClosed; /*!< "<br />" */
    bool isCut; /*!< the next tag begins in it; there is no ">" */
    std::vector<HtmlAttribute> attributes;
};

inline bool isHtmlSpace(QChar c)
{
    return c == QLatin1Char(' ') || (c >= QLatin1Char('\t') && c <= QLatin1Char('\r'));
}

/*! The first position from \a from on that holds a blank or one of \a characters. */
inline int findHtmlEnd(const QString &text, int from, const char *characters)
{
    const QLatin1String ends(characters);
    const auto isEnd
        = [&](QChar c) { return isHtmlSpace(c) || (c <= QLatin1Char('>') && ends.contains(c)); };
    return int(std::find_if(text.cbegin() + from, text.cend(), isEnd) - text.cbegin());
}

inline int skipHtmlSpace(const QString &text, int from)
{
    return int(std::find_if_not(text.cbegin() + from, text.cend(), isHtmlSpace) - text.cbegin());
}

/*! Whether a tag, not some other "<", begins at \a position. */
inline bool isHtmlTagStart(const QString &text, int position)
{
    int name = position + 1;
    if (name < text.size() && text.at(name) == QLatin1Char('/'))
        ++name;
    if (name >= text.size())
        return false;
    const QChar first = text.at(name);
    // XML has more characters that begin a name than are letters today.
    return first.isLetter() || first.unicode() >= 0x80 || first == QLatin1Char('_')
        || first == QLatin1Char(':');
}

/*!
    Finds the end of the comment, CDATA section or processing instruction that begins at
    \a position.

    \return the position behind it, text.size() when it does not end, -1 when none begins there
*/
inline int htmlPassageEnd(const QString &text, int position)
{
    static constexpr struct
    {
        const char *start;
        const char *end;
    } passages[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    if (isHtmlTagStart(text, position))
        return -1;
    for (const auto &passage : passages) {
        const QLatin1String start(passage.start);
        if (QStringView(text).mid(position, start.size()) != start)
            continue;
        const QLatin1String end(passage.end);
        const int found = text.indexOf(end, position + start.size());
        return int(found < 0 ? text.size() : found + end.size());
    }
    return -1;
}

/*! Reads the attribute at \a position; returns false when its value does not end. */
inline bool readHtmlAttribute(const QString &text, int position, HtmlAttribute *attribute)
{
    attribute->start = position;
    position = findHtmlEnd(text, position + 1, "=/<>");
    *attribute = {attribute->start, position, position, position, position};
    const int equals = skipHtmlSpace(text, position);
    if (equals == text.size() || text.at(equals) != QLatin1Char('='))
        return true;
    position = skipHtmlSpace(text, equals + 1);
    if (position == text.size())
        return false;
    const QChar quote = text.at(position);
    if (quote == QLatin1Char('"') || quote == QLatin1Char('\'')) {
        attribute->valueStart = position + 1;
        attribute->valueEnd = text.indexOf(quote, position + 1);
        attribute->end = attribute->valueEnd + 1;
        return attribute->valueEnd >= 0;
    }
    attribute->valueStart = position;
    attribute->valueEnd = attribute->end = findHtmlEnd(text, position, "<>");
    return true;
}

/*!
    Reads the tag that begins at \a position, where isHtmlTagStart() holds.

    \param tag  receives the tag; the room of its attributes is used again
    \return false when the text ends first
*/
inline bool readHtmlTag(const QString &text, int position, HtmlTag *tag)
{
    tag->start = position;
    tag->isEnd = text.at(position + 1) == QLatin1Char('/');
    tag->nameStart = position + (tag->isEnd ? 2 : 1);
    tag->nameEnd = findHtmlEnd(text, tag->nameStart, "/<>");
    tag->isSelfClosed = tag->isCut = false;
    tag->attributes.clear();
    for (position = tag->nameEnd;;) {
        position = skipHtmlSpace(text, position);
        if (position == text.size())
            return false;
        const QChar c = text.at(position);
        if (c == QLatin1Char('>') || c == QLatin1Char('<')) {
            tag->isCut = c == QLatin1Char('<');
            tag->end = tag->isCut ? position : position + 1;
            return true;
        }
        tag->isSelfClosed = c == QLatin1Char('/');
        if (tag->isSelfClosed) {
            ++position;
            continue;
        }
        HtmlAttribute attribute {};
        if (!readHtmlAttribute(text, position, &attribute))
            return false;
        tag->attributes.push_back(attribute);
        position = attribute.end;
    }
}
