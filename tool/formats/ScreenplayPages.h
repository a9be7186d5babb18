// SPDX-License-Identifier: MIT
#pragma once

#include <pages/MVRScreenplayPages.h>

#include <QString>

#include <optional>

struct Document;
struct WriteOptions;

/*!
    The pages of a screenplay, as its file wants them where it is unchanged since it was read.

    \param error  receives the reason of a failure: there are no such scenes or pages, or too many
*/
std::optional<MVRScreenplayPages> screenplayPages(const Document &document,
                                                  const WriteOptions &options, QString *error);

/*! Remembers the file that a screenplay was read from. */
void noteSource(Document &document, const QByteArray &bytes);
