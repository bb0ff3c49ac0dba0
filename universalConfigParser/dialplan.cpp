// Dial-plan rules of a profile: "config.VOIP.profile.profile_N.dialplan",
// one "dialplan_R" param per rule, R from 0 to 299.
#include "universalConfigParser/dialplan.h"

#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

#include <cctype>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace cfg::handlers {
namespace {

// The number written right after the first '_' of a text; false when there
// is no '_' or no digit follows it. Numbers too large for 64 bits saturate,
// so they never wrap back into a valid range.
bool number_after_underscore(const char *text, long long &out, const char *&after) noexcept
{
    const char *underscore = std::strchr(text, '_');
    if (underscore == nullptr || !std::isdigit(static_cast<unsigned char>(underscore[1])))
        return false;
    after = underscore + 1;
    out = std::strtoll(after, nullptr, 10);
    return true;
}

int shown(long long number) noexcept
{
    return number > INT_MAX ? INT_MAX : static_cast<int>(number);
}

void store_rule(profile_dialplan_cfg_t &plan, const parse::param &p, uint32_t max_ports) noexcept
{
    if (!p.is("dialplan"))
        return;
    long long rule = 0;
    const char *after = nullptr;
    if (!number_after_underscore(p.name(), rule, after))
        return;
    cfg_trace(4, "%s: dialplan number = %d (%s)", "all_parser", shown(rule), after);
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

int dialplan_profile_of(const parse::node &n) noexcept
{
    long long profile = 0;
    const char *after = nullptr;
    // The path patterns guarantee digits after "profile_"; a path without
    // them is treated like one without a '_'.
    if (!number_after_underscore(n.path, profile, after)) {
        cfg_trace(1, "Incorrect format of profile (%d)", __LINE__);
        return -1;
    }
    if (profile >= CFG_PROFILES) {
        cfg_trace(1, "%d: Incorrect number of profile [%d]", __LINE__, shown(profile));
        return -1;
    }
    return static_cast<int>(profile);
}

node_end dialplan(cfg_image_t &image, node &n)
{
    const int profile = dialplan_profile_of(n);
    if (profile < 0)
        return node_end::stop;
    profile_dialplan_cfg_t &plan = image.dialplans[profile];
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_rule(plan, p, image.max_ports);
    }
    return parse::finish_node(n, image.dialplans_updated[profile]);
}

} // namespace cfg::handlers
