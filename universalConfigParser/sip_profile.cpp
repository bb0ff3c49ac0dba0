// SIP settings of a VoIP profile: "config.VOIP.profile.profile_N.sip".
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/profile_number.h"

namespace cfg::handlers {
namespace {

// The server of "proxy_N" / "regrar_N": N after the key and "_"; a name
// without it is server 0. -1 (the param is dropped) outside the server table.
int32_t server_entry(const parse::param &p, const keys::key &k) noexcept
{
    const char *rest = p.name() + k.name.size();
    return rest[0] == '_' ? numbers::entry_within(rest + 1, CFG_SIP_SERVERS, 0) : 0;
}

} // namespace

node_end sip_profile(cfg_image_t &image, node &n)
{
    int32_t profile = 0;
    if (!profiles::profile_of_path(n.path, profile))
        return node_end::stop;
    profile_sip_cfg_t &record = image.profiles[profile].sip;
    while (parse::param p = parse::next_param(n)) {
        const keys::key *k = keys::find(keys::sip_profile, p.name_view());
        const parse::image_lock lock;
        if (k == nullptr)
            continue;
        const int32_t entry = k->count == 0 ? 0 : server_entry(p, *k);
        if (entry >= 0)
            keys::store(*k, &record, p.value(), static_cast<unsigned>(entry));
    }
    return parse::finish_node(n, image.profiles_updated[profile]);
}

} // namespace cfg::handlers
