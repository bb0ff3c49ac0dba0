// Writers of the network settings. Each sends one group of params of
// "config.Network.network"; save_network also sends the LLDP node. The
// on/off settings go out as 0 or 1, one param per bit.
#include "cfgdump/network_nodes.h"
#include "cfgmngr/msg_writer.h"
#include "universalConfigParser/network_bits.h"

#include <cfgparser.h>

#include <cstddef>
#include <cstdio>

namespace cfg::dump {
namespace {

namespace nb = network_bits;

constexpr const char *network_path = "config.Network.network";

constexpr uint32_t bit(uint8_t bits, unsigned k) noexcept
{
    return (bits >> k) & 1u;
}

// A param name of VLAN interface n ("VID%d", "V%dMTU", ...), built in `buf`.
template <std::size_t N>
const char *iface_name(char (&buf)[N], const char *format, int n) noexcept
{
    std::snprintf(buf, N, format, n);
    return buf;
}

void vlan_iface_params(msg_writer &w, const vlan_iface_t &i, int n) noexcept
{
    char name[16];
    w.uint(iface_name(name, "VLAN%d", n), bit(i.flags, nb::vlan_on));
    w.uint(iface_name(name, "VID%d", n), i.vid);
    w.uint(iface_name(name, "DHCPD%d", n), bit(i.flags, nb::vlan_dhcpd));
    w.uint(iface_name(name, "DHCP_GW%d", n), bit(i.flags, nb::vlan_dhcp_gw));
    w.text(iface_name(name, "V%dIPADDR", n), i.ipaddr);
    w.text(iface_name(name, "V%dNETMASK", n), i.netmask);
    w.text(iface_name(name, "V%dBROADCAST", n), i.broadcast);
    w.uint(iface_name(name, "COS%d", n), i.cos);
    w.uint(iface_name(name, "V%dMTU", n), i.mtu);
}

void network_node(msg_writer &w, const network_cfg_t &r) noexcept
{
    w.node(network_path);
    w.text("IPADDR", r.ipaddr);
    w.text("NETMASK", r.netmask);
    w.text("GATEWAY", r.gateway);
    w.text("BROADCAST", r.broadcast);
    w.uint("MTU", r.mtu);
    w.text("DNSIP", r.dnsip);
    w.text("RESERVED_DNSIP", r.reserved_dnsip);

    w.uint("TELNET_EN", bit(r.flags0, nb::telnet_en));
    w.uint("TELNET_PORT", r.telnet_port);
    w.uint("SSH_EN", bit(r.flags0, nb::ssh_en));
    w.uint("SSH_PORT", r.ssh_port);
    w.uint("STP_EN", bit(r.flags0, nb::stp_en));
    w.uint("DHCPD", bit(r.flags0, nb::dhcpd));
    w.uint("DHCP_GW", bit(r.flags0, nb::dhcp_gw));

    w.uint("PPPOE_ENABLE", bit(r.flags1, nb::pppoe_enable));
    w.text("PPPOE_USER", r.pppoe_user);
    w.text("PPPOE_PASSWORD", r.pppoe_password);
    w.uint("PPPOE_VLAN", bit(r.flags1, nb::pppoe_vlan));
    w.uint("PPPOE_VID", r.pppoe_vid);
    w.uint("PPPOE_MTU", r.pppoe_mtu);

    w.uint("WEB_PORT", r.web_port);
    w.uint("HTTPS_PORT", r.https_port);
    w.uint("WEB_EN", bit(r.flags1, nb::web_en));
    w.uint("USE_VENDOR_INFO", bit(r.flags1, nb::use_vendor_info));
    w.text("VENDOR_INFO", r.vendor_info);
    w.text("opt82_cid", r.opt82_cid);
    w.text("opt82_rid", r.opt82_rid);

    for (int n = 1; n <= CFG_VLAN_IFACES; ++n)
        vlan_iface_params(w, r.vlan_if[n - 1], n);

    w.uint("RTP_VLAN", r.rtp_vlan);
    w.uint("SIG_VLAN", r.sig_vlan);
    w.uint("CTL_VLAN", r.ctl_vlan);

    w.uint("PPTP_ENABLE", bit(r.flags2, nb::pptp_enable));
    w.text("PPTP_SERVER", r.pptp_server);
    w.text("PPTP_USER", r.pptp_user);
    w.text("PPTP_PASSWORD", r.pptp_password);
    w.uint("PPTP_VLAN", bit(r.flags2, nb::pptp_vlan));
    w.uint("PPTP_VID", r.pptp_vid);
    w.text("PPTP_ACCESSTYPE", r.pptp_accesstype);
    w.text("PPTP_IP", r.pptp_ip);
    w.text("PPTP_NETMASK", r.pptp_netmask);
    w.text("PPTP_GW", r.pptp_gw);
    w.text("PPTP_DNS", r.pptp_dns);
    w.uint("PPTP_IF_MTU", r.pptp_if_mtu);
}

void lldp_node(msg_writer &w, const lldp_cfg_t &r) noexcept
{
    w.node("config.Network.LLDP");
    w.uint("enable", r.enable);
    w.uint("tx_interval", r.tx_interval);
}

} // namespace

void network_snmp_node(msg_writer &w, const network_cfg_t &network) noexcept
{
    w.node(network_path);
    w.uint("SNMP", bit(network.flags0, nb::snmp));
}

void network_ipsec_vlans_node(msg_writer &w, const network_cfg_t &network) noexcept
{
    w.node(network_path);
    w.uint("CTL_VLAN", network.ctl_vlan);
    w.uint("SIG_VLAN", network.sig_vlan);
}

} // namespace cfg::dump

using cfg::dump::msg_writer;
namespace nb = cfg::network_bits;

extern "C" {

int save_network(uint8_t **cursor, const network_cfg_t *network, const lldp_cfg_t *lldp) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_network", cursor, {network, lldp}))
        return 0;
    msg_writer w(cursor, "save_network");
    cfg::dump::network_node(w, *network);
    cfg::dump::lldp_node(w, *lldp);
    return w.finish();
}

int save_autoupdate(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_autoupdate", cursor, {network}))
        return 0;
    msg_writer w(cursor, "save_autoupdate");
    w.node(cfg::dump::network_path);
    w.uint("AUTOUPDATE", cfg::dump::bit(network->flags1, nb::autoupdate));
    w.text("AUTOUPDATE_SRC", network->autoupdate_src);
    w.text("AUTOUPDATE_TFTP", network->autoupdate_tftp);
    w.text("AUTOUPDATE_CFG", network->autoupdate_cfg);
    w.text("AUTOUPDATE_FW", network->autoupdate_fw);
    w.text("AUTOUPDATE_CFG_MODE", network->autoupdate_cfg_mode);
    w.text("AUTOUPDATE_FW_MODE", network->autoupdate_fw_mode);
    // Signed intervals go out as the unsigned reading of their bits (-5 as
    // 4294967291), as the configuration manager has always received them.
    w.uint("CFG_INTERVAL", static_cast<uint32_t>(network->cfg_interval));
    w.uint("FW_INTERVAL", static_cast<uint32_t>(network->fw_interval));
    w.text("CFG_TIME", network->cfg_time);
    w.text("FW_TIME", network->fw_time);
    w.text("AUTOUPDATE_PROTO", network->autoupdate_proto);
    w.uint("AUTOUPDATE_AUTH", cfg::dump::bit(network->flags1, nb::autoupdate_auth));
    w.text("AUTOUPDATE_USER", network->autoupdate_user);
    w.text("AUTOUPDATE_PASS", network->autoupdate_pass);
    return w.finish();
}

int save_ntp(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_ntp", cursor, {network}))
        return 0;
    msg_writer w(cursor, "save_ntp");
    w.node(cfg::dump::network_path);
    w.uint("NTPEN", cfg::dump::bit(network->flags0, nb::ntpen));
    w.uint("NTP_INTERVAL", network->ntp_interval);
    w.text("NTPIP", network->ntpip);
    w.text("ZONEINFO", network->zoneinfo);
    w.uint("DST_ENABLE", cfg::dump::bit(network->flags1, nb::dst_enable));
    w.text("DST_START", network->dst_start);
    w.text("DST_END", network->dst_end);
    w.uint("DST_OFFSET", network->dst_offset);
    return w.finish();
}

int save_radius(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_radius", cursor, {network}))
        return 0;
    msg_writer w(cursor, "save_radius");
    w.node(cfg::dump::network_path);
    w.uint("RADIUS_ENABLE", cfg::dump::bit(network->flags1, nb::radius_enable));
    w.text("RADIUS_SERVER", network->radius_server);
    w.text("RADIUS_SECRET", network->radius_secret);
    w.uint("RADIUS_RETRY", network->radius_retry);
    return w.finish();
}

int language_save(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("language_save", cursor, {network}))
        return 0;
    msg_writer w(cursor, "language_save");
    w.node(cfg::dump::network_path);
    w.text("LANGUAGE", network->language);
    return w.finish();
}

} // extern "C"
