// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class Manuscript;
class QTextDocument;

/*! What leaves the desk and does not come back. */
namespace Exports {

/*! Writes a text for readers as ODT: annotations in brackets, footnotes at the end. */
bool writeOdt(const QTextDocument &document, const QString &path);
/*! Writes PDF: the pages of a screenplay, or a text as for readers. */
bool writePdf(const QTextDocument &document, const Manuscript &manuscript, const QString &path);
/*! The text as BBCode, without its notes. */
QString bbCode(const QTextDocument &document);
/*! The text with the codes of its notes, preserved formatting and linked pictures. */
QString markup(const QTextDocument &document);

} // namespace Exports
