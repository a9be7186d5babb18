// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QTextDocument;

/*! What a Markdown file says about itself before its text. */
struct MarkdownFrontMatter
{
    QString title;
    QString author; /*!< several, as the file has them, parted by commas */
    bool hasMore = false; /*!< and something else that is not kept */

    /*!
        Takes the lines of a YAML block ("---" to "---" or "…") or of MultiMarkdown's metadata
        ("Title: …" up to an empty line) from the start of \a text.
    */
    static MarkdownFrontMatter take(QString *text);

    /*! A YAML block and an empty line; empty without title and author. */
    QString toYaml() const;
};

/*! Whether \a line would begin metadata if it were the first of a file. */
bool beginsMetadata(const QString &line);
