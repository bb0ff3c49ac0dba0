// Network settings: "config.Network.network" (addresses, VLAN interfaces,
// PPPoE / PPTP uplinks, services, autoupdate, NTP, RADIUS, language) and the
// small "config.Network.LLDP" node.
//
// Keys are matched by prefix, first match wins, so a key that is the prefix
// of another one comes after it: "IPADDR2" before "IPADDR", every
// "AUTOUPDATE_..." key before "AUTOUPDATE", "DHCPD1".."DHCPD3" before
// "DHCPD", "DHCP_GW1".."DHCP_GW3" before "DHCP_GW". Reordering the lines
// below changes which field a name lands in.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/network_bits.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

namespace nb = network_bits;

// "%d" scan for the autoupdate intervals: unlike store::number, a missing or
// empty value (or one without a leading number) keeps the previous value.
void scan(int32_t &field, const char *value) noexcept
{
    int32_t n = 0;
    if (!numbers::absent(value) && numbers::scan_int(value, n))
        field = n;
}

// The application watches language_set to learn that a language arrived;
// it is raised by every stored "LANGUAGE", also an empty one.
void language(network_cfg_t &r, const char *value) noexcept
{
    store::text(r.language, value);
    r.language_set = 1;
}

void store_network(network_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    vlan_iface_t &i1 = r.vlan_if[0];
    vlan_iface_t &i2 = r.vlan_if[1];
    vlan_iface_t &i3 = r.vlan_if[2];
    if (p.is("PPPOE_PASSWORD"))      return store::text(r.pppoe_password, v);
    if (p.is("PPPOE_USER"))          return store::text(r.pppoe_user, v);
    if (p.is("PPPOE_ENABLE"))        return store::bit(r.flags1, nb::pppoe_enable, v);
    if (p.is("PPPOE_VLAN"))          return store::bit(r.flags1, nb::pppoe_vlan, v);
    if (p.is("PPPOE_MTU"))           return store::digit(r.pppoe_mtu, v, 86, 1400, 1400);
    if (p.is("PPPOE_VID"))           return store::digit(r.pppoe_vid, v, 0, 4095, 0);
    if (p.is("PPTP_ENABLE"))         return store::bit(r.flags2, nb::pptp_enable, v);
    if (p.is("PPTP_SERVER"))         return store::text(r.pptp_server, v);
    if (p.is("PPTP_USER"))           return store::text(r.pptp_user, v);
    if (p.is("PPTP_PASSWORD"))       return store::text(r.pptp_password, v);
    if (p.is("PPTP_VLAN"))           return store::bit(r.flags2, nb::pptp_vlan, v);
    if (p.is("PPTP_VID"))            return store::digit(r.pptp_vid, v, 0, 4095, 0);
    if (p.is("PPTP_ACCESSTYPE"))     return store::text(r.pptp_accesstype, v);
    if (p.is("PPTP_IP"))             return store::text(r.pptp_ip, v);
    if (p.is("PPTP_NETMASK"))        return store::text(r.pptp_netmask, v);
    if (p.is("PPTP_GW"))             return store::text(r.pptp_gw, v);
    if (p.is("PPTP_DNS"))            return store::text(r.pptp_dns, v);
    if (p.is("PPTP_IF_MTU"))         return store::digit(r.pptp_if_mtu, v, 86, 1400, 1400);
    if (p.is("RADIUS_ENABLE"))       return store::bit(r.flags1, nb::radius_enable, v);
    if (p.is("RADIUS_SERVER"))       return store::text(r.radius_server, v);
    if (p.is("RADIUS_SECRET"))       return store::text(r.radius_secret, v);
    if (p.is("RADIUS_RETRY"))        return store::digit(r.radius_retry, v, 0, 255, 0);
    if (p.is("AUTOUPDATE_SRC"))      return store::text(r.autoupdate_src, v);
    if (p.is("AUTOUPDATE_TFTP"))     return store::text(r.autoupdate_tftp, v);
    if (p.is("AUTOUPDATE_CFG_MODE")) return store::text(r.autoupdate_cfg_mode, v);
    if (p.is("AUTOUPDATE_CFG"))      return store::text(r.autoupdate_cfg, v);
    if (p.is("AUTOUPDATE_FW_MODE"))  return store::text(r.autoupdate_fw_mode, v);
    if (p.is("AUTOUPDATE_FW"))       return store::text(r.autoupdate_fw, v);
    if (p.is("AUTOUPDATE_PROTO"))    return store::text(r.autoupdate_proto, v);
    if (p.is("AUTOUPDATE_AUTH"))     return store::bit(r.flags1, nb::autoupdate_auth, v);
    if (p.is("AUTOUPDATE_USER"))     return store::text(r.autoupdate_user, v);
    if (p.is("AUTOUPDATE_PASS"))     return store::text(r.autoupdate_pass, v);
    if (p.is("AUTOUPDATE"))          return store::bit(r.flags1, nb::autoupdate, v);
    if (p.is("CFG_INTERVAL"))        return scan(r.cfg_interval, v);
    if (p.is("FW_INTERVAL"))         return scan(r.fw_interval, v);
    if (p.is("CFG_TIME"))            return store::text(r.cfg_time, v);
    if (p.is("FW_TIME"))             return store::text(r.fw_time, v);
    if (p.is("IPADDR2"))             return store::text(r.ipaddr2, v);
    if (p.is("IPADDR"))              return store::text(r.ipaddr, v);
    if (p.is("NETMASK2"))            return store::text(r.netmask2, v);
    if (p.is("NETMASK"))             return store::text(r.netmask, v);
    if (p.is("GATEWAY"))             return store::text(r.gateway, v);
    if (p.is("BROADCAST2"))          return store::text(r.broadcast2, v);
    if (p.is("BROADCAST"))           return store::text(r.broadcast, v);
    if (p.is("NTPIP"))               return store::text(r.ntpip, v);
    if (p.is("DNSIP"))               return store::text(r.dnsip, v);
    if (p.is("RESERVED_DNSIP"))      return store::text(r.reserved_dnsip, v);
    if (p.is("NTPEN"))               return store::bit(r.flags0, nb::ntpen, v);
    if (p.is("NTP_INTERVAL"))        return store::digit(r.ntp_interval, v, 30, 100000, 0);
    if (p.is("TELNET_EN"))           return store::bit(r.flags0, nb::telnet_en, v);
    if (p.is("TELNET_PORT"))         return store::digit(r.telnet_port, v, 1, 65535, 23);
    if (p.is("SSH_EN"))              return store::bit(r.flags0, nb::ssh_en, v);
    if (p.is("SSH_PORT"))            return store::digit(r.ssh_port, v, 1, 65535, 22);
    if (p.is("STP_EN"))              return store::bit(r.flags0, nb::stp_en, v);
    if (p.is("SNMP"))                return store::bit(r.flags0, nb::snmp, v);
    if (p.is("MCAST"))               return store::bit(r.flags0, nb::mcast, v);
    if (p.is("MTU"))                 return store::digit(r.mtu, v, 86, 1500, 1500);
    if (p.is("VLAN1"))               return store::bit(i1.flags, nb::vlan_on, v);
    if (p.is("VID1"))                return store::digit(i1.vid, v, 0, 4095, 0);
    if (p.is("DHCPD1"))              return store::bit(i1.flags, nb::vlan_dhcpd, v);
    if (p.is("V1IPADDR"))            return store::text(i1.ipaddr, v);
    if (p.is("V1NETMASK"))           return store::text(i1.netmask, v);
    if (p.is("COS1"))                return store::digit(i1.cos, v, 0, 7, 0);
    if (p.is("V1BROADCAST"))         return store::text(i1.broadcast, v);
    if (p.is("V1MTU"))               return store::digit(i1.mtu, v, 86, 1496, 1496);
    if (p.is("DHCP_GW1"))            return store::bit(i1.flags, nb::vlan_dhcp_gw, v);
    if (p.is("VLAN2"))               return store::bit(i2.flags, nb::vlan_on, v);
    if (p.is("VID2"))                return store::digit(i2.vid, v, 0, 4095, 0);
    if (p.is("DHCPD2"))              return store::bit(i2.flags, nb::vlan_dhcpd, v);
    if (p.is("V2IPADDR"))            return store::text(i2.ipaddr, v);
    if (p.is("V2NETMASK"))           return store::text(i2.netmask, v);
    if (p.is("COS2"))                return store::digit(i2.cos, v, 0, 7, 0);
    if (p.is("V2BROADCAST"))         return store::text(i2.broadcast, v);
    if (p.is("V2MTU"))               return store::digit(i2.mtu, v, 86, 1496, 1496);
    if (p.is("DHCP_GW2"))            return store::bit(i2.flags, nb::vlan_dhcp_gw, v);
    if (p.is("VLAN3"))               return store::bit(i3.flags, nb::vlan_on, v);
    if (p.is("VID3"))                return store::digit(i3.vid, v, 0, 4095, 0);
    if (p.is("DHCPD3"))              return store::bit(i3.flags, nb::vlan_dhcpd, v);
    if (p.is("V3IPADDR"))            return store::text(i3.ipaddr, v);
    if (p.is("V3NETMASK"))           return store::text(i3.netmask, v);
    if (p.is("COS3"))                return store::digit(i3.cos, v, 0, 7, 0);
    if (p.is("V3BROADCAST"))         return store::text(i3.broadcast, v);
    if (p.is("V3MTU"))               return store::digit(i3.mtu, v, 86, 1496, 1496);
    if (p.is("DHCP_GW3"))            return store::bit(i3.flags, nb::vlan_dhcp_gw, v);
    if (p.is("DHCP_GW"))             return store::bit(r.flags0, nb::dhcp_gw, v);
    if (p.is("DHCPD"))               return store::bit(r.flags0, nb::dhcpd, v);
    if (p.is("RTP_VLAN"))            return store::digit(r.rtp_vlan, v, 0, 4, 0);
    if (p.is("SIG_VLAN"))            return store::digit(r.sig_vlan, v, 0, 6, 0);
    if (p.is("CTL_VLAN"))            return store::digit(r.ctl_vlan, v, 0, 6, 0);
    if (p.is("WEB_PORT"))            return store::digit(r.web_port, v, 1, 65535, 80);
    if (p.is("HTTPS_PORT"))          return store::digit(r.https_port, v, 1, 65535, 443);
    if (p.is("WEB_EN"))              return store::bit(r.flags1, nb::web_en, v);
    if (p.is("USE_VENDOR_INFO"))     return store::bit(r.flags1, nb::use_vendor_info, v);
    if (p.is("VENDOR_INFO"))         return store::text(r.vendor_info, v);
    if (p.is("opt82_cid"))           return store::text(r.opt82_cid, v);
    if (p.is("opt82_rid"))           return store::text(r.opt82_rid, v);
    if (p.is("DST_ENABLE"))          return store::bit(r.flags1, nb::dst_enable, v);
    if (p.is("ZONEINFO"))            return store::text(r.zoneinfo, v);
    if (p.is("DST_START"))           return store::text(r.dst_start, v);
    if (p.is("DST_END"))             return store::text(r.dst_end, v);
    if (p.is("DST_OFFSET"))          return store::digit(r.dst_offset, v, 0, 720, 60);
    if (p.is("LANGUAGE"))            return language(r, v);
}

void store_lldp(lldp_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("enable"))      return store::checkbox(r.enable, v);
    if (p.is("tx_interval")) return store::digit(r.tx_interval, v, 0, 65535, 30);
}

} // namespace

node_end network(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_network(image.network, p);
    }
    return parse::finish_node(n, image.network.updated);
}

node_end lldp(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_lldp(image.lldp, p);
    }
    return parse::finish_node(n, image.lldp.updated);
}

} // namespace cfg::handlers
