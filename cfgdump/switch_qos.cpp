// Writer of the switch QoS settings. Masks go out as "0x%x".
#include "cfgdump/switch_nodes.h"
#include "cfgmngr/keys_switch.h"
#include "cfgmngr/writer_rows.h"

namespace cfg::dump::switch_nodes {

void qos(msg_writer &w, const switch_cfg_t &sw, std::span<const uint16_t> order) noexcept
{
    using keys::switch_qos_keys;
    w.node("config.Switch.qos");
    for (unsigned port = 0; port < CFG_SWITCH_PORTS; ++port)
        for (const uint16_t i : order)
            if (switch_qos_keys[i].count != 0)
                w.field(switch_qos_keys[i], &sw, port);
    for (const uint16_t i : order)
        if (switch_qos_keys[i].count == 0)
            w.field(switch_qos_keys[i], &sw);
}

} // namespace cfg::dump::switch_nodes

extern "C" {

int qos_save(uint8_t **cursor, const switch_cfg_t *sw) CFG_NOEXCEPT
{
    if (cfg::dump::refused("qos_save", cursor, {sw}))
        return 0;
    cfg::dump::msg_writer w(cursor, "qos_save");
    cfg::dump::switch_nodes::qos(w, *sw, cfg::routes::rows_switch_qos_qos_save);
    return w.finish();
}

} // extern "C"
