#include <finaldraft/NoteAnchor_p.h>

#include <QChar>

#include <array>
#include <string_view>

namespace {

// The punctuation that ends a word for QTextCursor::PreviousWord and EndOfWord.
constexpr std::string_view wordSeparators = ".,?!@#$:;-<>[](){}=/+%&^*'\"`~|\\";

constexpr std::array<bool, 128> asciiWordEnds()
{
    std::array<bool, 128> ends = {};
    for (const char separator : wordSeparators)
        ends[size_t(separator)] = true;
    for (const char space : {'\t', '\n', '\v', '\f', '\r', ' '})
        ends[size_t(space)] = true;
    return ends;
}

bool endsWord(QChar character)
{
    static constexpr std::array<bool, 128> asciiEnds = asciiWordEnds();
    const ushort code = character.unicode();
    return code < 128 ? asciiEnds[code] : character.isSpace();
}

}

void NoteAnchor::append(QStringView text)
{
    for (const QChar character : text) {
        if (endsWord(character)) {
            m_inRun = false;
        } else {
            if (!m_inRun) {
                m_inRun = true;
                m_runIsWord = character.isLetterOrNumber();
                if (m_runIsWord)
                    m_word.start = m_position;
            }
            if (m_runIsWord)
                m_word.end = m_position + 1;
        }
        ++m_position;
    }
}

void NoteAnchor::appendBreak()
{
    m_inRun = false;
    ++m_position;
}

MVRTextRange NoteAnchor::lastWord() const
{
    return m_word.start > 0 ? m_word : MVRTextRange();
}
