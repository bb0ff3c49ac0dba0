// Regular-expression dial plan of a profile:
// "config.VOIP.profile.profile_N.regexprd". The expression is stored as text,
// never compiled here. It shares the profile's dial-plan time-stamp.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/profile_number.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

void store_regexprd(profile_dialplan_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("regex_on"))    return store::checkbox(r.regex_on, v);
    if (p.is("proto"))       return store::text(r.proto, v);
    if (p.is("start_timer")) return store::digit(r.start_timer, v, 10, 300, 300);
    if (p.is("regex"))       return store::text(r.regex, v);
}

} // namespace

node_end regexprd(cfg_image_t &image, node &n)
{
    int32_t profile = 0;
    if (!profiles::profile_of_path(n.path, profile))
        return node_end::stop;
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_regexprd(image.dialplans[profile], p);
    }
    return parse::finish_node(n, image.dialplans_updated[profile]);
}

} // namespace cfg::handlers
