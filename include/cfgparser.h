/*
 * cfgparser.h - public interface of libcfgparser.
 *
 * The configuration image and every section record it holds, the exported
 * mutex RWlockCfg, the message format constants and all exported functions.
 * Valid C99 and C++.
 *
 * Layout rules shared with the application:
 *   - A text field `char name[N]` holds at most N - 1 characters and a NUL;
 *     longer values are cut, an empty value zero-fills the field.
 *   - Every `updated` member is a time-stamp: seconds as returned by
 *     cfgpars_get_monotonic_now_time().
 *   - Lists carry `start` (the in-progress marker CFG_LIST_UPDATING, or
 *     CFG_MAC_LIST_UPDATING for the MAC filter, set by a requester; otherwise
 *     the last count) and `current` (the number of filled entries at the last
 *     recount).
 *   - Members named app_reserved... are areas that only the application
 *     uses; the library never reads or writes them.
 *   - Every access the library makes to the image, except the writers' reads,
 *     happens under RWlockCfg.
 */
#ifndef CFGPARSER_H
#define CFGPARSER_H

#include <pthread.h>
#include <stddef.h>
#include <stdint.h>

#ifndef CFGPARSER_API
#define CFGPARSER_API __attribute__((visibility("default")))
#endif

/* No library function lets a C++ exception escape. */
#ifdef __cplusplus
#define CFG_NOEXCEPT noexcept
#else
#define CFG_NOEXCEPT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------ */
/* Constants                                                                 */
/* ------------------------------------------------------------------------ */

/* Configuration message: 12-byte header, the u32 LE body length at offset 4,
 * then the operation byte (writers put CFG_MSG_OP_CONFIG), nodes and a
 * terminating 0 byte. */
#define CFG_MSG_HEADER_SIZE        12
#define CFG_MSG_BODY_LENGTH_OFFSET 4
#define CFG_MSG_OP_CONFIG          2

/* Trace levels of cfg_trace(); only CFG_TRACE_ERROR lines are printed. */
#define CFG_TRACE_ERROR 1
#define CFG_TRACE_INFO  3
#define CFG_TRACE_DEBUG 4

/* List markers: a list update is in progress while `start` holds these. */
#define CFG_LIST_UPDATING     65535u
#define CFG_MAC_LIST_UPDATING 255u

/* Array counts. */
#define CFG_MAX_PORTS         72 /* analog ports, numbered 0..71 */
#define CFG_PORT_PROFILES     8  /* port-default records 0..7 */
#define CFG_PROFILES          8  /* VoIP profiles 0..7 */
#define CFG_DIALPLAN_PROFILES 4
#define CFG_DIALPLAN_ENTRIES  300 /* dial-plan rules per profile */
#define CFG_GROUPS            32  /* hunt groups per kind */
#define CFG_HOSTS             20
#define CFG_MAC_CLIENTS       30
#define CFG_ROUTES            100
#define CFG_LIMITS            30
#define CFG_FIREWALL_RULES    30
#define CFG_MODIFIERS         16
#define CFG_MODIFIER_RULES    32
#define CFG_CADENCES          32
#define CFG_SIP_SERVERS       5
#define CFG_SIP_CADENCES      16
#define CFG_VLAN_IFACES       3
#define CFG_SWITCH_PORTS      6 /* switch VLANs and QoS ports 0..5 */
#define CFG_VTU_RULES         16
#define CFG_MON_T10_BLOCKS    64 /* monitoring kind 10, numbers 1..64 */

/* Output buffer sizes the converters expect from their callers. */
#define CFG_MASK_TEXT_SIZE      256 /* cfg_mask_to_string() */
#define CFG_PORT_LIST_TEXT_SIZE 256 /* cfg_port_to_string() */
#define CFG_RULE_TEXT_SIZE      160 /* print_rule_string() */

/* ------------------------------------------------------------------------ */
/* VoIP global sections                                                      */
/* ------------------------------------------------------------------------ */

/* H.323 settings ("config.VOIP.h323") and port ranges ("config.VOIP.range"). */
typedef struct h323_cfg {
    int32_t enableh323;
    int32_t h235;
    char password[20];
    int32_t ignore_gcf;
    int32_t disablefaststart;
    int32_t disabletunneling;
    int32_t timetolive;
    int32_t keepalivetime;
    char gatekeeperip[20];
    char h323aliase[20];
    int32_t usegatekeeper;
    int32_t isgateway;
    int32_t tcpportmin; /* range node from here ... */
    int32_t tcpportmax;
    int32_t udpportmin;
    int32_t udpportmax;
    int32_t rtph323min;
    int32_t rtph323max;
    int32_t rtpsipmin;
    int32_t rtpsipmax;
    int32_t intrcpmin;
    int32_t intrcpmax; /* ... to here */
    int32_t dtmftransfer;
    int32_t bearercapability;
    int32_t verify_remote_media; /* range node */
    int32_t sip_dscp;            /* range node */
    uint32_t updated;            /* time-stamp, shared by both nodes */
} h323_cfg_t;

/* Common SIP settings ("config.VOIP.sip"). */
typedef struct sip_cfg {
    int32_t enablesip;
    int32_t invite_init_t;     /* 100..1000 */
    int32_t invite_total_t;    /* 1000..39000 */
    int32_t invite_init_max_t; /* 1000..32000 */
    int32_t sip_mtu;           /* 1300..1450 */
    int32_t shortmode;
    int32_t transport;        /* 1, 2 or 3; 0 otherwise */
    int32_t port_reg_delay_t; /* 0..5000 */
    uint8_t stun_enable;
    char stun_server[128];
    int32_t stun_interval; /* 10..1800, or 0 */
    char publicip[128];
    uint32_t updated; /* time-stamp */
} sip_cfg_t;

/* General settings ("config.VOIP.general"). */
typedef struct general_cfg {
    char unit_prefix[21];
    char device_name[257];
    int32_t use_uni;
    int32_t start_timer;       /* 10..300 */
    int32_t duration_timer;    /* 10..300 */
    int32_t wait_answer_timer; /* 40..300 */
    int32_t fans_force_enable;
    int32_t fans_threshold_temperature; /* 35..55 */
    int32_t power_mode;
    uint32_t updated; /* time-stamp */
} general_cfg_t;

/* Call-progress tones ("config.VOIP.tones"). */
typedef struct tones_cfg {
    char country[64];
    char dialtone_freq[10];
    char dialtone_cadence[24];
    char busytone_freq[10];
    char busytone_cadence[24];
    char disconnect_freq[10];
    char disconnect_cadence[24];
    char ringbacktone_freq[10];
    char ringbacktone_cadence[24];
    char congestiontone_freq[10];
    char congestiontone_cadence[24];
    uint32_t updated; /* time-stamp */
} tones_cfg_t;

/* Trace and syslog settings ("config.VOIP.trace"). */
typedef struct trace_cfg {
    char syslog_addr[40];
    int32_t syslog_port; /* 0..65535 */
    uint8_t flags;       /* bit 0 app_alarm, 1 app_err, 2 app_warn, 3 app_info,
                            4 app_dbg, 5 vapi_enabled, 6 run_syslog,
                            7 syslog_to_file */
    int32_t sip_level;   /* -1..9 */
    int32_t h323_level;  /* 0..6 */
    int32_t vapi_level;  /* 0..65 */
    char trace_out[20];
    uint32_t updated; /* time-stamp */
} trace_cfg_t;

/* Service codes ("config.VOIP.dvo"), each at most 3 characters. */
typedef struct dvo_cfg {
    char callwaiting[4];
    char ct_attended[4];
    char ct_unattended[4];
    char cf_unconditional[4];
    char cf_busy[4];
    char cf_noanswer[4];
    char cf_outofservice[4];
    char dnd[4];
    uint32_t updated; /* time-stamp */
} dvo_cfg_t;

/* One ring cadence ("config.VOIP.cadences.cadence_N"). */
typedef struct cadence_cfg {
    uint32_t ring;  /* 0..4000 */
    uint32_t pause; /* 0..25500 */
    char rule[51];
    uint32_t mask; /* flags 0..7, flag k in bit k */
} cadence_cfg_t;

/* ------------------------------------------------------------------------ */
/* Ports and profiles                                                        */
/* ------------------------------------------------------------------------ */

/* The 32 one-bit switches of a port, from the lowest bit up. */
typedef struct port_flags {
    uint32_t custom : 1;
    uint32_t playmoh : 1;
    uint32_t aon_hide_date : 1;
    uint32_t aon_hide_name : 1;
    uint32_t mwi_dialtone : 1;
    uint32_t dnd : 1;
    uint32_t stop_dial : 1;
    uint32_t usealtnumber : 1;
    uint32_t disabled : 1;
    uint32_t ct_busy : 1;
    uint32_t ct_unconditional : 1;
    uint32_t ct_outofservice : 1;
    uint32_t ct_noanswer : 1;
    uint32_t callwaiting : 1;
    uint32_t hotline : 1;
    uint32_t dvo_callwaiting_en : 1;
    uint32_t dvo_ct_attended_en : 1;
    uint32_t dvo_ct_unattended_en : 1;
    uint32_t dvo_cf_unconditional_en : 1;
    uint32_t dvo_cf_busy_en : 1;
    uint32_t dvo_cf_noanswer_en : 1;
    uint32_t dvo_cf_outofservice_en : 1;
    uint32_t dvo_dnd_en : 1;
    uint32_t fxo_detect_line_presence : 1;
    uint32_t fxo_block_line_presence : 1;
    uint32_t usepstncid : 1;
    uint32_t dont_detect_DT : 1;
    uint32_t enable_cpc : 1;
    uint32_t dont_transmit_prefix : 1;
    uint32_t transmit_number : 1;
    uint32_t fxo_call_busy : 1;
    uint32_t usealtnumber_as_private : 1;
} port_flags_t;

/* Line switches of a port in one byte, from the lowest bit up. */
typedef struct port_line_flags {
    uint8_t agc_spk_enable : 1;
    uint8_t agc_mic_enable : 1;
    uint8_t clir : 2;                  /* 0..2 */
    uint8_t no_offhook_at_ringing : 2; /* 0..2 */
} port_line_flags_t;

/* Settings of one analog port, or the defaults of one port profile. */
typedef struct port_cfg {
    char phone[51];
    char user_name[51];
    char auth_name[51];
    char auth_pass[51];
    uint32_t port_profile_id;        /* 0..7, index into port_defaults */
    uint32_t profile_id;             /* 0..7, VoIP profile */
    uint32_t aon;                    /* 0..4 */
    uint32_t taxophone;              /* 0..3 */
    uint32_t pstn_200_at_answer;     /* 0..4 */
    uint32_t pstn_rb_detect_timeout; /* 1..60 */
    uint32_t min_flashtime;          /* 70..2000, or 0 */
    uint32_t flashtime;              /* 200..2000, or 0 */
    int32_t gainr;                   /* -230..20 */
    int32_t gaint;                   /* -170..60 */
    uint32_t category;               /* 0..255 */
    uint32_t calltransfer;           /* 0..4 */
    char hotnumber[51];
    char tdmhotnumber[31];
    int32_t hottimeout;
    char ct_number[51];
    char cfu_number[51];
    char cfb_number[51];
    char cfnr_number[51];
    char cfoos_number[51];
    uint32_t ct_timeout; /* 0..300 */
    char altnumber[51];
    uint32_t pickupgroup;     /* bit g: member of pickup group g */
    uint32_t sip_port;        /* 0..65535 */
    uint32_t cfb_pri_over_cw; /* 0 or 1 */
    port_flags_t flags;
    uint32_t tdmhotline;    /* 0 or 1 */
    uint32_t tdmhottimeout; /* 0..300 */
    uint32_t fxoflashtime;  /* 70..1000, or 0 */
    uint32_t fxo_dtmfpause; /* 80..2500 */
    uint32_t fxoringtdm;    /* 0..10 */
    char pstn_numberprefix[21];
    char pstn_nameprefix[21];
    uint32_t fxo_delay_dialing; /* 0..10 */
    uint32_t cpc_time;          /* 200..600, or 0 */
    char dialing[8];
    char dial_tone_detect[64];
    char rb_tone_detect[64];
    char busy_tone_detect[64];
    char disconnect_tone_detect[64];
    uint32_t min_level_detect; /* 20..40 */
    int32_t dt_detect_time;
    uint32_t decade_pulse_time; /* 50..120 */
    uint32_t decade_pause_time; /* 30..100 */
    uint32_t fxo_dtmftime;      /* 65..100 */
    uint32_t cpc_rus;           /* 0..10 */
    port_line_flags_t line_flags;
    int32_t agc_spk_level; /* -25..-1 */
    int32_t agc_mic_level; /* -25..-1 */
    int32_t modifier;      /* -1..15, -1 for none */
    uint32_t dscp;         /* 0..63 */
} port_cfg_t;

/* Codec settings of a VoIP profile; also the record of a dial-plan profile. */
typedef struct codecs_cfg {
    int32_t faxdirection;
    int32_t faxtransfer;
    int32_t slave_faxtransfer;
    int32_t modemtransfer;
    int32_t dtmftransfer;
    int32_t flashtransfer;
    uint32_t app_reserved1;
    int32_t payload;
    uint32_t nse_payload;      /* 96..127 */
    uint32_t silencedetector;  /* 0 or 1 */
    uint32_t echocanceller;    /* 0 or 1 */
    uint32_t dispersion_time;  /* 8..128 */
    uint32_t ecan_nlp_disable; /* 0 or 1 */
    uint32_t comfortnoise;     /* 0 or 1 */
    int32_t g711a;
    int32_t g711u;
    int32_t g729x;
    uint32_t app_reserved2;
    int32_t g729b;
    int32_t g723;
    int32_t g726_32;
    int32_t g711pte;      /* multiple of 10, 10..60 */
    int32_t g729pte;      /* multiple of 10, 10..80 */
    int32_t g723pte;      /* multiple of 30, 30..90 */
    uint32_t g726_32_pte; /* 10, 20 or 30 */
    uint32_t g726_32_pt;  /* 96..127 */
    uint32_t rtcp_period; /* 0, or 2..65535 */
    uint32_t rtcp_timer;  /* 0, or 5..65535 */
    uint32_t rtcp_xr;     /* 0 or 1 */
    int32_t jb_pt_delay;
    int32_t jb_vo_adaptive;
    int32_t jb_vo_delay_min;
    int32_t jb_vo_delay_max;
    int32_t jb_vo_del_threshold;
    int32_t jb_vo_del_mode_soft;
    int32_t t38_bitrate;
    uint32_t app_reserved3[6];
    uint32_t t38_datagram;      /* 0, or 272..512 */
    uint32_t rfc3264_pt_common; /* 0 or 1 */
    uint32_t agc_spk_enable;    /* 0 or 1; dial-plan profiles */
    int32_t agc_spk_level;      /* -25..-1; dial-plan profiles */
    uint32_t agc_mic_enable;    /* 0 or 1; dial-plan profiles */
    int32_t agc_mic_level;      /* -25..-1; dial-plan profiles */
    uint32_t max_calls;         /* 1..143; dial-plan profiles */
} codecs_cfg_t;

/* A dial-plan profile ("config.VOIP.dialplan_profiles.dialplan_profileN"). */
typedef codecs_cfg_t dialplan_profile_cfg_t;

/* Registrar and proxy addresses of one SIP server entry. */
typedef struct sip_server {
    char regrar[129];
    char proxy[129];
} sip_server_t;

/* One SIP alert-info cadence of a profile. */
typedef struct sip_cadence_cfg {
    char name[30];
    char ring_rule[72];
} sip_cadence_cfg_t;

/* SIP settings of a VoIP profile. */
typedef struct profile_sip_cfg {
    uint32_t mode; /* 0, 1 or 2 */
    sip_server_t servers[CFG_SIP_SERVERS];
    char domain[129];
    uint32_t domain_to_reg;  /* 0 or 1 */
    uint32_t options;        /* 0..2 */
    uint32_t keepalivet;     /* 10000..3600000 */
    uint32_t outbound;       /* 0..2 */
    uint32_t obtimeout;      /* 0..300 */
    uint32_t registration;   /* 0..31 */
    uint32_t expires;        /* 0..2147483647 */
    uint32_t authentication; /* 1 or 2 */
    char username[51];
    char password[51];
    uint32_t keep_alive_mode;         /* 0..3 */
    uint32_t keep_alive_interval;     /* 30..120 */
    uint32_t ringback;                /* 0 or 1 */
    uint32_t cw_ringback;             /* 0 or 1 */
    uint32_t user_phone;              /* 0 or 1 */
    uint32_t uri_escape_hash;         /* 0 or 1 */
    uint32_t dtmfmime;                /* 0 dtmfr, 1 dtmf, 2 audio */
    uint32_t hfmime;                  /* 0 hookf, 1 dtmf, 2 broadsoft, 3 sscc */
    uint32_t rel100;                  /* 0..2, param "100rel" */
    uint32_t replaces;                /* 0 or 1, inverse of "no_replaces" */
    uint32_t register_retry_interval; /* 10..3600 */
    uint32_t inbound_proxy;           /* 0 or 1 */
    uint32_t ringback_sdp;            /* 0..3 */
    uint32_t reduce_sdp_media_count;  /* 0 or 1 */
    uint32_t p_rtp_stat;              /* 0 or 1 */
    uint32_t timer;                   /* 0 or 1 */
    uint32_t min_se;                  /* 90..1800 */
    uint32_t session_expires;         /* 0, or 90..80000 */
    uint32_t ims_notify_on;           /* 0..2 */
    uint32_t conference_type;         /* 0..2 */
    char conference_user[30];
    char conference_host[128];
    char xcap_cw_name[30];
    char xcap_conference_name[30];
    char xcap_hotline_name[30];
    char xcap_callhold_name[30];
    char xcap_calltransfer_name[30];
    uint8_t use_alert_info; /* 0 or 1 */
    sip_cadence_cfg_t sip_cadences[CFG_SIP_CADENCES];
    uint32_t changeover;           /* 0..3 */
    uint32_t ruri_full_compliance; /* 0 or 1 */
    uint32_t changeover_by_408;    /* 0 or 1 */
} profile_sip_cfg_t;

/* One VoIP profile: its codec settings, then its SIP settings. */
typedef struct profile_cfg {
    codecs_cfg_t codecs;
    profile_sip_cfg_t sip;
} profile_cfg_t;

/* ------------------------------------------------------------------------ */
/* VoIP lists                                                                */
/* ------------------------------------------------------------------------ */

/* One dial-plan rule; `type` 0 marks an empty entry. */
typedef struct dial_plan {
    char destination[41]; /* field 5 */
    char field1[21];
    int32_t field3;
    int32_t field2;
    uint32_t type;         /* rule kind 0..6 */
    char protocol[10];     /* field 4 */
    uint32_t port_mask[3]; /* field 10: position k is bit k%32 of word k/32 */
    int32_t field9;
    char field6[9]; /* without its double quotes */
    uint8_t field8; /* modulo 256 */
    int32_t field7;
    int32_t field11;
} dial_plan_t;

/* Dial plan of one profile: the rule list and the regular-expression plan. */
typedef struct profile_dialplan_cfg {
    dial_plan_t entries[CFG_DIALPLAN_ENTRIES];
    uint32_t start;    /* list marker */
    uint32_t current;  /* filled entries at the last recount */
    uint32_t regex_on; /* 0 or 1 */
    char proto[16];
    char regex[1001];
    uint32_t start_timer; /* 10..300 */
} profile_dialplan_cfg_t;

/* One hunt group; `valid` 0 marks a free slot. */
typedef struct group_cfg {
    uint32_t valid;
    char phone[51];
    uint32_t enabled;  /* 0 or 1 */
    uint32_t type;     /* 0..4 */
    uint32_t busy;     /* 0 or 1 */
    uint32_t timeout;  /* 0, or 5..120 */
    uint32_t sip_port; /* 0..65535 */
    char name[51];
    char password[51];
    uint32_t port_list[CFG_MAX_PORTS]; /* member ports, in the order received */
    uint32_t port_count;               /* valid entries of port_list */
    uint32_t profile_id;               /* 0..7 */
    uint32_t transmit_number;          /* 0 or 1; line-port groups */
    uint32_t dont_transmit_prefix;     /* 0 or 1; line-port groups */
    uint32_t fxo_call_busy;            /* 0 or 1; line-port groups */
} group_cfg_t;

/* The 32 hunt groups of one kind (subscriber ports or line ports). */
typedef struct groups_cfg {
    group_cfg_t entries[CFG_GROUPS];
    uint32_t start;   /* list marker */
    uint32_t current; /* valid entries at the last recount */
    uint32_t updated; /* time-stamp */
} groups_cfg_t;

/* Call limits ("config.VOIP.limits"), 30 entries in parallel arrays. */
typedef struct limit_cfg {
    int32_t not_proxy[CFG_LIMITS]; /* 1, 0 for a "[proxy]" target, -1 cleared */
    char target[CFG_LIMITS][256];
    int32_t value[CFG_LIMITS]; /* an entry counts only above 0 */
    uint32_t start;            /* list marker */
    uint32_t current;          /* filled entries at the last recount */
    uint32_t ceiling;          /* set by the application */
    uint32_t updated;          /* time-stamp */
    uint32_t recalculated;     /* time-stamp of the last recount */
} limit_cfg_t;

/* One number-modifier rule; an empty `word1` marks a free slot. */
typedef struct mod_rule {
    char word1[51];
    char word2[30];
    char word3[31];
} mod_rule_t;

/* One number modifier ("config.VOIP.modifiers.modifier_N"). */
typedef struct modifier_cfg {
    mod_rule_t rules[CFG_MODIFIER_RULES];
    uint16_t count; /* start and current in one: list marker or rule count */
} modifier_cfg_t;

/* ------------------------------------------------------------------------ */
/* Network sections                                                          */
/* ------------------------------------------------------------------------ */

/* One VLAN interface n (1..3) of the network settings. */
typedef struct vlan_iface {
    uint8_t flags; /* bit 0 VLANn, bit 1 DHCPDn, bit 2 DHCP_GWn */
    uint32_t vid;
    char ipaddr[20];
    char netmask[20];
    char broadcast[20];
    uint32_t cos;
    uint16_t mtu;
} vlan_iface_t;

/* Network settings ("config.Network.network"). */
typedef struct network_cfg {
    char ipaddr[20];
    char ipaddr2[20];
    char netmask[20];
    char netmask2[20];
    char gateway[20];
    char broadcast[20];
    char broadcast2[20];
    char dnsip[20];
    char reserved_dnsip[20];
    char ntpip[257];
    uint32_t ntp_interval;
    uint8_t app_reserved[20];
    uint8_t flags0; /* bit 0 DHCPD, 1 SNMP, 2 MCAST, 3 NTPEN, 4 STP_EN,
                       5 TELNET_EN, 6 SSH_EN, 7 DHCP_GW */
    uint8_t flags1; /* bit 0 PPPOE_ENABLE, 1 AUTOUPDATE, 2 WEB_EN,
                       3 RADIUS_ENABLE, 4 USE_VENDOR_INFO, 5 PPPOE_VLAN,
                       6 AUTOUPDATE_AUTH, 7 DST_ENABLE */
    uint8_t flags2; /* bit 0 PPTP_ENABLE, 1 PPTP_VLAN */
    char autoupdate_src[81];
    char autoupdate_tftp[257];
    char autoupdate_cfg[81];
    char autoupdate_fw[81];
    char autoupdate_proto[8];
    char autoupdate_user[81];
    char autoupdate_pass[81];
    char autoupdate_cfg_mode[9];
    char autoupdate_fw_mode[9];
    int32_t cfg_interval;
    int32_t fw_interval;
    char cfg_time[20];
    char fw_time[20];
    char pppoe_user[51];
    char pppoe_password[51];
    uint32_t pppoe_vid;
    uint16_t pppoe_mtu;
    char pptp_server[256];
    char pptp_user[51];
    char pptp_password[51];
    uint32_t pptp_vid;
    char pptp_accesstype[8];
    uint16_t pptp_if_mtu;
    char pptp_ip[16];
    char pptp_netmask[16];
    char pptp_gw[16];
    char pptp_dns[16];
    vlan_iface_t vlan_if[CFG_VLAN_IFACES]; /* entry n-1 is interface n */
    uint8_t rtp_vlan;
    uint8_t sig_vlan;
    uint8_t ctl_vlan;
    uint32_t web_port;
    uint32_t telnet_port;
    uint32_t ssh_port;
    uint32_t https_port;
    char radius_server[256];
    char radius_secret[256];
    uint8_t radius_retry;
    char vendor_info[256];
    char opt82_cid[256];
    char opt82_rid[256];
    char zoneinfo[256];
    char dst_start[40];
    char dst_end[40];
    uint32_t dst_offset;
    char language[8];
    uint8_t language_set; /* 1 once "LANGUAGE" is stored */
    uint16_t mtu;
    uint32_t updated; /* time-stamp */
} network_cfg_t;

/* LLDP settings ("config.Network.LLDP"). */
typedef struct lldp_cfg {
    uint8_t enable; /* 0 or 1 */
    uint32_t tx_interval;
    uint32_t updated; /* time-stamp */
} lldp_cfg_t;

/* Host table ("config.Network.hosts"): 20 names and 20 addresses. */
typedef struct hosts_cfg {
    char name[CFG_HOSTS][80];
    char address[CFG_HOSTS][16];
    uint32_t current; /* filled entries at the last recount */
    uint32_t start;   /* list marker */
    uint32_t updated; /* time-stamp */
} hosts_cfg_t;

/* MAC filter ("config.Network.mac_filter"): mode and 30 client addresses. */
typedef struct mac_filter_cfg {
    char mode[16];
    char client[CFG_MAC_CLIENTS][18];
    uint8_t current;  /* non-empty clients at the last recount */
    uint8_t start;    /* list marker, CFG_MAC_LIST_UPDATING while updating */
    uint32_t updated; /* time-stamp */
} mac_filter_cfg_t;

/* One static route. */
typedef struct route {
    char destination[16];
    char netmask[16];
    char gateway[16];
    char extra[8]; /* optional */
} route_t;

/* Static routes ("config.Network.routes"). */
typedef struct routes_cfg {
    route_t route[CFG_ROUTES];
    uint32_t start;   /* list marker */
    uint32_t current; /* filled routes at the last recount */
    uint32_t updated; /* time-stamp */
} routes_cfg_t;

/* One firewall rule; `valid` 0 marks an empty slot. */
typedef struct firewall_rule {
    uint8_t valid; /* 1 when the rule text was accepted in full */
    char src_ip[31];
    uint32_t src_ip_number;
    uint8_t all_src_ip;
    char protocol[31]; /* "UDP", "TCP", "ICMP" or "any" */
    char target[31];   /* "ACCEPT", "DROP" or "REJECT" */
    uint16_t src_port;
    uint16_t src_ports_number;
    uint8_t all_src_ports;
    uint16_t dst_port;
    uint16_t dst_ports_number;
    uint8_t all_dst_ports;
    char icmp_type[31];
} firewall_rule_t;

/* Firewall rule list ("config.Network.rules"). The application's own area
 * between `current` and `updated` is not part of this declaration. */
typedef struct firewall_cfg {
    firewall_rule_t rules[CFG_FIREWALL_RULES];
    uint32_t start;   /* list marker */
    uint32_t current; /* valid rules at the last recount */
    uint32_t updated; /* time-stamp */
} firewall_cfg_t;

/* SNMP user line: its three blank-separated words. */
typedef struct snmp_user {
    char word1[40];
    char word2[40];
    uint8_t app_reserved[8];
    char word3[16];
} snmp_user_t;

/* SNMP settings ("config.Network.snmp" and "config.Network.snmp_users"). */
typedef struct snmp_cfg {
    uint32_t trap_type; /* 1 for v1, 2 for v2 */
    char sys_location[40];
    char sys_contact[40];
    char trap_sink[40];
    char sys_name[40];
    char trap_community[40];
    char rocommunity[40];
    char rwcommunity[40];
    snmp_user_t user;
    uint32_t updated; /* time-stamp, shared by both nodes */
} snmp_cfg_t;

/* IPSec settings ("config.Network.IPSec"). */
typedef struct ipsec_cfg {
    uint8_t flags; /* bit 0 Enable, bit 1 AgressiveMode */
    char local_ip[16];
    char local_subnet[16];
    char local_netmask[16];
    char remote_subnet[16];
    char remote_netmask[16];
    char remote_gateway[16];
    char nat[6];
    uint16_t nat_port;
    uint32_t nat_keepalive;
    char identifier_type[10];
    char identifier[257];
    char preshare_key[257];
    char ike_auth_algorithm[5];
    char ike_encrypt_algorithm[9];
    uint8_t ike_dh_group;
    uint32_t ike_lifetime;
    char auth_algorithm[10];
    char encrypt_algorithm[9];
    uint8_t pfs_group;
    uint32_t lifetime;
    uint32_t updated; /* time-stamp */
} ipsec_cfg_t;

/* TR-069 management settings ("config.Network.TR069"). */
typedef struct tr069_cfg {
    uint8_t enable; /* 0 or 1 */
    char url[256];
    uint8_t periodic_inform_enable; /* 0 or 1 */
    uint32_t periodic_inform_interval;
    char username[256];
    char password[256];
    char connection_request_username[256];
    char connection_request_password[256];
    char nat_mode[256];
    char stun_server_address[256];
    uint32_t stun_server_port;
    int32_t stun_minimum_keepalive_period;
    int32_t stun_maximum_keepalive_period;
    char nat_address[256];
    uint32_t updated; /* time-stamp */
} tr069_cfg_t;

/* ------------------------------------------------------------------------ */
/* Switch sections                                                           */
/* ------------------------------------------------------------------------ */

/* One VLAN of the Ethernet switch. */
typedef struct switch_vlan {
    int32_t enable;    /* 0 or 1 */
    uint32_t eg;       /* 0..3 */
    uint32_t portmask; /* switch ports, bits 0..5 */
    uint32_t vid;      /* 0..4095 */
    int32_t ov;        /* 0 or 1 */
    uint32_t im;       /* 0..2 */
    uint8_t app_reserved[4];
    char portmode[8];
    char backup_port[8];
    char preemption[8];
} switch_vlan_t;

/* One VTU rule of the Ethernet switch. */
typedef struct vtu_rule {
    uint32_t valid; /* 1 when the rule is in use */
    int32_t port0;
    int32_t port1;
    int32_t port2;
    int32_t cpu;
    int32_t sfp0;
    int32_t sfp1;
    uint32_t app_reserved;
    int32_t priority;
    int32_t override;
    int32_t vid;
} vtu_rule_t;

/* QoS settings of one switch port. */
typedef struct qos_port {
    uint32_t prio;
    uint32_t qos_mode;
    uint32_t tag_remap_mask;
    uint32_t ingress_limit_mode;
    uint32_t ingress_rate;
    uint32_t ingress_mask;
    uint32_t egress_rate;
} qos_port_t;

/* Ethernet switch: VLANs, VTU rules and QoS ("config.Switch.*"). */
typedef struct switch_cfg {
    switch_vlan_t vlan[CFG_SWITCH_PORTS];
    int32_t hubmode; /* 0 or 1 */
    vtu_rule_t vtu[CFG_VTU_RULES];
    qos_port_t qos_port[CFG_SWITCH_PORTS];
    uint32_t ieee_pri;
    uint32_t diffserv_remap003C_mask;
    uint32_t diffserv_remap407C_mask;
    uint32_t diffserv_remap80BC_mask;
    uint32_t diffserv_remapC0FC_mask;
} switch_cfg_t;

/* ------------------------------------------------------------------------ */
/* Configuration image                                                       */
/* ------------------------------------------------------------------------ */

/* The whole configuration of the gateway and its status blocks, owned by the
 * application. The application's own areas between members are not part of
 * this declaration. */
typedef struct cfg_image {
    port_cfg_t port_defaults[CFG_PORT_PROFILES];
    uint32_t port_defaults_updated; /* time-stamp, one for all */
    port_cfg_t ports[CFG_MAX_PORTS];
    uint32_t ports_updated[CFG_MAX_PORTS]; /* time-stamps */
    uint32_t max_ports;                    /* set by the application */
    groups_cfg_t groups;
    groups_cfg_t fxo_groups;
    hosts_cfg_t hosts;
    mac_filter_cfg_t mac_filter;
    routes_cfg_t routes;
    general_cfg_t general;
    tones_cfg_t tones;
    h323_cfg_t h323;
    trace_cfg_t trace;
    snmp_cfg_t snmp;
    network_cfg_t network;
    ipsec_cfg_t ipsec;
    lldp_cfg_t lldp;
    tr069_cfg_t tr069;
    switch_cfg_t switch_cfg;
    uint32_t vlan_updated; /* time-stamp */
    uint32_t vtu_updated;  /* time-stamp */
    uint32_t qos_updated;  /* time-stamp */
    dvo_cfg_t dvo;
    cadence_cfg_t cadences[CFG_CADENCES];
    uint32_t cadences_updated; /* time-stamp */
    limit_cfg_t limits;
    /* Status blocks: opaque copies; element i of a per-port array is port
     * i + 1 of the status messages. */
    uint16_t switch_status[7][3];
    uint8_t fxs_statistics[CFG_MAX_PORTS][671];
    uint8_t fxs_statistics_fresh[CFG_MAX_PORTS]; /* 1 with each block */
    uint8_t mon_t11[CFG_MAX_PORTS][80];
    uint8_t mon_t11_fresh[CFG_MAX_PORTS]; /* 1 with each block */
    uint8_t mon_t4[CFG_MAX_PORTS][148];
    uint8_t mon_t5[CFG_MAX_PORTS][52];
    uint8_t mon_t5_state[CFG_MAX_PORTS]; /* 2 with each block */
    uint32_t mon_t5_ref[CFG_MAX_PORTS];  /* written by the application */
    uint32_t mon_t5_ref_copy[CFG_MAX_PORTS];
    uint32_t mon_t5_time[CFG_MAX_PORTS];
    uint8_t mon_t6[112];
    uint8_t mon_t8[CFG_MAX_PORTS][56];
    uint8_t mon_t1[CFG_MAX_PORTS][92];
    uint32_t mon_t1_time[CFG_MAX_PORTS];
    uint8_t mon_t10[CFG_MON_T10_BLOCKS][148]; /* element n-1 for number n */
    sip_cfg_t sip;
    profile_cfg_t profiles[CFG_PROFILES];
    uint32_t profiles_updated[CFG_PROFILES]; /* time-stamps */
    profile_dialplan_cfg_t dialplans[CFG_PROFILES];
    uint32_t dialplans_updated[CFG_PROFILES]; /* time-stamps */
    dialplan_profile_cfg_t dialplan_profiles[CFG_DIALPLAN_PROFILES];
    uint32_t dialplan_profiles_updated[CFG_DIALPLAN_PROFILES]; /* time-stamps */
    uint32_t mon_t9_flag;                                      /* 1 after monitoring kind 9 */
    uint32_t version_received;                                 /* 1 after a version message */
    uint8_t version[20];
    firewall_cfg_t firewall;
    modifier_cfg_t modifiers[CFG_MODIFIERS];
} cfg_image_t;

/* ------------------------------------------------------------------------ */
/* Exported mutex                                                            */
/* ------------------------------------------------------------------------ */

/* Guards every field of the image; a plain, non-recursive mutex. Do not hold
 * it while calling all_parser, a wait function, the recalculation or a
 * status parser. Writers do not take it. */
extern CFGPARSER_API pthread_mutex_t RWlockCfg;

/* ------------------------------------------------------------------------ */
/* Functions                                                                 */
/* ------------------------------------------------------------------------ */

/*
 * Preconditions. Unless a function says otherwise:
 *   - a pointer argument is non-null and points at what its type names;
 *   - the caller does not hold RWlockCfg while calling a function that takes
 *     it (all_parser, the waits, the recalculation, the status parsers);
 *   - text arguments are NUL-terminated.
 * What a function does with an argument outside its preconditions is said
 * where it is defined; none of them faults on a null pointer it checks.
 */

/* Parser entry. `message` points at a whole configuration message: the
 * buffer must hold CFG_MSG_HEADER_SIZE bytes plus the body length that the
 * header declares at CFG_MSG_BODY_LENGTH_OFFSET; the parser reads nothing
 * past them. image->max_ports must be set (port numbers in lists are
 * bounded by it and never reach 72). A null image or message is ignored. */
CFGPARSER_API void all_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT;

/* Message reader: 0 read, 1 skipped (no memory), -1 malformed message.
 * find_params: every pointer non-null; *cursor has at least *remaining
 * readable bytes; *name and *value are null (free_params after each param).
 * free_params: either address may be null; it frees and nulls what they
 * hold. */
CFGPARSER_API int find_params(const uint8_t **cursor, uint32_t *remaining, char **name, char **value,
                              int quotes_mean_empty) CFG_NOEXCEPT;
CFGPARSER_API void free_params(char **name, char **value) CFG_NOEXCEPT;

/* Message builders: each returns `running` plus the bytes it wrote.
 * `cursor` and *cursor non-null, with room for the param (4 length bytes,
 * name and value); `path` and `name` non-null. setStringValueInMsg takes a
 * null value as the empty one. No bounds are checked. */
CFGPARSER_API uint32_t setUInt16ValueInMsg(uint8_t **cursor, const char *path, int param_count,
                                           uint32_t running) CFG_NOEXCEPT;
CFGPARSER_API uint32_t setUIntValueInMsg(uint8_t **cursor, const char *name, uint32_t value,
                                         uint32_t running) CFG_NOEXCEPT;
CFGPARSER_API uint32_t setIntValueInMsg(uint8_t **cursor, const char *name, int32_t value,
                                        uint32_t running) CFG_NOEXCEPT;
CFGPARSER_API uint32_t setXValueInMsg(uint8_t **cursor, const char *name, uint32_t value,
                                      uint32_t running) CFG_NOEXCEPT;
CFGPARSER_API uint32_t setStringValueInMsg(uint8_t **cursor, const char *name, const char *value,
                                           uint32_t running) CFG_NOEXCEPT;
CFGPARSER_API uint32_t setEmptyStringValueInMsg(uint8_t **cursor, const char *name,
                                                uint32_t running) CFG_NOEXCEPT;

/* Pattern helper. pcre_preg_match: a null pattern or subject matches
 * nothing (0); *table must be null before the call and holds the result's
 * strings after it (free_table(table, result)). free_table: a null table or
 * a count below 1 does nothing. trim: returns a null text unchanged. */
CFGPARSER_API int32_t pcre_preg_match(const char *pattern, const char *subject, int subject_length,
                                      char ***table) CFG_NOEXCEPT;
CFGPARSER_API void free_table(char **table, int count) CFG_NOEXCEPT;
CFGPARSER_API char *trim(char *text) CFG_NOEXCEPT;

/* Trace. `format` is a printf format whose arguments follow; only level
 * CFG_TRACE_ERROR lines are printed. */
CFGPARSER_API void cfg_trace(int level, const char *format, ...) CFG_NOEXCEPT
    __attribute__((format(printf, 2, 3)));

/* Field converters. A null or empty value is the absent value of each
 * converter's rule. get_string: `field` holds `size` bytes (a null field or
 * size 0 does nothing). */
CFGPARSER_API int32_t get_checkbox(const char *value) CFG_NOEXCEPT;
CFGPARSER_API int32_t get_digit_from_min_to_max_or_set_default(const char *value, int32_t min, int32_t max,
                                                               int32_t def) CFG_NOEXCEPT;
CFGPARSER_API uint32_t get_long_from_min_to_max_or_set_default(const char *value, uint32_t min, uint32_t max,
                                                               uint32_t def) CFG_NOEXCEPT;
CFGPARSER_API void get_string(char *field, size_t size, const char *value) CFG_NOEXCEPT;

/* List tracking and time. Waits: 0 settled, 1 timed out, -1 null image
 * (and -1 for a profile whose low 8 bits are not 0..7, or a modifier
 * outside 0..15). The recalculation ignores a null image. Do not hold
 * RWlockCfg while waiting. */
CFGPARSER_API void recalculate_start_and_current_after_timeout(cfg_image_t *image) CFG_NOEXCEPT;
CFGPARSER_API int32_t update_limits_conf(cfg_image_t *image) CFG_NOEXCEPT;
CFGPARSER_API int32_t update_dialplan_conf(cfg_image_t *image, int profile) CFG_NOEXCEPT;
CFGPARSER_API int32_t update_host_conf(cfg_image_t *image) CFG_NOEXCEPT;
CFGPARSER_API int32_t update_mac_conf(cfg_image_t *image) CFG_NOEXCEPT;
CFGPARSER_API int32_t update_route_conf(cfg_image_t *image) CFG_NOEXCEPT;
CFGPARSER_API int32_t update_groups_config(cfg_image_t *image, int fxo) CFG_NOEXCEPT;
CFGPARSER_API int32_t update_mod_rules_conf(cfg_image_t *image, int modifier) CFG_NOEXCEPT;
CFGPARSER_API int32_t update_firewall_conf(cfg_image_t *image) CFG_NOEXCEPT;
CFGPARSER_API uint32_t cfgpars_get_monotonic_now_time(void) CFG_NOEXCEPT;
CFGPARSER_API int cfg_pause(int seconds, int milliseconds) CFG_NOEXCEPT;

/* Status parsers. `message` holds the whole status message of its kind,
 * header included (its payload is read at fixed offsets: up to 686 bytes
 * for the port statistics). A null image or message is ignored. */
CFGPARSER_API void switch_status_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT;
CFGPARSER_API void fxs_statistics_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT;
CFGPARSER_API void cfg_version_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT;
CFGPARSER_API void monitoring_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT;
CFGPARSER_API int32_t cfgpars_getTimeSec(void) CFG_NOEXCEPT;

/* Writers (this and the following groups). Every writer writes one
 * message body at *cursor (operation byte, nodes, terminating 0 byte, which
 * is counted but not stepped over), advances *cursor and returns the number
 * of bytes it wrote. Preconditions:
 *   - `cursor` and *cursor non-null, with room for the whole body: no
 *     bounds are checked (a full image's largest body, a dial plan of 300
 *     rules, is a few hundred kB at most);
 *   - every record pointer non-null;
 *   - entry numbers name an entry: port 0..71 (one_port_to_file), port
 *     profile 0..7 (profile_def_port_to_file), profile 0..7 (the profile_*
 *     writers), dial-plan profile 0..3 (dialplan_profile_save), modifier
 *     0..15 (modifier_to_file). The VTU rule and firewall slot numbers are
 *     written as given;
 *   - the caller holds RWlockCfg around the call when another thread may be
 *     parsing (writers do not lock).
 * A writer given a null cursor, *cursor or record, or a number outside its
 * range, writes nothing, leaves *cursor, reports at CFG_TRACE_ERROR and
 * returns 0 (codec_params_save returns `running`). */

/* VoIP writers. */
CFGPARSER_API int h323_save(uint8_t **cursor, const h323_cfg_t *h323) CFG_NOEXCEPT;
CFGPARSER_API int RANGE_save(uint8_t **cursor, const h323_cfg_t *h323) CFG_NOEXCEPT;
CFGPARSER_API int common_sip_save(uint8_t **cursor, const sip_cfg_t *sip) CFG_NOEXCEPT;
CFGPARSER_API int general_save(uint8_t **cursor, const general_cfg_t *general) CFG_NOEXCEPT;
CFGPARSER_API int tones_save(uint8_t **cursor, const tones_cfg_t *tones) CFG_NOEXCEPT;
CFGPARSER_API int syslog_save(uint8_t **cursor, const trace_cfg_t *trace) CFG_NOEXCEPT;
CFGPARSER_API int dvo_config_save(uint8_t **cursor, const dvo_cfg_t *dvo) CFG_NOEXCEPT;
CFGPARSER_API int cadence_config_save(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT;

/* Port and profile writers. all_ports_to_file and all_ports_pickup_to_file
 * write ports 0 .. min(max_ports, 72) - 1. codec_params_save adds the codec
 * params to the node the caller has opened and returns `running` plus the
 * bytes it wrote. */
CFGPARSER_API int all_ports_to_file(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT;
CFGPARSER_API int all_ports_pickup_to_file(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT;
CFGPARSER_API int one_port_to_file(uint8_t **cursor, uint32_t port, const port_cfg_t *cfg) CFG_NOEXCEPT;
CFGPARSER_API int profile_def_port_to_file(uint8_t **cursor, uint32_t profile,
                                           const port_cfg_t *cfg) CFG_NOEXCEPT;
CFGPARSER_API uint32_t codec_params_save(uint8_t **cursor, const codecs_cfg_t *codecs,
                                         uint32_t running) CFG_NOEXCEPT;
CFGPARSER_API int profile_codecs_save(uint8_t **cursor, int profile, const profile_cfg_t *cfg) CFG_NOEXCEPT;
CFGPARSER_API int dialplan_profile_save(uint8_t **cursor, int number,
                                        const dialplan_profile_cfg_t *cfg) CFG_NOEXCEPT;
CFGPARSER_API int profile_sip_save(uint8_t **cursor, int profile, const profile_cfg_t *cfg) CFG_NOEXCEPT;
CFGPARSER_API int profile_alert_info_save(uint8_t **cursor, int profile,
                                          const profile_cfg_t *cfg) CFG_NOEXCEPT;

/* VoIP list converters and writers. cfgpars_dial_plan_string_to_t: a null
 * entry or text is refused (null result). cfgpars_string_from0_to_mask: a
 * null mask gives -1, a null text clears the mask.
 * cfgpars_group_ports_string_to_t: a null argument gives -1; port numbers
 * must be below min(image->max_ports, 72). cfg_mask_to_string and
 * cfg_port_to_string write into `out` of CFG_MASK_TEXT_SIZE and
 * CFG_PORT_LIST_TEXT_SIZE bytes (a null out gives null).
 * profile_dialplan_to_file bounds the port masks it writes by `max_ports`. */
CFGPARSER_API dial_plan_t *cfgpars_dial_plan_string_to_t(dial_plan_t *entry, const char *text,
                                                         uint32_t max_ports) CFG_NOEXCEPT;
CFGPARSER_API int cfgpars_string_from0_to_mask(const char *text, uint32_t mask[3],
                                               uint32_t max_ports) CFG_NOEXCEPT;
CFGPARSER_API char *cfg_mask_to_string(const uint32_t mask[3], char *out, uint32_t type,
                                       uint32_t max_ports) CFG_NOEXCEPT;
CFGPARSER_API int profile_dialplan_to_file(uint8_t **cursor, int profile, const profile_dialplan_cfg_t *cfg,
                                           uint32_t max_ports) CFG_NOEXCEPT;
CFGPARSER_API int profile_dialplan_regular_to_file(uint8_t **cursor, int profile,
                                                   const profile_dialplan_cfg_t *cfg) CFG_NOEXCEPT;
CFGPARSER_API int cfgpars_group_ports_string_to_t(group_cfg_t *group, const char *text,
                                                  const cfg_image_t *image) CFG_NOEXCEPT;
CFGPARSER_API char *cfg_port_to_string(const group_cfg_t *group, char *out) CFG_NOEXCEPT;
CFGPARSER_API int groups_to_file(uint8_t **cursor, const group_cfg_t *entries, int fxo) CFG_NOEXCEPT;
CFGPARSER_API int save_limits(uint8_t **cursor, const limit_cfg_t *limits) CFG_NOEXCEPT;
CFGPARSER_API int modifier_to_file(uint8_t **cursor, int number, const modifier_cfg_t *modifier) CFG_NOEXCEPT;

/* Network writers and converters. firewall_rule_string_to_t cuts the text
 * it reads into tokens in place (a null text reads as empty, a null rule
 * gives 0); print_rule_string writes into `out` of CFG_RULE_TEXT_SIZE bytes
 * (a null rule or out gives 0). */
CFGPARSER_API int save_network(uint8_t **cursor, const network_cfg_t *network,
                               const lldp_cfg_t *lldp) CFG_NOEXCEPT;
CFGPARSER_API int save_autoupdate(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT;
CFGPARSER_API int save_ntp(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT;
CFGPARSER_API int save_radius(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT;
CFGPARSER_API int language_save(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT;
CFGPARSER_API int sendHostsToCfgMngr(uint8_t **cursor, const hosts_cfg_t *hosts) CFG_NOEXCEPT;
CFGPARSER_API int sendMacsToCfgMngr(uint8_t **cursor, const mac_filter_cfg_t *macs) CFG_NOEXCEPT;
CFGPARSER_API int sendRoutesToCfgMngr(uint8_t **cursor, const routes_cfg_t *routes) CFG_NOEXCEPT;
CFGPARSER_API int firewall_rule_string_to_t(char *text, firewall_rule_t *rule) CFG_NOEXCEPT;
CFGPARSER_API int print_rule_string(const firewall_rule_t *rule, char *out) CFG_NOEXCEPT;
CFGPARSER_API int all_firewall_to_file(uint8_t **cursor, const firewall_cfg_t *firewall) CFG_NOEXCEPT;
CFGPARSER_API int firewall_to_file(uint8_t **cursor, uint32_t slot, const firewall_rule_t *rule) CFG_NOEXCEPT;
CFGPARSER_API int snmp_save(uint8_t **cursor, const snmp_cfg_t *snmp,
                            const network_cfg_t *network) CFG_NOEXCEPT;
CFGPARSER_API int snmp_user_save(uint8_t **cursor, const snmp_cfg_t *snmp) CFG_NOEXCEPT;
CFGPARSER_API int ipsec_save(uint8_t **cursor, const ipsec_cfg_t *ipsec,
                             const network_cfg_t *network) CFG_NOEXCEPT;
CFGPARSER_API int save_acs(uint8_t **cursor, const tr069_cfg_t *tr069) CFG_NOEXCEPT;

/* Switch writers and converter. eth_port_string_to_output: a null text
 * gives 0. */
CFGPARSER_API int vlan_config_save(uint8_t **cursor, const switch_cfg_t *sw) CFG_NOEXCEPT;
CFGPARSER_API uint32_t eth_port_string_to_output(const char *text) CFG_NOEXCEPT;
CFGPARSER_API int del_rule_from_vtu(uint8_t **cursor, int32_t index) CFG_NOEXCEPT;
CFGPARSER_API int ins_rule_in_vtu(uint8_t **cursor, int32_t index, const vtu_rule_t *rule) CFG_NOEXCEPT;
CFGPARSER_API int qos_save(uint8_t **cursor, const switch_cfg_t *sw) CFG_NOEXCEPT;
CFGPARSER_API int switch_config_save(uint8_t **cursor, const switch_cfg_t *sw) CFG_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* CFGPARSER_H */
