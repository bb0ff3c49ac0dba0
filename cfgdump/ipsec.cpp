// Writer of the IPSec tunnel settings, followed by the control / signalling
// VLAN choice of the network settings.
#include "cfgdump/network_nodes.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int ipsec_save(uint8_t **cursor, const ipsec_cfg_t *ipsec, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("ipsec_save", cursor, {ipsec, network}))
        return 0;
    msg_writer w(cursor, "ipsec_save");
    w.node("config.Network.IPSec");
    w.uint("Enable", ipsec->flags & 1u);
    w.text("LocalIP", ipsec->local_ip);
    w.text("LocalSubnet", ipsec->local_subnet);
    w.text("LocalNetmask", ipsec->local_netmask);
    w.text("RemoteSubnet", ipsec->remote_subnet);
    w.text("RemoteNetmask", ipsec->remote_netmask);
    w.text("RemoteGateway", ipsec->remote_gateway);
    w.text("NAT", ipsec->nat);
    w.uint("NATPort", ipsec->nat_port);
    w.uint("NATKeepAlive", ipsec->nat_keepalive);
    w.uint("AgressiveMode", (ipsec->flags >> 1) & 1u);
    w.text("IdentifierType", ipsec->identifier_type);
    w.text("Identifier", ipsec->identifier);
    w.text("PreshareKey", ipsec->preshare_key);
    w.text("IKEAuthAlgorithm", ipsec->ike_auth_algorithm);
    w.text("IKEEncryptAlgorithm", ipsec->ike_encrypt_algorithm);
    w.uint("IKEDhGroup", ipsec->ike_dh_group);
    w.uint("IKELifeTime", ipsec->ike_lifetime);
    w.text("AuthAlgorithm", ipsec->auth_algorithm);
    w.text("EncryptAlgorithm", ipsec->encrypt_algorithm);
    w.uint("PfsGroup", ipsec->pfs_group);
    w.uint("Lifetime", ipsec->lifetime);
    cfg::dump::network_ipsec_vlans_node(w, *network);
    return w.finish();
}

} // extern "C"
