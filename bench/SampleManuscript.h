// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

class QTextCursor;

/*! Prose to measure with: 1,000,000 words in 10,000 paragraphs. */
namespace SampleManuscript {

enum Language { English, Russian, Japanese };

struct Run
{
    QString text;
    bool isItalic;
};
using Paragraph = std::vector<Run>;

constexpr int paragraphs = 10000;

/*! Every fifth paragraph has two words in italics; quotes are curly. */
Paragraph paragraph(Language language, int number);

/*! What reading a file is compared with: blocks and runs inserted one after the other. */
void insertByHand(QTextCursor *cursor, const Paragraph &runs);

}
