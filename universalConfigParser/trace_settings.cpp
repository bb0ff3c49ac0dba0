// Logging settings of the voice applications: "config.VOIP.trace". These
// are the application's settings; the library's own trace does not use them.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"

namespace cfg::handlers {

node_end trace_settings(cfg_image_t &image, node &n)
{
    return parse::keyed_node(n, keys::trace, &image.trace, image.trace.updated);
}

} // namespace cfg::handlers
