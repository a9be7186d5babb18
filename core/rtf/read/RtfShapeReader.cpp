// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfShapeReader.h>

bool RtfShapeReader::canBeginBox() const
{
    constexpr std::size_t maxBoxDepth = 8;
    return m_boxes.size() < maxBoxDepth;
}

void RtfShapeReader::beginBox(RtfDocumentBuilder *builder, const RtfParaProps &para)
{
    m_boxes.push_back({builder->takeParagraph(), para});
}

void RtfShapeReader::endBox(RtfDocumentBuilder *builder)
{
    builder->giveParagraph(std::move(m_boxes.back().paragraph));
    m_boxes.pop_back();
}

bool RtfShapeReader::isText() const
{
    return m_property == QLatin1String("gtextUNICODE") && !isInBox();
}

bool RtfShapeReader::isPicture() const
{
    return m_property == QLatin1String("pib");
}
