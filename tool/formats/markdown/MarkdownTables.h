// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class MarkdownParagraphs;
class QTextTable;

/*! A table as lines of cells; paragraphs of a cell are parted by two breaks, what is in lists and
    tables of its own stands there as such paragraphs. */
QString markdownTable(const QTextTable &table, MarkdownParagraphs *paragraphs);
