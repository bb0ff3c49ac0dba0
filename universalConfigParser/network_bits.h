// Bit numbers of the on/off settings packed into the network record's bit
// sets (flags0, flags1, flags2 and each VLAN interface's flags). Shared by
// the network handler and the network writers.
#pragma once

namespace cfg::network_bits {

// flags0
inline constexpr unsigned dhcpd = 0;
inline constexpr unsigned snmp = 1;
inline constexpr unsigned mcast = 2;
inline constexpr unsigned ntpen = 3;
inline constexpr unsigned stp_en = 4;
inline constexpr unsigned telnet_en = 5;
inline constexpr unsigned ssh_en = 6;
inline constexpr unsigned dhcp_gw = 7;

// flags1
inline constexpr unsigned pppoe_enable = 0;
inline constexpr unsigned autoupdate = 1;
inline constexpr unsigned web_en = 2;
inline constexpr unsigned radius_enable = 3;
inline constexpr unsigned use_vendor_info = 4;
inline constexpr unsigned pppoe_vlan = 5;
inline constexpr unsigned autoupdate_auth = 6;
inline constexpr unsigned dst_enable = 7;

// flags2
inline constexpr unsigned pptp_enable = 0;
inline constexpr unsigned pptp_vlan = 1;

// vlan_iface_t::flags
inline constexpr unsigned vlan_on = 0;
inline constexpr unsigned vlan_dhcpd = 1;
inline constexpr unsigned vlan_dhcp_gw = 2;

} // namespace cfg::network_bits
