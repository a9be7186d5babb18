// SPDX-License-Identifier: MIT
// Groups and control words of RTF.
#include <fuzz/mutators/Parts.h>

#include <cctype>

namespace {

std::vector<Part> partsOf(const std::string &text)
{
    std::vector<Part> parts;
    std::vector<std::size_t> open;
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (text[position] == '{') {
            open.push_back(position);
        } else if (text[position] == '}' && !open.empty()) {
            parts.push_back({open.back(), position + 1});
            open.pop_back();
        } else if (text[position] == '\\') {
            const std::size_t start = position++;
            while (position + 1 < text.size()
                   && (std::isalnum(static_cast<unsigned char>(text[position + 1]))
                       || text[position + 1] == '-'))
                ++position;
            parts.push_back({start, position < text.size() ? position + 1 : text.size()});
        }
    }
    return parts;
}

}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size,
                                               std::size_t most, unsigned seed)
{
    return mutateParts(data, size, most, seed, partsOf);
}
