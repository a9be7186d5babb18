// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfProps.h>
#include <core/rtf/model/RtfResources.h>

#include <QTextFormat>

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <vector>

/*!
    Conversions between RTF's properties and Qt's formats, in both directions.

    The writer relies on the pair: what to…Format() does not give back of a format after
    from…Format() goes into the exact properties, so reading restores every format as it was.
*/
namespace RtfFormats {

QTextCharFormat toCharFormat(const RtfCharProps &props, const RtfResources &resources);
QTextBlockFormat toBlockFormat(const RtfParaProps &props, const RtfResources &resources);

/*!
    Exact properties included; \a resources receives fonts, colours and links that are new.
    \param linked  the link may be said by a field around the text; false for the end of a
                   paragraph, which stands in no field and keeps it among the exact properties
*/
RtfCharProps fromCharFormat(const QTextCharFormat &format, bool linked, RtfResources *resources);

/*! Where a paragraph stands, which its format alone does not say. */
struct Surroundings
{
    bool breakBefore = false; /*!< the paragraph before asks for a page break behind itself, which
                                   RTF can say only here */
    int list = 0; /*!< \ls, 0: in no list */
    int listLevel = 0;
    int tableLevel = 0; /*!< 0: in no table */
    int textWidth = 0; /*!< between the page's margins, in twips */
};

RtfParaProps fromBlockFormat(const QTextBlockFormat &format, const Surroundings &place,
                             RtfResources *resources);

}

/*! Compares properties as bytes; see the assertion beside them. */
struct RtfPropsHash
{
    template <typename Props> std::size_t operator()(const Props &props) const
    {
        const auto *bytes = reinterpret_cast<const char *>(&props);
        quint64 hash = 0;
        for (std::size_t at = 0; at < sizeof(Props); at += sizeof(quint64)) {
            quint64 word = 0;
            std::memcpy(&word, bytes + at, std::min(sizeof word, sizeof(Props) - at));
            hash = (hash ^ word) * 0x9e3779b97f4a7c15ULL;
            hash ^= hash >> 32;
        }
        return hash;
    }
};

struct RtfPropsEqual
{
    template <typename Props> bool operator()(const Props &a, const Props &b) const
    {
        return std::memcmp(&a, &b, sizeof(Props)) == 0;
    }
};

/*! Formats by property set, each built once: text changes between few sets very often. */
class RtfFormatCache
{
public:
    explicit RtfFormatCache(const RtfResources &resources)
        : m_resources(resources)
    {
    }

    int charFormatNumber(const RtfCharProps &props);
    int blockFormatNumber(const RtfParaProps &props);
    /*! Adds a format that no properties stand for. */
    int addCharFormat(const QTextCharFormat &format);
    const QTextCharFormat &charFormat(int number) const { return m_charFormats[number]; }
    const QTextBlockFormat &blockFormat(int number) const { return m_blockFormats[number]; }

    /*! Forgets the numbers, after the resources that the properties refer to have changed. */
    void resourcesChanged();

private:
    const RtfResources &m_resources;
    std::vector<QTextCharFormat> m_charFormats;
    std::vector<QTextBlockFormat> m_blockFormats;
    std::unordered_map<RtfCharProps, int, RtfPropsHash, RtfPropsEqual> m_charNumbers;
    std::unordered_map<RtfParaProps, int, RtfPropsHash, RtfPropsEqual> m_blockNumbers;
};
