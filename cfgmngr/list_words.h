// Helpers of the network list handlers (hosts, MAC filter, routes, firewall
// rules, SNMP user): blank-separated words of a value, each stored cut to its
// field.
#pragma once

#include "cfgmngr/text_class.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace cfg::lists {

using text::is_space;

// The next white-space separated word of `rest` (as "%s" scans it), or an
// empty view when only white space is left; `rest` moves past the word.
inline std::string_view next_word(std::string_view &rest) noexcept
{
    std::size_t begin = 0;
    while (begin < rest.size() && is_space(rest[begin]))
        ++begin;
    std::size_t end = begin;
    while (end < rest.size() && !is_space(rest[end]))
        ++end;
    const std::string_view word(rest.data() + begin, end - begin); // (substr would check again)
    rest.remove_prefix(end);
    return word;
}

// Skips white space; true (and steps over it) when the next character is c.
inline bool take_char(std::string_view &rest, char c) noexcept
{
    while (!rest.empty() && is_space(rest.front()))
        rest.remove_prefix(1);
    if (rest.empty() || rest.front() != c)
        return false;
    rest.remove_prefix(1);
    return true;
}

// Stores a word into a text field of N bytes: at most N - 1 characters, the
// rest of the field zero-filled. A longer word is cut; its tail is dropped,
// it does not become the next word.
template <std::size_t N>
void store_word(char (&field)[N], std::string_view word) noexcept
{
    static_assert(N > 0);
    const std::size_t n = word.size() < N - 1 ? word.size() : N - 1;
    if (n > 0) // an empty view may carry no pointer at all
        std::memcpy(field, word.data(), n);
    std::memset(field + n, 0, N - n);
}

// Stores the next word into the field when the value has one; a missing word
// leaves the field as it was. Returns whether a word was found.
template <std::size_t N>
bool scan_word(char (&field)[N], std::string_view &rest) noexcept
{
    const std::string_view word = next_word(rest);
    if (word.empty())
        return false;
    store_word(field, word);
    return true;
}

// A record's text field as a view that never runs past the field, even when
// the application left it without a NUL.
template <std::size_t N>
std::string_view field_text(const char (&field)[N]) noexcept
{
    const void *nul = std::memchr(field, '\0', N);
    return std::string_view(
        field, nul == nullptr ? N : static_cast<std::size_t>(static_cast<const char *>(nul) - field));
}

template <std::size_t N>
bool filled(const char (&field)[N]) noexcept
{
    return field[0] != '\0';
}

} // namespace cfg::lists
