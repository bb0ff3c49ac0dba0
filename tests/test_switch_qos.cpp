// Switch QoS: port numbers after the keys and an edge of the "0x%x" scan.
// The kinds' rules and the writer's round trip are checked for every key
// table in test_key_tables.cpp, its names and values in the samples' apply
// reference.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;

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

// Rows without a field: bad port numbers and unknown names, dropped with the node still stamped.
TEST(SwitchQos, HandlerScansAndDropsBadPortNumbersAndUnknownNames)
{
    const struct { const char *param; uint32_t *(*field)(switch_cfg_t &); uint32_t expected; } rows[] = { // old_value: unchanged
        {"qos_modeX = 1", PORT(0, qos_mode), 1}, // no number: port 0
        {"tag_remap_mask1 = 0X1f", PORT(1, tag_remap_mask), old_value},
        {"priority = 1x", PORT(0, prio), 1}, // key "prio", no number: port 0
        {"egress_rate6 = 1", nullptr, 0}, {"prio-1 = 1", nullptr, 0}, {"prio4294967296 = 1", nullptr, 0},
        {"qos = 1", nullptr, 0}, {"diffserv_remap = 0x1", nullptr, 0}, {"Prio1 = 1", nullptr, 0},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        prefill(image->switch_cfg);
        support::parse(*image, std::string("[config.Switch.qos]\n") + r.param);
        if (r.field != nullptr) {
            EXPECT_EQ(*r.field(image->switch_cfg), r.expected) << r.param;
            *r.field(image->switch_cfg) = old_value;
        }
        // nothing else changed
        switch_cfg_t untouched{};
        prefill(untouched);
        EXPECT_EQ(std::memcmp(&untouched, &image->switch_cfg, sizeof untouched), 0) << r.param;
        EXPECT_NE(image->qos_updated, 0u) << r.param;
    }
    EXPECT_TRUE(support::lock_is_free());
}

} // namespace
