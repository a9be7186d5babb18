// SPDX-License-Identifier: MIT
#include <finaldraft/NoteAnchor_p.h>

#include <QChar>

#include <array>
#include <string_view>

namespace {

// The punctuation that ends a word for QTextCursor::PreviousWord and EndOfWord.
constexpr std::string_view wordSeparators = ".,?!@#$:;-<>[](){}=/+%&^*'\"`~|\\";

// Qt marks the borders of frames by these, and makes paragraphs of them in inserted text.
constexpr ushort frameBegin = 0xfdd0;
constexpr ushort frameEnd = 0xfdd1;

constexpr std::array<bool, 128> asciiWordEnds()
{
    std::array<bool, 128> ends = {};
    for (const char separator : wordSeparators)
        ends[uchar(separator)] = true;
    for (const char space : {'\t', '\n', '\v', '\f', '\r', ' '})
        ends[uchar(space)] = true;
    return ends;
}

}

bool NoteAnchor::endsWord(QChar character)
{
    static constexpr std::array<bool, 128> asciiEnds = asciiWordEnds();
    const ushort code = character.unicode();
    if (code < 128)
        return asciiEnds[code];
    return character.isSpace() || code == frameBegin || code == frameEnd;
}

// From the end: the last word is the only one that counts.
void NoteAnchor::append(QStringView text)
{
    const int base = m_position;
    m_position += int(text.size());
    if (text.isEmpty())
        return;
    const Stretch open = m_open;
    m_open = Stretch();
    for (int end = int(text.size()); end > 0;) {
        if (endsWord(text.at(end - 1))) {
            --end;
            continue;
        }
        int start = end;
        while (start > 0 && !endsWord(text.at(start - 1)))
            --start;
        // A stretch that fills the beginning may have begun in the text before.
        const Stretch stretch = start == 0 && open.isOpen
            ? open
            : Stretch {true, text.at(start).isLetterOrNumber(), base + start};
        if (end == text.size())
            m_open = stretch;
        if (stretch.isWord) {
            m_word = MVRTextRange(stretch.start, base + end);
            return;
        }
        end = start;
    }
}

void NoteAnchor::appendBreak()
{
    m_open = Stretch();
    ++m_position;
}

MVRTextRange NoteAnchor::lastWord() const
{
    return m_word.start > 0 ? m_word : MVRTextRange();
}
