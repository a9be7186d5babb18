// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

class QDomDocument;

/*!
    Gives a tree as UTF-8 text.

    Elements whose children are elements are laid out one a line, indented by one blank a level;
    white space with line breaks between such children is layout and is replaced. Elements that
    hold text are written as they are. Attributes are sorted by name.
*/
QByteArray xmlTreeText(const QDomDocument &document);
