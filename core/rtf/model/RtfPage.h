// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantMap>

class QTextDocument;

/*!
    The page that a file says its text is for, in twips; letter paper with margins of an inch
    unless the document has a page of its own.

    Other programs break lines by it, and right indents are counted from its right margin.
*/
struct RtfPage
{
    int width = 12240;
    int height = 15840;
    int left = 1440;
    int right = 1440;
    int top = 1440;
    int bottom = 1440;

    /*! As MVRTextRtf::pageProperty holds it, in points; letter's sides for those out of range. */
    QVariantMap toMap() const;
    /*! What is out of range or missing stays as it is here. */
    void setFromMap(const QVariantMap &lengths);

    int textWidth() const { return width - left - right; }

    /*!
        The page that \a document is laid out for, or else the one that it came with. A size counts
        when both sides are set, which editors that scroll leave out; margins count from a quarter
        inch on.
    */
    static RtfPage of(const QTextDocument &document);
};
