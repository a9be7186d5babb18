// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cmark-gfm-core-extensions.h>
#include <cmark-gfm.h>

#include <memory>

/*! What of the parser has to be given back. */
struct CmarkDeleter
{
    void operator()(cmark_node *node) const { cmark_node_free(node); }
    void operator()(cmark_iter *iterator) const { cmark_iter_free(iterator); }
    void operator()(cmark_parser *parser) const { cmark_parser_free(parser); }
};
using CmarkTree = std::unique_ptr<cmark_node, CmarkDeleter>;
using CmarkIterator = std::unique_ptr<cmark_iter, CmarkDeleter>;
using CmarkParser = std::unique_ptr<cmark_parser, CmarkDeleter>;

/*! Whether \a node is of the kind that an extension of the parser calls \a name. */
inline bool isCmarkKind(cmark_node *node, const char *name)
{
    return QLatin1String(cmark_node_get_type_string(node)) == QLatin1String(name);
}

/*! The text of a node; marks are still in it. */
inline QString cmarkText(cmark_node *node)
{
    return QString::fromUtf8(cmark_node_get_literal(node));
}
