// Decimal parsing shared by the field converters and the section handlers.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace cfg::numbers {

// atoi/atoll semantics: leading white space, one optional sign, digits up to
// the first non-digit; no digits gives 0. The value is parsed as a 64-bit
// number and its low 32 bits are kept, so the result is the same on 32- and
// 64-bit targets (a plain atoi would saturate where long has 32 bits).
inline int32_t parse_int(const char *text) noexcept
{
    return static_cast<int32_t>(std::strtoll(text, nullptr, 10));
}

inline uint32_t parse_uint_low32(const char *text) noexcept
{
    return static_cast<uint32_t>(static_cast<unsigned long long>(std::strtoll(text, nullptr, 10)));
}

// "%d" scanning: true and the number when the text (after white space and an
// optional sign) starts with a digit; false when it holds no number.
bool scan_int(const char *text, int32_t &out) noexcept;

// "%u" scanning, same rules; a leading minus wraps as sscanf does.
bool scan_uint(const char *text, uint32_t &out) noexcept;

// "%x" scanning (an optional 0x / 0X prefix is accepted, as sscanf does).
bool scan_hex(const char *text, uint32_t &out) noexcept;

inline bool absent(const char *value) noexcept { return value == nullptr || value[0] == '\0'; }

// Element number of a list entry taken from a path or a param name (the text
// after its "_"): decimal digits only, no sign or blanks. -1 when the text is
// empty or holds anything else; large numbers stop at INT32_MAX instead of
// wrapping, so they can never land on a valid element.
constexpr int32_t entry_number(std::string_view digits) noexcept
{
    if (digits.empty())
        return -1;
    int64_t n = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9')
            return -1;
        if (n <= INT32_MAX)
            n = n * 10 + (c - '0');
    }
    return n > INT32_MAX ? INT32_MAX : static_cast<int32_t>(n);
}

} // namespace cfg::numbers
