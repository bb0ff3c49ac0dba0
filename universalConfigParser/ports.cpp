// Port settings: "config.VOIP.ports.port_N" fills ports[N] (N 0..71) and
// "config.VOIP.ports.port_def_N" fills the port-profile defaults
// port_defaults[N] (N 0..7). Both kinds of node take every key of the table;
// their routes (cfgmngr/routes.cpp) say how the number is read.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/text_numbers.h"

#include <cstdint>

namespace cfg::handlers {
namespace {

// The record a node fills, or why it fills none.
struct port_target {
    port_cfg_t *record = nullptr;
    uint32_t *updated = nullptr;
    bool abandon = false; // end the whole message
};

port_target select_port_default(cfg_image_t &image, const node &n) noexcept
{
    const routes::path_number number = n.number(); // the path's beginning holds a '_'
    const char *text = number.text;
    if (!number.found || number.value != numbers::held_int32(number.value)) {
        // No number at all (one too large for 32 bits counts as none): like a
        // bad port number below, the node is reported and skipped; only a
        // number outside 0..7 ends the message.
        cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect number of port's profile [%s]", __LINE__, text);
        return {};
    }
    const auto d = static_cast<int32_t>(number.value);
    port_target t;
    {
        const parse::image_lock lock;
        if (d < n.route->kind.first || d > n.route->kind.last) {
            cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect number of port's profile [%d]", __LINE__, d);
            t.abandon = true;
            return t;
        }
        t.record = &image.port_defaults[d];
        t.updated = &image.port_defaults_updated;
    }
    cfg_trace(CFG_TRACE_DEBUG, "%s: port_def_%d", "all_parser", d);
    return t;
}

// A port number outside 0..71, or a path without a readable number, is
// reported at the error level and its node is skipped: it names no record,
// and the rest of the message (other ports and sections) is still good.
port_target select_port(cfg_image_t &image, const node &node) noexcept
{
    const routes::path_number number = node.number(); // the path's beginning holds a '_'
    const char *text = number.text;
    const int32_t n =
        number.found && number.value >= node.route->kind.first && number.value <= node.route->kind.last
            ? static_cast<int32_t>(number.value)
            : -1;
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

node_end fill(node &n, const port_target &t) noexcept
{
    if (t.abandon)
        return node_end::stop;
    if (t.record == nullptr)
        return parse::skip_unknown(n);
    // Port-default nodes share one stamp; each port has its own.
    return parse::keyed_node(n, keys::ports, t.record, *t.updated);
}

} // namespace

node_end ports(cfg_image_t &image, node &n)
{
    return fill(n, select_port(image, n));
}

node_end port_defaults(cfg_image_t &image, node &n)
{
    return fill(n, select_port_default(image, n));
}

} // namespace cfg::handlers
