// Site-to-site IPSec tunnel: "config.Network.IPSec". Its keys are in
// cfgmngr/keys_network.h.
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"

namespace cfg::handlers {

node_end ipsec(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::ipsec, &image.ipsec, image.ipsec.updated);
}

} // namespace cfg::handlers
