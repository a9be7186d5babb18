// SPDX-License-Identifier: MIT
#pragma once

/*! What an RTF file holds and the document that was read from it does not; characters are UTF-16
    code units. */
struct MVRTextRtfLeftOut
{
    int hiddenCharacters = 0; /*!< hidden text (\\v) */
    int deletedCharacters = 0; /*!< text of deleted revisions (\\deleted), hidden or not */
    int pictures = 0; /*!< those that the toolkit cannot decode: they become grey placeholders */
    int notes = 0; /*!< notes in notes that are more than four deep */
};
