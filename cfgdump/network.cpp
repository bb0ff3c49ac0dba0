// Writers of the network settings. Each sends one group of params of
// "config.Network.network"; save_network also sends the LLDP node. The
// on/off settings go out as 0 or 1, one param per bit.
#include "cfgdump/network_nodes.h"
#include "cfgmngr/keys_network.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

namespace cfg::dump {
namespace {

using keys::network_keys;
using keys::pick;

constexpr const char *network_path = "config.Network.network";

#define VLAN_IFACE(n)                                                                                     \
    "VLAN" #n, "VID" #n, "DHCPD" #n, "DHCP_GW" #n, "V" #n "IPADDR", "V" #n "NETMASK", "V" #n "BROADCAST", \
        "COS" #n, "V" #n "MTU"
constexpr auto network_sent =
    pick(network_keys, "IPADDR", "NETMASK", "GATEWAY", "BROADCAST", "MTU", "DNSIP", "RESERVED_DNSIP",
         "TELNET_EN", "TELNET_PORT", "SSH_EN", "SSH_PORT", "STP_EN", "DHCPD", "DHCP_GW", "PPPOE_ENABLE",
         "PPPOE_USER", "PPPOE_PASSWORD", "PPPOE_VLAN", "PPPOE_VID", "PPPOE_MTU", "WEB_PORT", "HTTPS_PORT",
         "WEB_EN", "USE_VENDOR_INFO", "VENDOR_INFO", "opt82_cid", "opt82_rid", VLAN_IFACE(1), VLAN_IFACE(2),
         VLAN_IFACE(3), "RTP_VLAN", "SIG_VLAN", "CTL_VLAN", "PPTP_ENABLE", "PPTP_SERVER", "PPTP_USER",
         "PPTP_PASSWORD", "PPTP_VLAN", "PPTP_VID", "PPTP_ACCESSTYPE", "PPTP_IP", "PPTP_NETMASK", "PPTP_GW",
         "PPTP_DNS", "PPTP_IF_MTU");
#undef VLAN_IFACE

constexpr auto autoupdate_sent =
    pick(network_keys, "AUTOUPDATE", "AUTOUPDATE_SRC", "AUTOUPDATE_TFTP", "AUTOUPDATE_CFG", "AUTOUPDATE_FW",
         "AUTOUPDATE_CFG_MODE", "AUTOUPDATE_FW_MODE", "CFG_INTERVAL", "FW_INTERVAL", "CFG_TIME", "FW_TIME",
         "AUTOUPDATE_PROTO", "AUTOUPDATE_AUTH", "AUTOUPDATE_USER", "AUTOUPDATE_PASS");
constexpr auto ntp_sent = pick(network_keys, "NTPEN", "NTP_INTERVAL", "NTPIP", "ZONEINFO", "DST_ENABLE",
                               "DST_START", "DST_END", "DST_OFFSET");
constexpr auto radius_sent =
    pick(network_keys, "RADIUS_ENABLE", "RADIUS_SERVER", "RADIUS_SECRET", "RADIUS_RETRY");
constexpr auto language_sent = pick(network_keys, "LANGUAGE");
constexpr auto snmp_switch_sent = pick(network_keys, "SNMP");
constexpr auto ipsec_vlans_sent = pick(network_keys, "CTL_VLAN", "SIG_VLAN");

// A frame with one "config.Network.network" node of the listed keys.
template <std::size_t M>
int network_frame(uint8_t **cursor, const char *writer, const std::array<uint16_t, M> &sent,
                  const network_cfg_t &network, int line = __builtin_LINE()) noexcept
{
    msg_writer w(cursor, writer, line);
    w.node(network_path);
    w.fields(network_keys, sent, &network);
    return w.finish(line);
}

} // namespace

void network_snmp_node(msg_writer &w, const network_cfg_t &network) noexcept
{
    w.node(network_path);
    w.fields(network_keys, snmp_switch_sent, &network);
}

void network_ipsec_vlans_node(msg_writer &w, const network_cfg_t &network) noexcept
{
    w.node(network_path);
    w.fields(network_keys, ipsec_vlans_sent, &network);
}

} // namespace cfg::dump

using cfg::dump::msg_writer;
using cfg::dump::network_frame;

extern "C" {

int save_network(uint8_t **cursor, const network_cfg_t *network, const lldp_cfg_t *lldp) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_network", cursor, {network, lldp}))
        return 0;
    msg_writer w(cursor, "save_network");
    w.node(cfg::dump::network_path);
    w.fields(cfg::keys::network_keys, cfg::dump::network_sent, network);
    w.node("config.Network.LLDP");
    w.fields(cfg::keys::lldp_keys, lldp);
    return w.finish();
}

int save_autoupdate(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_autoupdate", cursor, {network}))
        return 0;
    return network_frame(cursor, "save_autoupdate", cfg::dump::autoupdate_sent, *network);
}

int save_ntp(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_ntp", cursor, {network}))
        return 0;
    return network_frame(cursor, "save_ntp", cfg::dump::ntp_sent, *network);
}

int save_radius(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_radius", cursor, {network}))
        return 0;
    return network_frame(cursor, "save_radius", cfg::dump::radius_sent, *network);
}

int language_save(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("language_save", cursor, {network}))
        return 0;
    return network_frame(cursor, "language_save", cfg::dump::language_sent, *network);
}

} // extern "C"
