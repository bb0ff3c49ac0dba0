// The whole switch in one message: VLANs, QoS, then all sixteen VTU rules,
// each rule not in use blanked so that the configuration manager drops it.
#include "cfgdump/switch_nodes.h"
#include "cfgmngr/writer_rows.h"

extern "C" {

int switch_config_save(uint8_t **cursor, const switch_cfg_t *sw) CFG_NOEXCEPT
{
    if (cfg::dump::refused("switch_config_save", cursor, {sw}))
        return 0;
    namespace nodes = cfg::dump::switch_nodes;
    namespace routes = cfg::routes;
    cfg::dump::msg_writer w(cursor, "switch_config_save");
    nodes::vlan(w, *sw, routes::rows_switch_vlan_switch_config_save);
    nodes::qos(w, *sw, routes::rows_switch_qos_switch_config_save);
    w.node("config.Switch.vtu");
    for (int32_t i = 0; i < CFG_VTU_RULES; ++i) {
        if (sw->vtu[i].valid != 0)
            nodes::vtu_rule(w, i, sw->vtu[i], routes::rows_switch_vtu_switch_config_save);
        else
            nodes::vtu_blank(w, i, routes::rows_switch_vtu_switch_config_save);
    }
    return w.finish();
}

} // extern "C"
