// SPDX-License-Identifier: MIT
#pragma once

#include <tool/formats/markdown/MarkdownInlineReader.h>

/*!
    Turns the marks in a paragraph's text into what they stand for: comments of CriticMarkup,
    "{>>…<<}" and "{==…==}{>>…<<}", and bare addresses, which become links.
*/
MarkdownText withMarksRead(MarkdownText text);

/*! Makes \a format that of a link to \a target. */
void setMarkdownLink(QTextCharFormat *format, const QString &target);
