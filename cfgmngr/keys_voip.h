// Key tables of the VoIP sections: one row per key, in the order the keys
// are matched (a key that is the prefix of another comes after it:
// "g723pte" before "g723").
#pragma once

#include "cfgmngr/key_table.h"

#include <cstdint>

namespace cfg::keys {

// "user@host" into two text members: the user into `user`, the host into
// `host`.
constexpr key user_at_host(std::string_view name, field user, field host) noexcept
{
    key k = special(name, user, rule::user_at_host, 0, host.size, 0);
    k.aux = host.offset;
    return k;
}

// ---------------------------------------------------------------------------
// Codec and media settings: the codecs node of a VoIP profile and the node of
// a dial-plan profile. The writers send every number through the unsigned
// builder (-1 as 4294967295), the AGC levels excepted.
#define F(member) CFG_FIELD(codecs_cfg_t, member)
inline constexpr key codec_keys[] = {
    integer("g711a", F(g711a)).sent_as(sent::uint),
    integer("g711u", F(g711u)).sent_as(sent::uint),
    integer("g729x", F(g729x)).sent_as(sent::uint),
    integer("g729b", F(g729b)).sent_as(sent::uint),
    special("g723pte", F(g723pte), rule::packet_time, 30, 91, 30).sent_as(sent::uint),
    integer("g723", F(g723)).sent_as(sent::uint),
    special("g711pte", F(g711pte), rule::packet_time, 10, 61, 20).sent_as(sent::uint),
    special("g729pte", F(g729pte), rule::packet_time, 10, 81, 20).sent_as(sent::uint),
    special("g726_32_pte", F(g726_32_pte), rule::g726_packet_time, 0, 0, 20),
    range("g726_32_pt", F(g726_32_pt), 96, 127, 102),
    integer("g726_32", F(g726_32)).sent_as(sent::uint),
    integer("dtmftransfer", F(dtmftransfer)).sent_as(sent::uint),
    integer("flashtransfer", F(flashtransfer)).sent_as(sent::uint),
    integer("faxtransfer", F(faxtransfer)).sent_as(sent::uint),
    integer("slave_faxtransfer", F(slave_faxtransfer), 3).sent_as(sent::uint),
    integer("faxdirection", F(faxdirection)).sent_as(sent::uint),
    integer("modemtransfer", F(modemtransfer)).sent_as(sent::uint),
    integer("payload", F(payload)).sent_as(sent::uint),
    checkbox("rfc3264_pt_common", F(rfc3264_pt_common)),
    range("nse_payload", F(nse_payload), 96, 127, 100),
    checkbox("silencedetector", F(silencedetector)),
    checkbox("echocanceller", F(echocanceller)),
    checkbox("ecan_nlp_disable", F(ecan_nlp_disable)),
    range("rtcp_timer", F(rtcp_timer), 5, 65535, 0),
    range("rtcp_period", F(rtcp_period), 2, 65535, 0),
    checkbox("rtcp_xr", F(rtcp_xr)),
    checkbox("comfortnoise", F(comfortnoise)),
    integer("jb_pt_delay", F(jb_pt_delay)).sent_as(sent::uint),
    integer("jb_vo_delay_min", F(jb_vo_delay_min)).sent_as(sent::uint),
    integer("jb_vo_delay_max", F(jb_vo_delay_max)).sent_as(sent::uint),
    integer("jb_vo_adaptive", F(jb_vo_adaptive)).sent_as(sent::uint),
    integer("jb_vo_del_threshold", F(jb_vo_del_threshold)).sent_as(sent::uint),
    integer("jb_vo_del_mode_soft", F(jb_vo_del_mode_soft)).sent_as(sent::uint),
    integer("t38_bitrate", F(t38_bitrate), 14400).sent_as(sent::uint),
    special("t38_datagram", F(t38_datagram), rule::t38_datagram, 272, 512, 512),
    range("dispersion_time", F(dispersion_time), 8, 128, 64),
    checkbox("agc_spk_enable", F(agc_spk_enable)),
    range("agc_spk_level", F(agc_spk_level), -25, -1, -25),
    checkbox("agc_mic_enable", F(agc_mic_enable)),
    range("agc_mic_level", F(agc_mic_level), -25, -1, -25),
    range("max_calls", F(max_calls), 1, 143, 12),
    // Not kept: the writers always send it as 0.
    special("g729a", field{}, rule::not_kept).sent_as(sent::own_format),
};
#undef F

// ---------------------------------------------------------------------------
// SIP settings of a VoIP profile ("config.VOIP.profile.profile_N.sip"). The
// rows sent in their own format are written by profile_sip_save itself (the
// MIME words, "no_replaces" and "timer" as 0 or 1, "user@host", the server
// entries as key_N).
#define F(member) CFG_FIELD(profile_sip_cfg_t, member)
inline constexpr key sip_profile_keys[] = {
    special("cw_ringback", F(cw_ringback), rule::one_or_default),
    range("ringback_sdp", F(ringback_sdp), 1, 3, 0),
    special("ringback", F(ringback), rule::one_or_default),
    range("mode", F(mode), 1, 2, 0),
    checkbox("uri_escape_hash", F(uri_escape_hash)),
    range("register_retry_interval", F(register_retry_interval), 10, 3600, 30),
    checkbox("inbound_proxy", F(inbound_proxy)),
    checkbox("domain_to_reg", F(domain_to_reg)),
    range("options", F(options), 1, 2, 0),
    checkbox("user_phone", F(user_phone)),
    range("keepalivet", F(keepalivet), 10000, 3600000, 60000),
    range("outbound", F(outbound), 1, 2, 0),
    range("obtimeout", F(obtimeout), 0, 300, 10),
    range("expires", F(expires), 0, 2147483647, 1800),
    special("authentication", F(authentication), rule::one_or_default, 0, 0, 2),
    range("registration", F(registration), 0, 31, 0),
    text("username", F(username)),
    text("password", F(password)),
    text("domain", F(domain)),
    special("dtmfmime", F(dtmfmime), rule::dtmf_mime).sent_as(sent::own_format),
    special("hfmime", F(hfmime), rule::hookflash_mime).sent_as(sent::own_format),
    special("proxy", F(servers[0].proxy), rule::server_text)
        .numbered(CFG_SIP_SERVERS, sizeof(sip_server_t), entry_form::after_key_underscore, 0)
        .sent_as(sent::own_format),
    special("regrar", F(servers[0].regrar), rule::server_text)
        .numbered(CFG_SIP_SERVERS, sizeof(sip_server_t), entry_form::after_key_underscore, 0)
        .sent_as(sent::own_format),
    checkbox("reduce_sdp_media_count", F(reduce_sdp_media_count)),
    checkbox("p_rtp_stat", F(p_rtp_stat)),
    special("no_replaces", F(replaces), rule::inverse_checkbox).sent_as(sent::own_format),
    range("100rel", F(rel100), 1, 2, 0),
    special("timer", F(timer), rule::on_unless_zero).sent_as(sent::own_format),
    range("min_se", F(min_se), 90, 1800, 120),
    range("session_expires", F(session_expires), 90, 80000, 0),
    range("keep_alive_interval", F(keep_alive_interval), 30, 120, 30),
    range("keep_alive_mode", F(keep_alive_mode), 0, 3, 0),
    range("conference_type", F(conference_type), 0, 2, 0),
    user_at_host("conference_serv_name", F(conference_user), F(conference_host)).sent_as(sent::own_format),
    range("ims_notify_on", F(ims_notify_on), 0, 2, 0),
    special("xcap_conference_name", F(xcap_conference_name), rule::text_or_default)
        .with_text_default("three-party-conference"),
    special("xcap_hotline_name", F(xcap_hotline_name), rule::text_or_default)
        .with_text_default("hot-line-service"),
    special("xcap_cw_name", F(xcap_cw_name), rule::text_or_default).with_text_default("call-waiting"),
    special("xcap_callhold_name", F(xcap_callhold_name), rule::text_or_default)
        .with_text_default("call-hold"),
    special("xcap_calltransfer_name", F(xcap_calltransfer_name), rule::text_or_default)
        .with_text_default("explicit-call-transfer"),
    checkbox("use_alert_info", F(use_alert_info)),
    checkbox("changeover_by_408", F(changeover_by_408)),
    range("changeover", F(changeover), 0, 3, 0),
    checkbox("ruri_full_compliance", F(ruri_full_compliance)),
};
#undef F

// ---------------------------------------------------------------------------
// H.323 signalling settings ("config.VOIP.h323"). The writers of the global
// VoIP sections send every number as unsigned (-1 as 4294967295).
#define F(member) CFG_FIELD(h323_cfg_t, member)
inline constexpr key h323_keys[] = {
    number("timetolive", F(timetolive)).sent_as(sent::uint),
    number("keepalivetime", F(keepalivetime)).sent_as(sent::uint),
    number("enableh323", F(enableh323)).sent_as(sent::uint),
    number("h235", F(h235)).sent_as(sent::uint),
    number("ignore_gcf", F(ignore_gcf)).sent_as(sent::uint),
    number("disabletunneling", F(disabletunneling)).sent_as(sent::uint),
    number("disablefaststart", F(disablefaststart)).sent_as(sent::uint),
    number("usegatekeeper", F(usegatekeeper)).sent_as(sent::uint),
    text("gatekeeperip", F(gatekeeperip)),
    text("h323aliase", F(h323aliase)),
    number("isgateway", F(isgateway)).sent_as(sent::uint),
    number("dtmftransfer", F(dtmftransfer)).sent_as(sent::uint),
    number("bearercapability", F(bearercapability)).sent_as(sent::uint),
    text("password", F(password)),
};

// Port ranges of the voice services ("config.VOIP.range"), kept in the H.323
// record. Ports above 65500 are kept free for the system.
inline constexpr key range_keys[] = {
    range("tcpportmin", F(tcpportmin), 1024, 65500, 10000).sent_as(sent::uint),
    range("tcpportmax", F(tcpportmax), 1024, 65500, 11920).sent_as(sent::uint),
    range("udpportmin", F(udpportmin), 1024, 65500, 12000).sent_as(sent::uint),
    range("udpportmax", F(udpportmax), 1024, 65500, 13920).sent_as(sent::uint),
    range("rtph323min", F(rtph323min), 1024, 65500, 33000).sent_as(sent::uint),
    range("rtph323max", F(rtph323max), 1024, 65500, 35000).sent_as(sent::uint),
    range("rtpsipmin", F(rtpsipmin), 1024, 65500, 16384).sent_as(sent::uint),
    range("rtpsipmax", F(rtpsipmax), 1024, 65500, 32767).sent_as(sent::uint),
    range("intrcpmin", F(intrcpmin), 1024, 65500, 50000).sent_as(sent::uint),
    range("intrcpmax", F(intrcpmax), 1024, 65500, 50100).sent_as(sent::uint),
    checkbox("verify_remote_media", F(verify_remote_media)),
    range("sip_dscp", F(sip_dscp), 0, 63, 26).sent_as(sent::uint),
};
#undef F

// ---------------------------------------------------------------------------
// SIP settings common to the whole gateway ("config.VOIP.sip").
#define F(member) CFG_FIELD(sip_cfg_t, member)
inline constexpr key sip_keys[] = {
    checkbox("enablesip", F(enablesip)),
    range("transport", F(transport), 1, 3, 0).sent_as(sent::uint), // no value and other numbers: 0
    range("invite_init_t", F(invite_init_t), 100, 1000, 500).sent_as(sent::uint),
    range("invite_init_max_t", F(invite_init_max_t), 1000, 32000, 4000).sent_as(sent::uint),
    range("invite_total_t", F(invite_total_t), 1000, 39000, 32000).sent_as(sent::uint),
    range("sip_mtu", F(sip_mtu), 1300, 1450, 1300).sent_as(sent::uint),
    checkbox("shortmode", F(shortmode)),
    range("port_reg_delay_t", F(port_reg_delay_t), 0, 5000, 0).sent_as(sent::uint),
    checkbox("stun_enable", F(stun_enable)),
    text("stun_server", F(stun_server)),
    // 0 (STUN keep-alive off) for no value and for anything outside 10..1800.
    range("stun_interval", F(stun_interval), 10, 1800, 0).sent_as(sent::uint),
    text("publicip", F(publicip)),
};
#undef F

// ---------------------------------------------------------------------------
// Gateway-wide voice settings ("config.VOIP.general").
#define F(member) CFG_FIELD(general_cfg_t, member)
inline constexpr key general_keys[] = {
    text("device_name", F(device_name)),
    text("unit_prefix", F(unit_prefix)),
    checkbox("use_uni", F(use_uni)),
    range("start_timer", F(start_timer), 10, 300, 300).sent_as(sent::uint),
    range("wait_answer_timer", F(wait_answer_timer), 40, 300, 180).sent_as(sent::uint),
    range("duration_timer", F(duration_timer), 10, 300, 300).sent_as(sent::uint),
    checkbox("fans_force_enable", F(fans_force_enable)),
    range("fans_threshold_temperature", F(fans_threshold_temperature), 35, 55, 55).sent_as(sent::uint),
    checkbox("power_mode", F(power_mode)),
};
#undef F

// ---------------------------------------------------------------------------
// Call-progress tones ("config.VOIP.tones"): texts kept as they come.
#define F(member) CFG_FIELD(tones_cfg_t, member)
inline constexpr key tones_keys[] = {
    text("country", F(country)),
    text("dialtone_freq", F(dialtone_freq)),
    text("dialtone_cadence", F(dialtone_cadence)),
    text("busytone_freq", F(busytone_freq)),
    text("busytone_cadence", F(busytone_cadence)),
    text("disconnect_freq", F(disconnect_freq)),
    text("disconnect_cadence", F(disconnect_cadence)),
    text("ringbacktone_freq", F(ringbacktone_freq)),
    text("ringbacktone_cadence", F(ringbacktone_cadence)),
    text("congestiontone_freq", F(congestiontone_freq)),
    text("congestiontone_cadence", F(congestiontone_cadence)),
};
#undef F

// ---------------------------------------------------------------------------
// Logging settings of the voice applications ("config.VOIP.trace"); a flag
// param sets or clears its own bit of trace_cfg_t::flags only.
namespace trace_bits {
enum : uint8_t { app_alarm, app_err, app_warn, app_info, app_dbg, vapi_enabled, run_syslog, syslog_to_file };
} // namespace trace_bits

#define F(member)  CFG_FIELD(trace_cfg_t, member)
#define FLAG(name) flag(#name, F(flags), trace_bits::name)
inline constexpr key trace_keys[] = {
    range("sip_level", F(sip_level), -1, 9, 0), // -1 (trace off) goes out signed
    range("h323_level", F(h323_level), 0, 6, 0).sent_as(sent::uint),
    range("vapi_level", F(vapi_level), 0, 65, 0).sent_as(sent::uint),
    FLAG(vapi_enabled),
    FLAG(app_info),
    FLAG(app_warn),
    FLAG(app_err),
    FLAG(app_dbg),
    FLAG(app_alarm),
    // Stored as sent; the writer always sends "syslog_server".
    text("trace_out", F(trace_out)).sent_as(sent::own_format),
    range("syslog_port", F(syslog_port), 0, 65535, 514).sent_as(sent::uint),
    text("syslog_addr", F(syslog_addr)),
    FLAG(run_syslog),
    FLAG(syslog_to_file),
};
#undef FLAG
#undef F

// ---------------------------------------------------------------------------
// Service codes of the supplementary services ("config.VOIP.dvo"), at most 3
// characters each.
#define F(member) CFG_FIELD(dvo_cfg_t, member)
inline constexpr key dvo_keys[] = {
    text("dnd", F(dnd)),
    text("callwaiting", F(callwaiting)),
    text("ct_attended", F(ct_attended)),
    text("ct_unattended", F(ct_unattended)),
    text("cf_unconditional", F(cf_unconditional)),
    text("cf_busy", F(cf_busy)),
    text("cf_noanswer", F(cf_noanswer)),
    text("cf_outofservice", F(cf_outofservice)),
};
#undef F

// ---------------------------------------------------------------------------
// One alert-info cadence of a VoIP profile
// ("config.VOIP.profile.profile_N.sip_cadences.sip_cadence_M").
#define F(member) CFG_FIELD(sip_cadence_cfg_t, member)
inline constexpr key sip_cadence_keys[] = {
    text("name", F(name)),
    text("ring_rule", F(ring_rule)),
};
#undef F

// ---------------------------------------------------------------------------
// One ring cadence ("config.VOIP.cadences.cadence_N"). "ring" comes before
// "rule": a name that begins with "ring" never reaches it.
#define F(member) CFG_FIELD(cadence_cfg_t, member)
inline constexpr key cadence_keys[] = {
    special("ring", F(ring), rule::clamped, 0, 4000, 0),
    special("pause", F(pause), rule::clamped, 0, 25500, 0),
    // Sent as the set flags in ascending order ("0,2,5").
    special("mask", F(mask), rule::flag_list, 0, 7, 0).sent_as(sent::own_format),
    text("rule", F(rule)),
};
#undef F

// ---------------------------------------------------------------------------
// Regular-expression dial plan of a profile
// ("config.VOIP.profile.profile_N.regexprd"), kept in the profile's dial-plan
// record; the expression is stored as text, never compiled here.
#define F(member) CFG_FIELD(profile_dialplan_cfg_t, member)
inline constexpr key regexprd_keys[] = {
    checkbox("regex_on", F(regex_on)),
    text("proto", F(proto)),
    range("start_timer", F(start_timer), 10, 300, 300),
    text("regex", F(regex)),
};
#undef F

// ---------------------------------------------------------------------------
// Dial-plan rules of a profile ("config.VOIP.profile.profile_N.dialplan"):
// "dialplan_R", R 0..299, each a rule line of its own format.
inline constexpr key dialplan_keys[] = {
    special("dialplan", CFG_FIELD(profile_dialplan_cfg_t, entries[0]), rule::dial_plan_line)
        .numbered(CFG_DIALPLAN_ENTRIES, sizeof(dial_plan_t), entry_form::leading_digits_after_underscore)
        .sent_as(sent::own_format),
};

// ---------------------------------------------------------------------------
// One hunt group ("config.VOIP.groups.group_N", "...fxo_group_N").
#define F(member) CFG_FIELD(group_cfg_t, member)
inline constexpr key group_keys[] = {
    checkbox("enabled", F(enabled)),
    checkbox("transmit_number", F(transmit_number)),
    checkbox("dont_transmit_prefix", F(dont_transmit_prefix)),
    checkbox("fxo_call_busy", F(fxo_call_busy)),
    range("type", F(type), 0, 4, 0),
    range("busy", F(busy), 0, 1, 0),
    text("phone", F(phone)),
    range("timeout", F(timeout), 5, 120, 0),
    range("sip_port", F(sip_port), 0, 65535, 0),
    text("name", F(name)),
    text("password", F(password)),
    special("ports", F(port_list), rule::group_ports).sent_as(sent::own_format),
    range("profile_id", F(profile_id), 0, 7, 0),
};
#undef F

// ---------------------------------------------------------------------------
// Call limits ("config.VOIP.limits"): "limit_N", N 0..29, each a target word
// and a number, kept in parallel arrays.
inline constexpr key limit_keys[] = {
    special("limit", CFG_FIELD(limit_cfg_t, target[0]), rule::limit_line)
        .numbered(CFG_LIMITS, sizeof(limit_cfg_t{}.target[0]), entry_form::digits_after_underscore)
        .sent_as(sent::own_format),
};

// ---------------------------------------------------------------------------
// One number modifier ("config.VOIP.modifiers.modifier_M"): "mod_rule_R",
// R 0..31, each a line of three words.
inline constexpr key modifier_keys[] = {
    special("mod_rule_", CFG_FIELD(modifier_cfg_t, rules[0]), rule::modifier_rule)
        .numbered(CFG_MODIFIER_RULES, sizeof(mod_rule_t), entry_form::digits_after_last_underscore)
        .sent_as(sent::own_format),
};

} // namespace cfg::keys
