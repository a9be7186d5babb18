// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfPicture.h>
#include <core/rtf/model/RtfProps.h>
#include <core/rtf/model/RtfTable.h>

#include <string_view>

class RtfReader;

/*!
    A control word: what the reader does with it and, for formatting, what the writer says with
    it. A new word is a new row of the table.
*/
struct RtfWord
{
    enum Kind {
        Formatting, /*!< sets properties of the group */
        Character, /*!< stands for a character, so it can be the fallback of a \u */
        Structure, /*!< ends a paragraph, line, cell …; never a fallback */
        Destination, /*!< where the group's text goes */
        Header /*!< says something about the file */
    };
    using Apply
        = void (*)(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);

    std::string_view name;
    Kind kind = Formatting;
    Apply apply = nullptr;
    int value = 0; /*!< default parameter, constant, or character, as apply() takes it */
    int RtfCharProps::*charProp = nullptr;
    int RtfParaProps::*paraProp = nullptr;
    bool constant = false; /*!< stands for value itself instead of carrying a number */
    bool written = false; /*!< the spelling that the writer uses for its property */
    const void *destination = nullptr;
    bool RtfCellFormat::*cellFlag = nullptr;
    int RtfPicture::*pictureNumber = nullptr;
};

/*! The table's row for \a name, or null for a word that is not known. */
const RtfWord *findRtfWord(std::string_view name);

/*! Appends the words that turn the properties \a from into \a to; nothing when they are equal. */
void appendRtfWords(const RtfCharProps &from, const RtfCharProps &to, class QByteArray *rtf);
void appendRtfWords(const RtfParaProps &from, const RtfParaProps &to, class QByteArray *rtf);
