// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>

#include <QJsonObject>
#include <QString>

class QTextDocument;

/*! Where a range stands: paragraph from 1, characters from 0 within their paragraphs. */
struct Place
{
    Place(const MVRTextRange &range, const QTextDocument &document);

    /*! "3:5-9", and with another paragraph at the end "3:5-4:2". */
    QString toWords() const;
    /*! The members "paragraph", "start", "endParagraph" and "end". */
    QJsonObject toJson() const;

    int paragraph;
    int start;
    int endParagraph;
    int end;
};

/*! The text of a range, a line feed at each paragraph's end. */
QString selectedText(const MVRTextRange &range, QTextDocument &document);
