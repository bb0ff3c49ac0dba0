#!/usr/bin/env python3
"""Writes examples/full-config.txt: one configuration message, in the text form
of tools/msgtext.h, that sets every section and every list of a 72-port
gateway with 8 profiles, with values inside the range of each param.

    tools/make-full-config.py > examples/full-config.txt
    ./build/cfgmsg encode examples/full-config.txt > examples/full-config.msg

The output is deterministic: the same script gives the same bytes.
"""

PORTS = 72
FXO_FIRST = 64          # ports 64..71 are line (FXO) ports
PROFILES = 8
DIALPLAN_PROFILES = 4
SIP_SERVERS = 5

out = []


def node(path, params):
    out.append("")
    out.append(f"[{path}]")
    for name, value in params:
        value = "" if value is None else str(value)
        out.append(f"    {name} = {value}".rstrip() if value else f"    {name} =")


def flag(x):
    return 1 if x else 0


# --- VoIP globals ---------------------------------------------------------

def voip_globals():
    node("config.VOIP.h323", [
        ("enableh323", 1), ("ignore_gcf", 0), ("disablefaststart", 0), ("disabletunneling", 0),
        ("h235", 0), ("password", "gk-Secret7"), ("usegatekeeper", 1), ("gatekeeperip", "10.20.0.5"),
        ("h323aliase", "gw-central-01"), ("isgateway", 1), ("dtmftransfer", 2), ("timetolive", 300),
        ("keepalivetime", 30), ("bearercapability", 0)])
    node("config.VOIP.range", [
        ("tcpportmin", 10000), ("tcpportmax", 11920), ("udpportmin", 12000), ("udpportmax", 13920),
        ("rtph323min", 33000), ("rtph323max", 35000), ("rtpsipmin", 16384), ("rtpsipmax", 32767),
        ("intrcpmax", 50100), ("intrcpmin", 50000), ("sip_dscp", 26), ("verify_remote_media", 1)])
    node("config.VOIP.sip", [
        ("enablesip", 1), ("shortmode", 0), ("transport", 1), ("sip_mtu", 1400),
        ("invite_total_t", 32000), ("invite_init_t", 500), ("invite_init_max_t", 4000),
        ("port_reg_delay_t", 200), ("stun_enable", 1), ("stun_server", "stun.voip.example.net"),
        ("stun_interval", 60), ("publicip", "203.0.113.17")])
    node("config.VOIP.general", [
        ("unit_prefix", "7495"), ("use_uni", 1), ("start_timer", 20), ("device_name", "gw-central-01"),
        ("duration_timer", 120), ("wait_answer_timer", 60), ("fans_force_enable", 0),
        ("fans_threshold_temperature", 45), ("power_mode", 1)])
    node("config.VOIP.tones", [
        ("country", "Russia"), ("dialtone_freq", "425"), ("dialtone_cadence", "0"),
        ("busytone_freq", "425"), ("busytone_cadence", "350,350"), ("disconnect_freq", "425"),
        ("disconnect_cadence", "350,350"), ("ringbacktone_freq", "425"),
        ("ringbacktone_cadence", "1000,4000"), ("congestiontone_freq", "425"),
        ("congestiontone_cadence", "175,175")])
    node("config.VOIP.trace", [
        ("sip_level", 3), ("h323_level", 1), ("vapi_level", 0), ("vapi_enabled", 0), ("app_alarm", 1),
        ("app_err", 1), ("app_warn", 1), ("app_info", 0), ("app_dbg", 0), ("trace_out", "syslog_server"),
        ("syslog_addr", "10.20.0.9"), ("syslog_port", 514), ("run_syslog", 1), ("syslog_to_file", 0)])
    node("config.VOIP.dvo", [
        ("callwaiting", "*43"), ("ct_attended", "*31"), ("ct_unattended", "*32"),
        ("cf_unconditional", "*21"), ("cf_busy", "*22"), ("cf_noanswer", "*61"),
        ("cf_outofservice", "*62"), ("dnd", "*26")])
    for c in range(32):
        ring = [1000, 800, 400, 1500][c % 4]
        pause = [4000, 3200, 200, 3000][c % 4]
        node(f"config.VOIP.cadences.cadence_{c}", [
            ("rule", f"{ring},{pause}" if c % 4 != 2 else "400,200,400,4000"),
            ("ring", ring), ("pause", pause), ("mask", ",".join(str(b) for b in range(8) if (c >> (b % 5)) & 1))])


# --- Ports and port profiles ---------------------------------------------

def port_params(i):
    fxo = i >= FXO_FIRST
    number = f"{2100 + i}"
    profile = (i // 9) % PROFILES
    pickup = ",".join(str(g) for g in (i % 8, 8 + i % 3) if not fxo)
    return [
        ("phone", number), ("user_name", number), ("auth_name", f"gw01-{number}"),
        ("auth_pass", f"Pw{(i * 7919) % 100000:05d}"), ("usealtnumber", flag(i % 10 == 3)),
        ("altnumber", f"+7495555{number}" if i % 10 == 3 else ""), ("usealtnumber_as_private", 0),
        ("custom", flag(i % 5 == 0)), ("port_profile_id", profile), ("profile_id", profile),
        ("aon", 2 if fxo else i % 5), ("aon_hide_date", 0), ("aon_hide_name", flag(i % 7 == 0)),
        ("taxophone", 0), ("flashtime", 600), ("min_flashtime", 80), ("gainr", -30 - i % 4 * 10),
        ("gaint", i % 3 * 10), ("category", 1), ("cpc_rus", 0), ("calltransfer", i % 3),
        ("callwaiting", flag(not fxo)), ("cfb_pri_over_cw", 0), ("playmoh", flag(i % 2 == 0)),
        ("hotline", flag(i % 16 == 15)), ("no_offhook_at_ringing", 0),
        ("hotnumber", "112" if i % 16 == 15 else ""), ("hottimeout", 5 if i % 16 == 15 else 0),
        ("ct_busy", flag(i % 6 == 1)), ("ct_noanswer", flag(i % 6 == 2)), ("ct_unconditional", 0),
        ("ct_outofservice", 0), ("ct_timeout", 20),
        ("cfu_number", ""), ("cfb_number", f"{2100 + (i + 1) % PORTS}" if i % 6 == 1 else ""),
        ("cfnr_number", "2000" if i % 6 == 2 else ""), ("cfoos_number", ""),
        ("dvo_callwaiting_en", 1), ("dvo_ct_attended_en", 1), ("dvo_ct_unattended_en", 1),
        ("dvo_cf_unconditional_en", 1), ("dvo_cf_busy_en", 1), ("dvo_cf_noanswer_en", 1),
        ("dvo_cf_outofservice_en", 0), ("dvo_dnd_en", 1), ("clir", 0), ("dnd", 0), ("stop_dial", 0),
        ("sip_port", 5060 + i), ("disabled", flag(i in (62, 63))), ("pickupgroup", pickup),
        ("tdmhotline", 0), ("tdmhottimeout", 15), ("tdmhotnumber", ""), ("fxoflashtime", 300),
        ("fxo_dtmfpause", 100), ("fxoringtdm", 2 if fxo else 0),
        ("pstn_numberprefix", "9" if fxo else ""), ("pstn_nameprefix", "PSTN" if fxo else ""),
        ("usepstncid", flag(fxo)), ("dont_detect_DT", 0), ("fxo_delay_dialing", 2 if fxo else 0),
        ("enable_cpc", 0), ("cpc_time", 300), ("dialing", "DTMF"), ("dont_transmit_prefix", 0),
        ("transmit_number", flag(fxo)), ("dial_tone_detect", "425" if fxo else ""), ("dt_detect_time", 5),
        ("rb_tone_detect", "425" if fxo else ""), ("busy_tone_detect", "425" if fxo else ""),
        ("min_level_detect", 32), ("decade_pulse_time", 60), ("decade_pause_time", 40),
        ("fxo_call_busy", 0), ("pstn_200_at_answer", 1), ("pstn_rb_detect_timeout", 5),
        ("fxo_detect_line_presence", flag(fxo)), ("fxo_block_line_presence", 0),
        ("modifier", i % 4 - 1), ("mwi_dialtone", 1), ("agc_spk_enable", 0), ("agc_spk_level", -20),
        ("agc_mic_enable", 0), ("agc_mic_level", -20), ("fxo_dtmftime", 80), ("dscp", 46),
        ("disconnect_tone_detect", "425" if fxo else "")]


PORT_DEFAULT_NAMES = [
    "aon", "taxophone", "min_flashtime", "flashtime", "fxoflashtime", "fxo_dtmfpause", "fxoringtdm",
    "gainr", "gaint", "category", "cpc_rus", "cfb_pri_over_cw", "aon_hide_date", "aon_hide_name",
    "playmoh", "usepstncid", "pstn_numberprefix", "pstn_nameprefix", "dont_detect_DT",
    "fxo_delay_dialing", "enable_cpc", "cpc_time", "transmit_number", "dont_transmit_prefix", "dialing",
    "dial_tone_detect", "dt_detect_time", "rb_tone_detect", "busy_tone_detect", "min_level_detect",
    "decade_pulse_time", "decade_pause_time", "fxo_call_busy", "pstn_200_at_answer",
    "pstn_rb_detect_timeout", "fxo_detect_line_presence", "fxo_block_line_presence", "stop_dial",
    "modifier", "fxo_dtmftime", "dscp", "disconnect_tone_detect"]


def ports():
    for i in range(PORTS):
        node(f"config.VOIP.ports.port_{i}", port_params(i))
    for d in range(8):
        # A port profile is the settings of a typical port that uses it;
        # profile 7 holds the line-port defaults.
        values = dict(port_params(FXO_FIRST if d == 7 else d * 9))
        node(f"config.VOIP.ports.port_def_{d}", [(n, values[n]) for n in PORT_DEFAULT_NAMES])


# --- Profiles and dial-plan profiles -------------------------------------

def codec_params(k):
    return [
        ("g711a", 1), ("g711u", 2), ("g729a", 0), ("g729b", k % 2), ("g729x", 3), ("g723", 0),
        ("g726_32", 4 if k % 3 == 0 else 0), ("g711pte", 20), ("g729pte", 20 + 10 * (k % 2)),
        ("g723pte", 30), ("g726_32_pte", 20), ("g726_32_pt", 102), ("dtmftransfer", 1 + k % 2),
        ("payload", 101), ("rfc3264_pt_common", 0), ("nse_payload", 100), ("faxdirection", 0),
        ("faxtransfer", 1), ("slave_faxtransfer", 3), ("modemtransfer", 1), ("silencedetector", 0),
        ("echocanceller", 1), ("ecan_nlp_disable", 0), ("comfortnoise", 1), ("jb_pt_delay", 60),
        ("jb_vo_delay_min", 20), ("jb_vo_delay_max", 200), ("jb_vo_adaptive", 1),
        ("jb_vo_del_threshold", 500), ("jb_vo_del_mode_soft", 0), ("t38_datagram", 320),
        ("t38_bitrate", 14400), ("dispersion_time", 64)]


def dial_rule(p, r):
    # field1 field2 field3 protocol destination "field6" field7 field8 field9 mask field11
    rules = [
        f"2XXX 4 0 sip \"proxy\" \"\" 0 0 0 +0-63 0",
        f"8XXXXXXXXXX 11 0 sip \"proxy\" \"8\" 1 0 0 +0-63 0",
        f"9X. 12 0 sip-t 10.20.0.{20 + p} \"9\" 0 5 0 +64-71 1",
        f"7{p}XX 4 0 h323 \"gatekeeper\" \"\" 0 0 0 +0-31 0",
        f"112 3 0 sip 10.20.0.30 \"\" 0 0 0 - 0",
        f"*8 2 0 pickup local \"\" 0 0 0 +0-15 0",
    ]
    return rules[r % len(rules)]


def profiles():
    for p in range(PROFILES):
        node(f"config.VOIP.profile.profile_{p}.codecs",
             codec_params(p) + [("flashtransfer", 1), ("rtcp_timer", 5), ("rtcp_period", 10),
                                ("rtcp_xr", flag(p < 2))])
        servers = []
        for s in range(SIP_SERVERS):
            host = f"sip{s}.pbx{p}.example.net" if s < 2 else ""
            servers += [(f"proxy_{s}", host), (f"regrar_{s}", host)]
        node(f"config.VOIP.profile.profile_{p}.sip", [
            ("cw_ringback", 0), ("no_replaces", 0), ("100rel", 1), ("ringback_sdp", 1), ("ringback", 1),
            ("mode", 1 + p % 2), ("register_retry_interval", 30), ("inbound_proxy", 0),
            ("domain_to_reg", 1), ("options", 1), ("keepalivet", 60000), ("outbound", 0),
            ("expires", 1800), ("authentication", 1), ("registration", 1), ("username", f"pbx{p}"),
            ("password", f"Reg{p}Secret"), ("domain", f"pbx{p}.example.net")] + servers + [
            ("uri_escape_hash", 0), ("user_phone", 0), ("obtimeout", 10), ("dtmfmime", "dtmf"),
            ("hfmime", "hookf"), ("reduce_sdp_media_count", 0), ("p_rtp_stat", 0), ("timer", 1),
            ("min_se", 120), ("session_expires", 1800), ("keep_alive_interval", 30), ("keep_alive_mode", 1),
            ("conference_type", 1), ("conference_serv_name", f"conf@pbx{p}.example.net"),
            ("ims_notify_on", 0), ("xcap_conference_name", "three-party-conference"),
            ("xcap_hotline_name", "hot-line-service"), ("xcap_cw_name", "call-waiting"),
            ("xcap_callhold_name", "call-hold"), ("xcap_calltransfer_name", "explicit-call-transfer"),
            ("use_alert_info", flag(p < 4)), ("changeover", 0), ("ruri_full_compliance", 0),
            ("changeover_by_408", 0)])
        for c in range(16):
            used = c < 4
            node(f"config.VOIP.profile.profile_{p}.sip_cadences.sip_cadence_{c}", [
                ("name", ["internal", "external", "priority", "group"][c] if used else ""),
                ("ring_rule", ["1000,4000", "400,200,400,4000", "200,200,200,200,1000,4000", "800,3200"][c]
                 if used else "")])
        node(f"config.VOIP.profile.profile_{p}.dialplan",
             [(f"dialplan_{r}", dial_rule(p, r)) for r in range(6 + p)])
        node(f"config.VOIP.profile.profile_{p}.regexprd", [
            ("regex_on", flag(p == 0)), ("proto", "sip"), ("regex", "(2xxx|8xxxxxxxxxx|112)"),
            ("start_timer", 10)])
    for d in range(DIALPLAN_PROFILES):
        node(f"config.VOIP.dialplan_profiles.dialplan_profile{d}",
             codec_params(d) + [("agc_spk_enable", flag(d == 1)), ("agc_spk_level", -18),
                                ("agc_mic_enable", flag(d == 1)), ("agc_mic_level", -12),
                                ("max_calls", 30 + 10 * d)])


# --- VoIP lists -----------------------------------------------------------

def voip_lists():
    for g in range(6):
        members = ",".join(str(p) for p in range(g * 8, g * 8 + 8))
        node(f"config.VOIP.groups.group_{g}", [
            ("phone", f"{3000 + g}"), ("name", f"hunt{g}"), ("password", f"Hg{g}pass"),
            ("ports", members), ("type", g % 3), ("timeout", 20), ("busy", 0), ("enabled", 1),
            ("sip_port", 5200 + g), ("profile_id", g % PROFILES)])
    for g in range(2):
        members = ",".join(str(p) for p in range(FXO_FIRST + 4 * g, FXO_FIRST + 4 * g + 4))
        node(f"config.VOIP.groups.fxo_group_{g}", [
            ("phone", f"{3900 + g}"), ("name", f"trunk{g}"), ("password", f"Tr{g}pass"),
            ("ports", members), ("type", 1), ("busy", 1), ("enabled", 1), ("sip_port", 5300 + g),
            ("profile_id", 7), ("transmit_number", 1), ("dont_transmit_prefix", 0), ("fxo_call_busy", 1)])
    node("config.VOIP.limits", [
        ("limit_0", "[proxy] 60"), ("limit_1", "10.20.0.30 8"), ("limit_2", "sip0.pbx1.example.net 24")])
    for m in range(3):
        node(f"config.VOIP.modifiers.modifier_{m}", [
            ("mod_rule_0", "8XXXXXXXXXX 1 +7"), ("mod_rule_1", f"{m}XXX 0 7495555"),
            ("mod_rule_2", "+7XXXXXXXXXX 2 8")][: m + 1])


# --- Network --------------------------------------------------------------

def network():
    vlans = []
    for n in (1, 2, 3):
        vlans += [
            (f"VLAN{n}", 1), (f"VID{n}", 100 * n), (f"DHCPD{n}", 0), (f"DHCP_GW{n}", 0),
            (f"V{n}IPADDR", f"10.{n}.0.2"), (f"V{n}NETMASK", "255.255.255.0"), (f"V{n}BROADCAST", f"10.{n}.0.255"),
            (f"COS{n}", 5 if n == 1 else 3), (f"V{n}MTU", 1496)]
    node("config.Network.network", [
        ("IPADDR", "192.168.1.10"), ("NETMASK", "255.255.255.0"), ("GATEWAY", "192.168.1.1"),
        ("BROADCAST", "192.168.1.255"), ("MTU", 1500), ("DNSIP", "192.168.1.1"), ("RESERVED_DNSIP", "8.8.8.8"),
        ("TELNET_EN", 0), ("TELNET_PORT", 23), ("SSH_EN", 1), ("SSH_PORT", 2222), ("STP_EN", 0), ("DHCPD", 0),
        ("DHCP_GW", 0), ("PPPOE_ENABLE", 0), ("PPPOE_USER", "gw01"), ("PPPOE_PASSWORD", "Pppoe-pass"),
        ("PPPOE_VLAN", 0), ("PPPOE_VID", 0), ("PPPOE_MTU", 1400), ("WEB_PORT", 80), ("HTTPS_PORT", 443),
        ("WEB_EN", 1), ("USE_VENDOR_INFO", 1), ("VENDOR_INFO", "gw-central-01"),
        ("opt82_cid", "rack4-slot2"), ("opt82_rid", "agg-sw-7")] + vlans + [
        ("RTP_VLAN", 1), ("SIG_VLAN", 1), ("CTL_VLAN", 2), ("PPTP_ENABLE", 0), ("PPTP_SERVER", "vpn.example.net"),
        ("PPTP_USER", "gw01"), ("PPTP_PASSWORD", "Pptp-pass"), ("PPTP_VLAN", 0), ("PPTP_VID", 0),
        ("PPTP_ACCESSTYPE", "dhcp"), ("PPTP_IP", "10.99.0.2"), ("PPTP_NETMASK", "255.255.255.0"),
        ("PPTP_GW", "10.99.0.1"), ("PPTP_DNS", "10.99.0.1"), ("PPTP_IF_MTU", 1400),
        ("AUTOUPDATE", 1), ("AUTOUPDATE_SRC", "static"), ("AUTOUPDATE_TFTP", "10.20.0.40"),
        ("AUTOUPDATE_CFG", "cfg/gw-central-01.cfg"), ("AUTOUPDATE_FW", "fw/gateway.bin"),
        ("AUTOUPDATE_CFG_MODE", "periodic"), ("AUTOUPDATE_FW_MODE", "time"), ("CFG_INTERVAL", 3600),
        ("FW_INTERVAL", 86400), ("CFG_TIME", "03:00"), ("FW_TIME", "04:30"), ("AUTOUPDATE_PROTO", "http"),
        ("AUTOUPDATE_AUTH", 1), ("AUTOUPDATE_USER", "updater"), ("AUTOUPDATE_PASS", "Upd-pass"),
        ("NTPEN", 1), ("NTP_INTERVAL", 3600), ("NTPIP", "pool.ntp.org"), ("ZONEINFO", "Europe/Moscow"),
        ("DST_ENABLE", 0), ("DST_START", "Mar last Sun 02:00"), ("DST_END", "Oct last Sun 03:00"),
        ("DST_OFFSET", 60), ("RADIUS_ENABLE", 1), ("RADIUS_SERVER", "10.20.0.50"),
        ("RADIUS_SECRET", "Radius-secret"), ("RADIUS_RETRY", 3), ("LANGUAGE", "en"), ("SNMP", 1)])
    node("config.Network.LLDP", [("enable", 1), ("tx_interval", 30)])
    node("config.Network.hosts", [
        ("host_0", "10.20.0.5 gatekeeper"), ("host_1", "10.20.0.9 syslog"), ("host_2", "10.20.0.40 tftp")])
    node("config.Network.mac_filter", [
        ("mac_filter_mode", "allow"), ("client_0", "00:1a:2b:3c:4d:01"), ("client_1", "00:1a:2b:3c:4d:02")])
    node("config.Network.routes", [
        ("route_0", "10.20.0.0 255.255.0.0 192.168.1.254"),
        ("route_1", "10.99.0.0 255.255.255.0 10.1.0.1 .eth1")])
    node("config.Network.rules", [
        ("rule_0", "192.168.1.0 24 TCP all_src_ports 22 1 ACCEPT"),
        ("rule_1", "all_src_ip UDP all_src_ports 5060 10 ACCEPT"),
        ("rule_2", "all_src_ip UDP 16384 16384 16384 16384 ACCEPT"),
        ("rule_3", "10.20.0.0 16 ICMP echo-request ACCEPT"),
        ("rule_4", "all_src_ip any DROP")])
    node("config.Network.snmp", [
        ("sys_name", "gw-central-01"), ("sys_location", "Moscow, rack 4"), ("sys_contact", "noc@example.net"),
        ("trap_sink", "10.20.0.60"), ("trap_type", "v2"), ("trap_community", "traps"),
        ("rocommunity", "public-ro"), ("rwcommunity", "private-rw")])
    node("config.Network.snmp_users", [("user_0", "monitor Auth-pass-1 authPriv")])
    node("config.Network.IPSec", [
        ("Enable", 1), ("LocalIP", "192.168.1.10"), ("LocalSubnet", "192.168.1.0"),
        ("LocalNetmask", "255.255.255.0"), ("RemoteSubnet", "10.20.0.0"), ("RemoteNetmask", "255.255.0.0"),
        ("RemoteGateway", "198.51.100.1"), ("NATPort", 4500), ("NATKeepAlive", 20), ("NAT", "auto"),
        ("AgressiveMode", 0), ("IdentifierType", "fqdn"), ("Identifier", "gw01.example.net"),
        ("PreshareKey", "Ipsec-psk-0123"), ("IKEAuthAlgorithm", "sha1"), ("IKEEncryptAlgorithm", "aes128"),
        ("IKEDhGroup", 2), ("IKELifeTime", 28800), ("AuthAlgorithm", "hmac_sha1"),
        ("EncryptAlgorithm", "aes128"), ("PfsGroup", 2), ("Lifetime", 3600)])
    node("config.Network.TR069", [
        ("Enable", 1), ("URL", "https://acs.example.net:7547/acs"), ("PeriodicInformEnable", 1),
        ("PeriodicInformInterval", 3600), ("Username", "gw01"), ("Password", "Acs-pass"),
        ("ConnectionRequestUsername", "acs"), ("ConnectionRequestPassword", "Cr-pass"), ("NATMode", "stun"),
        ("STUNServerAddress", "stun.example.net"), ("STUNServerPort", 3478),
        ("STUNMinimumKeepAlivePeriod", 30), ("STUNMaximumKeepAlivePeriod", 60), ("NATAddress", "")])


# --- Switch ---------------------------------------------------------------

def switch():
    vlan = []
    masks = ["1 1 1 1 0 0", "1 0 0 1 0 0", "0 1 0 1 0 0", "0 0 1 1 0 0", "0 0 0 1 1 1", "0 0 0 0 0 0"]
    for v in range(6):
        vlan += [(f"enable{v}", flag(v < 5)), (f"vid{v}", [1, 100, 200, 300, 400, 0][v]), (f"im{v}", v % 3),
                 (f"eg{v}", v % 4), (f"ov{v}", 0), (f"portmask{v}", masks[v]), (f"portmode{v}", "trunk" if v else "access"),
                 (f"backup_port{v}", "sfp1" if v == 4 else "none"), (f"preemption{v}", "on" if v == 4 else "off")]
    node("config.Switch.vlan", vlan + [("hubmode", 0)])
    qos = []
    for p in range(6):
        qos += [(f"prio{p}", p % 4), (f"qos_mode{p}", 3), (f"tag_remap_mask{p}", "0xfac688"),
                (f"ingress_limit_mode{p}", 0), (f"ingress_rate{p}", 0 if p < 3 else 100000),
                (f"ingress_mask{p}", "0x0"), (f"egress_rate{p}", 0 if p < 3 else 100000)]
    node("config.Switch.qos", qos + [
        ("ieee_pri", "0xfa50"), ("diffserv_remap003C_mask", "0x0"), ("diffserv_remap407C_mask", "0x55555555"),
        ("diffserv_remap80BC_mask", "0xaaaaaaaa"), ("diffserv_remapC0FC_mask", "0xffffffff")])
    vtu = []
    for r in range(16):
        fields = ["vid", "override", "priority", "port0", "port1", "port2", "cpu", "sfp0", "sfp1"]
        if r < 4:
            values = [[100, 200, 300, 400][r], 0, 5 if r == 0 else 0, 2, 1 if r == 1 else 3, 1 if r == 2 else 3,
                      2, 2, 3]
        else:
            values = [None] * 9
        vtu += [(f"vtu{r}.{f}", v) for f, v in zip(fields, values)]
    node("config.Switch.vtu", vtu)


voip_globals()
ports()
profiles()
voip_lists()
network()
switch()

print("# A complete configuration of a 72-port gateway with 8 profiles: every section")
print("# and every list, as one message from the configuration manager. Generated by")
print("#     tools/make-full-config.py > examples/full-config.txt")
print("# and encoded with")
print("#     ./build/cfgmsg encode examples/full-config.txt > examples/full-config.msg")
print("header0 = 0x00000000")
print("header2 = 0x00000000")
print("operation = 2")
print("\n".join(out))
