// Dial-plan rules of a profile: "config.VOIP.profile.profile_N.dialplan",
// one "dialplan_R" param per rule, R from 0 to 299.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/profile_number.h"

namespace cfg::handlers {
namespace {

void store_rule(profile_dialplan_cfg_t &plan, const parse::param &p, uint32_t max_ports) noexcept
{
    // The rule number: the decimal digits right after the first '_' (no
    // blank or sign before them); a name without them is dropped.
    const char *after = numbers::after_underscore(p.name());
    if (after == nullptr || *after < '0' || *after > '9')
        return;
    int64_t rule = 0;
    numbers::scan_entry(after, rule);
    cfg_trace(CFG_TRACE_DEBUG, "%s: dialplan number = %d (%s)", "all_parser", numbers::held_int32(rule),
              after);
    if (rule >= CFG_DIALPLAN_ENTRIES)
        return;
    dial_plan_t &entry = plan.entries[rule];
    if (numbers::absent(p.value())) {
        entry = dial_plan_t{};
        return;
    }
    // A refused rule text leaves the entry as it was.
    cfgpars_dial_plan_string_to_t(&entry, p.value(), max_ports);
}

} // namespace

node_end dialplan(cfg_image_t &image, node &n)
{
    int32_t profile = 0;
    if (!profiles::profile_of_path(n, profile))
        return node_end::stop;
    profile_dialplan_cfg_t &plan = image.dialplans[profile];
    while (parse::param p = parse::next_param(n)) {
        const bool is_rule = keys::find(keys::dialplan, p.name_view()) != nullptr;
        const parse::image_lock lock;
        if (is_rule)
            store_rule(plan, p, image.max_ports);
    }
    return parse::finish_node(n, image.dialplans_updated[profile]);
}

} // namespace cfg::handlers
