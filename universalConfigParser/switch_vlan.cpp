// VLANs of the Ethernet switch: "config.Switch.vlan". Every key but
// "hubmode" carries the VLAN number 0..5 right after it ("vid3").
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"
#include "universalConfigParser/switch_names.h"

#include <cstring>

namespace cfg::handlers {
namespace {

// Tried in this order, each over its own length.
constexpr std::string_view vlan_keys[] = {
    "portmask", "portmode", "backup_port", "preemption", "enable", "vid", "im", "eg", "ov", "hubmode",
};

constexpr int32_t no_vlan = CFG_SWITCH_PORTS; // a name without a number

// The port flag text is read from a zeroed 255-byte copy: characters past
// the 254th never count, and no value reads as no flags.
void store_portmask(uint32_t &field, const char *value) noexcept
{
    char text[255] = {};
    if (value != nullptr)
        std::strncpy(text, value, sizeof text - 1);
    field = eth_port_string_to_output(text);
}

void store_vlan_field(switch_vlan_t &e, std::string_view key, const char *v) noexcept
{
    if (key == "portmask")    return store_portmask(e.portmask, v);
    if (key == "portmode")    return store::text(e.portmode, v);
    if (key == "backup_port") return store::text(e.backup_port, v);
    if (key == "preemption")  return store::text(e.preemption, v);
    if (key == "enable")      return store::checkbox(e.enable, v);
    if (key == "vid")         return store::digit(e.vid, v, 0, 4095, 0);
    if (key == "im")          return store::digit(e.im, v, 0, 2, 0);
    if (key == "eg")          return store::digit(e.eg, v, 0, 3, 0);
    if (key == "ov")          return store::checkbox(e.ov, v);
}

void store_vlan(switch_cfg_t &sw, const parse::param &p) noexcept
{
    const std::string_view key = switch_names::first_key(p.name(), vlan_keys);
    if (key.empty())
        return;
    if (key == "hubmode")
        return store::checkbox(sw.hubmode, p.value());
    const int32_t vlan = numbers::entry_within(p.name() + key.size(), CFG_SWITCH_PORTS, no_vlan);
    if (vlan < 0 || vlan >= CFG_SWITCH_PORTS)
        return;
    store_vlan_field(sw.vlan[vlan], key, p.value());
}

} // namespace

node_end switch_vlan(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_vlan(image.switch_cfg, p);
    }
    return parse::finish_node(n, image.vlan_updated);
}

} // namespace cfg::handlers
