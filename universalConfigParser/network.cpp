// Network settings: "config.Network.network" (addresses, VLAN interfaces,
// PPPoE / PPTP uplinks, services, autoupdate, NTP, RADIUS, language) and the
// small "config.Network.LLDP" node. Their keys are in cfgmngr/keys_network.h.
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"

namespace cfg::handlers {

node_end network(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::network, &image.network, image.network.updated);
}

node_end lldp(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::lldp, &image.lldp, image.lldp.updated);
}

} // namespace cfg::handlers
