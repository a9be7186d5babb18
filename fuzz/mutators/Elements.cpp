// SPDX-License-Identifier: MIT
// Elements and attributes of XML and HTML.
#include <fuzz/mutators/Parts.h>

namespace {

/*! Adds the attributes of the tag in [\a start, \a end). */
void addAttributes(const std::string &text, std::size_t start, std::size_t end,
                   std::vector<Part> *parts)
{
    for (std::size_t blank = text.find(' ', start); blank < end;) {
        const std::size_t quote = text.find('"', blank);
        const std::size_t close = quote < end ? text.find('"', quote + 1) : std::string::npos;
        if (close >= end)
            return;
        parts->push_back({blank, close + 1});
        blank = text.find(' ', close);
    }
}

std::vector<Part> partsOf(const std::string &text)
{
    std::vector<Part> parts;
    std::vector<std::size_t> open;
    for (std::size_t start = text.find('<'); start < text.size();) {
        const std::size_t end = text.find('>', start);
        if (end == std::string::npos)
            break;
        const bool isEnd = text[start + 1] == '/';
        const bool isWhole
            = text[end - 1] == '/' || text[start + 1] == '!' || text[start + 1] == '?';
        if (isWhole) {
            parts.push_back({start, end + 1});
        } else if (!isEnd) {
            open.push_back(start);
        } else if (!open.empty()) {
            parts.push_back({open.back(), end + 1});
            open.pop_back();
        }
        addAttributes(text, start, end, &parts);
        start = text.find('<', end);
    }
    return parts;
}

}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size,
                                               std::size_t most, unsigned seed)
{
    return mutateParts(data, size, most, seed, partsOf);
}
