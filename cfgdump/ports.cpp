// Writers of the port settings and of the port-profile defaults.
#include "cfgmngr/keys_ports.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// Node paths: the longest is a port-default path with a 10-digit number.
using port_path = char[48];

void port_node(msg_writer &w, const char *format, uint32_t n) noexcept
{
    port_path path;
    std::snprintf(path, sizeof path, format, static_cast<int>(n));
    w.node(path);
}

// The keys each writer sends, in the order it sends them: its rows of the
// route table (cfgmngr/writer_rows.h).
// The summary of every port.
constexpr auto &summary_keys = cfg::routes::rows_port_all_ports_to_file;

// Every member of the port except ct_number.
constexpr auto &one_port_keys = cfg::routes::rows_port_one_port_to_file;

// The line settings that a port profile gives its ports; numbers, accounts
// and call-forwarding targets belong to each port and are not written here.
constexpr auto &port_def_keys = cfg::routes::rows_port_def_profile_def_port_to_file;

constexpr auto &pickup_keys = cfg::routes::rows_port_all_ports_pickup_to_file;

// The ports that the all-ports writers cover: 0 .. max_ports - 1, never more
// than the image holds.
uint32_t ports_to_write(const cfg_image_t &image) noexcept
{
    return std::min<uint32_t>(image.max_ports, CFG_MAX_PORTS);
}

} // namespace

extern "C" {

int all_ports_to_file(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT
{
    if (cfg::dump::refused("all_ports_to_file", cursor, {image}))
        return 0;
    msg_writer w(cursor, "all_ports_to_file");
    for (uint32_t i = 0; i < ports_to_write(*image); ++i) {
        port_node(w, "config.VOIP.ports.port_%d", i);
        w.fields(keys::port_keys, summary_keys, &image->ports[i]);
    }
    return w.finish();
}

int all_ports_pickup_to_file(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT
{
    if (cfg::dump::refused("all_ports_pickup_to_file", cursor, {image}))
        return 0;
    msg_writer w(cursor, "all_ports_pickup_to_file");
    for (uint32_t i = 0; i < ports_to_write(*image); ++i) {
        port_node(w, "config.VOIP.ports.port_%d", i);
        w.fields(keys::port_keys, pickup_keys, &image->ports[i]);
    }
    return w.finish();
}

int one_port_to_file(uint8_t **cursor, uint32_t port, const port_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("one_port_to_file", cursor, {cfg}, port, CFG_MAX_PORTS))
        return 0;
    cfg::dump::pickup_text groups;
    cfg::dump::build_pickup_text(cfg->pickupgroup, groups);
    cfg_trace(CFG_TRACE_DEBUG, "PICKUP %s for port %d", groups, static_cast<int>(port));

    msg_writer w(cursor, "one_port_to_file");
    port_node(w, "config.VOIP.ports.port_%d", port);
    w.fields(keys::port_keys, one_port_keys, cfg);
    return w.finish();
}

int profile_def_port_to_file(uint8_t **cursor, uint32_t profile, const port_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("profile_def_port_to_file", cursor, {cfg}, profile, CFG_PORT_PROFILES))
        return 0;
    msg_writer w(cursor, "profile_def_port_to_file");
    port_node(w, "config.VOIP.ports.port_def_%d", profile);
    w.fields(keys::port_keys, port_def_keys, cfg);
    return w.finish();
}

} // extern "C"
