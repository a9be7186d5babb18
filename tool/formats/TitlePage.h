// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

struct Document;

/*!
    Moves the paragraphs of a screenplay's title page to where Final Draft has them.

    The writer puts every paragraph into the script; a title page there would lose its alignment
    and be printed as action.
    \param fdx  what the writer made of \a document
    \return the file with a title page; \a fdx itself when there is none
*/
QByteArray withTitlePage(const QByteArray &fdx, const Document &document);
