// Recount of every tracked list: counts the filled entries into `current`
// and copies each count into `start`, which clears every update marker.
#include "universalConfigParser/list_wake.h"
#include "universalConfigParser/node_params.h"

#include <cfgparser.h>

namespace cfg::recount {
namespace {

bool filled(const char *text) noexcept
{
    return text[0] != '\0';
}

// What makes an entry of each list count as filled.
bool is_filled(const route_t &e) noexcept
{
    return filled(e.destination) && filled(e.netmask) && filled(e.gateway);
}
bool is_filled(const group_cfg_t &e) noexcept
{
    return e.valid != 0;
}
bool is_filled(const dial_plan_t &e) noexcept
{
    return e.type != 0;
}
bool is_filled(const firewall_rule_t &e) noexcept
{
    return e.valid != 0;
}

template <typename Entry, std::size_t N>
uint32_t count(const Entry (&entries)[N]) noexcept
{
    uint32_t n = 0;
    for (const Entry &e : entries)
        n += is_filled(e) ? 1u : 0u;
    return n;
}

uint32_t count_hosts(const hosts_cfg_t &h) noexcept
{
    uint32_t n = 0;
    for (int i = 0; i < CFG_HOSTS; ++i)
        n += (filled(h.name[i]) && filled(h.address[i])) ? 1u : 0u;
    return n;
}

uint8_t count_macs(const mac_filter_cfg_t &m) noexcept
{
    uint8_t n = 0;
    for (const auto &client : m.client)
        n = static_cast<uint8_t>(n + (filled(client) ? 1 : 0));
    return n;
}

uint32_t count_limits(const limit_cfg_t &l) noexcept
{
    uint32_t n = 0;
    for (int i = 0; i < CFG_LIMITS; ++i)
        n += (filled(l.target[i]) && l.value[i] > 0) ? 1u : 0u;
    return n;
}

void count_modifiers(modifier_cfg_t (&modifiers)[CFG_MODIFIERS]) noexcept
{
    for (int m = 0; m < CFG_MODIFIERS; ++m) {
        modifier_cfg_t &mod = modifiers[m];
        mod.count = 0;
        for (int r = 0; r < CFG_MODIFIER_RULES; ++r) {
            const mod_rule_t &rule = mod.rules[r];
            if (!filled(rule.word1))
                continue;
            cfg_trace(CFG_TRACE_INFO, "MOD_RULE %d.%d: %s %s %s", m, r, rule.word1, rule.word2, rule.word3);
            ++mod.count;
        }
    }
}

void recount(cfg_image_t &im) noexcept
{
    static constexpr const char *self = "recalculate_start_and_current_after_timeout";

    im.routes.current = count(im.routes.route);
    im.groups.current = count(im.groups.entries);
    im.fxo_groups.current = count(im.fxo_groups.entries);
    for (profile_dialplan_cfg_t &d : im.dialplans)
        d.current = count(d.entries);
    im.hosts.current = count_hosts(im.hosts);
    im.mac_filter.current = count_macs(im.mac_filter);
    im.limits.current = count_limits(im.limits);
    im.firewall.current = count(im.firewall.rules);
    count_modifiers(im.modifiers);

    cfg_trace(CFG_TRACE_DEBUG, "%s: MAX port=%d group=%d host=%d macs=%d route=%d limit=%d rules=%d", self,
              static_cast<int>(im.max_ports), static_cast<int>(im.groups.current),
              static_cast<int>(im.hosts.current), static_cast<int>(im.mac_filter.current),
              static_cast<int>(im.routes.current), static_cast<int>(im.limits.current),
              static_cast<int>(im.firewall.current));
    for (int p = 0; p < CFG_PROFILES; ++p) {
        cfg_trace(CFG_TRACE_DEBUG, "%s: profile [%d] MAX dialplan %d", self, p,
                  static_cast<int>(im.dialplans[p].current));
        im.dialplans[p].start = im.dialplans[p].current;
    }
    im.limits.recalculated = cfgpars_get_monotonic_now_time();

    im.hosts.start = im.hosts.current;
    im.mac_filter.start = im.mac_filter.current;
    im.routes.start = im.routes.current;
    im.limits.start = im.limits.current;
    im.groups.start = im.groups.current;
    im.fxo_groups.start = im.fxo_groups.current;
    im.firewall.start = im.firewall.current;
}

} // namespace
} // namespace cfg::recount

// Every marker is clear once the lock is released: the threads waiting for
// a list are woken then, not at the end of their pause.
extern "C" void recalculate_start_and_current_after_timeout(cfg_image_t *image) CFG_NOEXCEPT
{
    {
        const cfg::parse::image_lock lock;
        if (image == nullptr)
            return;
        cfg::recount::recount(*image);
    }
    cfg::wake::recounted();
}
