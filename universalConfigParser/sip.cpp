// SIP settings common to the whole gateway: "config.VOIP.sip".
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"

namespace cfg::handlers {

node_end common_sip(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::sip, &image.sip, image.sip.updated);
}

} // namespace cfg::handlers
