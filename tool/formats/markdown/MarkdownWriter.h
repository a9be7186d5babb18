// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QTextDocument;

/*! A document as Markdown, as readMarkdown() takes it, with front matter where the document has
    title or author. */
QString writeMarkdown(const QTextDocument &document);
