// Hunt groups: "config.VOIP.groups.group_N" (subscriber ports) and
// "config.VOIP.groups.fxo_group_N" (line ports), N = 0..31.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/text_numbers.h"

#include <cstring>
#include <iterator>

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

node_end fill(cfg_image_t &image, groups_cfg_t &list, node &n) noexcept
{
    // The group number follows the last "_" (the rest of the path).
    const routes::path_number found = n.number();
    const char *number = found.text;
    const auto g = static_cast<int32_t>(found.value);
    cfg_trace(CFG_TRACE_DEBUG, "%s: group_number = %s  actual_group = %d", "all_parser",
              number == nullptr ? "" : number, g);

    // A path without a group number, or with one outside 0..31, names no
    // group: the node is reported, its params are read and dropped, and the
    // message goes on with the next node (nothing is stored, not even the
    // time-stamp).
    if (g < 0 || g >= static_cast<int32_t>(std::size(list.entries))) {
        cfg_trace(CFG_TRACE_ERROR, "%s: invalid group entry number in %s (valid %d..%d)", "all_parser",
                  n.path, 0, static_cast<int>(std::size(list.entries)) - 1);
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
        const keys::key *k = keys::find(keys::groups, p.name_view());
        const parse::image_lock lock;
        group.valid = 1;
        if (k == nullptr)
            continue;
        if (k->special == keys::rule::group_ports)
            store_ports(image, group, value);
        else
            keys::store(*k, &group, value);
    }
    return parse::finish_node(n, list.updated);
}

} // namespace

node_end groups(cfg_image_t &image, node &n)
{
    return fill(image, image.groups, n);
}

node_end fxo_groups(cfg_image_t &image, node &n)
{
    return fill(image, image.fxo_groups, n);
}

} // namespace cfg::handlers
