// Static host table: "config.Network.hosts", params host_0 .. host_19, each
// "<address> <name>" (the row in cfgmngr/keys_network.h).
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

namespace cfg::handlers {

node_end hosts(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const keys::key *k = keys::find(keys::hosts, p.name_view());
        if (k == nullptr)
            continue;
        const char *number = numbers::after_underscore(p.name()); // for the trace
        const int32_t i = keys::entry_of(*k, p.name());
        if (i < 0)
            continue;
        const parse::image_lock lock;
        if (p.value() != nullptr)
            cfg_trace(CFG_TRACE_DEBUG, "%s: host number = %d (%s)", "all_parser", i, number);
        keys::store(*k, &image.hosts, p.value(), static_cast<unsigned>(i));
    }
    return parse::finish_node(n, image.hosts.updated);
}

} // namespace cfg::handlers
