// Regular-expression dial plan of a profile:
// "config.VOIP.profile.profile_N.regexprd". The expression is stored as text,
// never compiled here. It shares the profile's dial-plan time-stamp.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/profile_number.h"

namespace cfg::handlers {

node_end regexprd(cfg_image_t &image, node &n)
{
    int32_t profile = 0;
    if (!profiles::profile_of_path(n, profile))
        return node_end::stop;
    return parse::keyed_node(n, keys::regexprd, &image.dialplans[profile], image.dialplans_updated[profile]);
}

} // namespace cfg::handlers
