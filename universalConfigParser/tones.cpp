// Call-progress tones played by the analog ports: "config.VOIP.tones". The
// frequency and cadence texts are kept as they come.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"

namespace cfg::handlers {

node_end tones(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::tones, &image.tones, image.tones.updated);
}

} // namespace cfg::handlers
