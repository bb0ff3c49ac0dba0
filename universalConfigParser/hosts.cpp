// Static host table: "config.Network.hosts", params host_0 .. host_19, each
// "<address> <name>".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/list_params.h"
#include "universalConfigParser/text_numbers.h"

namespace cfg::handlers {
namespace {

void store_host(hosts_cfg_t &r, int32_t i, const char *index_text, const char *value) noexcept
{
    if (value == nullptr) {
        lists::store_word(r.address[i], {});
        lists::store_word(r.name[i], {});
        return;
    }
    cfg_trace(4, "%s: host number = %d (%s)", "all_parser", i, index_text);
    // A value with one word changes the address and keeps the name.
    std::string_view rest(value);
    if (lists::scan_word(r.address[i], rest))
        lists::scan_word(r.name[i], rest);
}

} // namespace

node_end hosts(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        if (!p.is("host"))
            continue;
        // The entry number is read as "%d" after the first '_' of the name.
        const char *number = numbers::after_underscore(p.name());
        const int32_t i = numbers::entry_within(number, CFG_HOSTS, -1);
        if (i < 0)
            continue;
        const parse::image_lock lock;
        store_host(image.hosts, i, number, p.value());
    }
    return parse::finish_node(n, image.hosts.updated);
}

} // namespace cfg::handlers
