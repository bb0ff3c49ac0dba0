// TR-069 management client: "config.Network.TR069".
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"

namespace cfg::handlers {

node_end tr069(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::tr069, &image.tr069, image.tr069.updated);
}

} // namespace cfg::handlers
