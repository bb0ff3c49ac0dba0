// Alert-info cadences of a VoIP profile:
// "config.VOIP.profile.profile_N.sip_cadences.sip_cadence_M".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/profile_number.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

void store_sip_cadence(sip_cadence_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("name"))      return store::text(r.name, v);
    if (p.is("ring_rule")) return store::text(r.ring_rule, v);
}

} // namespace

node_end sip_cadence(cfg_image_t &image, node &n)
{
    // The pattern captures the profile (group 1) and the cadence (group 2).
    const int32_t found = n.matches[parse::sip_cadence_pattern];
    char *const *groups = n.substrings[parse::sip_cadence_pattern];
    const int32_t profile = profiles::captured_number(found, groups, 1, -1);
    const int32_t cadence = profiles::captured_number(found, groups, 2, -1);
    if (profile < 0 || profile >= CFG_PROFILES) {
        cfg_trace(1, "%d: Incorrect number of profile [%d]", __LINE__, profile);
        return node_end::stop;
    }
    if (cadence < 0 || cadence >= CFG_SIP_CADENCES) {
        cfg_trace(1, "%d: Incorrect number of sip cadence [%d]", __LINE__, cadence);
        return node_end::stop;
    }

    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_sip_cadence(image.profiles[profile].sip.sip_cadences[cadence], p);
    }
    return parse::finish_node(n, image.profiles_updated[profile]);
}

} // namespace cfg::handlers
