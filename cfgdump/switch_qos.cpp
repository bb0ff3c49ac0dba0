// Writer of the switch QoS settings. Masks go out as "0x%x".
#include "cfgdump/switch_nodes.h"

namespace cfg::dump::switch_nodes {

void qos(msg_writer &w, const switch_cfg_t &sw) noexcept
{
    w.node("config.Switch.qos");
    for (int i = 0; i < CFG_SWITCH_PORTS; ++i) {
        const qos_port_t &q = sw.qos_port[i];
        w.uint(numbered_name("prio", i), q.prio);
        w.uint(numbered_name("qos_mode", i), q.qos_mode);
        w.hex(numbered_name("tag_remap_mask", i), q.tag_remap_mask);
        w.uint(numbered_name("ingress_limit_mode", i), q.ingress_limit_mode);
        w.uint(numbered_name("ingress_rate", i), q.ingress_rate);
        w.hex(numbered_name("ingress_mask", i), q.ingress_mask);
        w.uint(numbered_name("egress_rate", i), q.egress_rate);
    }
    w.hex("ieee_pri", sw.ieee_pri);
    w.hex("diffserv_remap003C_mask", sw.diffserv_remap003C_mask);
    w.hex("diffserv_remap407C_mask", sw.diffserv_remap407C_mask);
    w.hex("diffserv_remap80BC_mask", sw.diffserv_remap80BC_mask);
    w.hex("diffserv_remapC0FC_mask", sw.diffserv_remapC0FC_mask);
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
