// The lookup index of every key table, built at compile time. The node kinds
// that use them are rows of the route table (routes.cpp).
#include "cfgmngr/key_tables.h"

#include "cfgmngr/key_index.h"

#include "cfgmngr/keys_network.h"
#include "cfgmngr/keys_ports.h"
#include "cfgmngr/keys_switch.h"
#include "cfgmngr/keys_voip.h"

namespace cfg::keys {
namespace {

// ---- VoIP sections
constexpr auto ports_index = make_index(port_keys);
constexpr auto codecs_index = make_index(codec_keys);
constexpr auto sip_profile_index = make_index(sip_profile_keys);
constexpr auto h323_index = make_index(h323_keys);
constexpr auto range_ports_index = make_index(range_keys);
constexpr auto sip_index = make_index(sip_keys);
constexpr auto general_index = make_index(general_keys);
constexpr auto tones_index = make_index(tones_keys);
constexpr auto trace_index = make_index(trace_keys);
constexpr auto dvo_index = make_index(dvo_keys);
constexpr auto sip_cadence_index = make_index(sip_cadence_keys);
constexpr auto cadences_index = make_index(cadence_keys);
constexpr auto regexprd_index = make_index(regexprd_keys);
constexpr auto dialplan_index = make_index(dialplan_keys);
constexpr auto groups_index = make_index(group_keys);
constexpr auto limits_index = make_index(limit_keys);
constexpr auto modifiers_index = make_index(modifier_keys);

// ---- Network and switch sections
constexpr auto network_index = make_index(network_keys);
constexpr auto lldp_index = make_index(lldp_keys);
constexpr auto snmp_index = make_index(snmp_keys);
constexpr auto snmp_users_index = make_index(snmp_users_keys);
constexpr auto ipsec_index = make_index(ipsec_keys);
constexpr auto tr069_index = make_index(tr069_keys);
constexpr auto switch_vlan_index = make_index(switch_vlan_keys);
constexpr auto switch_qos_index = make_index(switch_qos_keys);
constexpr auto switch_vtu_index = make_index(switch_vtu_keys);
constexpr auto hosts_index = make_index(hosts_keys);
constexpr auto mac_filter_index = make_index(mac_filter_keys);
constexpr auto routes_index = make_index(routes_keys);
constexpr auto firewall_index = make_index(firewall_keys);

} // namespace

// ---- VoIP sections
constinit const table ports = make_table(port_keys, ports_index);
constinit const table codecs = make_table(codec_keys, codecs_index);
constinit const table sip_profile = make_table(sip_profile_keys, sip_profile_index);
constinit const table h323 = make_table(h323_keys, h323_index);
constinit const table range_ports = make_table(range_keys, range_ports_index);
constinit const table sip = make_table(sip_keys, sip_index);
constinit const table general = make_table(general_keys, general_index);
constinit const table tones = make_table(tones_keys, tones_index);
constinit const table trace = make_table(trace_keys, trace_index);
constinit const table dvo = make_table(dvo_keys, dvo_index);
constinit const table sip_cadence = make_table(sip_cadence_keys, sip_cadence_index);
constinit const table cadences = make_table(cadence_keys, cadences_index);
constinit const table regexprd = make_table(regexprd_keys, regexprd_index);
constinit const table dialplan = make_table(dialplan_keys, dialplan_index);
constinit const table groups = make_table(group_keys, groups_index);
constinit const table limits = make_table(limit_keys, limits_index);
constinit const table modifiers = make_table(modifier_keys, modifiers_index);

// ---- Network and switch sections
constinit const table network = make_table(network_keys, network_index);
constinit const table lldp = make_table(lldp_keys, lldp_index);
constinit const table snmp = make_table(snmp_keys, snmp_index);
constinit const table snmp_users = make_table(snmp_users_keys, snmp_users_index);
constinit const table ipsec = make_table(ipsec_keys, ipsec_index);
constinit const table tr069 = make_table(tr069_keys, tr069_index);
constinit const table switch_vlan = make_table(switch_vlan_keys, switch_vlan_index);
constinit const table switch_qos = make_table(switch_qos_keys, switch_qos_index);
constinit const table switch_vtu = make_table(switch_vtu_keys, switch_vtu_index);
constinit const table hosts = make_table(hosts_keys, hosts_index);
constinit const table mac_filter = make_table(mac_filter_keys, mac_filter_index);
constinit const table routes = make_table(routes_keys, routes_index);
constinit const table firewall = make_table(firewall_keys, firewall_index);

} // namespace cfg::keys
