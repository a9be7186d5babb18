// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfProps.h>
#include <core/rtf/read/RtfDocumentBuilder.h>

#include <QString>

#include <vector>

/*! Text boxes, and letters that are drawn as a shape (RTF 1.9.1, "Word 97 Through Word 2007 RTF
    for Drawing Objects"). The text of a box becomes paragraphs before the one that it is anchored
    in. */
class RtfShapeReader
{
public:
    bool isInBox() const { return !m_boxes.empty(); }
    bool canBeginBox() const;
    /*! \param para  of the paragraph that the box is anchored in, which waits for endBox() */
    void beginBox(RtfDocumentBuilder *builder, const RtfParaProps &para);
    void endBox(RtfDocumentBuilder *builder);
    /*! The paragraph that the innermost box is anchored in, where isInBox(). */
    const RtfParaProps &anchor() const { return m_boxes.back().para; }

    /*! \sn: names the property that comes next. */
    void setProperty(const QString &name) { m_property = name; }
    /*! Tells whether the property's value is text that is drawn. */
    bool isText() const;

private:
    struct Box
    {
        RtfParagraph paragraph;
        RtfParaProps para;
    };

    std::vector<Box> m_boxes;
    QString m_property;
};
