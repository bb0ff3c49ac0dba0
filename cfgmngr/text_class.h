// White space as the C library's classification reads it, for every parser
// of value texts and paths.
#pragma once

#include <cctype>

namespace cfg::text {

// White space in the current locale. ASCII letters and digits are white
// space in no locale, and they are most of what is asked about, so only the
// other bytes are looked up in the locale's table.
inline bool is_space(char c) noexcept
{
    const auto u = static_cast<unsigned char>(c);
    if (static_cast<unsigned>((u | 0x20) - 'a') < 26 || static_cast<unsigned>(u - '0') < 10)
        return false;
    return std::isspace(u) != 0;
}

} // namespace cfg::text
