// SPDX-License-Identifier: MIT
#include <core/STextDoc.h>

#include <QTextBlock>
#include <QTextBoundaryFinder>
#include <QTextDocument>

namespace {

/*! What a character does to the word that it stands in or beside. */
enum class Role {
    Inside, /*!< neither begins nor ends a word: marks, punctuation, symbols */
    Between, /*!< ends a word: blanks, dashes, pictures */
    Hyphen, /*!< inside a word when single, a dash when typed twice */
    Period, /*!< inside a word when single, an ellipsis when typed twice */
    Letter, /*!< begins or goes on with a word: letters and digits */
    Sign, /*!< is a word by itself: the ideographs and syllables of East Asia */
    Unspaced /*!< letter of a script that puts no blanks between words */
};

Role asciiRole(uint character)
{
    if ((character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z')
        || (character >= '0' && character <= '9'))
        return Role::Letter;
    if (character == ' ' || (character >= '\t' && character <= '\r'))
        return Role::Between;
    if (character == '-')
        return Role::Hyphen;
    return character == '.' ? Role::Period : Role::Inside;
}

Role letterRole(uint character)
{
    switch (QChar::script(character)) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
    case QChar::Script_Yi:
        return Role::Sign;
    case QChar::Script_Thai:
    case QChar::Script_Lao:
    case QChar::Script_Khmer:
    case QChar::Script_Myanmar:
        return Role::Unspaced;
    case QChar::Script_Common:
        // The signs that prolong or repeat a syllable.
        return (character >= 0x3000 && character < 0x3100) || character == 0xff70 ? Role::Sign
                                                                                  : Role::Letter;
    default:
        return Role::Letter;
    }
}

bool isSeparator(uint character)
{
    switch (character) {
    case 0x200b: // zero width space, which is typed where words end without a blank
    case 0x2013: // en dash
    case 0x2014: // em dash
    case 0x2015: // horizontal bar
    case 0x2025: // two dot leader
    case 0x2026: // ellipsis
    case 0x2e3a: // two-em dash
    case 0x2e3b: // three-em dash
    case 0xfe58: // small em dash
    case QChar::ObjectReplacementCharacter:
        return true;
    default:
        return QChar::isSpace(character);
    }
}

Role roleOf(uint character)
{
    if (character < 0x80)
        return asciiRole(character);
    switch (QChar::category(character)) {
    case QChar::Letter_Uppercase:
    case QChar::Letter_Lowercase:
    case QChar::Letter_Titlecase:
    case QChar::Number_DecimalDigit:
    case QChar::Number_Other:
        return Role::Letter;
    case QChar::Letter_Modifier:
    case QChar::Letter_Other:
    case QChar::Number_Letter:
        return letterRole(character);
    default:
        return isSeparator(character) ? Role::Between : Role::Inside;
    }
}

/*! Reads a text by code points. */
class CodePoints
{
public:
    explicit CodePoints(QStringView text, int start = 0)
        : m_text(text)
        , m_next(start)
    {
    }

    bool atEnd() const { return m_next == m_text.size(); }
    int position() const { return int(m_next); }
    uint next()
    {
        const QChar unit = m_text[m_next++];
        if (unit.isHighSurrogate() && !atEnd() && m_text[m_next].isLowSurrogate())
            return QChar::surrogateToUcs4(unit, m_text[m_next++]);
        return unit.unicode();
    }
    /*! Passes what follows and equals \a character; true when there was any. */
    bool skip(uint character)
    {
        const qsizetype start = m_next;
        while (!atEnd() && m_text[m_next].unicode() == character)
            ++m_next;
        return m_next > start;
    }

private:
    QStringView m_text;
    qsizetype m_next;
};

/*! The end of the letters and their marks from \a start on whose script needs no blanks. */
int endOfUnspaced(QStringView text, int start)
{
    CodePoints points(text, start);
    int end = start;
    while (!points.atEnd()) {
        const uint character = points.next();
        if (roleOf(character) != Role::Unspaced && !QChar::isMark(character))
            break;
        end = points.position();
    }
    return end;
}

int unspacedWords(QStringView text)
{
    // Qt's search in a dictionary takes time that grows with the square of the text.
    constexpr qsizetype pieceSize = 1000;
    int words = 0;
    while (!text.isEmpty()) {
        const QStringView piece = text.left(qMin(pieceSize, text.size()));
        QTextBoundaryFinder finder(QTextBoundaryFinder::Word, piece.data(), int(piece.size()));
        int start = 0; // of the last word
        int end = 0;
        int found = 0;
        for (int next = finder.toNextBoundary(); next >= 0; next = finder.toNextBoundary()) {
            ++found;
            start = end;
            end = next;
        }
        // The last word may go on behind the piece.
        const bool isCut = piece.size() < text.size() && found > 1;
        words += isCut ? found - 1 : found;
        text = text.mid(isCut ? start : int(piece.size()));
    }
    return words;
}

int wordsOf(QStringView text)
{
    int words = 0;
    bool inWord = false;
    CodePoints points(text);
    while (!points.atEnd()) {
        const int start = points.position();
        const uint character = points.next();
        switch (roleOf(character)) {
        case Role::Letter:
            words += inWord ? 0 : 1;
            inWord = true;
            break;
        case Role::Between:
            inWord = false;
            break;
        case Role::Hyphen:
        case Role::Period:
            inWord = inWord && !points.skip(character);
            break;
        case Role::Sign:
            ++words;
            inWord = false;
            break;
        case Role::Unspaced: {
            const int end = endOfUnspaced(text, start);
            words += unspacedWords(text.mid(start, end - start));
            points = CodePoints(text, end);
            inWord = false;
            break;
        }
        case Role::Inside:
            break;
        }
    }
    return words;
}

} // namespace

int STextDoc::wordCountTextDocument(const QTextDocument &document)
{
    int words = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        words += wordsOf(block.text());
    return words;
}

int STextDoc::wordCountText(const QString &text)
{
    return wordsOf(text);
}
