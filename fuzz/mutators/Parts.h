// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t most);

/*! What nests in an input: a group, or an element with all in it. */
struct Part
{
    std::size_t start;
    std::size_t end;
};

/*!
    Takes, doubles, repeats or moves whole parts of an input, so that it stays one that the parser
    reads to its end; every third time it changes bytes as the fuzzer would.
*/
inline std::size_t mutateParts(std::uint8_t *data, std::size_t size, std::size_t most,
                               unsigned seed, std::vector<Part> (*partsOf)(const std::string &))
{
    std::minstd_rand random(seed);
    const std::string text(reinterpret_cast<const char *>(data), size);
    const std::vector<Part> parts = partsOf(text);
    if (parts.empty() || random() % 3 == 0)
        return LLVMFuzzerMutate(data, size, most);
    const Part &part = parts[random() % parts.size()];
    const Part &other = parts[random() % parts.size()];
    const std::string content = text.substr(part.start, part.end - part.start);
    std::string mutated = text;
    switch (random() % 4) {
    case 0:
        mutated.erase(part.start, content.size());
        break;
    case 1:
        for (unsigned times = 1 + random() % 8; times > 0; --times)
            mutated.insert(part.start, content);
        break;
    case 2:
        mutated.insert(other.end, content);
        break;
    default:
        mutated.replace(other.start, other.end - other.start, content);
        break;
    }
    if (mutated.empty() || mutated.size() > most)
        return LLVMFuzzerMutate(data, size, most);
    mutated.copy(reinterpret_cast<char *>(data), mutated.size());
    return mutated.size();
}
