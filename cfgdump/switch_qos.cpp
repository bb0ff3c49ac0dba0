// Writer of the switch QoS settings. Masks go out as "0x%x".
#include "cfgdump/switch_nodes.h"
#include "cfgmngr/keys_switch.h"

namespace cfg::dump::switch_nodes {
namespace {

using keys::switch_qos_keys;

constexpr auto per_port_sent =
    keys::pick(switch_qos_keys, "prio", "qos_mode", "tag_remap_mask", "ingress_limit_mode", "ingress_rate",
               "ingress_mask", "egress_rate");
constexpr auto masks_sent =
    keys::pick(switch_qos_keys, "ieee_pri", "diffserv_remap003C_mask", "diffserv_remap407C_mask",
               "diffserv_remap80BC_mask", "diffserv_remapC0FC_mask");

} // namespace

void qos(msg_writer &w, const switch_cfg_t &sw) noexcept
{
    w.node("config.Switch.qos");
    for (unsigned port = 0; port < CFG_SWITCH_PORTS; ++port)
        for (const uint16_t i : per_port_sent)
            w.field(switch_qos_keys[i], &sw, port);
    w.fields(switch_qos_keys, masks_sent, &sw);
}

} // namespace cfg::dump::switch_nodes

extern "C" {

int qos_save(uint8_t **cursor, const switch_cfg_t *sw) CFG_NOEXCEPT
{
    if (cfg::dump::refused("qos_save", cursor, {sw}))
        return 0;
    cfg::dump::msg_writer w(cursor, "qos_save");
    cfg::dump::switch_nodes::qos(w, *sw);
    return w.finish();
}

} // extern "C"
