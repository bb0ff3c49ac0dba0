// Port ranges of the voice services: "config.VOIP.range". The fields live in
// the H.323 record and share its time-stamp.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"

namespace cfg::handlers {

node_end range(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::range_ports, &image.h323, image.h323.updated);
}

} // namespace cfg::handlers
