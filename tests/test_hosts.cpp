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
    struct row {
        std::string param;       // one "name = value" line
        int entry;               // entry that changes, -1: none
        const char *address;
        const char *name;
    } rows[] = {
        {"host_3 =", 3, "", ""},
        {"host_3 = 10.0.0.1", 3, "10.0.0.1", "old"},            // one word keeps the name
        {"host_3 = \\t10.0.0.2 \\t\\tpc  extra", 3, "10.0.0.2", "pc"},
        {"host_3a = 10.0.0.3 a", 3, "10.0.0.3", "a"},           // trailing characters ignored
        {"hostname_3 = 10.0.0.4 b", 3, "10.0.0.4", "b"},        // "host" prefix, number after '_'
        {"host_19 = 10.0.0.19 last", 19, "10.0.0.19", "last"},
        {"host_3 = " + long_address + " " + long_name, 3, "111111111111111",
         "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn"},
        {"host_3 = \\t \\t", 3, "1.1.1.1", "old"},              // no word: nothing changes
        {"host_20 = 10.0.0.20 x", -1, nullptr, nullptr},
        {"host_-1 = 10.0.0.9 x", -1, nullptr, nullptr},
        {"host_x = 10.0.0.9 x", -1, nullptr, nullptr},
        {"host3 = 10.0.0.9 x", -1, nullptr, nullptr},
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
    struct row {
        const char *what;
        std::vector<int> filled;  // slots holding a host
        uint32_t current, start;
        std::vector<std::string> names;
        int empties;              // trailing params without a value
    } rows[] = {
        {"gaps, one removed", {0, 2, 5}, 3, 4, {"host_0", "host_1", "host_2", "host_3"}, 1},
        {"nothing", {}, 0, 0, {}, 0},
        {"start below current", {1, 19}, 2, 1, {"host_0", "host_1"}, 0},
        {"current limits the walk", {4, 7, 9}, 2, 2, {"host_0", "host_1"}, 0},
        {"all removed", {}, 0, 3, {"host_0", "host_1", "host_2"}, 3},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        for (int slot : r.filled)
            set_host(image->hosts, slot, ("10.0.0." + std::to_string(slot)).c_str(),
                     ("h" + std::to_string(slot)).c_str());
        set_host(image->hosts, 12, "10.9.9.9", "");   // half-filled: never sent
        image->hosts.current = r.current;
        image->hosts.start = r.start;
        const auto out = support::write([&](uint8_t **c) { return sendHostsToCfgMngr(c, &image->hosts); });
        ASSERT_EQ(out.message.nodes.size(), 1u) << r.what;
        EXPECT_EQ(out.node().path, "config.Network.hosts");
        EXPECT_EQ(support::names(out.node()), r.names) << r.what;
        const std::size_t sent = r.names.size() - static_cast<std::size_t>(r.empties);
        for (std::size_t k = 0; k < out.node().params.size(); ++k) {
            const auto &value = out.node().params[k].value;
            if (k < sent) {
                const int slot = r.filled.at(k);
                EXPECT_EQ(value, "10.0.0." + std::to_string(slot) + " h" + std::to_string(slot)) << r.what;
            } else {
                EXPECT_EQ(value, std::nullopt) << r.what << " param " << k;
            }
        }
        if (r.empties == 0)
            continue;
        // Round trip: renumbered from 0; the empty params clear a stale host.
        auto back = fresh_image();
        set_host(back->hosts, static_cast<int>(sent), "10.3.3.3", "stale");
        support::parse_back(*back, out);
        hosts_cfg_t want{};
        for (std::size_t k = 0; k < sent; ++k)
            set_host(want, static_cast<int>(k), image->hosts.address[r.filled.at(k)], image->hosts.name[r.filled.at(k)]);
        EXPECT_EQ(std::memcmp(back->hosts.address, want.address, sizeof want.address), 0) << r.what;
        EXPECT_EQ(std::memcmp(back->hosts.name, want.name, sizeof want.name), 0) << r.what;
        EXPECT_EQ(back->hosts.current, sent) << r.what;
    }
}

} // namespace
