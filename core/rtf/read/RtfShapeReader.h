// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfProps.h>
#include <core/rtf/read/RtfDocumentBuilder.h>

#include <QSize>
#include <QString>

#include <array>
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

    /*! A shape begins, of which nothing is known. */
    void begin() { m_edges = {}; }
    enum Edge { Left, Top, Right, Bottom };
    /*! \shpleft and its kin */
    void setEdge(Edge edge, int twips) { m_edges[edge] = twips; }
    /*! Width and height in twips; empty when they are not said. */
    QSize size() const { return {m_edges[Right] - m_edges[Left], m_edges[Bottom] - m_edges[Top]}; }

    /*! \sn: names the property that comes next. */
    void setProperty(const QString &name) { m_property = name; }
    /*! Tells whether the property's value is text that is drawn. */
    bool isText() const;
    /*! Tells whether the property's value is the picture that the shape shows. */
    bool isPicture() const;

private:
    struct Box
    {
        RtfParagraph paragraph;
        RtfParaProps para;
    };

    std::vector<Box> m_boxes;
    std::array<int, 4> m_edges {};
    QString m_property;
};
