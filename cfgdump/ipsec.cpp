// Writer of the IPSec tunnel settings, followed by the control / signalling
// VLAN choice of the network settings.
#include "cfgdump/network_nodes.h"
#include "cfgmngr/keys_network.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

namespace {

constexpr auto ipsec_sent =
    cfg::keys::pick(cfg::keys::ipsec_keys, "Enable", "LocalIP", "LocalSubnet", "LocalNetmask", "RemoteSubnet",
                    "RemoteNetmask", "RemoteGateway", "NAT", "NATPort", "NATKeepAlive", "AgressiveMode",
                    "IdentifierType", "Identifier", "PreshareKey", "IKEAuthAlgorithm", "IKEEncryptAlgorithm",
                    "IKEDhGroup", "IKELifeTime", "AuthAlgorithm", "EncryptAlgorithm", "PfsGroup", "Lifetime");

} // namespace

extern "C" {

int ipsec_save(uint8_t **cursor, const ipsec_cfg_t *ipsec, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("ipsec_save", cursor, {ipsec, network}))
        return 0;
    msg_writer w(cursor, "ipsec_save");
    w.node("config.Network.IPSec");
    w.fields(cfg::keys::ipsec_keys, ipsec_sent, ipsec);
    cfg::dump::network_ipsec_vlans_node(w, *network);
    return w.finish();
}

} // extern "C"
