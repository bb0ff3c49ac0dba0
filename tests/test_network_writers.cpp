// Writers of the network settings: exact name lists and counts, values of
// flags, empty texts and signed intervals, the nodes other sections' writers
// borrow, and round trips through the parser.
#include "support.h"

#include "cfgdump/network_nodes.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using names_t = std::vector<std::string>;

const names_t network_names = {
    "IPADDR", "NETMASK", "GATEWAY", "BROADCAST", "MTU", "DNSIP", "RESERVED_DNSIP",
    "TELNET_EN", "TELNET_PORT", "SSH_EN", "SSH_PORT", "STP_EN", "DHCPD", "DHCP_GW",
    "PPPOE_ENABLE", "PPPOE_USER", "PPPOE_PASSWORD", "PPPOE_VLAN", "PPPOE_VID", "PPPOE_MTU",
    "WEB_PORT", "HTTPS_PORT", "WEB_EN", "USE_VENDOR_INFO", "VENDOR_INFO", "opt82_cid", "opt82_rid",
    "VLAN1", "VID1", "DHCPD1", "DHCP_GW1", "V1IPADDR", "V1NETMASK", "V1BROADCAST", "COS1", "V1MTU",
    "VLAN2", "VID2", "DHCPD2", "DHCP_GW2", "V2IPADDR", "V2NETMASK", "V2BROADCAST", "COS2", "V2MTU",
    "VLAN3", "VID3", "DHCPD3", "DHCP_GW3", "V3IPADDR", "V3NETMASK", "V3BROADCAST", "COS3", "V3MTU",
    "RTP_VLAN", "SIG_VLAN", "CTL_VLAN",
    "PPTP_ENABLE", "PPTP_SERVER", "PPTP_USER", "PPTP_PASSWORD", "PPTP_VLAN", "PPTP_VID",
    "PPTP_ACCESSTYPE", "PPTP_IP", "PPTP_NETMASK", "PPTP_GW", "PPTP_DNS", "PPTP_IF_MTU",
};

// A text field filled to its last character with a tag and dots, so every
// field holds a different, full-length value.
template <std::size_t N>
void fill(char (&field)[N], const char *tag)
{
    std::memset(field, '.', N - 1);
    std::memcpy(field, tag, std::min(std::strlen(tag), N - 1));
    field[N - 1] = '\0';
}

// Every field that some writer sends, in range; the bit patterns are given.
// Fields no writer sends (the second addresses, MCAST, the application's
// area, the stamp) stay zero. Filled in place and copied with memcpy, so
// that the padding bytes the whole-record comparisons see are zero too.
void sample(network_cfg_t &r, uint8_t flags0, uint8_t flags1, uint8_t flags2, uint8_t vlan_flags)
{
    std::memset(&r, 0, sizeof r);
    fill(r.ipaddr, "ip"), fill(r.netmask, "nm"), fill(r.gateway, "gw"), fill(r.broadcast, "bc");
    fill(r.dnsip, "dns"), fill(r.reserved_dnsip, "rdns"), fill(r.ntpip, "ntp");
    r.ntp_interval = 3600;
    r.flags0 = static_cast<uint8_t>(flags0 & ~0x04); // MCAST is never sent
    r.flags1 = flags1;
    r.flags2 = static_cast<uint8_t>(flags2 & 0x03);
    fill(r.autoupdate_src, "src"), fill(r.autoupdate_tftp, "tftp"), fill(r.autoupdate_cfg, "cfg");
    fill(r.autoupdate_fw, "fw"), fill(r.autoupdate_proto, "pr"), fill(r.autoupdate_user, "au");
    fill(r.autoupdate_pass, "ap"), fill(r.autoupdate_cfg_mode, "cm"), fill(r.autoupdate_fw_mode, "fm");
    r.cfg_interval = 86400;
    r.fw_interval = 2147483647;
    fill(r.cfg_time, "ct"), fill(r.fw_time, "ft"), fill(r.pppoe_user, "pu"), fill(r.pppoe_password, "pp");
    r.pppoe_vid = 4095;
    r.pppoe_mtu = 86;
    fill(r.pptp_server, "ts"), fill(r.pptp_user, "tu"), fill(r.pptp_password, "tp");
    fill(r.pptp_accesstype, "ta"), fill(r.pptp_ip, "ti"), fill(r.pptp_netmask, "tn");
    fill(r.pptp_gw, "tg"), fill(r.pptp_dns, "td");
    r.pptp_vid = 17;
    r.pptp_if_mtu = 1400;
    for (int i = 0; i < CFG_VLAN_IFACES; ++i) {
        vlan_iface_t &v = r.vlan_if[i];
        const std::string n = std::to_string(i + 1);
        v.flags = static_cast<uint8_t>((vlan_flags >> i) & 0x07);
        v.vid = static_cast<uint32_t>(100 + i);
        fill(v.ipaddr, ("vi" + n).c_str()), fill(v.netmask, ("vn" + n).c_str()), fill(v.broadcast, ("vb" + n).c_str());
        v.cos = static_cast<uint32_t>(5 + i);
        v.mtu = static_cast<uint16_t>(1494 + i);
    }
    r.rtp_vlan = 4;
    r.sig_vlan = 6;
    r.ctl_vlan = 3;
    r.web_port = 65535;
    r.telnet_port = 2323;
    r.ssh_port = 1;
    r.https_port = 8443;
    fill(r.radius_server, "rs"), fill(r.radius_secret, "rk");
    r.radius_retry = 255;
    fill(r.vendor_info, "vi"), fill(r.opt82_cid, "oc"), fill(r.opt82_rid, "or"), fill(r.zoneinfo, "zi");
    fill(r.dst_start, "ds"), fill(r.dst_end, "de");
    r.dst_offset = 720;
    fill(r.language, "la");
    r.language_set = 1; // raised again by every parsed "LANGUAGE"
    r.mtu = 1500;
}

lldp_cfg_t lldp_sample()
{
    lldp_cfg_t l;
    std::memset(&l, 0, sizeof l);
    l.enable = 1;
    l.tx_interval = 65535;
    return l;
}

// Offset of the first byte where two records differ, -1 when they are equal.
long first_difference(const network_cfg_t &a, const network_cfg_t &b)
{
    const auto *x = reinterpret_cast<const unsigned char *>(&a);
    const auto *y = reinterpret_cast<const unsigned char *>(&b);
    for (std::size_t i = 0; i < sizeof a; ++i)
        if (x[i] != y[i])
            return static_cast<long>(i);
    return -1;
}

struct writer_row {
    const char *writer;
    support::written (*run)(const network_cfg_t &, const lldp_cfg_t &);
    std::vector<std::pair<std::string, names_t>> nodes; // path and names, in order
};

#define RUN(call) [](const network_cfg_t &n, const lldp_cfg_t &l) { \
        (void)l; return support::write([&](uint8_t **c) { return call; }); }

const writer_row writer_rows[] = {
    {"save_network", RUN(save_network(c, &n, &l)),
     {{"config.Network.network", network_names}, {"config.Network.LLDP", {"enable", "tx_interval"}}}},
    {"save_autoupdate", RUN(save_autoupdate(c, &n)),
     {{"config.Network.network",
       {"AUTOUPDATE", "AUTOUPDATE_SRC", "AUTOUPDATE_TFTP", "AUTOUPDATE_CFG", "AUTOUPDATE_FW",
        "AUTOUPDATE_CFG_MODE", "AUTOUPDATE_FW_MODE", "CFG_INTERVAL", "FW_INTERVAL", "CFG_TIME",
        "FW_TIME", "AUTOUPDATE_PROTO", "AUTOUPDATE_AUTH", "AUTOUPDATE_USER", "AUTOUPDATE_PASS"}}}},
    {"save_ntp", RUN(save_ntp(c, &n)),
     {{"config.Network.network",
       {"NTPEN", "NTP_INTERVAL", "NTPIP", "ZONEINFO", "DST_ENABLE", "DST_START", "DST_END",
        "DST_OFFSET"}}}},
    {"save_radius", RUN(save_radius(c, &n)),
     {{"config.Network.network", {"RADIUS_ENABLE", "RADIUS_SERVER", "RADIUS_SECRET", "RADIUS_RETRY"}}}},
    {"language_save", RUN(language_save(c, &n)), {{"config.Network.network", {"LANGUAGE"}}}},
};

// The name lists are compared whole, so they fix the counts as well.
TEST(NetworkWriters, ExactNamesAndCounts)
{
    ASSERT_EQ(network_names.size(), 69u);
    network_cfg_t n;
    sample(n, 0xFF, 0xFF, 0xFF, 0xFF);
    for (const writer_row &row : writer_rows) {
        const support::written out = row.run(n, lldp_sample());
        EXPECT_EQ(out.body.at(0), 2) << row.writer;
        ASSERT_EQ(out.message.nodes.size(), row.nodes.size()) << row.writer;
        for (std::size_t k = 0; k < row.nodes.size(); ++k) {
            EXPECT_EQ(out.node(k).path, row.nodes[k].first) << row.writer;
            EXPECT_EQ(support::names(out.node(k)), row.nodes[k].second) << row.writer;
        }
    }
}

// Value forms the round trips cannot tell apart from a symmetric fault: an
// empty text and a negative interval sent unsigned. (The nodes snmp_save and
// ipsec_save borrow are checked with those writers.)
TEST(NetworkWriters, ValueForms)
{
    network_cfg_t n;
    sample(n, 0, 0, 0, 0);
    n.pppoe_user[0] = '\0';
    n.cfg_interval = -5;
    const lldp_cfg_t l = lldp_sample();
    const support::written net = support::write([&](uint8_t **c) { return save_network(c, &n, &l); });
    EXPECT_EQ(support::value(net.node(0), "PPPOE_USER"), "\"\"");
    const support::written au = support::write([&](uint8_t **c) { return save_autoupdate(c, &n); });
    EXPECT_EQ(support::value(au.node(0), "CFG_INTERVAL"), "4294967291");
}

// Parsing a writer's output into an image that already holds the record
// changes nothing; parsing all of them (and the SNMP switch) into a fresh
// image rebuilds every field that is sent.
TEST(NetworkWriters, RoundTrips)
{
    struct bit_pattern {
        uint8_t flags0, flags1, flags2, vlan_flags;
    } patterns[] = {{0xA9, 0x5A, 0x01, 0x35}, {0x56, 0xA5, 0x02, 0x4A}};
    for (const bit_pattern &bp : patterns) {
        network_cfg_t n;
        sample(n, bp.flags0, bp.flags1, bp.flags2, bp.vlan_flags);
        const lldp_cfg_t l = lldp_sample();
        auto rebuilt = fresh_image();
        for (const writer_row &row : writer_rows) {
            const std::vector<uint8_t> message = row.run(n, l).as_message();
            auto same = fresh_image();
            std::memcpy(&same->network, &n, sizeof n);
            same->lldp = l;
            all_parser(same.get(), message.data());
            same->network.updated = 0;
            same->lldp.updated = 0;
            EXPECT_EQ(first_difference(same->network, n), -1) << row.writer;
            EXPECT_EQ(same->lldp.enable, l.enable) << row.writer;
            EXPECT_EQ(same->lldp.tx_interval, l.tx_interval) << row.writer;
            all_parser(rebuilt.get(), message.data());
        }
        const std::vector<uint8_t> snmp = support::write([&](uint8_t **c) {
            cfg::dump::msg_writer w(c, "snmp_node_test");
            cfg::dump::network_snmp_node(w, n);
            return w.finish();
        }).as_message();
        all_parser(rebuilt.get(), snmp.data());

        rebuilt->network.updated = 0;
        rebuilt->lldp.updated = 0;
        EXPECT_EQ(first_difference(rebuilt->network, n), -1) << int(bp.flags0);
        EXPECT_EQ(rebuilt->lldp.enable, l.enable);
        EXPECT_EQ(rebuilt->lldp.tx_interval, l.tx_interval);
        EXPECT_TRUE(support::lock_is_free());
    }
}

} // namespace
