// Port settings: "config.VOIP.ports.port_N" fills ports[N] (N 0..71) and
// "config.VOIP.ports.port_def_N" fills the port-profile defaults
// port_defaults[N] (N 0..7). Both kinds of node take every key of the table.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/text_numbers.h"

#include <cstdint>
#include <string_view>

namespace cfg::handlers {
namespace {

constexpr std::string_view port_def_prefix = "config.VOIP.ports.port_def_";

// The record a node fills, or why it fills none.
struct port_target {
    port_cfg_t *record = nullptr;
    uint32_t *updated = nullptr;
    bool abandon = false; // end the whole message
};

port_target select_port_default(cfg_image_t &image, const char *path) noexcept
{
    // The prefix holds a '_'.
    const char *text = numbers::after_underscore(path, numbers::underscore::last);
    int64_t number = 0;
    if (numbers::scan_entry(text, number) == nullptr || number != numbers::held_int32(number)) {
        // No number at all (one too large for 32 bits counts as none): like a
        // bad port number below, the node is reported and skipped; only a
        // number outside 0..7 ends the message.
        cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect number of port's profile [%s]", __LINE__, text);
        return {};
    }
    const auto n = static_cast<int32_t>(number);
    port_target t;
    {
        const parse::image_lock lock;
        if (n < 0 || n >= CFG_PORT_PROFILES) {
            cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect number of port's profile [%d]", __LINE__, n);
            t.abandon = true;
            return t;
        }
        t.record = &image.port_defaults[n];
        t.updated = &image.port_defaults_updated;
    }
    cfg_trace(CFG_TRACE_DEBUG, "%s: port_def_%d", "all_parser", n);
    return t;
}

// A port number outside 0..71, or a path without a readable number, is
// reported at the error level and its node is skipped: it names no record,
// and the rest of the message (other ports and sections) is still good.
port_target select_port(cfg_image_t &image, const char *path) noexcept
{
    const char *text = numbers::after_underscore(path); // the prefix holds a '_'
    const int32_t n = numbers::entry_within(text, CFG_MAX_PORTS, -1);
    if (n < 0) {
        cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect port number [%s]", __LINE__, text);
        return {};
    }
    port_target t;
    {
        const parse::image_lock lock;
        t.record = &image.ports[n];
        t.updated = &image.ports_updated[n];
    }
    cfg_trace(CFG_TRACE_DEBUG, "%s: port_number = %s  actual_port = %d", "all_parser", text, n);
    return t;
}

} // namespace

node_end ports(cfg_image_t &image, node &n)
{
    const port_target t = numbers::begins_with(n.path, port_def_prefix)
                              ? select_port_default(image, n.path)
                              : select_port(image, n.path);
    if (t.abandon)
        return node_end::stop;
    if (t.record == nullptr)
        return parse::skip_unknown(n);
    // Port-default nodes share one stamp; each port has its own.
    return parse::keyed_node(n, keys::ports, t.record, *t.updated);
}

} // namespace cfg::handlers
