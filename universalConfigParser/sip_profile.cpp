// SIP settings of a VoIP profile: "config.VOIP.profile.profile_N.sip".
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/profile_number.h"

namespace cfg::handlers {
node_end sip_profile(cfg_image_t &image, node &n)
{
    int32_t profile = 0;
    if (!profiles::profile_of_path(n, profile))
        return node_end::stop;
    profile_sip_cfg_t &record = image.profiles[profile].sip;
    while (parse::param p = parse::next_param(n)) {
        const keys::key *k = keys::find(keys::sip_profile, p.name_view());
        const parse::image_lock lock;
        if (k == nullptr)
            continue;
        // "proxy_N" / "regrar_N": a name without "_N" is server 0.
        const int32_t entry = k->count == 0 ? 0 : keys::entry_of(*k, p.name());
        if (entry >= 0)
            keys::store(*k, &record, p.value(), static_cast<unsigned>(entry));
    }
    return parse::finish_node(n, image.profiles_updated[profile]);
}

} // namespace cfg::handlers
