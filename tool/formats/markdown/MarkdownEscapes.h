// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/*! Spelling of text so that no reader of Markdown takes it for markup. */
namespace MarkdownEscapes {

/*! \a text anywhere in a paragraph. */
QString escaped(const QString &text);

/*! The escaped text \a escaped where it begins a line of a paragraph; \a isFirst: the first one. */
QString escapedLineStart(const QString &escaped, bool isFirst);

/*! \a code between as many backticks as it needs. */
QString codeSpan(const QString &code, bool isInTable);

/*! The target and title of a link or picture, as they stand between the parentheses. */
QString destination(const QString &target, const QString &title);

}
