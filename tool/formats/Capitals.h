// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*! Letters that are shown as capitals become some, for formats that would show them as typed. */
void putInCapitals(QTextDocument &document);
