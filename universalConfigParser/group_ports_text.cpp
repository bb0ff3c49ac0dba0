// The port list of a hunt group as text: decimal port numbers separated by
// ",", a trailing "," allowed, the empty text being the empty list.
#include "universalConfigParser/text_numbers.h"

#include <cfgparser.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace cfg::groups {
namespace {

// The output buffer that callers of cfg_port_to_string provide.
constexpr std::size_t port_text_size = 256;

// Member ports a group record holds.
constexpr std::size_t max_group_ports = std::size(group_cfg_t{}.port_list);

} // namespace
} // namespace cfg::groups

extern "C" {

// Returns 0 when the text was taken, -1 when refused. The list is read into a
// local copy first, so a refused text leaves the group untouched. A text of
// more than 72 numbers is refused like the other refusals (without a report
// of its own: it cannot come from a device with at most 72 ports).
int cfgpars_group_ports_string_to_t(group_cfg_t *group, const char *text,
                                    const cfg_image_t *image) CFG_NOEXCEPT
{
    if (group == nullptr || text == nullptr || image == nullptr)
        return -1;

    uint32_t ports[cfg::groups::max_group_ports];
    std::size_t count = 0;
    // Port numbers below max_ports, and never past the 72 port records
    // however many ports the application announces (as the port writers and
    // the port masks clamp it).
    const uint32_t bound = std::min<uint32_t>(image->max_ports, CFG_MAX_PORTS);
    const char *at = text;
    while (*at != '\0') {
        char *end = nullptr;
        // Read as 64 bits on every target and reported held at the int
        // limits: the report shows what a 32-bit strtol gives, also where
        // long has 64 bits (whose low half would show 4294967297 as 1).
        const long long n = std::strtoll(at, &end, 10);
        if (end == at)
            return -1; // no digits here
        // Compared unsigned: a negative number counts as too large.
        if (n < 0 || static_cast<unsigned long long>(n) >= bound) {
            cfg_trace(CFG_TRACE_ERROR, "%s: ARG error!!! s = %d  max_ports = %d",
                      "cfgpars_group_ports_string_to_t", cfg::numbers::held_int32(n),
                      static_cast<int>(image->max_ports));
            return -1;
        }
        if (*end == ',') {
            at = end + 1;
        } else if (*end == '\0') {
            at = end;
        } else {
            cfg_trace(CFG_TRACE_ERROR, "%s: Syntax error", "cfgpars_group_ports_string_to_t");
            return -1;
        }
        if (count == std::size(ports))
            return -1; // a 73rd number: the record holds 72
        ports[count++] = static_cast<uint32_t>(n);
    }

    std::copy_n(ports, count, group->port_list);
    group->port_count = static_cast<uint32_t>(count);
    return 0;
}

// Writes the first `port_count` ports as "%d," each and drops the last ",".
// The buffer holds 256 bytes: a port that would not fit whole ends the text
// (ports are below max_ports, so a real list always fits).
char *cfg_port_to_string(const group_cfg_t *group, char *out) CFG_NOEXCEPT
{
    cfg_trace(CFG_TRACE_DEBUG, "%s %d\n", "cfg_port_to_string", __LINE__);
    if (out == nullptr)
        return out;
    out[0] = '\0';
    if (group != nullptr) {
        const auto count = std::min<std::size_t>(group->port_count, cfg::groups::max_group_ports);
        std::size_t used = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t room = cfg::groups::port_text_size - used;
            const int n = std::snprintf(out + used, room, "%d,", static_cast<int>(group->port_list[i]));
            if (n < 0 || static_cast<std::size_t>(n) >= room) {
                out[used] = '\0';
                break;
            }
            used += static_cast<std::size_t>(n);
        }
        if (used > 0)
            out[used - 1] = '\0';
    }
    cfg_trace(CFG_TRACE_DEBUG, "%s %d\n", "cfg_port_to_string", __LINE__);
    return out;
}

} // extern "C"
