// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfOwnContentReader.h>

#include <core/MVRTextFormat.h>
#include <core/rtf/read/RtfOwnBodyReader.h>
#include <core/rtf/read/RtfParser.h>

#include <algorithm>

namespace {

constexpr char prologue[] = "{\\rtf1\\ansi\\ansicpg1252\\uc1";
constexpr int prologueTokens = 5;

bool isOfHeader(const RtfToken &token)
{
    constexpr std::string_view names[] = {
        "fonttbl", "colortbl", "stylesheet", "listtable", "listoverridetable", "mvrprops", "info"};
    return token.kind == RtfToken::Word
        && std::find(std::begin(names), std::end(names), token.text) != std::end(names);
}

// Reads one group of the header, which has no text of the document in it.
bool readHeaderGroup(RtfParser *parser)
{
    RtfToken token = parser->tokens().next();
    if (token.kind == RtfToken::Symbol && token.text == "*") {
        parser->handle(token);
        token = parser->tokens().next();
    }
    if (!isOfHeader(token))
        return false;
    while (parser->handle(token) && parser->reader().groups().isNested())
        token = parser->tokens().next();
    return token.kind != RtfToken::End && !parser->reader().groups().isTooDeep();
}

// Up to the first paragraph.
bool readHeader(const QByteArray &rtf, RtfParser *parser)
{
    if (!rtf.startsWith(prologue))
        return false;
    const char behind = rtf.size() > int(sizeof prologue) ? rtf.at(int(sizeof prologue) - 1) : ' ';
    if (behind != '{' && behind != '\n')
        return false;
    for (int i = 0; i < prologueTokens; ++i)
        parser->handle(parser->tokens().next());
    for (;;) {
        const RtfToken token = parser->tokens().next();
        if (token.kind == RtfToken::Word && token.text == "pard" && !token.hasParameter)
            return true;
        if (token.kind != RtfToken::GroupStart)
            return false;
        parser->handle(token);
        if (!readHeaderGroup(parser))
            return false;
    }
}

// Right edges that are counted from the left margin are written by the page around them, and
// relative sizes by the font.
bool asksForSurroundings(const RtfResources &resources)
{
    return std::any_of(
        resources.exact.cbegin(), resources.exact.cend(), [](const RtfExactProperties &properties) {
            return std::any_of(properties.cbegin(), properties.cend(), [](const auto &property) {
                return property.id == MVRTextFormat::BlockRightIndentProperty
                    || property.id == QTextFormat::FontSizeAdjustment;
            });
        });
}

} // namespace

std::optional<RtfOwnContent> RtfOwnContentReader::read(const QByteArray &rtf)
{
    RtfParser parser(rtf, nullptr); // the header puts nothing into a document
    if (!readHeader(rtf, &parser) || !parser.info().title.isEmpty()
        || asksForSurroundings(parser.reader().resources()))
        return std::nullopt;
    RtfOwnContent content;
    content.resources = parser.reader().resources();
    content.info = parser.info();
    RtfOwnBodyReader body(&parser.tokens(), parser.reader().lists(), &content);
    if (!body.read())
        return std::nullopt;
    return content;
}
