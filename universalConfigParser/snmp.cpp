// SNMP agent settings: "config.Network.snmp" and its one user line,
// "config.Network.snmp_users". Both nodes share one time-stamp. Their keys
// are in cfgmngr/keys_network.h.
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"

namespace cfg::handlers {

node_end snmp_users(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::snmp_users, &image.snmp, image.snmp.updated);
}

node_end snmp(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::snmp, &image.snmp, image.snmp.updated);
}

} // namespace cfg::handlers
