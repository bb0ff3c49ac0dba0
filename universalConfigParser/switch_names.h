// Param names of the switch nodes: the key a name begins with and the entry
// number written right after it ("portmask3", "qos_mode0", "vtu12.port1").
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace cfg::switch_names {

// The first key (in table order) that the name begins with; empty when none.
inline std::string_view first_key(std::string_view name, std::span<const std::string_view> keys) noexcept
{
    for (const std::string_view key : keys)
        if (name.starts_with(key))
            return key;
    return {};
}

// Reads a "%d" number at `text` (white space and one sign allowed before the
// digits) and steps `text` past it. Returns false when no digit follows.
// Numbers too large for 32 bits are kept saturated rather than wrapped, so
// that an overlong index can never wrap into a valid entry number.
bool scan_number(const char *&text, int64_t &out) noexcept;

// The entry number that follows `key` at the start of `name`, if one is
// there and lies in 0..count-1; otherwise `none` (no number) or -1 (a number
// out of range). Callers drop the param unless the result is a valid entry.
int32_t entry_after_key(const char *name, std::string_view key, int32_t count, int32_t none) noexcept;

} // namespace cfg::switch_names
