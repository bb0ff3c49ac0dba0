// Switch QoS: port numbers after the keys, the edges of the "0x%x" scan and
// qos_save with its numbered names (the kinds' rules and defaults are checked
// for every key table in test_key_tables.cpp).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::names;
using support::value;
using support::write;

constexpr uint32_t old_value = 0x77;

void prefill(switch_cfg_t &sw)
{
    for (auto &q : sw.qos_port)
        q = qos_port_t{old_value, old_value, old_value, old_value, old_value, old_value, old_value};
    sw.ieee_pri = sw.diffserv_remap003C_mask = sw.diffserv_remap407C_mask = old_value;
    sw.diffserv_remap80BC_mask = sw.diffserv_remapC0FC_mask = old_value;
}

// The field that a row checks.
#define PORT(i, f) [](switch_cfg_t &s) { return &s.qos_port[i].f; }

TEST(SwitchQos, HandlerScansAndEmptyValues)
{
    const struct {
        const char *param;
        uint32_t *(*field)(switch_cfg_t &);
        uint32_t expected; // old_value: unchanged
    } rows[] = {
        {"qos_modeX = 1", PORT(0, qos_mode), 1}, // no number: port 0
        {"tag_remap_mask1 = 0x", PORT(1, tag_remap_mask), old_value},
        {"tag_remap_mask1 = 0X1f", PORT(1, tag_remap_mask), old_value},
        {"tag_remap_mask1 = 0xFFFFFFFF", PORT(1, tag_remap_mask), 0xFFFFFFFF},
        {"priority = 1x", PORT(0, prio), 1}, // key "prio", no number: port 0
        {"ingress_rate4 = -1", PORT(4, ingress_rate), 0xFFFFFFFF},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        prefill(image->switch_cfg);
        support::parse(*image, std::string("[config.Switch.qos]\n") + r.param);
        EXPECT_EQ(*r.field(image->switch_cfg), r.expected) << r.param;
        // nothing else changed
        *r.field(image->switch_cfg) = old_value;
        switch_cfg_t untouched{};
        prefill(untouched);
        EXPECT_EQ(std::memcmp(&untouched, &image->switch_cfg, sizeof untouched), 0) << r.param;
    }
}

TEST(SwitchQos, HandlerDropsBadPortNumbersAndUnknownNames)
{
    for (const char *param : {"egress_rate6 = 1", "prio-1 = 1", "prio4294967296 = 1",
                              "qos = 1", "diffserv_remap = 0x1", "Prio1 = 1"}) {
        auto image = fresh_image();
        prefill(image->switch_cfg);
        const switch_cfg_t before = image->switch_cfg;
        support::parse(*image, std::string("[config.Switch.qos]\n") + param);
        EXPECT_EQ(std::memcmp(&before, &image->switch_cfg, sizeof before), 0) << param;
        EXPECT_NE(image->qos_updated, 0u);
    }
    EXPECT_TRUE(support::lock_is_free());
}

std::vector<std::string> qos_names()
{
    std::vector<std::string> out;
    for (int i = 0; i < CFG_SWITCH_PORTS; ++i)
        for (const char *key : {"prio", "qos_mode", "tag_remap_mask", "ingress_limit_mode", "ingress_rate",
                                "ingress_mask", "egress_rate"})
            out.push_back(key + std::to_string(i));
    for (const char *key : {"ieee_pri", "diffserv_remap003C_mask", "diffserv_remap407C_mask",
                            "diffserv_remap80BC_mask", "diffserv_remapC0FC_mask"})
        out.push_back(key);
    return out;
}

TEST(SwitchQos, WriterNamesValuesAndRoundTrip)
{
    auto image = fresh_image();
    support::parse(*image, "[config.Switch.qos]\n"
                           "diffserv_remap003C_mask =\n diffserv_remap407C_mask =\n"
                           "diffserv_remap80BC_mask =\n diffserv_remapC0FC_mask =\n qos_mode0 =\n");
    switch_cfg_t &sw = image->switch_cfg;
    for (uint32_t i = 0; i < CFG_SWITCH_PORTS; ++i)
        sw.qos_port[i] = qos_port_t{i, i + 1, 0x10u + i, 2, 1000u * i, 0xF0u + i, 64u + i};
    sw.qos_port[1].tag_remap_mask = 0x1F;
    sw.qos_port[4].ingress_rate = 0xFFFFFFFF;
    sw.ieee_pri = 0;

    const auto out = write([&](uint8_t **c) { return qos_save(c, &sw); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.Switch.qos");
    EXPECT_EQ(names(out.node()), qos_names()); // 47 names
    EXPECT_EQ(value(out.node(), "tag_remap_mask1"), "0x1f");
    EXPECT_EQ(value(out.node(), "ieee_pri"), "0x0");
    EXPECT_EQ(value(out.node(), "diffserv_remapC0FC_mask"), "0xffffffff");

    auto back = fresh_image();
    all_parser(back.get(), out.as_message().data());
    EXPECT_EQ(std::memcmp(&back->switch_cfg, &sw, sizeof sw), 0);
}

} // namespace
