// Key tables of the network sections: one row per key, in the order the keys
// are matched (a key that is the prefix of another comes after it).
#pragma once

#include "cfgmngr/key_table.h"

#include <cstddef>
#include <cstdint>
#include <limits>

namespace cfg::keys {

inline constexpr int32_t int_max = std::numeric_limits<int32_t>::max();
inline constexpr uint32_t uint_max = std::numeric_limits<uint32_t>::max();

// "config.Network.TR069"
#define F(member) CFG_FIELD(tr069_cfg_t, member)
inline constexpr key tr069_keys[] = {
    checkbox("Enable", F(enable)),
    text("URL", F(url)),
    checkbox("PeriodicInformEnable", F(periodic_inform_enable)),
    urange("PeriodicInformInterval", F(periodic_inform_interval), 1, uint_max, 30),
    text("Username", F(username)),
    text("Password", F(password)),
    text("ConnectionRequestUsername", F(connection_request_username)),
    text("ConnectionRequestPassword", F(connection_request_password)),
    text("NATMode", F(nat_mode)),
    text("STUNServerAddress", F(stun_server_address)),
    range("STUNServerPort", F(stun_server_port), 1, 65535, 3478),
    range("STUNMinimumKeepAlivePeriod", F(stun_minimum_keepalive_period), 10, int_max, 30),
    range("STUNMaximumKeepAlivePeriod", F(stun_maximum_keepalive_period), -1, int_max, 60),
    text("NATAddress", F(nat_address)),
};
#undef F

// Bits of the network record's bit sets (flags0, flags1, flags2 and each
// VLAN interface's flags).
namespace network_bits {
enum : uint8_t { dhcpd, snmp, mcast, ntpen, stp_en, telnet_en, ssh_en, dhcp_gw }; // flags0
enum : uint8_t {
    pppoe_enable,
    autoupdate,
    web_en,
    radius_enable,
    use_vendor_info,
    pppoe_vlan,
    autoupdate_auth,
    dst_enable
};                                                    // flags1
enum : uint8_t { pptp_enable, pptp_vlan };            // flags2
enum : uint8_t { vlan_on, vlan_dhcpd, vlan_dhcp_gw }; // vlan_iface_t
} // namespace network_bits

// A text key that also raises a byte flag of the record when stored.
constexpr key text_and_flag(std::string_view name, field f, std::size_t flag_offset) noexcept
{
    key k = special(name, f, rule::text_and_flag);
    k.out = sent::text;
    k.aux = static_cast<uint16_t>(flag_offset);
    return k;
}

// "config.Network.network". A key that is the prefix of another comes after
// it: "IPADDR2" before "IPADDR", every "AUTOUPDATE_..." before "AUTOUPDATE",
// "DHCPD1".."DHCPD3" before "DHCPD", "DHCP_GW1".."DHCP_GW3" before "DHCP_GW".
// The interface keys name interface n (entry n - 1 of vlan_if).
#define F(member)            CFG_FIELD(network_cfg_t, member)
#define FLAG(name, set, bit) flag(name, F(set), network_bits::bit)
#define VLAN_IFACE(n)                                                                                       \
    flag("VLAN" #n, F(vlan_if[n - 1].flags), network_bits::vlan_on),                                        \
        range("VID" #n, F(vlan_if[n - 1].vid), 0, 4095, 0),                                                 \
        flag("DHCPD" #n, F(vlan_if[n - 1].flags), network_bits::vlan_dhcpd),                                \
        text("V" #n "IPADDR", F(vlan_if[n - 1].ipaddr)), text("V" #n "NETMASK", F(vlan_if[n - 1].netmask)), \
        range("COS" #n, F(vlan_if[n - 1].cos), 0, 7, 0),                                                    \
        text("V" #n "BROADCAST", F(vlan_if[n - 1].broadcast)),                                              \
        range("V" #n "MTU", F(vlan_if[n - 1].mtu), 86, 1496, 1496),                                         \
        flag("DHCP_GW" #n, F(vlan_if[n - 1].flags), network_bits::vlan_dhcp_gw)
inline constexpr key network_keys[] = {
    text("PPPOE_PASSWORD", F(pppoe_password)),
    text("PPPOE_USER", F(pppoe_user)),
    FLAG("PPPOE_ENABLE", flags1, pppoe_enable),
    FLAG("PPPOE_VLAN", flags1, pppoe_vlan),
    range("PPPOE_MTU", F(pppoe_mtu), 86, 1400, 1400),
    range("PPPOE_VID", F(pppoe_vid), 0, 4095, 0),
    FLAG("PPTP_ENABLE", flags2, pptp_enable),
    text("PPTP_SERVER", F(pptp_server)),
    text("PPTP_USER", F(pptp_user)),
    text("PPTP_PASSWORD", F(pptp_password)),
    FLAG("PPTP_VLAN", flags2, pptp_vlan),
    range("PPTP_VID", F(pptp_vid), 0, 4095, 0),
    text("PPTP_ACCESSTYPE", F(pptp_accesstype)),
    text("PPTP_IP", F(pptp_ip)),
    text("PPTP_NETMASK", F(pptp_netmask)),
    text("PPTP_GW", F(pptp_gw)),
    text("PPTP_DNS", F(pptp_dns)),
    range("PPTP_IF_MTU", F(pptp_if_mtu), 86, 1400, 1400),
    FLAG("RADIUS_ENABLE", flags1, radius_enable),
    text("RADIUS_SERVER", F(radius_server)),
    text("RADIUS_SECRET", F(radius_secret)),
    range("RADIUS_RETRY", F(radius_retry), 0, 255, 0),
    text("AUTOUPDATE_SRC", F(autoupdate_src)),
    text("AUTOUPDATE_TFTP", F(autoupdate_tftp)),
    text("AUTOUPDATE_CFG_MODE", F(autoupdate_cfg_mode)),
    text("AUTOUPDATE_CFG", F(autoupdate_cfg)),
    text("AUTOUPDATE_FW_MODE", F(autoupdate_fw_mode)),
    text("AUTOUPDATE_FW", F(autoupdate_fw)),
    text("AUTOUPDATE_PROTO", F(autoupdate_proto)),
    FLAG("AUTOUPDATE_AUTH", flags1, autoupdate_auth),
    text("AUTOUPDATE_USER", F(autoupdate_user)),
    text("AUTOUPDATE_PASS", F(autoupdate_pass)),
    FLAG("AUTOUPDATE", flags1, autoupdate),
    // Signed intervals go out as the unsigned reading of their bits (-5 as
    // 4294967291), as the configuration manager has always received them.
    special("CFG_INTERVAL", F(cfg_interval), rule::number_or_keep).sent_as(sent::uint),
    special("FW_INTERVAL", F(fw_interval), rule::number_or_keep).sent_as(sent::uint),
    text("CFG_TIME", F(cfg_time)),
    text("FW_TIME", F(fw_time)),
    text("IPADDR2", F(ipaddr2)).not_sent(),
    text("IPADDR", F(ipaddr)),
    text("NETMASK2", F(netmask2)).not_sent(),
    text("NETMASK", F(netmask)),
    text("GATEWAY", F(gateway)),
    text("BROADCAST2", F(broadcast2)).not_sent(),
    text("BROADCAST", F(broadcast)),
    text("NTPIP", F(ntpip)),
    text("DNSIP", F(dnsip)),
    text("RESERVED_DNSIP", F(reserved_dnsip)),
    FLAG("NTPEN", flags0, ntpen),
    range("NTP_INTERVAL", F(ntp_interval), 30, 100000, 0),
    FLAG("TELNET_EN", flags0, telnet_en),
    range("TELNET_PORT", F(telnet_port), 1, 65535, 23),
    FLAG("SSH_EN", flags0, ssh_en),
    range("SSH_PORT", F(ssh_port), 1, 65535, 22),
    FLAG("STP_EN", flags0, stp_en),
    FLAG("SNMP", flags0, snmp),
    FLAG("MCAST", flags0, mcast).not_sent(),
    range("MTU", F(mtu), 86, 1500, 1500),
    VLAN_IFACE(1),
    VLAN_IFACE(2),
    VLAN_IFACE(3),
    FLAG("DHCP_GW", flags0, dhcp_gw),
    FLAG("DHCPD", flags0, dhcpd),
    range("RTP_VLAN", F(rtp_vlan), 0, 4, 0),
    range("SIG_VLAN", F(sig_vlan), 0, 6, 0),
    range("CTL_VLAN", F(ctl_vlan), 0, 6, 0),
    range("WEB_PORT", F(web_port), 1, 65535, 80),
    range("HTTPS_PORT", F(https_port), 1, 65535, 443),
    FLAG("WEB_EN", flags1, web_en),
    FLAG("USE_VENDOR_INFO", flags1, use_vendor_info),
    text("VENDOR_INFO", F(vendor_info)),
    text("opt82_cid", F(opt82_cid)),
    text("opt82_rid", F(opt82_rid)),
    FLAG("DST_ENABLE", flags1, dst_enable),
    text("ZONEINFO", F(zoneinfo)),
    text("DST_START", F(dst_start)),
    text("DST_END", F(dst_end)),
    range("DST_OFFSET", F(dst_offset), 0, 720, 60),
    // The application watches language_set to learn that a language arrived;
    // every stored "LANGUAGE" raises it, also an empty one.
    text_and_flag("LANGUAGE", F(language), offsetof(network_cfg_t, language_set)),
};
#undef VLAN_IFACE
#undef FLAG
#undef F

// "config.Network.LLDP"
#define F(member) CFG_FIELD(lldp_cfg_t, member)
inline constexpr key lldp_keys[] = {
    checkbox("enable", F(enable)),
    range("tx_interval", F(tx_interval), 0, 65535, 30),
};
#undef F

// "config.Network.snmp"
#define F(member) CFG_FIELD(snmp_cfg_t, member)
inline constexpr key snmp_keys[] = {
    text("sys_location", F(sys_location)),
    text("sys_contact", F(sys_contact)),
    text("sys_name", F(sys_name)),
    text("trap_sink", F(trap_sink)),
    text("rocommunity", F(rocommunity)),
    text("rwcommunity", F(rwcommunity)),
    text("trap_community", F(trap_community)),
    special("trap_type", F(trap_type), rule::trap_version).sent_as(sent::own_format), // "v1" or "v2"
};

// "config.Network.snmp_users": the one user line, "word1 word2 word3".
inline constexpr key snmp_users_keys[] = {
    special("user_0", F(user), rule::snmp_user_line).sent_as(sent::own_format),
};
#undef F

// "config.Network.IPSec". "NATPort" and "NATKeepAlive" come before "NAT",
// "IdentifierType" before "Identifier".
#define F(member) CFG_FIELD(ipsec_cfg_t, member)
inline constexpr key ipsec_keys[] = {
    flag("Enable", F(flags), 0),
    text("LocalIP", F(local_ip)),
    text("LocalSubnet", F(local_subnet)),
    text("LocalNetmask", F(local_netmask)),
    text("RemoteSubnet", F(remote_subnet)),
    text("RemoteNetmask", F(remote_netmask)),
    text("RemoteGateway", F(remote_gateway)),
    range("NATPort", F(nat_port), 0, 65535, 4500),
    range("NATKeepAlive", F(nat_keepalive), 0, 86400, 60),
    text("NAT", F(nat)),
    flag("AgressiveMode", F(flags), 1),
    text("IdentifierType", F(identifier_type)),
    text("Identifier", F(identifier)),
    text("PreshareKey", F(preshare_key)),
    text("IKEAuthAlgorithm", F(ike_auth_algorithm)),
    text("IKEEncryptAlgorithm", F(ike_encrypt_algorithm)),
    range("IKEDhGroup", F(ike_dh_group), 1, 5, 1),
    range("IKELifeTime", F(ike_lifetime), 0, 86400, 86400),
    text("AuthAlgorithm", F(auth_algorithm)),
    text("EncryptAlgorithm", F(encrypt_algorithm)),
    range("PfsGroup", F(pfs_group), 1, 5, 1),
    range("Lifetime", F(lifetime), 0, 86400, 3600),
};
#undef F

// The lists: entries "<key>_<n>", each a line of its own format; the writers
// renumber the filled entries from 0.
// A name without a number is ignored, but for the MAC filter's entry 0.
#define LIST(key, entries, stride) \
    key.numbered(entries, stride, entry_form::after_underscore).sent_as(sent::own_format)

// "config.Network.hosts": "<address> <name>" per host.
inline constexpr key hosts_keys[] = {
    LIST(special("host", CFG_FIELD(hosts_cfg_t, address[0]), rule::host_line), CFG_HOSTS,
         sizeof(hosts_cfg_t::address[0])),
};

// "config.Network.mac_filter"
#define F(member) CFG_FIELD(mac_filter_cfg_t, member)
inline constexpr key mac_filter_keys[] = {
    text("mac_filter_mode", F(mode)),
    special("client", F(client[0]), rule::entry_text)
        .numbered(CFG_MAC_CLIENTS, sizeof(mac_filter_cfg_t::client[0]), entry_form::after_underscore, 0)
        .sent_as(sent::own_format),
};
#undef F

// "config.Network.routes"
inline constexpr key routes_keys[] = {
    LIST(special("route", CFG_FIELD(routes_cfg_t, route[0]), rule::route_line), CFG_ROUTES, sizeof(route_t)),
};

// "config.Network.rules": the firewall rules.
inline constexpr key firewall_keys[] = {
    LIST(special("rule", CFG_FIELD(firewall_cfg_t, rules[0]), rule::firewall_rule), CFG_FIREWALL_RULES,
         sizeof(firewall_rule_t)),
};
#undef LIST

} // namespace cfg::keys
