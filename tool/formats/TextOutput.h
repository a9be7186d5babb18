// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

class QTextBlock;

/*! \a text as UTF-8, its last line ended. */
QByteArray withFinalNewline(QString text);

/*! Leaves one empty line of several: paragraphs that only take up space on a page. */
void dropBlankParagraphs(QString &text);

/*! Whether the look of a paragraph sets it off from the one before: Final Draft does that by space,
    plain text by an empty line. */
bool hasSpaceBefore(const QTextBlock &block);
