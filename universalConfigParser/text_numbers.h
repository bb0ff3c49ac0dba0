// Decimal parsing shared by the field converters and the section handlers.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace cfg::numbers {

// The decimal number at the start of a text in the form nearly every value
// has: one optional sign, then 1 to 18 ASCII digits, ended by the first
// character that is not a digit. That form reads the same in every locale
// and cannot overflow, so the value is exactly what strtoll gives (which
// then leaves errno alone). False, and nothing written, for every other
// text: white space in front (its set is the locale's), no digit after the
// sign, or 19 digits and more; the callers hand those to the C library.
inline bool plain_decimal(const char *text, int64_t &out, const char *&end) noexcept
{
    const char *at = text;
    const bool negative = *at == '-';
    if (negative || *at == '+')
        ++at;
    uint64_t n = 0;
    std::size_t count = 0;
    for (unsigned digit; (digit = static_cast<unsigned char>(at[count]) - unsigned{'0'}) < 10;) {
        if (++count > 18)
            return false;
        n = n * 10 + digit;
    }
    if (count == 0)
        return false;
    out = negative ? -static_cast<int64_t>(n) : static_cast<int64_t>(n);
    end = at + count;
    return true;
}

// strtoll(text, nullptr, 10): leading white space, one optional sign, digits
// up to the first non-digit; no digits gives 0, a number beyond the 64-bit
// range is held at its limit (and errno set).
int64_t parse_int64(const char *text) noexcept;

// atoi/atoll semantics: leading white space, one optional sign, digits up to
// the first non-digit; no digits gives 0. The value is parsed as a 64-bit
// number and its low 32 bits are kept, so the result is the same on 32- and
// 64-bit targets (a plain atoi would saturate where long has 32 bits).
inline int32_t parse_int(const char *text) noexcept
{
    return static_cast<int32_t>(parse_int64(text));
}

inline uint32_t parse_uint_low32(const char *text) noexcept
{
    return static_cast<uint32_t>(static_cast<uint64_t>(parse_int64(text)));
}

// "%d" scanning: true and the number when the text (after white space and an
// optional sign) starts with a digit; false when it holds no number.
bool scan_int(const char *text, int32_t &out) noexcept;

// "%u" scanning, same rules; a leading minus wraps as sscanf does.
bool scan_uint(const char *text, uint32_t &out) noexcept;

// "%x" scanning (an optional 0x / 0X prefix is accepted, as sscanf does).
bool scan_hex(const char *text, uint32_t &out) noexcept;

inline bool absent(const char *value) noexcept
{
    return value == nullptr || value[0] == '\0';
}

// std::string_view::starts_with without the bounds-checked compare behind
// it, whose throwing helper would be referenced from the library in builds
// that do not inline it (the library carries no C++ runtime).
inline bool begins_with(std::string_view text, std::string_view prefix) noexcept
{
    return text.size() >= prefix.size() && std::memcmp(text.data(), prefix.data(), prefix.size()) == 0;
}

// Element numbers of list entries, profiles, ports and rules, taken from a
// node path or a param name. None of them wraps: a huge number is held at a
// limit, so that it can never land on a valid element.

// Which "_" of a path or name the number follows.
enum class underscore { first, last };

// The text after the first (or the last) "_" of a path or name; nullptr when
// it holds no "_".
inline const char *after_underscore(const char *text, underscore which = underscore::first) noexcept
{
    const char *at = which == underscore::first ? std::strchr(text, '_') : std::strrchr(text, '_');
    return at == nullptr ? nullptr : at + 1;
}

// The number of a text made of decimal digits alone (no sign, blanks or
// anything after them). -1 when the text is null, empty or holds anything
// else; large numbers stop at INT32_MAX.
constexpr int32_t entry_number(const char *digits) noexcept
{
    if (digits == nullptr || digits[0] == '\0')
        return -1;
    int64_t n = 0;
    for (const char *c = digits; *c != '\0'; ++c) {
        if (*c < '0' || *c > '9')
            return -1;
        if (n <= INT32_MAX)
            n = n * 10 + (*c - '0');
    }
    return n > INT32_MAX ? INT32_MAX : static_cast<int32_t>(n);
}

// A number read as "%d" reads it: white space, one optional sign, then at
// least one digit; what follows the digits is left alone. Returns the
// character after the number, or nullptr (and `out` untouched) when the text
// is null or no digit follows. The number is held at the 64-bit limits.
const char *scan_entry(const char *text, int64_t &out) noexcept;

// The "%d" number at `text` when it lies in 0..count-1. `missing` when the
// text holds no number, -1 when the number is out of range or the text is
// null (a name without its "_").
int32_t entry_within(const char *text, int32_t count, int32_t missing) noexcept;

// A 64-bit number held at the int limits, for the reports that show it.
constexpr int32_t held_int32(int64_t n) noexcept
{
    return n < INT32_MIN ? INT32_MIN : n > INT32_MAX ? INT32_MAX : static_cast<int32_t>(n);
}

} // namespace cfg::numbers
