// Alert-info cadences of a VoIP profile:
// "config.VOIP.profile.profile_N.sip_cadences.sip_cadence_M".
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/profile_number.h"

namespace cfg::handlers {

node_end sip_cadence(cfg_image_t &image, node &n)
{
    // The pattern captures the profile and the cadence.
    const int32_t profile = profiles::captured_number(n, 0, -1);
    const int32_t cadence = profiles::captured_number(n, 1, -1);
    if (profile < 0 || profile >= CFG_PROFILES) {
        cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect number of profile [%d]", __LINE__, profile);
        return node_end::stop;
    }
    if (cadence < 0 || cadence >= CFG_SIP_CADENCES) {
        cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect number of sip cadence [%d]", __LINE__, cadence);
        return node_end::stop;
    }
    return parse::keyed_node(n, keys::sip_cadence, &image.profiles[profile].sip.sip_cadences[cadence],
                             image.profiles_updated[profile]);
}

} // namespace cfg::handlers
