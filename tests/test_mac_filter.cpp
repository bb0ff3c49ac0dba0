// MAC filter: the compacting writer and its round trip (what the parser
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

TEST(MacFilter, WriterCompactsPadsAndRoundTrips)
{
    // clients: client_N params after mac_filter_mode, the last `empties` without a value.
    struct row {
        const char *what;
        std::vector<int> filled;
        uint8_t current, start;
        const char *mode;
        std::size_t clients, empties;
    } rows[] = {
        {"empty list", {}, 0, 0, "", 0, 0},
        {"gaps, shrunk", {3, 29}, 2, 4, "white", 4, 2},
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
        const auto out =
            support::write([&](uint8_t **c) { return sendMacsToCfgMngr(c, &image->mac_filter); });
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
        support::expect_numbered(clients, "config.Network.mac_filter", "client_",
                                 support::padded(want, r.clients));
        if (r.empties == 0)
            continue;
        // Round trip: renumbered from 0; the empty params clear stale clients.
        auto back = fresh_image();
        std::strcpy(back->mac_filter.client[sent], "stale");
        support::parse_back(*back, out);
        EXPECT_STREQ(back->mac_filter.mode, r.mode);
        for (std::size_t k = 0; k <= sent; ++k)
            EXPECT_STREQ(back->mac_filter.client[k],
                         k < sent ? image->mac_filter.client[r.filled.at(k)] : "");
        EXPECT_EQ(back->mac_filter.current, sent);
    }
}

} // namespace
