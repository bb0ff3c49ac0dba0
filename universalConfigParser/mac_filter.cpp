// MAC address filter: "config.Network.mac_filter", the filter mode and
// clients client_0 .. client_29.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

void store_mac_filter(mac_filter_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("mac_filter_mode")) return store::text(r.mode, v);
    if (p.is("client")) {
        // client_x reads as client 0, as a plain decimal conversion gives.
        const int32_t i =
            numbers::entry_within(numbers::after_underscore(p.name()), CFG_MAC_CLIENTS, 0);
        if (i >= 0)
            store::text(r.client[i], v);
    }
}

} // namespace

node_end mac_filter(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_mac_filter(image.mac_filter, p);
    }
    return parse::finish_node(n, image.mac_filter.updated);
}

} // namespace cfg::handlers
