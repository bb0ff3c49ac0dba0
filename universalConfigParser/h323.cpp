// H.323 signalling settings: "config.VOIP.h323".
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"

namespace cfg::handlers {

node_end h323(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::h323, &image.h323, image.h323.updated);
}

} // namespace cfg::handlers
