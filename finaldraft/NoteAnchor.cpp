#include <finaldraft/NoteAnchor_p.h>

#include <QChar>

#include <cstring>

namespace {

// The characters that end a word for QTextCursor::PreviousWord and EndOfWord.
constexpr char wordSeparators[] = ".,?!@#$:;-<>[](){}=/+%&^*'\"`~|\\";

bool endsWord(QChar character)
{
    if (character.isSpace())
        return true;
    const ushort code = character.unicode();
    return code < 0x80 && code != 0 && std::strchr(wordSeparators, char(code));
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
