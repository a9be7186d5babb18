// SPDX-License-Identifier: MIT
#include <core/MVRFormat.h>

bool MVRFormat::isMmdVariant(Format format)
{
    return format == MultiMarkdown || format == MultiMarkdownHtml || format == MultiMarkdownLatex;
}

bool MVRFormat::isEBook(Format format)
{
    return format == EPub2 || format == EPub3 || format == Kindle;
}
