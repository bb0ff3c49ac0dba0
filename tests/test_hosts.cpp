// Static host table: index rules of "host_", word scanning and cutting, the
// compacting writer and its round trip.
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

void set_host(hosts_cfg_t &h, int i, const char *address, const char *name)
{
    std::strcpy(h.address[i], address);
    std::strcpy(h.name[i], name);
}

TEST(Hosts, IndexAndValueRules)
{
    const std::string long_address(20, '1');
    const std::string long_name(100, 'n');
    // param: one "name = value" line; entry: the entry that changes, -1: none.
    struct row { std::string param; int entry; const char *address, *name; } rows[] = {
        {"host_3 =", 3, "", ""}, {"host_3 = 10.0.0.1", 3, "10.0.0.1", "old"},            // one word keeps the name
        {"host_3 = \\t10.0.0.2 \\t\\tpc  extra", 3, "10.0.0.2", "pc"},
        {"host_3a = 10.0.0.3 a", 3, "10.0.0.3", "a"},           // trailing characters ignored
        {"hostname_3 = 10.0.0.4 b", 3, "10.0.0.4", "b"},        // "host" prefix, number after '_'
        {"host_19 = 10.0.0.19 last", 19, "10.0.0.19", "last"},
        {"host_3 = " + long_address + " " + long_name, 3, "111111111111111",
         "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn"},
        {"host_3 = \\t \\t", 3, "1.1.1.1", "old"},              // no word: nothing changes
        {"host_20 = 10.0.0.20 x", -1, nullptr, nullptr}, {"host_-1 = 10.0.0.9 x", -1, nullptr, nullptr},
        {"host_x = 10.0.0.9 x", -1, nullptr, nullptr}, {"host3 = 10.0.0.9 x", -1, nullptr, nullptr},
        {"host_4294967299 = 10.0.0.9 x", -1, nullptr, nullptr}, // must not wrap to 3
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        set_host(image->hosts, 3, "1.1.1.1", "old");
        hosts_cfg_t expected = image->hosts;
        if (r.entry >= 0) {
            std::memset(expected.address[r.entry], 0, sizeof expected.address[r.entry]);
            std::memset(expected.name[r.entry], 0, sizeof expected.name[r.entry]);
            std::strcpy(expected.address[r.entry], r.address);
            std::strcpy(expected.name[r.entry], r.name);
        }
        parse(*image, "[config.Network.hosts]\n" + r.param + "\n");
        EXPECT_NE(image->hosts.updated, 0u) << r.param;
        image->hosts.updated = 0;
        // The recount at the end of the message counts the filled entries.
        expected.current = expected.start = image->hosts.current;
        EXPECT_EQ(std::memcmp(&image->hosts, &expected, sizeof expected), 0)
            << r.param << " -> [" << image->hosts.address[3] << "] [" << image->hosts.name[3] << "]";
        EXPECT_TRUE(support::lock_is_free());
    }
}

TEST(Hosts, WriterCompactsPadsAndRoundTrips)
{
    // filled: slots holding a host; params: host_0.. written, the last `empties` without a value.
    struct row { const char *what; std::vector<int> filled; uint32_t current, start; std::size_t params, empties; } rows[] = {
        {"gaps, one removed", {0, 2, 5}, 3, 4, 4, 1}, {"nothing", {}, 0, 0, 0, 0}, {"start below current", {1, 19}, 2, 1, 2, 0},
        {"current limits the walk", {4, 7, 9}, 2, 2, 2, 0}, {"all removed", {}, 0, 3, 3, 3},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(r.what);
        auto image = fresh_image();
        for (int slot : r.filled)
            set_host(image->hosts, slot, ("10.0.0." + std::to_string(slot)).c_str(), ("h" + std::to_string(slot)).c_str());
        set_host(image->hosts, 12, "10.9.9.9", "");   // half-filled: never sent
        image->hosts.current = r.current;
        image->hosts.start = r.start;
        const auto out = support::write([&](uint8_t **c) { return sendHostsToCfgMngr(c, &image->hosts); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        const std::size_t sent = r.params - r.empties;
        support::values_t want;
        for (std::size_t k = 0; k < sent; ++k)
            want.push_back("10.0.0." + std::to_string(r.filled.at(k)) + " h" + std::to_string(r.filled.at(k)));
        support::expect_numbered(out.node(), "config.Network.hosts", "host_", support::padded(want, r.params));
        if (r.empties == 0)
            continue;
        // Round trip: renumbered from 0; the empty params clear a stale host.
        auto back = fresh_image();
        set_host(back->hosts, static_cast<int>(sent), "10.3.3.3", "stale");
        support::parse_back(*back, out);
        hosts_cfg_t want_back{};
        for (std::size_t k = 0; k < sent; ++k)
            set_host(want_back, static_cast<int>(k), image->hosts.address[r.filled.at(k)], image->hosts.name[r.filled.at(k)]);
        EXPECT_EQ(std::memcmp(back->hosts.address, want_back.address, sizeof want_back.address), 0);
        EXPECT_EQ(std::memcmp(back->hosts.name, want_back.name, sizeof want_back.name), 0);
        EXPECT_EQ(back->hosts.current, sent);
    }
}

} // namespace
