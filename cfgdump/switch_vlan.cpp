// Writer of the switch VLANs.
#include "cfgdump/switch_nodes.h"

#include <cstdio>

namespace cfg::dump::switch_nodes {
namespace {

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

void vlan(msg_writer &w, const switch_cfg_t &sw) noexcept
{
    w.node("config.Switch.vlan");
    for (int i = 0; i < CFG_SWITCH_PORTS; ++i) {
        const switch_vlan_t &v = sw.vlan[i];
        w.uint(numbered_name("enable", i), static_cast<uint32_t>(v.enable));
        w.uint(numbered_name("vid", i), v.vid);
        w.uint(numbered_name("im", i), v.im);
        w.uint(numbered_name("eg", i), v.eg);
        w.uint(numbered_name("ov", i), static_cast<uint32_t>(v.ov));
        w.text(numbered_name("portmask", i), static_cast<const char *>(port_flags(v.portmask)));
        w.text(numbered_name("portmode", i), v.portmode);
        w.text(numbered_name("backup_port", i), v.backup_port);
        w.text(numbered_name("preemption", i), v.preemption);
    }
    w.uint("hubmode", static_cast<uint32_t>(sw.hubmode));
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
