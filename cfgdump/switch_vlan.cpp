// Writer of the switch VLANs.
#include "cfgdump/switch_nodes.h"
#include "cfgmngr/keys_switch.h"
#include "cfgmngr/writer_rows.h"

#include <cstdio>

namespace cfg::dump::switch_nodes {
namespace {

using keys::switch_vlan_keys;

// The port flag string: flag k is 1 when bit k of the mask is set.
struct port_flags {
    char text[32];
    explicit port_flags(uint32_t mask) noexcept
    {
        auto bit = [mask](unsigned k) { return static_cast<int>((mask >> k) & 1u); };
        std::snprintf(text, sizeof text, "%d %d %d %d %d %d", bit(0), bit(1), bit(2), bit(3), bit(4), bit(5));
    }
    operator const char *() const noexcept { return text; }
};

} // namespace

// The port mask goes out as its port flag string.
void vlan(msg_writer &w, const switch_cfg_t &sw, std::span<const uint16_t> order) noexcept
{
    w.node("config.Switch.vlan");
    for (int i = 0; i < CFG_SWITCH_PORTS; ++i) {
        const auto entry = static_cast<unsigned>(i);
        for (const uint16_t r : order) {
            const keys::key &k = switch_vlan_keys[r];
            if (k.count == 0)
                continue;
            if (k.out == keys::sent::own_format)
                w.text(numbered_name(k.wire_name().data(), i),
                       static_cast<const char *>(port_flags(sw.vlan[i].portmask)));
            else
                w.field(k, &sw, entry);
        }
    }
    for (const uint16_t r : order)
        if (switch_vlan_keys[r].count == 0)
            w.field(switch_vlan_keys[r], &sw);
}

} // namespace cfg::dump::switch_nodes

extern "C" {

int vlan_config_save(uint8_t **cursor, const switch_cfg_t *sw) CFG_NOEXCEPT
{
    if (cfg::dump::refused("vlan_config_save", cursor, {sw}))
        return 0;
    cfg::dump::msg_writer w(cursor, "vlan_config_save");
    cfg::dump::switch_nodes::vlan(w, *sw, cfg::routes::rows_switch_vlan_vlan_config_save);
    return w.finish();
}

} // extern "C"
