// MAC filter: mode before clients, index rules of "client_", the compacting
// writer and its round trip.
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

TEST(MacFilter, KeysAndIndexRules)
{
    // client: the client that changes, -1: none; expected: its text, or the mode when client is -1.
    struct row { const char *param; int client; const char *expected; } rows[] = {
        {"client_29 = 00:11:22:33:44:55", 29, "00:11:22:33:44:55"},
        {"client_x = 00:00:00:00:00:01", 0, "00:00:00:00:00:01"},  // no number reads as 0
        {"client_5 = 00:11:22:33:44:55:66:77", 5, "00:11:22:33:44:55"}, // cut to 17
        {"client_5 =", 5, ""}, {"client_30 = 00:11:22:33:44:55", -1, "black"}, {"client_-1 = 00:11:22:33:44:55", -1, "black"},
        {"client5 = 00:11:22:33:44:55", -1, "black"} /* no '_' */, {"mac_filter = white", -1, "black"},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        std::strcpy(image->mac_filter.mode, "black");
        std::strcpy(image->mac_filter.client[5], "old");
        mac_filter_cfg_t expected = image->mac_filter;
        if (r.client >= 0) {
            std::memset(expected.client[r.client], 0, sizeof expected.client[r.client]);
            std::strcpy(expected.client[r.client], r.expected);
        } else {
            std::memset(expected.mode, 0, sizeof expected.mode);
            std::strcpy(expected.mode, r.expected);
        }
        parse(*image, std::string("[config.Network.mac_filter]\n") + r.param + "\n");
        EXPECT_NE(image->mac_filter.updated, 0u) << r.param;
        for (int i = 0; i < CFG_MAC_CLIENTS; ++i)
            EXPECT_STREQ(image->mac_filter.client[i], expected.client[i]) << r.param << " client " << i;
        EXPECT_STREQ(image->mac_filter.mode, expected.mode) << r.param;
        EXPECT_TRUE(support::lock_is_free());
    }
}

TEST(MacFilter, WriterCompactsPadsAndRoundTrips)
{
    // clients: client_N params after mac_filter_mode, the last `empties` without a value.
    struct row { const char *what; std::vector<int> filled; uint8_t current, start; const char *mode; std::size_t clients, empties; } rows[] = {
        {"empty list", {}, 0, 0, "", 0, 0}, {"gaps, shrunk", {3, 29}, 2, 4, "white", 4, 2},
        {"current limits the walk", {1, 2, 3}, 1, 0, "black", 1, 0},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(r.what);
        auto image = fresh_image();
        std::strcpy(image->mac_filter.mode, r.mode);
        for (int slot : r.filled)
            std::snprintf(image->mac_filter.client[slot], 18, "00:00:00:00:00:%02d", slot);
        image->mac_filter.current = r.current;
        image->mac_filter.start = r.start;
        const auto out = support::write([&](uint8_t **c) { return sendMacsToCfgMngr(c, &image->mac_filter); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        ASSERT_FALSE(out.node().params.empty());
        // An empty mode goes out as the two quote characters.
        EXPECT_EQ(out.node().params[0].name, "mac_filter_mode");
        EXPECT_EQ(out.node().params[0].value, r.mode[0] != '\0' ? std::string(r.mode) : std::string("\"\""));
        const std::size_t sent = r.clients - r.empties;
        support::values_t want;
        for (std::size_t k = 0; k < sent; ++k)
            want.push_back(image->mac_filter.client[r.filled.at(k)]);
        cfgmsg::node clients = out.node();
        clients.params.erase(clients.params.begin());
        support::expect_numbered(clients, "config.Network.mac_filter", "client_", support::padded(want, r.clients));
        if (r.empties == 0)
            continue;
        // Round trip: renumbered from 0; the empty params clear stale clients.
        auto back = fresh_image();
        std::strcpy(back->mac_filter.client[sent], "stale");
        support::parse_back(*back, out);
        EXPECT_STREQ(back->mac_filter.mode, r.mode);
        for (std::size_t k = 0; k <= sent; ++k)
            EXPECT_STREQ(back->mac_filter.client[k], k < sent ? image->mac_filter.client[r.filled.at(k)] : "");
        EXPECT_EQ(back->mac_filter.current, sent);
    }
}

} // namespace
