// The fuzz input as a NUL-terminated text in a heap block of exactly its
// size, so that a read past the NUL is caught. The converters that split
// their text in place get this copy, never the fuzzer's own bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fuzz {

inline std::vector<char> text_input(const uint8_t *data, std::size_t size)
{
    std::vector<char> text(data, data + size);
    text.push_back('\0');
    text.shrink_to_fit();
    return text;
}

} // namespace fuzz
