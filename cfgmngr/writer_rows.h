// The writers of each node kind and the rows of its key table each one
// sends, in the order it sends them (a numbered row once for all its
// entries, the first writer the kind's own). Part of the route table
// (routes.cpp). The writers (cfgdump/) send these lists: a writer states
// only how a row of its own format goes out, its node paths, loops and
// conditions.
#pragma once

#include "cfgmngr/keys_network.h"
#include "cfgmngr/keys_ports.h"
#include "cfgmngr/keys_switch.h"
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/routes.h"

namespace cfg::routes {

// Two lists of rows, one after the other.
template <std::size_t A, std::size_t B>
consteval std::array<uint16_t, A + B> join(const std::array<uint16_t, A> &a, const std::array<uint16_t, B> &b)
{
    std::array<uint16_t, A + B> out{};
    for (std::size_t i = 0; i < A; ++i)
        out[i] = a[i];
    for (std::size_t i = 0; i < B; ++i)
        out[A + i] = b[i];
    return out;
}

// config.VOIP.ports.port_def_{0..7}
inline constexpr auto rows_port_def_profile_def_port_to_file = keys::pick(
    keys::port_keys, "aon", "taxophone", "min_flashtime", "flashtime", "fxoflashtime", "fxo_dtmfpause",
    "fxoringtdm", "gainr", "gaint", "category", "cpc_rus", "cfb_pri_over_cw", "aon_hide_date",
    "aon_hide_name", "playmoh", "usepstncid", "pstn_numberprefix", "pstn_nameprefix", "dont_detect_DT",
    "fxo_delay_dialing", "enable_cpc", "cpc_time", "transmit_number", "dont_transmit_prefix", "dialing",
    "dial_tone_detect", "dt_detect_time", "rb_tone_detect", "busy_tone_detect", "min_level_detect",
    "decade_pulse_time", "decade_pause_time", "fxo_call_busy", "pstn_200_at_answer", "pstn_rb_detect_timeout",
    "fxo_detect_line_presence", "fxo_block_line_presence", "stop_dial", "modifier", "fxo_dtmftime", "dscp",
    "disconnect_tone_detect");
inline constexpr writer writers_port_def[] = {
    {"profile_def_port_to_file", rows_port_def_profile_def_port_to_file},
};

// config.VOIP.ports.port_{0..71}
inline constexpr auto rows_port_one_port_to_file = keys::pick(
    keys::port_keys, "phone", "user_name", "auth_name", "auth_pass", "usealtnumber", "altnumber",
    "usealtnumber_as_private", "custom", "port_profile_id", "profile_id", "aon", "aon_hide_date",
    "aon_hide_name", "taxophone", "flashtime", "min_flashtime", "gainr", "gaint", "category", "cpc_rus",
    "calltransfer", "callwaiting", "cfb_pri_over_cw", "playmoh", "hotline", "no_offhook_at_ringing",
    "hotnumber", "hottimeout", "ct_busy", "ct_noanswer", "ct_unconditional", "ct_outofservice", "ct_timeout",
    "cfu_number", "cfb_number", "cfnr_number", "cfoos_number", "dvo_callwaiting_en", "dvo_ct_attended_en",
    "dvo_ct_unattended_en", "dvo_cf_unconditional_en", "dvo_cf_busy_en", "dvo_cf_noanswer_en",
    "dvo_cf_outofservice_en", "dvo_dnd_en", "clir", "dnd", "stop_dial", "sip_port", "disabled", "pickup",
    "tdmhotline", "tdmhottimeout", "tdmhotnumber", "fxoflashtime", "fxo_dtmfpause", "fxoringtdm",
    "pstn_numberprefix", "pstn_nameprefix", "usepstncid", "dont_detect_DT", "fxo_delay_dialing", "enable_cpc",
    "cpc_time", "dialing", "dont_transmit_prefix", "transmit_number", "dial_tone_detect", "dt_detect_time",
    "rb_tone_detect", "busy_tone_detect", "min_level_detect", "decade_pulse_time", "decade_pause_time",
    "fxo_call_busy", "pstn_200_at_answer", "pstn_rb_detect_timeout", "fxo_detect_line_presence",
    "fxo_block_line_presence", "modifier", "mwi_dialtone", "agc_spk_enable", "agc_spk_level",
    "agc_mic_enable", "agc_mic_level", "fxo_dtmftime", "dscp", "disconnect_tone_detect");
inline constexpr auto rows_port_all_ports_to_file =
    keys::pick(keys::port_keys, "phone", "user_name", "custom", "cpc_rus", "calltransfer", "disabled",
               "port_profile_id", "profile_id");
inline constexpr auto rows_port_all_ports_pickup_to_file = keys::pick(keys::port_keys, "pickup");
inline constexpr writer writers_port[] = {
    {"one_port_to_file", rows_port_one_port_to_file},
    {"all_ports_to_file", rows_port_all_ports_to_file},
    {"all_ports_pickup_to_file", rows_port_all_ports_pickup_to_file},
};

// The codec params that codec_params_save adds to a node, the beginning of
// both codec nodes.
inline constexpr auto rows_codec_params = keys::pick(
    keys::codec_keys, "g711a", "g711u", "g729a", "g729b", "g729x", "g723", "g726_32", "g711pte", "g729pte",
    "g723pte", "g726_32_pte", "g726_32_pt", "dtmftransfer", "payload", "rfc3264_pt_common", "nse_payload",
    "faxdirection", "faxtransfer", "slave_faxtransfer", "modemtransfer", "silencedetector", "echocanceller",
    "ecan_nlp_disable", "comfortnoise", "jb_pt_delay", "jb_vo_delay_min", "jb_vo_delay_max", "jb_vo_adaptive",
    "jb_vo_del_threshold", "jb_vo_del_mode_soft", "t38_datagram", "t38_bitrate", "dispersion_time");

// config.VOIP.profile.profile_{0..7}.codecs
inline constexpr auto rows_codecs_profile_codecs_save = join(
    rows_codec_params, keys::pick(keys::codec_keys, "flashtransfer", "rtcp_timer", "rtcp_period", "rtcp_xr"));
inline constexpr writer writers_codecs[] = {{"profile_codecs_save", rows_codecs_profile_codecs_save}};

// config.VOIP.dialplan_profiles.dialplan_profile{0..3}
inline constexpr auto rows_dialplan_profile_dialplan_profile_save =
    join(rows_codec_params, keys::pick(keys::codec_keys, "agc_spk_enable", "agc_spk_level", "agc_mic_enable",
                                       "agc_mic_level", "max_calls"));
inline constexpr writer writers_dialplan_profile[] = {
    {"dialplan_profile_save", rows_dialplan_profile_dialplan_profile_save},
};

// config.VOIP.h323
inline constexpr auto rows_h323_h323_save =
    keys::pick(keys::h323_keys, "enableh323", "ignore_gcf", "disablefaststart", "disabletunneling", "h235",
               "password", "usegatekeeper", "gatekeeperip", "h323aliase", "isgateway", "dtmftransfer",
               "timetolive", "keepalivetime", "bearercapability");
inline constexpr writer writers_h323[] = {{"h323_save", rows_h323_h323_save}};

// config.VOIP.range
inline constexpr auto rows_range_RANGE_save = keys::pick(
    keys::range_keys, "tcpportmin", "tcpportmax", "udpportmin", "udpportmax", "rtph323min", "rtph323max",
    "rtpsipmin", "rtpsipmax", "intrcpmax", "intrcpmin", "sip_dscp", "verify_remote_media");
inline constexpr writer writers_range[] = {{"RANGE_save", rows_range_RANGE_save}};

// config.VOIP.profile.profile_{0..7}.sip_cadences.sip_cadence_{0..15}
inline constexpr auto rows_sip_cadence_profile_alert_info_save =
    keys::pick(keys::sip_cadence_keys, "name", "ring_rule");
inline constexpr writer writers_sip_cadence[] = {
    {"profile_alert_info_save", rows_sip_cadence_profile_alert_info_save},
};

// config.VOIP.profile.profile_{0..7}.sip
inline constexpr auto rows_sip_profile_profile_sip_save = keys::pick(
    keys::sip_profile_keys, "cw_ringback", "no_replaces", "100rel", "ringback_sdp", "ringback", "mode",
    "register_retry_interval", "inbound_proxy", "domain_to_reg", "options", "keepalivet", "outbound",
    "expires", "authentication", "registration", "username", "password", "domain", "proxy", "regrar",
    "uri_escape_hash", "user_phone", "obtimeout", "dtmfmime", "hfmime", "reduce_sdp_media_count",
    "p_rtp_stat", "timer", "min_se", "session_expires", "keep_alive_interval", "keep_alive_mode",
    "conference_type", "conference_serv_name", "ims_notify_on", "xcap_conference_name", "xcap_hotline_name",
    "xcap_cw_name", "xcap_callhold_name", "xcap_calltransfer_name", "use_alert_info", "changeover",
    "ruri_full_compliance", "changeover_by_408");
inline constexpr writer writers_sip_profile[] = {{"profile_sip_save", rows_sip_profile_profile_sip_save}};

// config.VOIP.sip
inline constexpr auto rows_sip_common_sip_save = keys::pick(
    keys::sip_keys, "enablesip", "shortmode", "transport", "sip_mtu", "invite_total_t", "invite_init_t",
    "invite_init_max_t", "port_reg_delay_t", "stun_enable", "stun_server", "stun_interval", "publicip");
inline constexpr writer writers_sip[] = {{"common_sip_save", rows_sip_common_sip_save}};

// config.VOIP.general
inline constexpr auto rows_general_general_save =
    keys::pick(keys::general_keys, "unit_prefix", "use_uni", "start_timer", "device_name", "duration_timer",
               "wait_answer_timer", "fans_force_enable", "fans_threshold_temperature", "power_mode");
inline constexpr writer writers_general[] = {{"general_save", rows_general_general_save}};

// config.VOIP.tones
inline constexpr auto rows_tones_tones_save =
    keys::pick(keys::tones_keys, "country", "dialtone_freq", "dialtone_cadence", "busytone_freq",
               "busytone_cadence", "disconnect_freq", "disconnect_cadence", "ringbacktone_freq",
               "ringbacktone_cadence", "congestiontone_freq", "congestiontone_cadence");
inline constexpr writer writers_tones[] = {{"tones_save", rows_tones_tones_save}};

// config.VOIP.trace
inline constexpr auto rows_trace_syslog_save =
    keys::pick(keys::trace_keys, "sip_level", "h323_level", "vapi_level", "vapi_enabled", "app_alarm",
               "app_err", "app_warn", "app_info", "app_dbg", "trace_out", "syslog_addr", "syslog_port",
               "run_syslog", "syslog_to_file");
inline constexpr writer writers_trace[] = {{"syslog_save", rows_trace_syslog_save}};

// config.VOIP.profile.profile_{0..7}.dialplan
inline constexpr auto rows_dialplan_profile_dialplan_to_file = keys::pick(keys::dialplan_keys, "dialplan");
inline constexpr writer writers_dialplan[] = {
    {"profile_dialplan_to_file", rows_dialplan_profile_dialplan_to_file},
};

// config.VOIP.groups.group_{0..31}
inline constexpr auto rows_group_groups_to_file =
    keys::pick(keys::group_keys, "phone", "name", "password", "ports", "type", "timeout", "busy", "enabled",
               "sip_port", "profile_id");
inline constexpr writer writers_group[] = {{"groups_to_file", rows_group_groups_to_file}};

// config.VOIP.groups.fxo_group_{0..31}
inline constexpr auto rows_fxo_group_groups_to_file =
    keys::pick(keys::group_keys, "phone", "name", "password", "ports", "type", "busy", "enabled", "sip_port",
               "dont_transmit_prefix", "transmit_number", "fxo_call_busy", "profile_id");
inline constexpr writer writers_fxo_group[] = {{"groups_to_file", rows_fxo_group_groups_to_file}};

// config.VOIP.cadences.cadence_{0..31}
inline constexpr auto rows_cadence_cadence_config_save =
    keys::pick(keys::cadence_keys, "rule", "ring", "pause", "mask");
inline constexpr writer writers_cadence[] = {{"cadence_config_save", rows_cadence_cadence_config_save}};

// config.Network.network
inline constexpr auto rows_network_save_network = keys::pick(
    keys::network_keys, "IPADDR", "NETMASK", "GATEWAY", "BROADCAST", "MTU", "DNSIP", "RESERVED_DNSIP",
    "TELNET_EN", "TELNET_PORT", "SSH_EN", "SSH_PORT", "STP_EN", "DHCPD", "DHCP_GW", "PPPOE_ENABLE",
    "PPPOE_USER", "PPPOE_PASSWORD", "PPPOE_VLAN", "PPPOE_VID", "PPPOE_MTU", "WEB_PORT", "HTTPS_PORT",
    "WEB_EN", "USE_VENDOR_INFO", "VENDOR_INFO", "opt82_cid", "opt82_rid", "VLAN1", "VID1", "DHCPD1",
    "DHCP_GW1", "V1IPADDR", "V1NETMASK", "V1BROADCAST", "COS1", "V1MTU", "VLAN2", "VID2", "DHCPD2",
    "DHCP_GW2", "V2IPADDR", "V2NETMASK", "V2BROADCAST", "COS2", "V2MTU", "VLAN3", "VID3", "DHCPD3",
    "DHCP_GW3", "V3IPADDR", "V3NETMASK", "V3BROADCAST", "COS3", "V3MTU", "RTP_VLAN", "SIG_VLAN", "CTL_VLAN",
    "PPTP_ENABLE", "PPTP_SERVER", "PPTP_USER", "PPTP_PASSWORD", "PPTP_VLAN", "PPTP_VID", "PPTP_ACCESSTYPE",
    "PPTP_IP", "PPTP_NETMASK", "PPTP_GW", "PPTP_DNS", "PPTP_IF_MTU");
inline constexpr auto rows_network_save_autoupdate = keys::pick(
    keys::network_keys, "AUTOUPDATE", "AUTOUPDATE_SRC", "AUTOUPDATE_TFTP", "AUTOUPDATE_CFG", "AUTOUPDATE_FW",
    "AUTOUPDATE_CFG_MODE", "AUTOUPDATE_FW_MODE", "CFG_INTERVAL", "FW_INTERVAL", "CFG_TIME", "FW_TIME",
    "AUTOUPDATE_PROTO", "AUTOUPDATE_AUTH", "AUTOUPDATE_USER", "AUTOUPDATE_PASS");
inline constexpr auto rows_network_save_ntp =
    keys::pick(keys::network_keys, "NTPEN", "NTP_INTERVAL", "NTPIP", "ZONEINFO", "DST_ENABLE", "DST_START",
               "DST_END", "DST_OFFSET");
inline constexpr auto rows_network_save_radius =
    keys::pick(keys::network_keys, "RADIUS_ENABLE", "RADIUS_SERVER", "RADIUS_SECRET", "RADIUS_RETRY");
inline constexpr auto rows_network_language_save = keys::pick(keys::network_keys, "LANGUAGE");
inline constexpr auto rows_network_snmp_save = keys::pick(keys::network_keys, "SNMP");
inline constexpr auto rows_network_ipsec_save = keys::pick(keys::network_keys, "CTL_VLAN", "SIG_VLAN");
inline constexpr writer writers_network[] = {
    {"save_network", rows_network_save_network},   {"save_autoupdate", rows_network_save_autoupdate},
    {"save_ntp", rows_network_save_ntp},           {"save_radius", rows_network_save_radius},
    {"language_save", rows_network_language_save}, {"snmp_save", rows_network_snmp_save},
    {"ipsec_save", rows_network_ipsec_save},
};

// config.Network.snmp_users
inline constexpr auto rows_snmp_users_snmp_user_save = keys::pick(keys::snmp_users_keys, "user_0");
inline constexpr writer writers_snmp_users[] = {{"snmp_user_save", rows_snmp_users_snmp_user_save}};

// config.Network.snmp
inline constexpr auto rows_snmp_snmp_save =
    keys::pick(keys::snmp_keys, "sys_name", "sys_location", "sys_contact", "trap_sink", "trap_type",
               "trap_community", "rocommunity", "rwcommunity");
inline constexpr writer writers_snmp[] = {{"snmp_save", rows_snmp_snmp_save}};

// config.Network.LLDP
inline constexpr auto rows_lldp_save_network = keys::pick(keys::lldp_keys, "enable", "tx_interval");
inline constexpr writer writers_lldp[] = {{"save_network", rows_lldp_save_network}};

// config.Network.IPSec
inline constexpr auto rows_ipsec_ipsec_save =
    keys::pick(keys::ipsec_keys, "Enable", "LocalIP", "LocalSubnet", "LocalNetmask", "RemoteSubnet",
               "RemoteNetmask", "RemoteGateway", "NAT", "NATPort", "NATKeepAlive", "AgressiveMode",
               "IdentifierType", "Identifier", "PreshareKey", "IKEAuthAlgorithm", "IKEEncryptAlgorithm",
               "IKEDhGroup", "IKELifeTime", "AuthAlgorithm", "EncryptAlgorithm", "PfsGroup", "Lifetime");
inline constexpr writer writers_ipsec[] = {{"ipsec_save", rows_ipsec_ipsec_save}};

// config.Network.TR069
inline constexpr auto rows_tr069_save_acs = keys::pick(
    keys::tr069_keys, "Enable", "URL", "PeriodicInformEnable", "PeriodicInformInterval", "Username",
    "Password", "ConnectionRequestUsername", "ConnectionRequestPassword", "NATMode", "STUNServerAddress",
    "STUNServerPort", "STUNMinimumKeepAlivePeriod", "STUNMaximumKeepAlivePeriod", "NATAddress");
inline constexpr writer writers_tr069[] = {{"save_acs", rows_tr069_save_acs}};

// config.Switch.vlan
inline constexpr auto rows_switch_vlan_vlan_config_save =
    keys::pick(keys::switch_vlan_keys, "enable", "vid", "im", "eg", "ov", "portmask", "portmode",
               "backup_port", "preemption", "hubmode");
// switch_config_save sends the node as vlan_config_save does.
inline constexpr auto &rows_switch_vlan_switch_config_save = rows_switch_vlan_vlan_config_save;
inline constexpr writer writers_switch_vlan[] = {
    {"vlan_config_save", rows_switch_vlan_vlan_config_save},
    {"switch_config_save", rows_switch_vlan_switch_config_save},
};

// config.Network.hosts
inline constexpr auto rows_hosts_sendHostsToCfgMngr = keys::pick(keys::hosts_keys, "host");
inline constexpr writer writers_hosts[] = {{"sendHostsToCfgMngr", rows_hosts_sendHostsToCfgMngr}};

// config.Network.mac_filter
inline constexpr auto rows_mac_filter_sendMacsToCfgMngr =
    keys::pick(keys::mac_filter_keys, "mac_filter_mode", "client");
inline constexpr writer writers_mac_filter[] = {{"sendMacsToCfgMngr", rows_mac_filter_sendMacsToCfgMngr}};

// config.Network.routes
inline constexpr auto rows_routes_sendRoutesToCfgMngr = keys::pick(keys::routes_keys, "route");
inline constexpr writer writers_routes[] = {{"sendRoutesToCfgMngr", rows_routes_sendRoutesToCfgMngr}};

// config.Switch.qos
inline constexpr auto rows_switch_qos_qos_save =
    keys::pick(keys::switch_qos_keys, "prio", "qos_mode", "tag_remap_mask", "ingress_limit_mode",
               "ingress_rate", "ingress_mask", "egress_rate", "ieee_pri", "diffserv_remap003C_mask",
               "diffserv_remap407C_mask", "diffserv_remap80BC_mask", "diffserv_remapC0FC_mask");
// switch_config_save sends the node as qos_save does.
inline constexpr auto &rows_switch_qos_switch_config_save = rows_switch_qos_qos_save;
inline constexpr writer writers_switch_qos[] = {
    {"qos_save", rows_switch_qos_qos_save},
    {"switch_config_save", rows_switch_qos_switch_config_save},
};

// config.VOIP.profile.profile_{0..7}.regexprd
inline constexpr auto rows_regexprd_profile_dialplan_regular_to_file =
    keys::pick(keys::regexprd_keys, "regex_on", "proto", "regex", "start_timer");
inline constexpr writer writers_regexprd[] = {
    {"profile_dialplan_regular_to_file", rows_regexprd_profile_dialplan_regular_to_file},
};

// config.VOIP.dvo
inline constexpr auto rows_dvo_dvo_config_save =
    keys::pick(keys::dvo_keys, "callwaiting", "ct_attended", "ct_unattended", "cf_unconditional", "cf_busy",
               "cf_noanswer", "cf_outofservice", "dnd");
inline constexpr writer writers_dvo[] = {{"dvo_config_save", rows_dvo_dvo_config_save}};

// config.Switch.vtu
// Each rule; switch_config_save sends every rule as ins_rule_in_vtu sends
// one (del_rule_from_vtu blanks these rows).
inline constexpr auto rows_switch_vtu_ins_rule_in_vtu = keys::pick(
    keys::switch_vtu_keys, "vid", "override", "priority", "port0", "port1", "port2", "cpu", "sfp0", "sfp1");
inline constexpr auto &rows_switch_vtu_switch_config_save = rows_switch_vtu_ins_rule_in_vtu;
inline constexpr writer writers_switch_vtu[] = {
    {"switch_config_save", rows_switch_vtu_switch_config_save},
    {"ins_rule_in_vtu", rows_switch_vtu_ins_rule_in_vtu},
};

// config.VOIP.limits
inline constexpr auto rows_limits_save_limits = keys::pick(keys::limit_keys, "limit");
inline constexpr writer writers_limits[] = {{"save_limits", rows_limits_save_limits}};

// config.Network.rules
inline constexpr auto rows_firewall_all_firewall_to_file = keys::pick(keys::firewall_keys, "rule");
inline constexpr writer writers_firewall[] = {{"all_firewall_to_file", rows_firewall_all_firewall_to_file}};

// config.VOIP.modifiers.modifier_{0..15}
inline constexpr auto rows_modifier_modifier_to_file = keys::pick(keys::modifier_keys, "mod_rule_");
inline constexpr writer writers_modifier[] = {{"modifier_to_file", rows_modifier_modifier_to_file}};

} // namespace cfg::routes
