// Param names of the switch nodes: the key a name begins with. The entry
// number written right after it ("portmask3", "qos_mode0", "vtu12.port1") is
// read as "%d" with numbers::entry_within / numbers::scan_entry.
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

} // namespace cfg::switch_names
