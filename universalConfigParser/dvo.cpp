// Service codes of the supplementary services: "config.VOIP.dvo". Each code
// keeps at most 3 characters; no value clears it.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"

namespace cfg::handlers {

node_end dvo(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::dvo, &image.dvo, image.dvo.updated);
}

} // namespace cfg::handlers
