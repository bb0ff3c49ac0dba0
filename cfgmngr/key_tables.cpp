// The lookup index of every key table, built at compile time, and the node
// kinds that use them.
#include "cfgmngr/key_tables.h"

#include "cfgmngr/key_index.h"

#include "cfgmngr/keys_network.h"
#include "cfgmngr/keys_ports.h"
#include "cfgmngr/keys_switch.h"
#include "cfgmngr/keys_voip.h"

#include <cstddef>

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

namespace {

#define IMAGE(member) static_cast<uint32_t>(offsetof(cfg_image_t, member))

constexpr node_kind kinds[] = {
    // ---- VoIP sections
    {"config.VOIP.ports.port_def_{0..7}", &ports, port_keys, IMAGE(port_defaults), sizeof(port_cfg_t), 0, 7,
     "profile_def_port_to_file"},
    {"config.VOIP.ports.port_{0..71}", &ports, port_keys, IMAGE(ports), sizeof(port_cfg_t), 0, 71,
     "one_port_to_file"},
    {"config.VOIP.profile.profile_{0..7}.codecs", &codecs, codec_keys, IMAGE(profiles[0].codecs),
     sizeof(profile_cfg_t), 0, 7, "profile_codecs_save"},
    {"config.VOIP.dialplan_profiles.dialplan_profile{0..3}", &codecs, codec_keys, IMAGE(dialplan_profiles),
     sizeof(dialplan_profile_cfg_t), 0, 3, "dialplan_profile_save"},
    {"config.VOIP.h323", &h323, h323_keys, IMAGE(h323), sizeof(h323_cfg_t), 0, 0, "h323_save"},
    {"config.VOIP.range", &range_ports, range_keys, IMAGE(h323), sizeof(h323_cfg_t), 0, 0, "RANGE_save"},
    {"config.VOIP.profile.profile_{0..7}.sip_cadences.sip_cadence_{0..15}", &sip_cadence, sip_cadence_keys,
     IMAGE(profiles[0].sip.sip_cadences), sizeof(profile_cfg_t), 0, 7, "profile_alert_info_save",
     sizeof(sip_cadence_cfg_t), CFG_SIP_CADENCES - 1},
    {"config.VOIP.profile.profile_{0..7}.sip", &sip_profile, sip_profile_keys, IMAGE(profiles[0].sip),
     sizeof(profile_cfg_t), 0, 7, "profile_sip_save"},
    {"config.VOIP.sip", &sip, sip_keys, IMAGE(sip), sizeof(sip_cfg_t), 0, 0, "common_sip_save"},
    {"config.VOIP.general", &general, general_keys, IMAGE(general), sizeof(general_cfg_t), 0, 0, "general_save"},
    {"config.VOIP.tones", &tones, tones_keys, IMAGE(tones), sizeof(tones_cfg_t), 0, 0, "tones_save"},
    {"config.VOIP.trace", &trace, trace_keys, IMAGE(trace), sizeof(trace_cfg_t), 0, 0, "syslog_save"},
    {"config.VOIP.profile.profile_{0..7}.dialplan", &dialplan, dialplan_keys, IMAGE(dialplans),
     sizeof(profile_dialplan_cfg_t), 0, 7, "profile_dialplan_to_file"},
    {"config.VOIP.groups.group_{0..31}", &groups, group_keys, IMAGE(groups.entries), sizeof(group_cfg_t), 0, 31,
     "groups_to_file", 0, 0, node_rules::group},
    {"config.VOIP.groups.fxo_group_{0..31}", &groups, group_keys, IMAGE(fxo_groups.entries), sizeof(group_cfg_t), 0,
     31, "groups_to_file", 0, 0, node_rules::group},
    {"config.VOIP.cadences.cadence_{0..31}", &cadences, cadence_keys, IMAGE(cadences), sizeof(cadence_cfg_t), 0, 31,
     "cadence_config_save"},
    {"config.VOIP.profile.profile_{0..7}.regexprd", &regexprd, regexprd_keys, IMAGE(dialplans),
     sizeof(profile_dialplan_cfg_t), 0, 7, "profile_dialplan_regular_to_file"},
    {"config.VOIP.dvo", &dvo, dvo_keys, IMAGE(dvo), sizeof(dvo_cfg_t), 0, 0, "dvo_config_save"},
    {"config.VOIP.limits", &limits, limit_keys, IMAGE(limits), sizeof(limit_cfg_t), 0, 0, "save_limits"},
    {"config.VOIP.modifiers.modifier_{0..15}", &modifiers, modifier_keys, IMAGE(modifiers), sizeof(modifier_cfg_t),
     0, 15, "modifier_to_file"},
    // ---- Network and switch sections
    {"config.Network.network", &network, network_keys, IMAGE(network), sizeof(network_cfg_t), 0, 0, "save_network"},
    {"config.Network.snmp_users", &snmp_users, snmp_users_keys, IMAGE(snmp), sizeof(snmp_cfg_t), 0, 0, "snmp_user_save"},
    {"config.Network.snmp", &snmp, snmp_keys, IMAGE(snmp), sizeof(snmp_cfg_t), 0, 0, "snmp_save"},
    {"config.Network.LLDP", &lldp, lldp_keys, IMAGE(lldp), sizeof(lldp_cfg_t), 0, 0, "save_network"},
    {"config.Network.IPSec", &ipsec, ipsec_keys, IMAGE(ipsec), sizeof(ipsec_cfg_t), 0, 0, "ipsec_save"},
    {"config.Network.TR069", &tr069, tr069_keys, IMAGE(tr069), sizeof(tr069_cfg_t), 0, 0, "save_acs"},
    {"config.Switch.vlan", &switch_vlan, switch_vlan_keys, IMAGE(switch_cfg), sizeof(switch_cfg_t), 0, 0, "vlan_config_save"},
    {"config.Network.hosts", &hosts, hosts_keys, IMAGE(hosts), sizeof(hosts_cfg_t), 0, 0, "sendHostsToCfgMngr"},
    {"config.Network.mac_filter", &mac_filter, mac_filter_keys, IMAGE(mac_filter), sizeof(mac_filter_cfg_t), 0, 0,
     "sendMacsToCfgMngr"},
    {"config.Network.routes", &routes, routes_keys, IMAGE(routes), sizeof(routes_cfg_t), 0, 0, "sendRoutesToCfgMngr"},
    {"config.Switch.qos", &switch_qos, switch_qos_keys, IMAGE(switch_cfg), sizeof(switch_cfg_t), 0, 0, "qos_save"},
    {"config.Switch.vtu", &switch_vtu, switch_vtu_keys, IMAGE(switch_cfg.vtu), sizeof(switch_cfg_t::vtu), 0, 0,
     "switch_config_save"},
    {"config.Network.rules", &firewall, firewall_keys, IMAGE(firewall), sizeof(firewall_cfg_t), 0, 0,
     "all_firewall_to_file"},
};

#undef IMAGE

} // namespace

std::span<const node_kind> node_kinds() noexcept
{
    return kinds;
}

} // namespace cfg::keys
