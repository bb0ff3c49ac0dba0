// Network settings and LLDP: the key table of "config.Network.network"
// (prefix order, ranges and defaults, flags, texts, scanned intervals, the
// language). The writers are in test_network_writers.cpp.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

std::string network_msg(const std::string &params) { return "[config.Network.network]\n" + params + "\n"; }

// The record after a parse compared byte for byte with the expected one,
// time-stamp aside. Records are copied with memcpy (copy), so padding bytes
// compare equal too.
void expect_same(const network_cfg_t &got, const network_cfg_t &want, const std::string &what)
{
    const auto *a = reinterpret_cast<const unsigned char *>(&got);
    const auto *b = reinterpret_cast<const unsigned char *>(&want);
    const std::size_t stamp = offsetof(network_cfg_t, updated);
    for (std::size_t i = 0; i < sizeof got; ++i) {
        if (i >= stamp && i < stamp + sizeof got.updated)
            continue;
        if (a[i] != b[i]) {
            ADD_FAILURE() << what << ": records differ at byte " << i;
            return;
        }
    }
}

void copy(network_cfg_t &to, const network_cfg_t &from) { std::memcpy(&to, &from, sizeof to); }

// ---------------------------------------------------------------------------
// Numbers: every range with its default, including defaults outside the range.

#define FIELD(expr) [](const cfg_image_t &im) -> int64_t { return im.expr; }

struct range_row {
    const char *path;
    const char *key;
    int64_t min, max, def;
    int64_t (*get)(const cfg_image_t &);
};

const char *const net = "config.Network.network";

const range_row range_rows[] = {
    {net, "PPPOE_MTU", 86, 1400, 1400, FIELD(network.pppoe_mtu)},
    {net, "PPPOE_VID", 0, 4095, 0, FIELD(network.pppoe_vid)},
    {net, "PPTP_VID", 0, 4095, 0, FIELD(network.pptp_vid)},
    {net, "PPTP_IF_MTU", 86, 1400, 1400, FIELD(network.pptp_if_mtu)},
    {net, "RADIUS_RETRY", 0, 255, 0, FIELD(network.radius_retry)},
    {net, "NTP_INTERVAL", 30, 100000, 0, FIELD(network.ntp_interval)},
    {net, "TELNET_PORT", 1, 65535, 23, FIELD(network.telnet_port)},
    {net, "SSH_PORT", 1, 65535, 22, FIELD(network.ssh_port)},
    {net, "MTU", 86, 1500, 1500, FIELD(network.mtu)},
    {net, "VID1", 0, 4095, 0, FIELD(network.vlan_if[0].vid)},
    {net, "COS1", 0, 7, 0, FIELD(network.vlan_if[0].cos)},
    {net, "V1MTU", 86, 1496, 1496, FIELD(network.vlan_if[0].mtu)},
    {net, "VID2", 0, 4095, 0, FIELD(network.vlan_if[1].vid)},
    {net, "COS2", 0, 7, 0, FIELD(network.vlan_if[1].cos)},
    {net, "V2MTU", 86, 1496, 1496, FIELD(network.vlan_if[1].mtu)},
    {net, "VID3", 0, 4095, 0, FIELD(network.vlan_if[2].vid)},
    {net, "COS3", 0, 7, 0, FIELD(network.vlan_if[2].cos)},
    {net, "V3MTU", 86, 1496, 1496, FIELD(network.vlan_if[2].mtu)},
    {net, "RTP_VLAN", 0, 4, 0, FIELD(network.rtp_vlan)},
    {net, "SIG_VLAN", 0, 6, 0, FIELD(network.sig_vlan)},
    {net, "CTL_VLAN", 0, 6, 0, FIELD(network.ctl_vlan)},
    {net, "WEB_PORT", 1, 65535, 80, FIELD(network.web_port)},
    {net, "HTTPS_PORT", 1, 65535, 443, FIELD(network.https_port)},
    {net, "DST_OFFSET", 0, 720, 60, FIELD(network.dst_offset)},
    {"config.Network.LLDP", "tx_interval", 0, 65535, 30, FIELD(lldp.tx_interval)},
};

TEST(NetworkKeys, NumbersKeepTheirRangeAndFallBackToTheDefault)
{
    for (const range_row &row : range_rows) {
        struct value_case {
            std::string param; // text after the key
            int64_t want;
        } cases[] = {
            {" = " + std::to_string(row.min), row.min},
            {" = " + std::to_string(row.max), row.max},
            {" = " + std::to_string(row.min - 1), row.def},
            {" = " + std::to_string(row.max + 1), row.def},
            {" =", row.def},
            {" = \"\"", row.def},
        };
        for (const value_case &c : cases) {
            auto image = fresh_image();
            // Start from an in-range value other than the expected one, so a
            // param that stores nothing cannot pass.
            const int64_t preset = c.want != row.max ? row.max : row.min;
            parse(*image, std::string("[") + row.path + "]\n" + row.key + " = " + std::to_string(preset) + "\n");
            ASSERT_EQ(row.get(*image), preset) << row.key;
            parse(*image, std::string("[") + row.path + "]\n" + row.key + c.param + "\n");
            EXPECT_EQ(row.get(*image), c.want) << row.key << c.param;
        }
    }
}

TEST(NetworkKeys, LldpEnableIsACheckbox)
{
    // The checkbox reading itself is tested with the field converters.
    struct row {
        const char *value;
        uint8_t want;
    } rows[] = {{"yes", 1}, {"0", 0}, {"", 0}};
    for (const row &r : rows) {
        auto image = fresh_image();
        image->lldp.enable = static_cast<uint8_t>(1 - r.want);
        image->lldp.tx_interval = 77;
        parse(*image, std::string("[config.Network.LLDP]\nenable = ") + r.value + "\ntx_int = 5\n");
        EXPECT_EQ(image->lldp.enable, r.want) << r.value;
        EXPECT_EQ(image->lldp.tx_interval, 77u) << "a shorter name is not the key";
        EXPECT_NE(image->lldp.updated, 0u);
    }
}

// ---------------------------------------------------------------------------
// Flags: each key replaces exactly its own bit.

#define BITS(expr) [](network_cfg_t &r) -> uint8_t & { return r.expr; }

struct flag_row {
    const char *key;
    uint8_t &(*bits)(network_cfg_t &);
    unsigned bit;
};

const flag_row flag_rows[] = {
    {"DHCPD", BITS(flags0), 0}, {"SNMP", BITS(flags0), 1}, {"MCAST", BITS(flags0), 2},
    {"NTPEN", BITS(flags0), 3}, {"STP_EN", BITS(flags0), 4}, {"TELNET_EN", BITS(flags0), 5},
    {"SSH_EN", BITS(flags0), 6}, {"DHCP_GW", BITS(flags0), 7}, {"PPPOE_ENABLE", BITS(flags1), 0},
    {"AUTOUPDATE", BITS(flags1), 1}, {"WEB_EN", BITS(flags1), 2}, {"RADIUS_ENABLE", BITS(flags1), 3},
    {"USE_VENDOR_INFO", BITS(flags1), 4}, {"PPPOE_VLAN", BITS(flags1), 5},
    {"AUTOUPDATE_AUTH", BITS(flags1), 6}, {"DST_ENABLE", BITS(flags1), 7},
    {"PPTP_ENABLE", BITS(flags2), 0}, {"PPTP_VLAN", BITS(flags2), 1},
    {"VLAN1", BITS(vlan_if[0].flags), 0}, {"DHCPD1", BITS(vlan_if[0].flags), 1}, {"DHCP_GW1", BITS(vlan_if[0].flags), 2},
    {"VLAN2", BITS(vlan_if[1].flags), 0}, {"DHCPD2", BITS(vlan_if[1].flags), 1}, {"DHCP_GW2", BITS(vlan_if[1].flags), 2},
    {"VLAN3", BITS(vlan_if[2].flags), 0}, {"DHCPD3", BITS(vlan_if[2].flags), 1}, {"DHCP_GW3", BITS(vlan_if[2].flags), 2},
};

TEST(NetworkKeys, FlagsReplaceOnlyTheirBit)
{
    // The checkbox reading itself is tested with the field converters.
    struct value_case {
        const char *param; // text after the key
        bool on;
    } cases[] = {{" = 1", true}, {" = 0", false}, {" =", false}, {" = \"\"", false}};
    for (const flag_row &row : flag_rows) {
        for (const value_case &c : cases) {
            for (const uint8_t start : {uint8_t{0x00}, uint8_t{0xFF}}) {
                auto image = fresh_image();
                std::memset(&image->network, start, sizeof image->network);
                network_cfg_t want;
                copy(want, image->network);
                uint8_t &bits = row.bits(want);
                const auto mask = static_cast<uint8_t>(1u << row.bit);
                bits = static_cast<uint8_t>(c.on ? (bits | mask) : (bits & ~mask));
                parse(*image, network_msg(row.key + std::string(c.param)));
                expect_same(image->network, want, row.key + std::string(c.param));
            }
        }
    }
}

// ---------------------------------------------------------------------------
// Prefix order and texts: the whole record is compared, so a name that lands
// in the wrong field (or in two) fails. The flag table above already holds
// the DHCPD / DHCP_GW / AUTOUPDATE prefix cases.

#define WANT(body) [](network_cfg_t &e) { body; }

struct record_row {
    const char *params;
    void (*expect)(network_cfg_t &);
};

const record_row prefix_rows[] = {
    {"IPADDR2 = 10.0.0.2", WANT(std::strcpy(e.ipaddr2, "10.0.0.2"))},
    {"IPADDR9 = 10.0.0.9", WANT(std::strcpy(e.ipaddr, "10.0.0.9"))},
    {"NETMASK2 = 255.0.0.0", WANT(std::strcpy(e.netmask2, "255.0.0.0"))},
    {"NETMASK = 255.255.0.0", WANT(std::strcpy(e.netmask, "255.255.0.0"))},
    {"BROADCAST2 = 10.255.255.255", WANT(std::strcpy(e.broadcast2, "10.255.255.255"))},
    {"BROADCAST = 10.0.255.255", WANT(std::strcpy(e.broadcast, "10.0.255.255"))},
    {"AUTOUPDATE_CFG_MODE = periodic", WANT(std::strcpy(e.autoupdate_cfg_mode, "periodic"))},
    {"AUTOUPDATE_CFG = cfg.tar", WANT(std::strcpy(e.autoupdate_cfg, "cfg.tar"))},
    {"AUTOUPDATE_OTHER = 1", WANT(e.flags1 = 0x02)},
    {"ipaddr = 1.2.3.4", WANT((void)e)},   // keys are case-sensitive
    {"MTUSIZE = 1000", WANT(e.mtu = 1000)}, // any name beginning with MTU
    // Texts are cut to the field: 19 of 20, 7 of 8.
    {"IPADDR = 123456789012345678901234", WANT(std::strcpy(e.ipaddr, "1234567890123456789"))},
    {"AUTOUPDATE_PROTO = httpsxyz", WANT(std::strcpy(e.autoupdate_proto, "httpsxy"))},
    // Every stored "LANGUAGE", an empty one too, raises the marker the
    // application watches.
    {"LANGUAGE = deutsche", WANT(std::strcpy(e.language, "deutsch"); e.language_set = 1)},
    {"LANGUAGE =", WANT(e.language_set = 1)},
    {"LANGUAGE = \"\"", WANT(e.language_set = 1)},
    {"LANG = en", WANT((void)e)},
};

TEST(NetworkKeys, PrefixOrderAndTexts)
{
    for (const record_row &row : prefix_rows) {
        auto image = fresh_image();
        network_cfg_t want;
        copy(want, image->network);
        row.expect(want);
        parse(*image, network_msg(row.params));
        expect_same(image->network, want, row.params);
        EXPECT_NE(image->network.updated, 0u) << row.params;
    }
}

TEST(NetworkKeys, MissingTextValueClearsTheWholeField)
{
    for (const char *param : {"PPTP_SERVER =", "PPTP_SERVER = \"\""}) {
        auto image = fresh_image();
        std::memset(image->network.pptp_server, 'x', sizeof image->network.pptp_server);
        network_cfg_t want;
        copy(want, image->network);
        std::memset(want.pptp_server, 0, sizeof want.pptp_server);
        parse(*image, network_msg(param));
        expect_same(image->network, want, param);
    }
}

TEST(NetworkKeys, IntervalsAreScannedAndKeptWithoutANumber)
{
    struct step {
        const char *param; // text after the key
        int32_t want;
    } steps[] = {
        {" = 7", 7}, {" =", 7}, {" = \"\"", 7}, {" = -5", -5}, {" = abc", -5}, {" =  12x", 12},
    };
    for (const char *key : {"CFG_INTERVAL", "FW_INTERVAL"}) {
        auto image = fresh_image();
        for (const step &s : steps) {
            parse(*image, network_msg(key + std::string(s.param)));
            const int32_t got = std::string(key) == "CFG_INTERVAL" ? image->network.cfg_interval
                                                                  : image->network.fw_interval;
            EXPECT_EQ(got, s.want) << key << s.param;
        }
    }
}

TEST(NetworkKeys, EmptyNodesAreStampedAndTheLockIsFree)
{
    auto image = fresh_image();
    parse(*image, "[config.Network.network]\n[config.Network.LLDP]\n");
    EXPECT_NE(image->network.updated, 0u);
    EXPECT_NE(image->lldp.updated, 0u);
    EXPECT_TRUE(support::lock_is_free());
}

} // namespace
