// SPDX-License-Identifier: MIT
// The part of the reader that reads text boxes, frames and bookmarks.
#include <core/rtf/read/RtfReader.h>

// The text of a box becomes paragraphs before the one that it is anchored in.
void RtfReader::beginShape()
{
    if (isVisible())
        openDestination(&RtfDestinations::shape);
    else
        skipDestination();
}

void RtfReader::beginTextBox()
{
    constexpr std::size_t deepestBox = 8;
    if (m_boxes.size() >= deepestBox || m_group.opensDestination) {
        skipDestination();
        return;
    }
    openWithin(&RtfDestinations::shape, &RtfDestinations::textBox);
    if (!m_group.opensDestination)
        return;
    putLoneSurrogate();
    m_boxes.push_back({m_builder->takeParagraph(), m_group.para});
    resetPara();
}

void RtfReader::finishTextBox()
{
    if (m_boxes.empty())
        return;
    putLoneSurrogate();
    if (m_builder->hasText())
        insertParagraph();
    m_builder->giveParagraph(std::move(m_boxes.back().paragraph));
    m_boxes.pop_back();
}

// The marks of frames stand in the text, behind the formatting of the frame's first paragraph and
// behind its last one, so the paragraph's table is the frame's.
bool RtfReader::isOwnMark() const
{
    return isVisible() && m_uncounted == 0 && m_outer.size() > 1;
}

void RtfReader::beginFrame(int exact)
{
    if (isOwnMark()) {
        if (m_builder->hasText())
            endParagraph();
        m_inHeader = false;
        m_builder->beginFrame(tableLevel(), exact);
    }
    skipDestination();
}

void RtfReader::endFrame()
{
    if (isOwnMark()) {
        if (m_builder->hasText())
            endParagraph();
        m_builder->endFrame(tableLevel());
    }
    skipDestination();
}

// Letters that are drawn as a shape are a property of it.
void RtfReader::addShapeText()
{
    const QString text = takeCollected();
    if (m_shapeProperty != QLatin1String("gtextUNICODE") || text.isEmpty() || m_boxes.size() > 0)
        return;
    RtfParagraph paragraph = m_builder->takeParagraph();
    m_builder->append(QStringView(text), charFormat());
    insertParagraph();
    m_builder->giveParagraph(std::move(paragraph));
}

void RtfReader::addBookmark()
{
    constexpr int longestName = 1000;
    const QString name = takeCollected().left(longestName);
    constexpr int mostAtOnePlace = 100;
    // Word's mark of the place that was edited last.
    if (name.isEmpty() || name == QLatin1String("_GoBack") || openNote())
        return;
    if (m_bookmarks.size() < mostAtOnePlace && m_bookmarkCount++ < RtfResources::mostLookAlikes * 2)
        m_bookmarks.append(name);
}

// Bookmarks stand on the first character behind their beginning, as anchors of HTML do.
int RtfReader::anchorFormat()
{
    QTextCharFormat format = m_formats.charFormat(charFormat());
    QStringList names = format.anchorNames();
    bool isNew = false;
    for (const QString &name : qAsConst(m_bookmarks)) {
        if (!names.contains(name)) {
            names.append(name);
            isNew = true;
        }
    }
    m_bookmarks.clear();
    if (!isNew)
        return charFormat();
    format.setAnchor(true);
    format.setAnchorNames(names);
    return m_formats.addCharFormat(format);
}
