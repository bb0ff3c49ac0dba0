// Switch VLANs: the port flag string and the VLAN handler's keys and
// numbers. The writer's names, order and values are those of the samples'
// apply reference; its round trip is checked in test_key_tables.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;

TEST(SwitchVlan, PortFlagStrings)
{
    const struct { const char *text; uint32_t mask; } rows[] = {
        {"1 0 1 0 0 1", 0x25},    {"1,1,1,1,1,1", 0x3F},   {"1 10 0 0 0 0", 0x1},
        {"2 1 1 1 1 1", 0x3E},    {"1 1 1 1 1 1 1", 0x3F}, {"", 0},
        {"111111", 0},            // 111111, 1111, 11; positions 6 to 10 lie past the end
        {"-1 1 1 1 1 1", 0x3E},   // position 2 reads " 1"
        {"1 a 1 b 1 c", 0x15},
        {"1 4294967297 1", 0x1},  // low 32 bits of the big number are 1: still not a flag
    };
    for (const auto &r : rows)
        EXPECT_EQ(eth_port_string_to_output(r.text), r.mask) << '"' << r.text << '"';
    EXPECT_EQ(eth_port_string_to_output(nullptr), 0u);
}

// The number that a row checks.
#define FIELD(f) [](const switch_vlan_t &v) { return static_cast<uint32_t>(v.f); }

// Every number of every VLAN set to 77, so that a store is always visible.
void prefill(switch_cfg_t &sw)
{
    for (auto &v : sw.vlan) {
        v.enable = v.ov = 77;
        v.eg = v.portmask = v.vid = v.im = 77;
        std::strcpy(v.portmode, "old");
    }
}

TEST(SwitchVlan, HandlerStoresNumbersByKeyAndIndex)
{
    const struct { const char *param; int vlan; uint32_t (*field)(const switch_vlan_t &); uint32_t expected; } rows[] = {
        {"portmask3 = 1 0 0 1 0 0", 3, FIELD(portmask), 0x9}, {"portmask0 =", 0, FIELD(portmask), 0},
        {"vid 4 = 12", 4, FIELD(vid), 12},       // blanks before the number are skipped
        {"vid+1 = 9", 1, FIELD(vid), 9},
        {"enable2_extra = 1", 2, FIELD(enable), 1}, // text after the number is ignored
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        prefill(image->switch_cfg);
        support::parse(*image, std::string("[config.Switch.vlan]\n") + r.param);
        for (int i = 0; i < CFG_SWITCH_PORTS; ++i)
            EXPECT_EQ(r.field(image->switch_cfg.vlan[i]), i == r.vlan ? r.expected : 77u)
                << r.param << " vlan " << i;
        EXPECT_EQ(image->switch_cfg.hubmode, 0) << r.param;
    }
}

TEST(SwitchVlan, HandlerDropsNamesWithoutAValidIndex)
{
    const char *const dropped[] = {
        "vid6 = 5", "vid = 5", "vid-1 = 5", "vid4294967296 = 5", "vid4294967297 = 5",
        "vidx1 = 5", "enablex = 1", "portmaskX = 1 1 1 1 1 1", "portmode = a", "vlan1 = 1",
        "Vid1 = 5", "preemption99 = on",
    };
    for (const char *param : dropped) {
        auto image = fresh_image();
        prefill(image->switch_cfg);
        const switch_cfg_t before = image->switch_cfg;
        support::parse(*image, std::string("[config.Switch.vlan]\n") + param);
        EXPECT_EQ(std::memcmp(&before, &image->switch_cfg, sizeof before), 0) << param;
        EXPECT_NE(image->vlan_updated, 0u) << param;
        EXPECT_EQ(image->vtu_updated + image->qos_updated, 0u) << param;
    }
    EXPECT_TRUE(support::lock_is_free());
}

TEST(SwitchVlan, HubmodeHasNoNumber)
{
    auto image = fresh_image();
    prefill(image->switch_cfg);
    support::parse(*image, "[config.Switch.vlan]\nportmode2 = access\n hubmode = 1\n vid3 = 10\n");
    const switch_cfg_t &sw = image->switch_cfg;
    EXPECT_STREQ(sw.vlan[2].portmode, "access");
    EXPECT_STREQ(sw.vlan[3].portmode, "old");
    EXPECT_EQ(sw.hubmode, 1);
    EXPECT_EQ(sw.vlan[3].vid, 10u); // hubmode did not disturb the next index

    support::parse(*image, "[config.Switch.vlan]\nhubmode3 = 0\n");
    EXPECT_EQ(image->switch_cfg.hubmode, 0);
}

} // namespace
