// MAC address filter: "config.Network.mac_filter", the filter mode and
// clients client_0 .. client_29 (the rows in cfgmngr/keys_network.h).
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

namespace cfg::handlers {
namespace {

void store_mac_filter(mac_filter_cfg_t &r, const keys::key &k, const parse::param &p) noexcept
{
    if (k.count == 0)
        return keys::store(k, &r, p.value());
    // client_x reads as client 0, as a plain decimal conversion gives.
    const int32_t i = keys::entry_of(k, p.name());
    if (i >= 0)
        keys::store(k, &r, p.value(), static_cast<unsigned>(i));
}

} // namespace

node_end mac_filter(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const keys::key *k = keys::find(keys::mac_filter, p.name_view());
        const parse::image_lock lock;
        if (k != nullptr)
            store_mac_filter(image.mac_filter, *k, p);
    }
    return parse::finish_node(n, image.mac_filter.updated);
}

} // namespace cfg::handlers
