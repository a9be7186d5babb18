// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfPageTextReader.h>

#include <utility>

bool RtfPageTextReader::canBegin(const QString &word) const
{
    return m_write && !m_open && !m_texts.contains(word);
}

void RtfPageTextReader::begin(const QString &word, const RtfDocumentBuilder &model, RtfStory *story,
                              bool isInHeader)
{
    m_open = std::make_unique<OpenText>();
    m_open->word = word;
    m_open->isInHeader = isInHeader;
    m_open->content.setUndoRedoEnabled(false);
    m_open->builder = std::make_unique<RtfDocumentBuilder>(&m_open->content, model);
    m_open->outer
        = std::exchange(*story, {&m_open->content, m_open->builder.get(), {}, false, false});
}

bool RtfPageTextReader::finish(RtfStory *story)
{
    const std::unique_ptr<OpenText> open = std::move(m_open);
    *story = std::move(open->outer);
    // An empty one of the first page keeps the others off it.
    if (!open->content.isEmpty() || open->word.endsWith(QLatin1Char('f')))
        m_texts.insert(open->word, m_write(open->content, {}));
    return open->isInHeader;
}
