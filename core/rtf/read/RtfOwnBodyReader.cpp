// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfOwnBodyReader.h>

#include <core/rtf/model/RtfPropertyWords.h>

#include <algorithm>

namespace {

constexpr int headingStyles = 6;

bool isHex(std::string_view text)
{
    return text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/*! Which of the header's tables the number of a property is one of; none for a plain number. */
std::optional<RtfOwnContent::Kind> referenceOf(const RtfPropertyWord &word)
{
    using Content = RtfOwnContent;
    if (word.charProp == &RtfCharProps::font)
        return Content::Font;
    if (word.charProp == &RtfCharProps::exact || word.paraProp == &RtfParaProps::exact)
        return Content::Exact;
    if (word.paraProp == &RtfParaProps::list)
        return Content::List;
    const bool isColor = word.charProp == &RtfCharProps::foreground
        || word.charProp == &RtfCharProps::background
        || word.charProp == &RtfCharProps::underlineColor
        || word.paraProp == &RtfParaProps::shading;
    return isColor ? std::make_optional(Content::Color) : std::nullopt;
}

} // namespace

std::optional<RtfOwnBodyReader::Word> RtfOwnBodyReader::find(std::string_view name)
{
    for (const RtfPropertyWord &property : RtfPropertyWords::table) {
        const bool isOfTable = property.paraProp == &RtfParaProps::inTable
            || property.paraProp == &RtfParaProps::tableLevel;
        if (property.name == name && property.isWritten && !isOfTable)
            return Word {property.charProp ? FormatsRun : FormatsParagraph, !property.isConstant,
                         referenceOf(property)};
    }
    struct Row
    {
        std::string_view name;
        Use use;
        bool hasNumber;
    };
    static constexpr Row rows[] = {{"tab", IsText, false},
                                   {"line", IsText, false},
                                   {"u", IsText, true},
                                   {"s", FormatsParagraph, true},
                                   {"tx", FormatsParagraph, true},
                                   {"tqr", FormatsParagraph, false},
                                   {"tqc", FormatsParagraph, false},
                                   {"tqdec", FormatsParagraph, false},
                                   {"pngblip", DescribesPicture, false},
                                   {"jpegblip", DescribesPicture, false},
                                   {"emfblip", DescribesPicture, false},
                                   {"wmetafile", DescribesPicture, true},
                                   {"picw", DescribesPicture, true},
                                   {"pich", DescribesPicture, true},
                                   {"picwgoal", DescribesPicture, true},
                                   {"pichgoal", DescribesPicture, true}};
    for (const Row &row : rows) {
        if (row.name == name)
            return Word {row.use, row.hasNumber, {}};
    }
    return std::nullopt;
}

bool RtfOwnBodyReader::read()
{
    while (!m_groups.empty()) {
        if (!take(m_tokens.next()))
            return false;
    }
    if (m_paragraph != Ended || m_tokens.next().kind != RtfToken::End)
        return false;
    cutLastEnd();
    return true;
}

bool RtfOwnBodyReader::take(const RtfToken &token)
{
    switch (token.kind) {
    case RtfToken::GroupStart:
        return takeGroupStart();
    case RtfToken::GroupEnd:
        return takeGroupEnd();
    case RtfToken::Word:
        return takeWord(token);
    case RtfToken::Text:
    case RtfToken::Hex:
    case RtfToken::Symbol:
        return takeText(token);
    case RtfToken::End:
    case RtfToken::Binary:
        break;
    }
    return false;
}

// A group says what it is by its first word.
bool RtfOwnBodyReader::takeGroupStart()
{
    const int start = offsetOf(m_tokens.at() - 1);
    const std::size_t references = m_content.references.size();
    RtfToken token = m_tokens.next();
    const bool hasStar = token.kind == RtfToken::Symbol && token.text == "*";
    if (hasStar)
        token = m_tokens.next();
    if (token.kind != RtfToken::Word)
        return false;
    struct Row
    {
        std::string_view name;
        Group group;
        bool hasStar;
    };
    static constexpr Row rows[]
        = {{"field", Field, false},   {"fldinst", Instruction, true}, {"fldrslt", Result, false},
           {"bkmkstart", Name, true}, {"bkmkend", Name, true},        {"pict", Picture, false}};
    for (const Row &row : rows) {
        if (row.name == token.text)
            return row.hasStar == hasStar && !token.hasParameter && enter(row.group);
    }
    if (hasStar || !enter(Run))
        return false;
    m_run = Formatting;
    m_end.runStart = start;
    m_end.wordsEnd = start + 1; // a group may hold the end alone
    m_end.runReferences = references;
    return takeWord(token);
}

bool RtfOwnBodyReader::enter(Group group)
{
    const Group outer = m_groups.back();
    const bool isText = outer == Paragraphs || outer == Result;
    const bool fits = group == Run || group == Name ? isText
        : group == Field                            ? outer == Paragraphs
        : group == Picture                          ? isText || outer == Run
                                                    : outer == Field;
    const bool hasContent = group == Field || group == Picture;
    if (!fits || (hasContent && !beginContent()))
        return false;
    m_groups.push_back(group);
    return true;
}

bool RtfOwnBodyReader::takeGroupEnd()
{
    const Group group = m_groups.back();
    m_groups.pop_back();
    if (group == Paragraphs)
        copyUpTo(m_tokens.at() - 1);
    if (group != Run)
        return true;
    const bool isUsed = m_run != Formatting;
    m_run = Ended;
    return isUsed;
}

bool RtfOwnBodyReader::takeWord(const RtfToken &token)
{
    if (token.text == "par")
        return !token.hasParameter && endParagraph(token);
    if (token.text == "pard")
        return !token.hasParameter && beginParagraph();
    const std::optional<Word> word = find(token.text);
    constexpr int maxNumber = 1000000; // a million twips are beyond any page
    if (!word || word->hasNumber != token.hasParameter || std::abs(token.parameter) > maxNumber)
        return false;
    if (word->use == IsText)
        return takeText(token);
    if (word->use == DescribesPicture)
        return m_groups.back() == Picture;
    return takeFormatting(*word, token);
}

bool RtfOwnBodyReader::takeFormatting(const Word &word, const RtfToken &token)
{
    if (word.use == FormatsRun) {
        if (m_groups.back() != Run || m_run != Formatting)
            return false;
    } else {
        if (m_groups.back() != Paragraphs || m_paragraph != Formatting)
            return false;
        if (m_paragraphs == 0)
            m_content.startsPlain = false;
        if (token.text == "ilvl")
            m_level = token.parameter;
        if (token.text == "s") {
            if (token.parameter < 1 || token.parameter > headingStyles)
                return false;
            m_content.headings |= 1 << (token.parameter - 1);
        }
    }
    if (word.reference && !refer(*word.reference, token))
        return false;
    if (word.use == FormatsRun)
        m_end.wordsEnd = offsetOf(behindWord());
    return true;
}

bool RtfOwnBodyReader::takeText(const RtfToken &token)
{
    const Group group = m_groups.back();
    if (group == Picture)
        return token.kind == RtfToken::Text && isHex(token.text);
    constexpr std::string_view symbols = "\\{}~-_";
    if (token.kind == RtfToken::Symbol && symbols.find(token.text) == std::string_view::npos)
        return false;
    if (group == Field || (token.kind == RtfToken::Text && !token.ascii))
        return false;
    return group == Instruction || group == Name || beginContent();
}

// A paragraph that is formatted like the one before begins with its text.
bool RtfOwnBodyReader::beginContent()
{
    if (m_groups.back() == Run && m_run == Ended)
        return false;
    m_paragraph = HasContent;
    if (m_run == Formatting)
        m_run = HasContent;
    return true;
}

bool RtfOwnBodyReader::beginParagraph()
{
    if (m_groups.back() != Paragraphs || m_paragraph != Ended)
        return false;
    m_paragraph = Formatting;
    m_level = 0;
    return true;
}

bool RtfOwnBodyReader::endParagraph(const RtfToken &token)
{
    const bool isInRun = m_groups.back() == Run && m_groups.size() == 2 && m_run != Ended;
    if (m_groups.back() != Paragraphs && !isInRun)
        return false;
    m_end.at = offsetOf(token.text.data() - 1);
    m_end.references = m_content.references.size();
    m_end.isInRun = isInRun;
    m_end.isRunEmpty = m_run == Formatting;
    m_end.isParagraphEmpty = m_paragraph != HasContent;
    ++m_paragraphs;
    m_paragraph = m_run = Ended;
    return true;
}

// The number itself is left out of the body.
bool RtfOwnBodyReader::refer(RtfOwnContent::Kind kind, const RtfToken &token)
{
    int number = token.parameter;
    if (kind == RtfOwnContent::List ? !toList(&number) : !isKnown(kind, number))
        return false;
    copyUpTo(token.text.data() + token.text.size());
    m_copied = behindWord();
    m_content.references.push_back({int(m_content.body.size()), kind, number});
    return true;
}

bool RtfOwnBodyReader::isKnown(RtfOwnContent::Kind kind, int number) const
{
    const RtfResources &resources = m_content.resources;
    if (kind == RtfOwnContent::Font) // names may be nothing that can be written
        return RtfResources().fontNumber(resources.fonts.value(number).family) >= 0;
    if (kind == RtfOwnContent::Color)
        return resources.color(number).isValid();
    return !resources.exact.value(number).isEmpty();
}

bool RtfOwnBodyReader::toList(int *number)
{
    const int list = RtfLists::number(*number);
    if (!m_lists.isShown(list, m_level, m_content.resources))
        return false;
    const auto known = m_listNumbers.constFind({list, m_level});
    if (known != m_listNumbers.cend()) {
        *number = *known;
        return true;
    }
    *number = m_content.lists.size();
    m_content.lists.append(m_lists.format(list, m_level, m_content.resources));
    m_listNumbers.insert({list, m_level}, *number);
    return true;
}

void RtfOwnBodyReader::copyUpTo(const char *at)
{
    m_content.body.append(m_copied, static_cast<int>(at - m_copied));
    m_copied = at;
}

// The end of a note ends its last paragraph, unless that is empty and would not be seen. What
// formats the end itself stands behind the text then, in no group.
void RtfOwnBodyReader::cutLastEnd()
{
    if (m_end.isParagraphEmpty && m_paragraphs > 1)
        return;
    QByteArray &body = m_content.body;
    std::vector<RtfOwnContent::Reference> &references = m_content.references;
    const int wordsStart = m_end.runStart + 1;
    const QByteArray words = body.mid(wordsStart, m_end.wordsEnd - wordsStart);
    const auto isOfWords = [this](const RtfOwnContent::Reference &reference) {
        return reference.at <= m_end.wordsEnd;
    };
    const auto first = references.begin() + static_cast<std::ptrdiff_t>(m_end.runReferences);
    const std::vector<RtfOwnContent::Reference> ofWords(
        first, m_end.isInRun ? std::find_if_not(first, references.end(), isOfWords) : first);

    const bool isRunEmpty = m_end.isInRun && m_end.isRunEmpty;
    body.truncate(isRunEmpty ? m_end.runStart : m_end.at);
    references.resize(isRunEmpty ? m_end.runReferences : m_end.references);
    if (!m_end.isInRun)
        return;
    if (!isRunEmpty)
        body += '}';
    for (RtfOwnContent::Reference reference : ofWords) {
        reference.at += body.size() - wordsStart;
        references.push_back(reference);
    }
    body += words;
}
