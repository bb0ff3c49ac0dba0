// Not handled yet: the node is read and dropped like an unknown path.
#include "universalConfigParser/handlers.h"

namespace cfg::handlers {

node_end cadences(cfg_image_t &, node &n)
{
    return parse::skip_unknown(n);
}

}
