// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*! Whether tables stand in each other so deep that Qt takes forever to measure them. */
bool hasDeepTables(const QTextDocument &document);
