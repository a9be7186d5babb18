// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/read/RtfRowReader.h>

#include <QSet>
#include <QString>

class QTextDocument;
class RtfDocumentBuilder;

/*! A text that goes from paragraph to paragraph: the document's own, or that of a note. */
struct RtfStory
{
    QTextDocument *document = nullptr;
    RtfDocumentBuilder *builder = nullptr;
    RtfRowReader rows;
    bool pageBreak = false; /*!< the next paragraph starts a page */
    bool sectionBreak = false;
    QSet<QString> pictures = {}; /*!< names of those that the document has from here */
};
