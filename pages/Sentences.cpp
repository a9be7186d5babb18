// SPDX-License-Identifier: MIT
#include <pages/ShapedText_p.h>

#include <algorithm>

namespace {

// A period behind these ends no sentence.
const char *const abbreviations[] = {
    "mr", "mrs", "ms", "dr", "st",  "sgt", "lt",  "capt", "col", "gen", "rev", "hon", "prof", "det",
    "vs", "no",  "jr", "sr", "ext", "int", "sen", "gov",  "mt",  "ft",  "etc", "e.g", "i.e"};

bool endsSentence(QChar c)
{
    static const QString ends = QStringLiteral(".!?…。!?؟۔।");
    return ends.contains(c);
}

bool closes(QChar c)
{
    static const QString closers = QStringLiteral("\"')]”’»」』");
    return closers.contains(c);
}

bool isAbbreviation(const QString &word)
{
    // "J." is a name's letter; "I." may well end a sentence.
    if (word.size() == 1)
        return word[0].isUpper() && word != QLatin1String("I");
    return std::any_of(std::begin(abbreviations), std::end(abbreviations), [&](const char *known) {
        return word.compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    });
}

}

bool ShapedText::isSentenceStart(int i) const
{
    if (m_text[i - 1] == QLatin1Char('\n'))
        return true;
    int last = i - 1;
    while (last >= 0 && hangs(m_text[last]))
        --last;
    const bool hasBlank = last < i - 1;
    while (last >= 0 && closes(m_text[last]))
        --last;
    if (last < 0 || !endsSentence(m_text[last]))
        return false;
    const bool isWide = m_text[last].unicode() >= 0x3000; // needs no blank
    if (!(hasBlank || isWide) || m_text[i].isLower())
        return false;
    if (m_text[last] != QLatin1Char('.'))
        return true;
    int word = last;
    while (word > 0 && (m_text[word - 1].isLetter() || m_text[word - 1] == QLatin1Char('.')))
        --word;
    return !isAbbreviation(m_text.mid(word, last - word));
}

QVector<int> ShapedText::sentenceStarts(int from, int to) const
{
    QVector<int> starts;
    for (int i = qMin(to, length()) - 1; i > from; --i) {
        if (!hangs(m_text[i]) && m_text[i] != QLatin1Char('\n') && isSentenceStart(i))
            starts.append(i);
    }
    return starts;
}
