// Static routes: word scanning with the optional ".extra", values that keep
// earlier fields, the compacting writer and its round trip.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

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

TEST(Routes, ValueAndIndexRules)
{
    struct row { const char *param; int entry; route_t expected; } rows[] = { // entry: the route that changes, -1: none
        {"route_0 = 10.0.0.0 255.0.0.0 192.168.1.1 .eth1", 0, {"10.0.0.0", "255.0.0.0", "192.168.1.1", "eth1"}},
        {"route_0 = 10.0.0.0 255.0.0.0 192.168.1.1 eth1", 0, {"10.0.0.0", "255.0.0.0", "192.168.1.1", "old"}},
        {"route_0 = 10.0.0.0\\t255.0.0.0  192.168.1.1 . eth2", 0, {"10.0.0.0", "255.0.0.0", "192.168.1.1", "eth2"}},
        {"route_0 = 10.0.0.0 255.0.0.0 192.168.1.1 .", 0, {"10.0.0.0", "255.0.0.0", "192.168.1.1", "old"}},
        {"route_0 = 10.0.0.0 255.0.0.0", 0, {"10.0.0.0", "255.0.0.0", "3.3.3.3", "old"}},
        {"route_0 = 10.0.0.0", 0, {"10.0.0.0", "2.2.2.2", "3.3.3.3", "old"}}, {"route_0 =", 0, {"", "", "", ""}},
        {"route_0 = \"\"", 0, {"", "", "", ""}},
        {"route_0 = 1234567890abcdefXYZ 255.255.255.255x 1.2.3.4 .interface9", 0,
         {"1234567890abcde", "255.255.255.255", "1.2.3.4", "interfa"}},
        {"route_99 = 1.0.0.0 255.0.0.0 1.1.1.1 .x", 99, {"1.0.0.0", "255.0.0.0", "1.1.1.1", "x"}},
        {"route_7z = 7.0.0.0 255.0.0.0 7.7.7.7", 7, {"7.0.0.0", "255.0.0.0", "7.7.7.7", ""}},
        {"route_100 = 1.0.0.0 255.0.0.0 1.1.1.1", -1, {}}, {"route_x = 1.0.0.0 255.0.0.0 1.1.1.1", -1, {}},
        {"route0 = 1.0.0.0 255.0.0.0 1.1.1.1", -1, {}},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        set_route(image->routes.route[0], "1.1.1.1", "2.2.2.2", "3.3.3.3", "old");
        routes_cfg_t expected = image->routes;
        if (r.entry >= 0)
            expected.route[r.entry] = r.expected;
        parse(*image, std::string("[config.Network.routes]\n") + r.param + "\n");
        EXPECT_NE(image->routes.updated, 0u) << r.param;
        for (int i = 0; i < CFG_ROUTES; ++i)
            EXPECT_EQ(text(image->routes.route[i]), text(expected.route[i])) << r.param << " route " << i;
        EXPECT_TRUE(support::lock_is_free());
    }
}

TEST(Routes, WriterCompactsPadsAndRoundTrips)
{
    auto image = fresh_image();
    set_route(image->routes.route[5], "10.0.0.0", "255.0.0.0", "192.168.1.1", "eth1");
    set_route(image->routes.route[40], "10.1.0.0", "255.255.0.0", "192.168.1.2", "");
    set_route(image->routes.route[60], "10.2.0.0", "", "192.168.1.3", "x");   // not filled
    set_route(image->routes.route[99], "10.3.0.0", "255.255.0.0", "192.168.1.4", "");
    image->routes.current = 3;
    image->routes.start = 6;
    const auto out = support::write([&](uint8_t **c) { return sendRoutesToCfgMngr(c, &image->routes); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    support::expect_numbered(out.node(), "config.Network.routes", "route_",
                             support::padded({"10.0.0.0 255.0.0.0 192.168.1.1 .eth1", "10.1.0.0 255.255.0.0 192.168.1.2",
                                              "10.3.0.0 255.255.0.0 192.168.1.4"}, 6));
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
