// Static routes: "config.Network.routes", params route_0 .. route_99, each
// "<destination> <netmask> <gateway> [.<extra>]".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/list_params.h"
#include "universalConfigParser/text_numbers.h"

namespace cfg::handlers {
namespace {

void store_route(route_t &r, const char *value) noexcept
{
    if (value == nullptr) {
        r = route_t{};
        return;
    }
    // Words are stored in order until the value runs out: fields without a
    // word keep their text, so three words leave `extra` as it was. The
    // optional fourth field follows a literal '.'.
    std::string_view rest(value);
    if (lists::scan_word(r.destination, rest) && lists::scan_word(r.netmask, rest) &&
        lists::scan_word(r.gateway, rest) && lists::take_char(rest, '.'))
        lists::scan_word(r.extra, rest);
}

} // namespace

node_end routes(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        if (!p.is("route"))
            continue;
        // The entry number is read as "%d" after the first '_' of the name.
        const int32_t i = numbers::entry_within(numbers::after_underscore(p.name()), CFG_ROUTES, -1);
        if (i < 0)
            continue;
        const parse::image_lock lock;
        store_route(image.routes.route[i], p.value());
    }
    return parse::finish_node(n, image.routes.updated);
}

} // namespace cfg::handlers
