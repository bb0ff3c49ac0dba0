// Static routes: "config.Network.routes", params route_0 .. route_99, each
// "<destination> <netmask> <gateway> [.<extra>]" (the row in
// cfgmngr/keys_network.h).
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

namespace cfg::handlers {

node_end routes(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const keys::key *k = keys::find(keys::routes, p.name_view());
        if (k == nullptr)
            continue;
        const int32_t i = keys::entry_of(*k, p.name());
        if (i < 0)
            continue;
        const parse::image_lock lock;
        keys::store(*k, &image.routes, p.value(), static_cast<unsigned>(i));
    }
    return parse::finish_node(n, image.routes.updated);
}

} // namespace cfg::handlers
