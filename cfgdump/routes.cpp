// Writer of the static routes.
#include "cfgdump/numbered_params.h"
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_network.h"
#include "cfgmngr/list_words.h"

#include <cfgparser.h>

#include <string_view>

using cfg::dump::msg_writer;
using cfg::dump::numbered_name;
using cfg::lists::field_text;
using cfg::lists::filled;

namespace {

constexpr const char *route_key =
    cfg::dump::only_row(cfg::keys::routes_keys, cfg::routes::rows_routes_sendRoutesToCfgMngr)
        .wire_name()
        .data();

bool is_filled(const route_t &r) noexcept
{
    return filled(r.destination) && filled(r.netmask) && filled(r.gateway);
}

// "<destination> <netmask> <gateway>", and " .<extra>" when there is one.
struct route_value {
    char text[sizeof(route_t) + 8];
    explicit route_value(const route_t &r) noexcept
    {
        const std::string_view d = field_text(r.destination), m = field_text(r.netmask),
                               g = field_text(r.gateway), x = field_text(r.extra);
        const auto len = [](std::string_view s) { return static_cast<int>(s.size()); };
        if (x.empty())
            std::snprintf(text, sizeof text, "%.*s %.*s %.*s", len(d), d.data(), len(m), m.data(), len(g),
                          g.data());
        else
            std::snprintf(text, sizeof text, "%.*s %.*s %.*s .%.*s", len(d), d.data(), len(m), m.data(),
                          len(g), g.data(), len(x), x.data());
    }
};

} // namespace

extern "C" {

int sendRoutesToCfgMngr(uint8_t **cursor, const routes_cfg_t *routes) CFG_NOEXCEPT
{
    if (cfg::dump::refused("sendRoutesToCfgMngr", cursor, {routes}))
        return 0;
    msg_writer w(cursor, "sendRoutesToCfgMngr");
    w.node("config.Network.routes");
    uint32_t k = 0;
    for (int i = 0; i < CFG_ROUTES && k < routes->current; ++i) {
        if (!is_filled(routes->route[i]))
            continue;
        w.text(numbered_name(route_key, k).text, route_value(routes->route[i]).text);
        ++k;
    }
    if (routes->start > routes->current)
        cfg::dump::pad_empty(w, route_key, k, routes->start - routes->current);
    return w.finish();
}

} // extern "C"
