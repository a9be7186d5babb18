// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/lex/RtfTokenizer.h>
#include <core/rtf/model/RtfPropertyWords.h>
#include <core/rtf/read/RtfGroups.h>

#include <optional>
#include <string_view>

class RtfReader;
struct RtfControlWord;

/*! A control word as it stands in a file. */
struct RtfCall
{
    const RtfControlWord &word;
    bool hasParameter;
    int parameter; /*!< the word's \c value when the file gives none */
};

/*! A control word, and what the reader does with it. */
struct RtfControlWord
{
    enum Kind {
        Formatting, /*!< sets properties of the group */
        Character, /*!< stands for the character value, so it can be the fallback of a \u */
        Structure, /*!< ends a paragraph, line, cell …; never a fallback */
        Destination, /*!< where the group's text goes */
        Header /*!< says something about the file */
    };
    using Apply = void (*)(RtfReader &reader, const RtfCall &call);

    std::string_view name;
    Kind kind = Formatting;
    Apply apply = nullptr;
    int value = 0; /*!< default parameter, or character */
    const RtfPropertyWord *property = nullptr; /*!< that it sets */
    RtfDestination opens {}; /*!< of destinations that are not passed over */
    std::optional<RtfDestination::Kind> within {}; /*!< elsewhere the destination means nothing */
};

namespace RtfControlWords {

/*! The row for \a name, or null for a word that is not known. */
const RtfControlWord *find(std::string_view name);

/*! Lets \a reader do what \a word says, with the parameter of \a token. */
void apply(RtfReader *reader, const RtfControlWord &word, const RtfToken &token);

}
