// SPDX-License-Identifier: MIT
#pragma once

#include <tool/Notes.h>
#include <tool/formats/ElementMapping.h>

#include <QByteArray>
#include <QPageSize>
#include <QString>
#include <QStringList>

#include <optional>

class Listener;
struct Document;
struct Format;

/*! What the reader of a document may do to its text. */
struct ReadOptions
{
    bool capitals = true; /*!< put the text of all-capitals elements in capitals */
    bool goesBack = false; /*!< the document is going to be written into its file again */
    QString mediaFolder; /*!< whose pictures may be opened; empty: none */
    bool hasSmartPunctuation = false; /*!< quotes, dashes and dots of Markdown become typographic */
    bool goesToPages = false; /*!< it is going to be drawn, with the headers of its file */
    bool leavesFile = false; /*!< it is going to be written, and not as a screenplay's file */
    bool holdsPictures = false; /*!< to a format that holds the pictures themselves */

    /*! Takes over what the format says that the document is going to be written in. */
    void setTarget(const Format &to);
};

/*! What a user can ask of a written file. */
struct WriteOptions
{
    std::optional<QPageSize> paper; /*!< the document's own where there is none */
    int page = 1; /*!< of a picture, counted from 1 */
    int dpi = 150; /*!< dots per inch of a picture */
    QString author; /*!< of a document that names none */
    ElementMapping elements; /*!< of a document that becomes a screenplay */
    int firstPage = 0; /*!< of those that a PDF has; 0 for all */
    int lastPage = 0;
    QString firstScene; /*!< of those that a screenplay's pages show; empty for all */
    QString lastScene;
    bool hasPageNumbers = false; /*!< of documents that are no screenplays */
    bool hasCommentsInMargin = false;
    bool hasRevisionMarks = false;
    QString mediaFolder; /*!< where to write pictures as files; empty: nowhere */
    QString watermark; /*!< text across the pages; may be empty */
    Listener *listener = nullptr; /*!< hears how writing goes on */

    QPageSize paperOrLetter() const { return paper.value_or(QPageSize(QPageSize::Letter)); }
};

/*!
    Fills a fresh document from the bytes of a file.

    \param error  receives the reason of a failure
    \return false when the bytes are not of the format
*/
using ReadFunction = bool (*)(const QByteArray &bytes, const ReadOptions &options,
                              Document &document, QString *error);

/*!
    Turns a document into the bytes of a file.

    \param document  may be changed for the purpose
    \param bytes     receives the file
    \param error     receives the reason of a failure
*/
using WriteFunction
    = bool (*)(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error);

/*! What becomes of a document's pictures in a file. */
enum class PictureSupport {
    None,
    Named, /*!< the file names the picture's file */
    Held /*!< the file holds the picture */
};

/*! A file format that the tool reads, writes or both: a row that its source file defines. */
struct Format
{
    const char *name; /*!< also its first suffix */
    const char *title;
    const char *otherSuffixes; /*!< separated by blanks */
    ReadFunction read; /*!< null when it is not read */
    WriteFunction write; /*!< null when it is not written */
    NoteSupport notes;
    PictureSupport pictures;
    bool hasElements; /*!< paragraphs look as their element does: they lose a look of their own, and
                           letters that it shows as capitals stay as they were typed */
};

extern const Format bbCodeFormat;
extern const Format fdxFormat;
extern const Format htmlFormat;
extern const Format markdownFormat;
extern const Format odtFormat;
extern const Format pdfFormat;
extern const Format pngFormat;
extern const Format rtfFormat;
extern const Format textFormat;

/*! The format called \a name (in any case); null when there is none. */
const Format *formatByName(const QString &name);

/*! The format of a file by the suffix of its name; null for an unknown one. */
const Format *formatOfFile(const QString &path);

/*! The names of all formats that are read, or written. */
QStringList readableFormats();
QStringList writableFormats();
