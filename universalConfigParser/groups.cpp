// Hunt groups: "config.VOIP.groups.group_N" (subscriber ports) and
// "config.VOIP.groups.fxo_group_N" (line ports), N = 0..31.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

#include <cstring>
#include <iterator>
#include <string_view>

namespace cfg::handlers {
namespace {

void store_ports(const cfg_image_t &image, group_cfg_t &g, const char *value) noexcept
{
    g.port_count = 0;
    if (numbers::absent(value)) {
        std::memset(g.port_list, 0, sizeof g.port_list);
        return;
    }
    // A refused list leaves the group without ports.
    cfgpars_group_ports_string_to_t(&g, value, &image);
}

// `v` is null for a param sent as "" (an empty value).
void store_group(const cfg_image_t &image, group_cfg_t &g, const parse::param &p,
                 const char *v) noexcept
{
    if (p.is("enabled"))              return store::checkbox(g.enabled, v);
    if (p.is("transmit_number"))      return store::checkbox(g.transmit_number, v);
    if (p.is("dont_transmit_prefix")) return store::checkbox(g.dont_transmit_prefix, v);
    if (p.is("fxo_call_busy"))        return store::checkbox(g.fxo_call_busy, v);
    if (p.is("type"))                 return store::digit(g.type, v, 0, 4, 0);
    if (p.is("busy"))                 return store::digit(g.busy, v, 0, 1, 0);
    if (p.is("phone"))                return store::text(g.phone, v);
    if (p.is("timeout"))              return store::digit(g.timeout, v, 5, 120, 0);
    if (p.is("sip_port"))             return store::digit(g.sip_port, v, 0, 65535, 0);
    if (p.is("name"))                 return store::text(g.name, v);
    if (p.is("password"))             return store::text(g.password, v);
    if (p.is("ports"))                return store_ports(image, g, v);
    if (p.is("profile_id"))           return store::digit(g.profile_id, v, 0, 7, 0);
}

} // namespace

node_end groups(cfg_image_t &image, node &n)
{
    const std::string_view path(n.path);
    groups_cfg_t &list = path.starts_with("config.VOIP.groups.fxo_group") ? image.fxo_groups
                                                                          : image.groups;
    // The group number follows the last "_" (the rest of the path).
    const char *number = numbers::after_underscore(n.path, numbers::underscore::last);
    const int32_t g = numbers::entry_number(number);
    cfg_trace(4, "%s: group_number = %s  actual_group = %d", "all_parser",
              number == nullptr ? "" : number, g);

    // A path without a group number, or with one outside 0..31, names no
    // group: the node is reported, its params are read and dropped, and the
    // message goes on with the next node (nothing is stored, not even the
    // time-stamp).
    if (g < 0 || g >= static_cast<int32_t>(std::size(list.entries))) {
        cfg_trace(1, "%s: invalid group entry number in %s (valid %d..%d)", "all_parser", n.path,
                  0, static_cast<int>(std::size(list.entries)) - 1);
        return parse::skip_unknown(n);
    }
    group_cfg_t &group = list.entries[g];

    {
        const parse::image_lock lock;
        group.valid = 0;
    }
    if (n.param_count == 0) {
        const parse::image_lock lock;
        group = group_cfg_t{};
    }
    // Read without turning "" into no value: a param without a value leaves
    // the group alone, while "" marks the group valid and empties the field.
    while (parse::param p = parse::next_param(n, false)) {
        const char *value = p.value();
        if (numbers::absent(value))
            continue;
        if (std::strcmp(value, "\"\"") == 0)
            value = nullptr;
        const parse::image_lock lock;
        group.valid = 1;
        store_group(image, group, p, value);
    }
    return parse::finish_node(n, list.updated);
}

} // namespace cfg::handlers
