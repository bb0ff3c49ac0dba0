// Writer of the IPSec tunnel settings, followed by the control / signalling
// VLAN choice of the network settings.
#include "cfgdump/network_nodes.h"
#include "cfgmngr/keys_network.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int ipsec_save(uint8_t **cursor, const ipsec_cfg_t *ipsec, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("ipsec_save", cursor, {ipsec, network}))
        return 0;
    msg_writer w(cursor, "ipsec_save");
    w.node("config.Network.IPSec");
    w.fields(cfg::keys::ipsec_keys, cfg::routes::rows_ipsec_ipsec_save, ipsec);
    cfg::dump::network_ipsec_vlans_node(w, *network);
    return w.finish();
}

} // extern "C"
