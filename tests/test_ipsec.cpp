// IPSec tunnel settings: key table with its prefix cases and defaults, the
// writer with its network VLAN node, and the round trip.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

template <std::size_t N>
void put(char (&field)[N], const char *text)
{
    std::memset(field, 0, N);
    std::memcpy(field, text, std::min(std::strlen(text), N - 1));
}

TEST(Ipsec, KeysRulesAndDefaults)
{
    struct row {
        const char *param;
        void (*expect)(ipsec_cfg_t &);   // applies the expected change to the record before
    } rows[] = {
        {"Enable = 1", [](ipsec_cfg_t &r) { r.flags = 0x05; }},
        {"Enable = 0", [](ipsec_cfg_t &r) { r.flags = 0x04; }},
        {"AgressiveMode = 1", [](ipsec_cfg_t &r) { r.flags = 0x06; }},
        {"AgressiveMode = n", [](ipsec_cfg_t &r) { r.flags = 0x04; }},
        {"LocalIP = 255.255.255.255.255", [](ipsec_cfg_t &r) { put(r.local_ip, "255.255.255.255"); }},
        {"NATPort = 0", [](ipsec_cfg_t &r) { r.nat_port = 0; }},
        {"NATPort = 65535", [](ipsec_cfg_t &r) { r.nat_port = 65535; }},
        {"NATPort = 65536", [](ipsec_cfg_t &r) { r.nat_port = 4500; }},
        {"NATPort =", [](ipsec_cfg_t &r) { r.nat_port = 4500; }},
        {"NATKeepAlive = 86401", [](ipsec_cfg_t &r) { r.nat_keepalive = 60; }},
        {"NATMode = abcdefgh", [](ipsec_cfg_t &r) { put(r.nat, "abcde"); }},   // any other NAT... name
        {"NAT =", [](ipsec_cfg_t &r) { put(r.nat, ""); }},
        {"IKEAuthAlgorithm = sha1x", [](ipsec_cfg_t &r) { put(r.ike_auth_algorithm, "sha1"); }},
        {"IKEEncryptAlgorithm = aes256cbc", [](ipsec_cfg_t &r) { put(r.ike_encrypt_algorithm, "aes256cb"); }},
        {"IKEDhGroup = 6", [](ipsec_cfg_t &r) { r.ike_dh_group = 1; }},
        {"IKEDhGroup = 0", [](ipsec_cfg_t &r) { r.ike_dh_group = 1; }},
        {"IKELifeTime =", [](ipsec_cfg_t &r) { r.ike_lifetime = 86400; }},
        {"IKELifeTime = 0", [](ipsec_cfg_t &r) { r.ike_lifetime = 0; }},
        {"PfsGroup = 0", [](ipsec_cfg_t &r) { r.pfs_group = 1; }},
        {"Lifetime = 86401", [](ipsec_cfg_t &r) { r.lifetime = 3600; }},
        {"Lifetimes = 100", [](ipsec_cfg_t &r) { r.lifetime = 100; }},         // prefix match
        {"lifetime = 100", [](ipsec_cfg_t &) {}},                              // case matters
        {"Local = 1", [](ipsec_cfg_t &) {}},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        image->ipsec.flags = 0x04;   // bits of no key stay as they are
        image->ipsec.ike_dh_group = 3;
        image->ipsec.lifetime = 7;
        put(image->ipsec.identifier, "id");
        ipsec_cfg_t expected = image->ipsec;
        r.expect(expected);
        parse(*image, std::string("[config.Network.IPSec]\n") + r.param + "\n");
        EXPECT_NE(image->ipsec.updated, 0u) << r.param;
        expected.updated = image->ipsec.updated;
        EXPECT_EQ(std::memcmp(&image->ipsec, &expected, sizeof expected), 0) << r.param;
        EXPECT_TRUE(support::lock_is_free());
    }
}

ipsec_cfg_t sample()
{
    ipsec_cfg_t r{};
    r.flags = 0x03;
    put(r.local_ip, "192.168.0.1"), put(r.local_subnet, "192.168.0.0"), put(r.local_netmask, "255.255.255.0");
    put(r.remote_subnet, "10.8.0.0"), put(r.remote_netmask, "255.255.0.0"), put(r.remote_gateway, "203.0.113.7");
    put(r.nat, "auto");
    r.nat_port = 4501;
    r.nat_keepalive = 20;
    put(r.identifier_type, "fqdn"), put(r.identifier, "gw.example.net"), put(r.preshare_key, "pre shared key");
    put(r.ike_auth_algorithm, "sha1"), put(r.ike_encrypt_algorithm, "aes128");
    r.ike_dh_group = 2;
    r.ike_lifetime = 28800;
    put(r.auth_algorithm, "hmac-md5");
    r.pfs_group = 5;
    r.lifetime = 0;
    return r;
}

TEST(Ipsec, WriterNamesAndRoundTrip)
{
    auto image = fresh_image();
    image->ipsec = sample();
    image->network.ctl_vlan = 6;
    image->network.sig_vlan = 2;
    const auto out = support::write([&](uint8_t **c) { return ipsec_save(c, &image->ipsec, &image->network); });
    ASSERT_EQ(out.message.nodes.size(), 2u);
    EXPECT_EQ(out.node(0).path, "config.Network.IPSec");
    EXPECT_EQ(support::names(out.node(0)),
              (std::vector<std::string>{"Enable", "LocalIP", "LocalSubnet", "LocalNetmask", "RemoteSubnet",
                                        "RemoteNetmask", "RemoteGateway", "NAT", "NATPort", "NATKeepAlive",
                                        "AgressiveMode", "IdentifierType", "Identifier", "PreshareKey",
                                        "IKEAuthAlgorithm", "IKEEncryptAlgorithm", "IKEDhGroup", "IKELifeTime",
                                        "AuthAlgorithm", "EncryptAlgorithm", "PfsGroup", "Lifetime"}));
    EXPECT_EQ(support::value(out.node(0), "EncryptAlgorithm"), "\"\"");
    EXPECT_EQ(out.node(1).path, "config.Network.network");
    EXPECT_EQ(support::names(out.node(1)), (std::vector<std::string>{"CTL_VLAN", "SIG_VLAN"}));

    auto back = fresh_image();
    all_parser(back.get(), cfgmsg::encode(out.message).data());
    back->ipsec.updated = image->ipsec.updated;
    EXPECT_EQ(std::memcmp(&back->ipsec, &image->ipsec, sizeof image->ipsec), 0);
    EXPECT_EQ(back->network.ctl_vlan, 6);
    EXPECT_EQ(back->network.sig_vlan, 2);

    for (uint8_t flags : {uint8_t{0x01}, uint8_t{0x02}, uint8_t{0xFC}}) {
        image->ipsec.flags = flags;
        const auto f = support::write([&](uint8_t **c) { return ipsec_save(c, &image->ipsec, &image->network); });
        EXPECT_EQ(support::value(f.node(0), "Enable"), (flags & 1) ? "1" : "0");
        EXPECT_EQ(support::value(f.node(0), "AgressiveMode"), (flags & 2) ? "1" : "0");
    }
}

} // namespace
