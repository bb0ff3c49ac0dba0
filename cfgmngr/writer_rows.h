// The writers of each node kind and the rows of its key table each one
// sends, in the order it sends them (a numbered row once for all its
// entries). Part of the route table (routes.cpp).
#pragma once

#include "cfgmngr/keys_network.h"
#include "cfgmngr/keys_ports.h"
#include "cfgmngr/keys_switch.h"
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/routes.h"

namespace cfg::routes {

#define W(name, ...) writer{name, {}}
inline constexpr writer writers_port_def[] = {W("profile_def_port_to_file")};
inline constexpr writer writers_port[] = {W("one_port_to_file"), W("all_ports_to_file"), W("all_ports_pickup_to_file")};
inline constexpr writer writers_codecs[] = {W("profile_codecs_save")};
inline constexpr writer writers_dialplan_profile[] = {W("dialplan_profile_save")};
inline constexpr writer writers_h323[] = {W("h323_save")};
inline constexpr writer writers_range[] = {W("RANGE_save")};
inline constexpr writer writers_sip_cadence[] = {W("profile_alert_info_save")};
inline constexpr writer writers_sip_profile[] = {W("profile_sip_save")};
inline constexpr writer writers_sip[] = {W("common_sip_save")};
inline constexpr writer writers_general[] = {W("general_save")};
inline constexpr writer writers_tones[] = {W("tones_save")};
inline constexpr writer writers_trace[] = {W("syslog_save")};
inline constexpr writer writers_dialplan[] = {W("profile_dialplan_to_file")};
inline constexpr writer writers_group[] = {W("groups_to_file")};
inline constexpr writer writers_fxo_group[] = {W("groups_to_file")};
inline constexpr writer writers_cadence[] = {W("cadence_config_save")};
inline constexpr writer writers_network[] = {W("save_network"), W("save_autoupdate"), W("save_ntp"), W("save_radius"), W("language_save"), W("snmp_save"), W("ipsec_save")};
inline constexpr writer writers_snmp_users[] = {W("snmp_user_save")};
inline constexpr writer writers_snmp[] = {W("snmp_save")};
inline constexpr writer writers_lldp[] = {W("save_network")};
inline constexpr writer writers_ipsec[] = {W("ipsec_save")};
inline constexpr writer writers_tr069[] = {W("save_acs")};
inline constexpr writer writers_switch_vlan[] = {W("vlan_config_save")};
inline constexpr writer writers_hosts[] = {W("sendHostsToCfgMngr")};
inline constexpr writer writers_mac_filter[] = {W("sendMacsToCfgMngr")};
inline constexpr writer writers_routes[] = {W("sendRoutesToCfgMngr")};
inline constexpr writer writers_switch_qos[] = {W("qos_save")};
inline constexpr writer writers_regexprd[] = {W("profile_dialplan_regular_to_file")};
inline constexpr writer writers_dvo[] = {W("dvo_config_save")};
inline constexpr writer writers_switch_vtu[] = {W("switch_config_save"), W("ins_rule_in_vtu")};
inline constexpr writer writers_limits[] = {W("save_limits")};
inline constexpr writer writers_firewall[] = {W("all_firewall_to_file")};
inline constexpr writer writers_modifier[] = {W("modifier_to_file")};
#undef W

} // namespace cfg::routes
