// SPDX-License-Identifier: MIT
#pragma once

/*! What an RTF file holds and the document that was read from it does not, in UTF-16 code units. */
struct MVRTextRtfLeftOut
{
    int hiddenCharacters = 0; /*!< hidden text (\\v) */
    int deletedCharacters = 0; /*!< text of deleted revisions (\\deleted), hidden or not */
};
