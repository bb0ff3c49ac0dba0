// Gateway-wide voice settings: "config.VOIP.general".
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"

namespace cfg::handlers {

node_end general(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::general, &image.general, image.general.updated);
}

} // namespace cfg::handlers
