// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QPageSize>
#include <QString>

struct Document;

/*! What a user can ask of a written file. */
struct WriteOptions
{
    QPageSize paper = QPageSize(QPageSize::Letter);
    int page = 1; /*!< of a picture, counted from 1 */
    int dpi = 150; /*!< dots per inch of a picture */
};

/*!
    Turns a document into the bytes of a file.

    \param document  may be changed for the purpose
    \param bytes     receives the file
    \param error     receives the reason of a failure
*/
using WriteFunction
    = bool (*)(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error);

bool writeFdx(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error);
bool writeRtf(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error);
bool writeHtml(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error);
bool writeText(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error);
bool writeMarkdown(Document &document, const WriteOptions &options, QByteArray *bytes,
                   QString *error);
bool writeBbCode(Document &document, const WriteOptions &options, QByteArray *bytes,
                 QString *error);
bool writeOdt(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error);
bool writePdf(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error);
bool writePng(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error);
