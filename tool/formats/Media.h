// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class Listener;
struct Document;
struct Format;
struct WriteOptions;

/*!
    Opens the pictures that a document names by their files.

    \param folder  the only one, with those in it, whose files are opened
    \param base    the document's own, where relative paths begin
*/
void openPictures(Document &document, const QString &folder, const QString &base);

/*! How many pictures the document only names: missing ones, no pictures, or somewhere else. */
int closedPictures(Document &document);

/*!
    Prepares the pictures of a document for a format: as files in the folder that \a options name,
    in the page itself, or left out, and says how many were.

    \param path  of the file that is going to be written; "-" for a stream
    \param name  what messages call it
    \return false when a file could not be written; that was said
*/
bool placePictures(Document &document, const Format &format, const WriteOptions &options,
                   const QString &path, const QString &name, Listener &listener);
