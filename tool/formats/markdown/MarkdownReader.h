// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class QTextDocument;

/*! How Markdown is read. */
struct MarkdownOptions
{
    bool hasSmartPunctuation = false; /*!< straight quotes, hyphens and dots become typographic */
};

/*! What became of a file. */
struct MarkdownResult
{
    enum Refusal {
        NotRefused,
        TooDeep, /*!< lists and quotes in each other */
        TooDense, /*!< marks in one paragraph */
        TooManyLists
    };

    Refusal refusal = NotRefused; /*!< why nothing was read */
    bool lacksMetadata = false; /*!< it says more of itself than title and author */
    int lostNotes = 0; /*!< marks of notes that are repeated too often */
    int notePictures = 0; /*!< that notes name: they stay blank */
};

/*!
    Reads CommonMark with the tables, task lists, strike-outs and footnotes of GitHub, front matter,
    and comments of HTML and CriticMarkup, into \a document, which is empty.

    Title and author become the document's, footnotes and comments its inspector notes, the names
    of pictures stay as they are; other HTML is text. Lengths are points.
*/
MarkdownResult readMarkdown(const QString &text, const MarkdownOptions &options,
                            QTextDocument *document);
