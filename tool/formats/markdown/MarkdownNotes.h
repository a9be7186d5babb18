// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRtfNote.h>
#include <tool/formats/markdown/MarkdownInlineReader.h>

#include <QByteArray>

class QTextDocument;

/*! The content of a comment; each of its lines is a paragraph. */
QByteArray markdownCommentContent(const MarkdownRuns &comment);

/*! Attaches notes of a Markdown file to the text that they are about, or stand behind. */
void attachMarkdownNotes(QTextDocument *document, const MVRTextRtfNotes &notes);
