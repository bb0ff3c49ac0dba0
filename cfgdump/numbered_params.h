// Numbered params of the compacting list writers ("host_0", "rule_12"...):
// filled entries are renumbered from 0 and the numbers the configuration
// manager may still hold beyond them are sent with no value, so that it
// deletes those entries.
#pragma once

#include "cfgmngr/msg_writer.h"

#include <cstdint>
#include <cstdio>

namespace cfg::dump {

// "<prefix>_<k>" in a buffer of its own.
struct numbered_name {
    char text[40];
    numbered_name(const char *prefix, uint32_t k) noexcept
    {
        std::snprintf(text, sizeof text, "%s_%d", prefix, static_cast<int>(k));
    }
};

// A node carries at most this many params.
inline constexpr uint32_t max_node_params = 65535;

// Writes `count` params "<prefix>_<k>", "<prefix>_<k+1>"... with no value.
// Only a marker the application left above 16 bits could ask for more
// params than a node can carry; the padding then stops at that limit.
inline void pad_empty(msg_writer &w, const char *prefix, uint32_t k, uint32_t count) noexcept
{
    const uint32_t room =
        max_node_params - (w.params_in_node() < max_node_params ? w.params_in_node() : max_node_params);
    if (count > room)
        count = room;
    for (uint32_t i = 0; i < count; ++i)
        w.empty(numbered_name(prefix, k + i).text);
}

} // namespace cfg::dump
