// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfOwnContent.h>

#include <optional>

/*! Recognizes what the writer wrote. */
namespace RtfOwnContentReader {

/*!
    Takes a file to pieces that stands in the writer's own form: its header, then paragraphs of
    runs, links and pictures, word for word as they are written.

    The file may come from anywhere, so each token has to be one that the writer writes at such a
    place, and each number one that the header explains.
    \return nothing for all other files, those with tables and frames among them, and where the page
            has a part in what is written; these are to be read as documents
*/
std::optional<RtfOwnContent> read(const QByteArray &rtf);

}
