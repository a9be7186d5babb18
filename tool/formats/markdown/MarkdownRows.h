// SPDX-License-Identifier: MIT
#pragma once

#include <tool/formats/markdown/CmarkNodes.h>

#include <QString>

/*!
    Keeps the text of cells beyond those of a table's head, which the parser drops (GitHub Flavored
    Markdown, Tables: "the excess is ignored"): the pipes between them become text, so that they
    stand in the last cell.

    \param source with marks (see MarkdownMarks), as it was parsed
    \param root what the parser made of it
    \return \a source where no row has too many cells; else a source to parse instead
*/
QString withoutExcessCells(const QString &source, cmark_node *root);
