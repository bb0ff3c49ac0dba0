// Writer of the hunt groups of one kind: the valid groups renumbered from 0,
// then an empty node for every other number, which clears that group on the
// configuration manager's side.
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_voip.h"

#include <cfgparser.h>

#include <cstdio>
#include <cstring>

using cfg::dump::msg_writer;

namespace cfg::dump {
namespace {

constexpr int group_count = CFG_GROUPS;

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

    // Each kind of group sends its own rows; the member ports go out as
    // their list text.
    w.node(path);
    send_rows(w, keys::group_keys,
              fxo ? std::span<const uint16_t>(routes::rows_fxo_group_groups_to_file)
                  : std::span<const uint16_t>(routes::rows_group_groups_to_file),
              &g,
              [&](const keys::key &k) { w.text(k.wire_name().data(), static_cast<const char *>(ports)); });
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
