// Static host table: the compacting writer and its round trip (what the
// parser stores: tests/cases/network.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

using support::fresh_image;

void set_host(hosts_cfg_t &h, int i, const char *address, const char *name)
{
    std::strcpy(h.address[i], address);
    std::strcpy(h.name[i], name);
}

TEST(Hosts, WriterCompactsPadsAndRoundTrips)
{
    // filled: slots holding a host; params: host_0.. written, the last `empties` without a value.
    struct row {
        const char *what;
        std::vector<int> filled;
        uint32_t current, start;
        std::size_t params, empties;
    } rows[] = {
        {"gaps, one removed", {0, 2, 5}, 3, 4, 4, 1},
        {"nothing", {}, 0, 0, 0, 0},
        {"start below current", {1, 19}, 2, 1, 2, 0},
        {"current limits the walk", {4, 7, 9}, 2, 2, 2, 0},
        {"all removed", {}, 0, 3, 3, 3},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(r.what);
        auto image = fresh_image();
        for (int slot : r.filled)
            set_host(image->hosts, slot, ("10.0.0." + std::to_string(slot)).c_str(),
                     ("h" + std::to_string(slot)).c_str());
        set_host(image->hosts, 12, "10.9.9.9", ""); // half-filled: never sent
        image->hosts.current = r.current;
        image->hosts.start = r.start;
        const auto out = support::write([&](uint8_t **c) { return sendHostsToCfgMngr(c, &image->hosts); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        const std::size_t sent = r.params - r.empties;
        support::values_t want;
        for (std::size_t k = 0; k < sent; ++k)
            want.push_back("10.0.0." + std::to_string(r.filled.at(k)) + " h" +
                           std::to_string(r.filled.at(k)));
        support::expect_numbered(out.node(), "config.Network.hosts", "host_",
                                 support::padded(want, r.params));
        if (r.empties == 0)
            continue;
        // Round trip: renumbered from 0; the empty params clear a stale host.
        auto back = fresh_image();
        set_host(back->hosts, static_cast<int>(sent), "10.3.3.3", "stale");
        support::parse_back(*back, out);
        hosts_cfg_t want_back{};
        for (std::size_t k = 0; k < sent; ++k)
            set_host(want_back, static_cast<int>(k), image->hosts.address[r.filled.at(k)],
                     image->hosts.name[r.filled.at(k)]);
        EXPECT_EQ(std::memcmp(back->hosts.address, want_back.address, sizeof want_back.address), 0);
        EXPECT_EQ(std::memcmp(back->hosts.name, want_back.name, sizeof want_back.name), 0);
        EXPECT_EQ(back->hosts.current, sent);
    }
}

} // namespace
