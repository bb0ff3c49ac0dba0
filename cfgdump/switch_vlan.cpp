// Writer of the switch VLANs.
#include "cfgdump/switch_nodes.h"
#include "cfgmngr/keys_switch.h"

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

constexpr auto numbers_sent = keys::pick(switch_vlan_keys, "enable", "vid", "im", "eg", "ov");
constexpr const keys::key &portmask = keys::row(switch_vlan_keys, "portmask");
constexpr auto texts_sent = keys::pick(switch_vlan_keys, "portmode", "backup_port", "preemption");
constexpr auto switch_wide_sent = keys::pick(switch_vlan_keys, "hubmode");

} // namespace

void vlan(msg_writer &w, const switch_cfg_t &sw) noexcept
{
    w.node("config.Switch.vlan");
    for (int i = 0; i < CFG_SWITCH_PORTS; ++i) {
        const auto entry = static_cast<unsigned>(i);
        for (const uint16_t k : numbers_sent)
            w.field(switch_vlan_keys[k], &sw, entry);
        w.text(numbered_name(portmask.wire_name().data(), i),
               static_cast<const char *>(port_flags(sw.vlan[i].portmask)));
        for (const uint16_t k : texts_sent)
            w.field(switch_vlan_keys[k], &sw, entry);
    }
    w.fields(switch_vlan_keys, switch_wide_sent, &sw);
}

} // namespace cfg::dump::switch_nodes

extern "C" {

int vlan_config_save(uint8_t **cursor, const switch_cfg_t *sw) CFG_NOEXCEPT
{
    if (cfg::dump::refused("vlan_config_save", cursor, {sw}))
        return 0;
    cfg::dump::msg_writer w(cursor, "vlan_config_save");
    cfg::dump::switch_nodes::vlan(w, *sw);
    return w.finish();
}

} // extern "C"
