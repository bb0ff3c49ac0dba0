// IPSec tunnel settings: the prefix cases of the key table and the network
// VLAN node the writer sends after the IPSec node. Bounds, defaults, texts
// and the round trip of every key are checked in test_key_tables.cpp.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

TEST(Ipsec, PrefixOrder)
{
    struct row {
        const char *param;
        void (*expect)(ipsec_cfg_t &); // applies the expected change to the record before
    } rows[] = {
        {"NATMode = abcdefgh", [](ipsec_cfg_t &r) { std::strcpy(r.nat, "abcde"); }}, // any other NAT... name
        {"NATPorts = 7", [](ipsec_cfg_t &r) { r.nat_port = 7; }},
        {"IdentifierTypes = x", [](ipsec_cfg_t &r) { std::strcpy(r.identifier_type, "x"); }},
        {"Identifiers = y", [](ipsec_cfg_t &r) { std::strcpy(r.identifier, "y"); }},
        {"Lifetimes = 100", [](ipsec_cfg_t &r) { r.lifetime = 100; }},
        {"lifetime = 100", [](ipsec_cfg_t &) {}}, // case matters
        {"Local = 1", [](ipsec_cfg_t &) {}},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        ipsec_cfg_t expected = image->ipsec;
        r.expect(expected);
        parse(*image, std::string("[config.Network.IPSec]\n") + r.param + "\n");
        expected.updated = image->ipsec.updated;
        EXPECT_EQ(std::memcmp(&image->ipsec, &expected, sizeof expected), 0) << r.param;
        EXPECT_TRUE(support::lock_is_free());
    }
}

TEST(Ipsec, WriterSendsTheVlanChoiceAfterTheTunnel)
{
    auto image = fresh_image();
    image->network.ctl_vlan = 6;
    image->network.sig_vlan = 2;
    const auto out = support::write([&](uint8_t **c) { return ipsec_save(c, &image->ipsec, &image->network); });
    ASSERT_EQ(out.message.nodes.size(), 2u);
    EXPECT_EQ(out.node(0).path, "config.Network.IPSec");
    EXPECT_EQ(out.node(1).path, "config.Network.network");
    EXPECT_EQ(support::names(out.node(1)), (std::vector<std::string>{"CTL_VLAN", "SIG_VLAN"}));
    auto back = fresh_image();
    all_parser(back.get(), cfgmsg::encode(out.message).data());
    EXPECT_EQ(back->network.ctl_vlan, 6);
    EXPECT_EQ(back->network.sig_vlan, 2);
}

} // namespace
