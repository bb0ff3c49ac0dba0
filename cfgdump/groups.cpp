// Writer of the hunt groups of one kind: the valid groups renumbered from 0,
// then an empty node for every other number, which clears that group on the
// configuration manager's side.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

#include <cstdio>
#include <cstring>

using cfg::dump::msg_writer;

namespace cfg::dump {
namespace {

constexpr int group_count = CFG_GROUPS;

// The keys in the order they are sent, between the member ports and the
// keys of one kind of group only.
constexpr auto &rows = keys::group_keys;
constexpr auto account_keys = keys::pick(rows, "phone", "name", "password");
constexpr const keys::key &ports_key = keys::row(rows, "ports");
constexpr auto type_key = keys::pick(rows, "type");
constexpr auto subscriber_keys = keys::pick(rows, "timeout"); // subscriber-port groups only
constexpr auto state_keys = keys::pick(rows, "busy", "enabled", "sip_port");
constexpr auto line_keys =
    keys::pick(rows, "dont_transmit_prefix", "transmit_number", "fxo_call_busy"); // line-port groups only
constexpr auto profile_key = keys::pick(rows, "profile_id");

void group_path(char (&path)[48], bool fxo, int index) noexcept
{
    std::snprintf(path, sizeof path, fxo ? "config.VOIP.groups.fxo_group_%d" : "config.VOIP.groups.group_%d",
                  index);
}

void group_node(msg_writer &w, const group_cfg_t &g, bool fxo, int index) noexcept
{
    char path[48];
    group_path(path, fxo, index);
    char ports[256] = {};
    cfg_port_to_string(&g, ports);

    w.node(path);
    w.fields(rows, account_keys, &g);
    w.text(ports_key.wire_name().data(), static_cast<const char *>(ports));
    w.fields(rows, type_key, &g);
    if (!fxo)
        w.fields(rows, subscriber_keys, &g);
    w.fields(rows, state_keys, &g);
    if (fxo)
        w.fields(rows, line_keys, &g);
    w.fields(rows, profile_key, &g);
}

} // namespace
} // namespace cfg::dump

extern "C" {

int groups_to_file(uint8_t **cursor, const group_cfg_t *entries, int fxo) CFG_NOEXCEPT
{
    if (cfg::dump::refused("groups_to_file", cursor, {entries}))
        return 0;
    using namespace cfg::dump;
    msg_writer w(cursor, "groups_to_file");
    const bool line_ports = fxo != 0;
    int j = 0;
    for (int i = 0; i < group_count; ++i) {
        const group_cfg_t &g = entries[i];
        char name[sizeof g.name + 1] = {};
        std::memcpy(name, g.name, sizeof g.name);
        cfg_trace(CFG_TRACE_DEBUG, " SAVE GROUP %d valid %d name %s.", i, static_cast<int>(g.valid), name);
        if (g.valid != 0)
            group_node(w, g, line_ports, j++);
    }
    for (int k = j; k < group_count; ++k) {
        char path[48];
        group_path(path, line_ports, k);
        w.node(path);
    }
    return w.finish();
}

} // extern "C"
