// Port writers: the port count bound and the pickup text (value forms:
// test_writer_value_forms). The param lists and their order are those of
// the samples' reference output (CfgmsgCli.SamplesApplyToTheirReference);
// the round trip of every row is checked in test_key_tables.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

namespace {

using support::fresh_image;
using support::value;
using support::write;

TEST(PortWriters, AllPortsWritersFollowMaxPorts)
{
    for (uint32_t max_ports : {0u, 3u, 71u, 72u, 100u, 0xFFFFFFFFu}) {
        auto image = fresh_image(max_ports);
        const std::size_t expected = std::min<uint32_t>(max_ports, CFG_MAX_PORTS);
        for (int i = 0; i < CFG_MAX_PORTS; ++i)
            std::snprintf(image->ports[i].phone, sizeof image->ports[i].phone, "%d", 100 + i);

        const auto summary = write([&](uint8_t **c) { return all_ports_to_file(c, image.get()); });
        const auto pickup = write([&](uint8_t **c) { return all_ports_pickup_to_file(c, image.get()); });
        ASSERT_EQ(summary.message.nodes.size(), expected) << max_ports;
        ASSERT_EQ(pickup.message.nodes.size(), expected) << max_ports;
        if (expected == 0) {
            EXPECT_EQ(std::tie(summary.returned, pickup.returned), std::make_tuple(2, 2));
        }
        for (std::size_t i = 0; i < expected; ++i) {
            const std::string path = "config.VOIP.ports.port_" + std::to_string(i);
            EXPECT_EQ(summary.node(i).path, path);
            EXPECT_EQ(value(summary.node(i), "phone"), std::to_string(100 + i));
            EXPECT_EQ(pickup.node(i).path, path);
            EXPECT_EQ(support::names(pickup.node(i)), std::vector<std::string>{"pickupgroup"});
        }
    }
}

TEST(PortWriters, PickupTextIsTheSameInBothWriters)
{
    std::string all_groups;
    for (int g = 0; g < 32; ++g)
        all_groups += std::string(g == 0 ? "" : ",") + std::to_string(g);
    ASSERT_EQ(all_groups.size(), 85u);

    const struct {
        uint32_t groups;
        std::string text;
    } rows[] = {
        {0, "\"\""},
        {1u | (1u << 31), "0,31"},
        {0xFFFFFFFFu, all_groups},
    };
    for (const auto &r : rows) {
        auto image = fresh_image(1);
        image->ports[0].pickupgroup = r.groups;
        const auto all = write([&](uint8_t **c) { return all_ports_pickup_to_file(c, image.get()); });
        const auto one = write([&](uint8_t **c) { return one_port_to_file(c, 0, &image->ports[0]); });
        EXPECT_EQ(value(all.node(), "pickupgroup"), r.text) << r.groups;
        EXPECT_EQ(value(one.node(), "pickupgroup"), r.text) << r.groups;

        // Read back, the text gives the same groups.
        auto back = fresh_image();
        support::parse_back(*back, one);
        EXPECT_EQ(back->ports[0].pickupgroup, r.groups) << r.text;
    }
}

} // namespace
