// Codec and media settings: the codecs node of a VoIP profile
// ("config.VOIP.profile.profile_N.codecs") and the node of a dial-plan
// profile ("config.VOIP.dialplan_profiles.dialplan_profileN"). Both fill a
// codecs_cfg_t from the same key table.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/profile_number.h"

namespace cfg::handlers {

node_end profile_codecs(cfg_image_t &image, node &n)
{
    int32_t profile = 0;
    if (!profiles::profile_of_path(n, profile))
        return node_end::stop;
    cfg_trace(CFG_TRACE_INFO, "%d: Valid number of profile [%d]", __LINE__, profile);
    return parse::keyed_node(n, keys::codecs, &image.profiles[profile].codecs,
                             image.profiles_updated[profile]);
}

node_end dialplan_profile(cfg_image_t &image, node &n)
{
    const int32_t number = profiles::captured_number(n, 0, CFG_DIALPLAN_PROFILES);
    if (number < 0 || number >= CFG_DIALPLAN_PROFILES) {
        cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect number of dialplan profile [%d]", __LINE__, number);
        return node_end::stop;
    }
    cfg_trace(CFG_TRACE_INFO, "%d: Valid number of dialplan profile [%d]", __LINE__, number);
    return parse::keyed_node(n, keys::codecs, &image.dialplan_profiles[number],
                             image.dialplan_profiles_updated[number]);
}

} // namespace cfg::handlers
