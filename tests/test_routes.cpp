// Static routes: the compacting writer and its round trip (what the parser
// stores: tests/cases/network.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

using support::fresh_image;

void set_route(route_t &r, const char *d, const char *m, const char *g, const char *x)
{
    r = route_t{};
    std::strcpy(r.destination, d);
    std::strcpy(r.netmask, m);
    std::strcpy(r.gateway, g);
    std::strcpy(r.extra, x);
}

std::string text(const route_t &r)
{
    return std::string(r.destination) + "|" + r.netmask + "|" + r.gateway + "|" + r.extra;
}

TEST(Routes, WriterCompactsPadsAndRoundTrips)
{
    auto image = fresh_image();
    set_route(image->routes.route[5], "10.0.0.0", "255.0.0.0", "192.168.1.1", "eth1");
    set_route(image->routes.route[40], "10.1.0.0", "255.255.0.0", "192.168.1.2", "");
    set_route(image->routes.route[60], "10.2.0.0", "", "192.168.1.3", "x"); // not filled
    set_route(image->routes.route[99], "10.3.0.0", "255.255.0.0", "192.168.1.4", "");
    image->routes.current = 3;
    image->routes.start = 6;
    const auto out = support::write([&](uint8_t **c) { return sendRoutesToCfgMngr(c, &image->routes); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    support::expect_numbered(
        out.node(), "config.Network.routes", "route_",
        support::padded({"10.0.0.0 255.0.0.0 192.168.1.1 .eth1", "10.1.0.0 255.255.0.0 192.168.1.2",
                         "10.3.0.0 255.255.0.0 192.168.1.4"},
                        6));
    // Round trip: the routes come back renumbered from 0, the empty params clear the rest.
    auto back = fresh_image();
    set_route(back->routes.route[3], "9.9.9.9", "9.9.9.9", "9.9.9.9", "stale");
    support::parse_back(*back, out);
    int i = 0;
    for (int from : {5, 40, 99})
        EXPECT_EQ(text(back->routes.route[i++]), text(image->routes.route[from])) << from;
    EXPECT_EQ(text(back->routes.route[3]), "|||");
    EXPECT_EQ(back->routes.current, 3u);

    image->routes.start = image->routes.current = 0;
    const auto none = support::write([&](uint8_t **c) { return sendRoutesToCfgMngr(c, &image->routes); });
    EXPECT_TRUE(none.node().params.empty());
}

} // namespace
