// The compacting writers of the host table, the MAC filter and the static
// routes, and their round trip (what the parser stores:
// tests/cases/network.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using support::fresh_image;

// One list: how a test entry is set (whole, or partly and so never sent),
// the value a whole entry at `slot` is sent with, and an entry as stored.
struct network_list {
    const char *path, *prefix;
    std::vector<cfgmsg::param> head; // params before the numbered ones
    void (*set)(cfg_image_t &, int slot, bool whole);
    std::string (*sent)(int slot);
    void (*counts)(cfg_image_t &, uint32_t current, uint32_t start);
    int (*write)(uint8_t **, const cfg_image_t &);
    std::string (*stored)(const cfg_image_t &, int slot);
};

const network_list lists[] = {
    {"config.Network.hosts",
     "host_",
     {},
     [](cfg_image_t &im, int slot, bool whole) {
         std::snprintf(im.hosts.address[slot], 16, "10.0.0.%d", slot);
         std::snprintf(im.hosts.name[slot], 80, "%s%d", "h", slot);
         im.hosts.name[slot][0] = whole ? 'h' : '\0';
     },
     [](int slot) { return "10.0.0." + std::to_string(slot) + " h" + std::to_string(slot); },
     [](cfg_image_t &im, uint32_t current, uint32_t start) {
         im.hosts.current = current;
         im.hosts.start = start;
     },
     [](uint8_t **c, const cfg_image_t &im) { return sendHostsToCfgMngr(c, &im.hosts); },
     [](const cfg_image_t &im, int slot) {
         return std::string(im.hosts.address[slot]) + " " + im.hosts.name[slot];
     }},
    // An empty mode goes out as the two quote characters.
    {"config.Network.mac_filter",
     "client_",
     {{"mac_filter_mode", "\"\""}},
     [](cfg_image_t &im, int slot, bool whole) {
         if (whole)
             std::snprintf(im.mac_filter.client[slot], 18, "00:00:00:00:00:%02d", slot);
     },
     [](int slot) { return "00:00:00:00:00:" + std::string(slot < 10 ? "0" : "") + std::to_string(slot); },
     [](cfg_image_t &im, uint32_t current, uint32_t start) {
         im.mac_filter.current = static_cast<uint8_t>(current);
         im.mac_filter.start = static_cast<uint8_t>(start);
     },
     [](uint8_t **c, const cfg_image_t &im) { return sendMacsToCfgMngr(c, &im.mac_filter); },
     [](const cfg_image_t &im, int slot) { return std::string(im.mac_filter.client[slot]); }},
    // A route without a netmask is not filled; the extra field, where there
    // is one, follows after " .".
    {"config.Network.routes",
     "route_",
     {},
     [](cfg_image_t &im, int slot, bool whole) {
         route_t &r = im.routes.route[slot];
         std::snprintf(r.destination, 16, "10.%d.0.0", slot);
         std::snprintf(r.netmask, 16, "%s", whole ? "255.255.0.0" : "");
         std::snprintf(r.gateway, 16, "192.168.1.%d", slot);
         std::snprintf(r.extra, 8, "eth%d", slot);
         r.extra[0] = slot % 2 != 0 ? 'e' : '\0';
     },
     [](int slot) {
         const std::string n = std::to_string(slot);
         return "10." + n + ".0.0 255.255.0.0 192.168.1." + n + (slot % 2 != 0 ? " .eth" + n : "");
     },
     [](cfg_image_t &im, uint32_t current, uint32_t start) {
         im.routes.current = current;
         im.routes.start = start;
     },
     [](uint8_t **c, const cfg_image_t &im) { return sendRoutesToCfgMngr(c, &im.routes); },
     [](const cfg_image_t &im, int slot) {
         const route_t &r = im.routes.route[slot];
         return std::string(r.destination) + "|" + r.netmask + "|" + r.gateway + "|" + r.extra;
     }},
};

// The filled entries go out renumbered from 0, no more than `current` of
// them, then `start` - `current` params without a value; parsed back, those
// clear what the receiving image held there. Slot 12 is only partly filled.
TEST(NetworkLists, WritersCompactPadAndRoundTrip)
{
    const struct {
        const char *what;
        std::vector<int> filled;
        uint32_t current, start;
    } rows[] = {
        {"gaps, two removed", {0, 2, 5}, 3, 5},
        {"nothing", {}, 0, 0},
        {"start below current", {1, 19}, 2, 1},
        {"current limits the walk", {4, 7, 9}, 2, 2},
        {"all removed", {}, 0, 3},
    };
    for (const network_list &list : lists)
        for (const auto &r : rows) {
            SCOPED_TRACE(std::string(list.path) + ": " + r.what);
            auto image = fresh_image();
            for (int slot : r.filled)
                list.set(*image, slot, true);
            list.set(*image, 12, false);
            list.counts(*image, r.current, r.start);
            const auto out = support::write([&](uint8_t **c) { return list.write(c, *image); });
            ASSERT_EQ(out.message.nodes.size(), 1u);
            cfgmsg::node numbered = out.node();
            ASSERT_GE(numbered.params.size(), list.head.size());
            EXPECT_TRUE(std::equal(list.head.begin(), list.head.end(), numbered.params.begin()));
            numbered.params.erase(numbered.params.begin(), numbered.params.begin() + list.head.size());
            const std::size_t sent = std::min<std::size_t>(r.filled.size(), r.current);
            support::values_t want;
            for (std::size_t k = 0; k < sent; ++k)
                want.push_back(list.sent(r.filled[k]));
            support::expect_numbered(
                numbered, list.path, list.prefix,
                support::padded(want, sent + (r.start > r.current ? r.start - r.current : 0)));
            if (r.start <= r.current)
                continue;
            auto back = fresh_image();
            list.set(*back, static_cast<int>(sent), true); // stale
            support::parse_back(*back, out);
            for (std::size_t k = 0; k <= sent; ++k)
                EXPECT_EQ(list.stored(*back, static_cast<int>(k)),
                          k < sent ? list.stored(*image, r.filled[k]) : list.stored(*fresh_image(), 0))
                    << k;
        }
}

} // namespace
