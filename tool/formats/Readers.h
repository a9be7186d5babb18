// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

struct Document;

/*! What the reader of a document may do to its text. */
struct ReadOptions
{
    bool capitals = true; /*!< put the text of all-capitals elements in capitals */
};

/*!
    Fills a fresh document from the bytes of a file.

    \param error  receives the reason of a failure
    \return false when the bytes are not of the format
*/
using ReadFunction = bool (*)(const QByteArray &bytes, const ReadOptions &options,
                              Document &document, QString *error);

bool readFdx(const QByteArray &bytes, const ReadOptions &options, Document &document,
             QString *error);
bool readRtf(const QByteArray &bytes, const ReadOptions &options, Document &document,
             QString *error);
bool readHtml(const QByteArray &bytes, const ReadOptions &options, Document &document,
              QString *error);
bool readText(const QByteArray &bytes, const ReadOptions &options, Document &document,
              QString *error);
bool readMarkdown(const QByteArray &bytes, const ReadOptions &options, Document &document,
                  QString *error);
