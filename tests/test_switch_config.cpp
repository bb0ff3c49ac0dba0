// The whole-switch writer: its three nodes match the single-node writers,
// rules not in use are blanked, and the record survives a round trip.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>

namespace {

using support::fresh_image;
using support::write;

// A record with every field in use, half of the rules valid and the
// invalid ones holding left-overs.
void fill(switch_cfg_t &sw)
{
    for (int i = 0; i < CFG_SWITCH_PORTS; ++i) {
        const auto u = static_cast<uint32_t>(i);
        sw.vlan[i] = switch_vlan_t{i % 2, u % 4, 0x21u >> (i % 2), 100 + u, 1 - i % 2, u % 3, {}, {}, {}, {}};
        std::strncpy(sw.vlan[i].portmode, i == 1 ? "" : "trunk", sizeof sw.vlan[i].portmode);
        std::strncpy(sw.vlan[i].backup_port, "sfp1", sizeof sw.vlan[i].backup_port);
        std::strncpy(sw.vlan[i].preemption, "7chars!", sizeof sw.vlan[i].preemption);
        sw.qos_port[i] = qos_port_t{u, u % 4, 0xABCDu + u, 1, 2147483647u, 0x8000000u >> i, 10 * u};
    }
    sw.hubmode = 1;
    for (int i = 0; i < CFG_VTU_RULES; ++i) {
        const int32_t n = i * 10;
        sw.vtu[i] =
            vtu_rule_t{static_cast<uint32_t>(i % 2), n, n + 1, n + 2, n + 3, n + 4, n + 5, 0, n + 6, i % 2,
                       i == 1 ? 0 : 1000 + n};
    }
    sw.ieee_pri = 0xFAC688;
    sw.diffserv_remap003C_mask = 0;
    sw.diffserv_remap407C_mask = 0x55555555;
    sw.diffserv_remap80BC_mask = 0xAAAAAAAA;
    sw.diffserv_remapC0FC_mask = 0xFFFFFFFF;
}

// The three nodes match the single-node writers, and the record comes back whole.
TEST(SwitchConfig, NodesAreTheSingleWritersNodesAndRoundTrip)
{
    auto image = fresh_image();
    fill(image->switch_cfg);
    const switch_cfg_t &sw = image->switch_cfg;
    const auto out = write([&](uint8_t **c) { return switch_config_save(c, &sw); });
    ASSERT_EQ(out.message.nodes.size(), 3u);
    EXPECT_EQ(out.node(0).params.size() + out.node(1).params.size() + out.node(2).params.size(), 246u);

    const auto vlan = write([&](uint8_t **c) { return vlan_config_save(c, &sw); });
    const auto qos = write([&](uint8_t **c) { return qos_save(c, &sw); });
    EXPECT_EQ(out.node(0), vlan.node());
    EXPECT_EQ(out.node(1), qos.node());

    const cfgmsg::node &vtu = out.node(2);
    EXPECT_EQ(vtu.path, "config.Switch.vtu");
    ASSERT_EQ(vtu.params.size(), 144u);
    int singles = 0;
    for (int i = 0; i < CFG_VTU_RULES; ++i) {
        const auto single = sw.vtu[i].valid != 0
                                ? write([&](uint8_t **c) { return ins_rule_in_vtu(c, i, &sw.vtu[i]); })
                                : write([&](uint8_t **c) { return del_rule_from_vtu(c, i); });
        ASSERT_EQ(single.node().params.size(), 9u);
        singles += single.returned;
        for (std::size_t k = 0; k < 9; ++k)
            EXPECT_EQ(vtu.params.at(9 * static_cast<std::size_t>(i) + k), single.node().params[k])
                << "rule " << i << " param " << k;
    }
    // A valid rule with vid 0 sends 0, not an empty value.
    EXPECT_EQ(support::value(vtu, "vtu1.vid"), "0");
    EXPECT_EQ(support::value(vtu, "vtu0.vid"), std::nullopt);

    // One frame (2 bytes) and one VTU node head (2 + 17 + 2 bytes) instead of
    // eighteen frames and sixteen heads.
    constexpr int frame = 2, vtu_head = 21;
    EXPECT_EQ(out.returned, vlan.returned + qos.returned + singles - 17 * frame - 15 * vtu_head);

    auto back = fresh_image();
    // Blanked rules come back invalid with their nine fields 0, over whatever
    // the receiving image held.
    for (auto &r : back->switch_cfg.vtu)
        r = vtu_rule_t{1, 5, 5, 5, 5, 5, 5, 0, 5, 5, 5};
    support::parse_back(*back, out);
    switch_cfg_t expected = sw;
    for (auto &r : expected.vtu)
        if (r.valid == 0)
            r = vtu_rule_t{};
    EXPECT_EQ(std::memcmp(&back->switch_cfg, &expected, sizeof expected), 0);
    EXPECT_EQ(std::make_tuple(back->vlan_updated != 0, back->qos_updated != 0, back->vtu_updated != 0),
              std::make_tuple(true, true, true));
    EXPECT_TRUE(support::lock_is_free());
}

} // namespace
