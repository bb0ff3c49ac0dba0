/*
 * Compile check: the public header is valid C99 and keeps the layouts that
 * its comments promise (the list fields, the bit sets, the records' parts).
 * Only relative orders and ABI-independent sizes are checked, so the check
 * holds on x86-64 and on 32-bit ARM alike.
 */
#include <stddef.h>

#include "cfgparser.h"

/* A C99 compile-time check: the array size turns negative when it fails. */
#define CHECK_CAT2(a, b)   a##b
#define CHECK_CAT(a, b)    CHECK_CAT2(a, b)
#define STATIC_CHECK(cond) typedef char CHECK_CAT(static_check_, __LINE__)[(cond) ? 1 : -1]

#define STATIC_CHECK_MSG(cond, text) STATIC_CHECK(cond)
#define BEFORE(type, a, b)           STATIC_CHECK(offsetof(type, a) < offsetof(type, b))

/* Configuration image: the order of its parts and of their records. */
BEFORE(cfg_image_t, port_defaults, ports);
BEFORE(cfg_image_t, ports, groups);
BEFORE(cfg_image_t, limits, switch_status);
BEFORE(cfg_image_t, mon_t10, sip);
BEFORE(cfg_image_t, sip, profiles);
BEFORE(cfg_image_t, firewall, modifiers);

/* List fields: `current` first in hosts and the MAC filter, `start` first
 * everywhere else. */
BEFORE(hosts_cfg_t, address, current);
BEFORE(hosts_cfg_t, current, start);
BEFORE(hosts_cfg_t, start, updated);
BEFORE(routes_cfg_t, route, start);
BEFORE(routes_cfg_t, start, current);
BEFORE(routes_cfg_t, current, updated);
BEFORE(groups_cfg_t, start, current);
BEFORE(groups_cfg_t, current, updated);
BEFORE(profile_dialplan_cfg_t, start, current);
BEFORE(profile_dialplan_cfg_t, current, regex_on);
BEFORE(firewall_cfg_t, start, current);
BEFORE(firewall_cfg_t, current, updated);
BEFORE(limit_cfg_t, start, current);
BEFORE(limit_cfg_t, current, ceiling);
BEFORE(limit_cfg_t, ceiling, updated);
BEFORE(limit_cfg_t, updated, recalculated);

/* MAC filter: 8-bit `current` and `start`, side by side, before `updated`. */
STATIC_CHECK_MSG(sizeof(((mac_filter_cfg_t *)0)->current) == 1, "mac_filter_cfg_t.current is 8-bit");
STATIC_CHECK_MSG(sizeof(((mac_filter_cfg_t *)0)->start) == 1, "mac_filter_cfg_t.start is 8-bit");
STATIC_CHECK_MSG(offsetof(mac_filter_cfg_t, start) == offsetof(mac_filter_cfg_t, current) + 1,
                 "mac_filter_cfg_t.start directly follows current");
BEFORE(mac_filter_cfg_t, client, current);
BEFORE(mac_filter_cfg_t, start, updated);

/* Modifiers: one 16-bit count after the rules. */
STATIC_CHECK_MSG(sizeof(((modifier_cfg_t *)0)->count) == 2, "modifier_cfg_t.count is 16-bit");
BEFORE(modifier_cfg_t, rules, count);

/* H.323 record: the range fields sit between the H.323 fields. */
BEFORE(h323_cfg_t, isgateway, tcpportmin);
BEFORE(h323_cfg_t, tcpportmin, tcpportmax);
BEFORE(h323_cfg_t, intrcpmax, dtmftransfer);
BEFORE(h323_cfg_t, bearercapability, verify_remote_media);
BEFORE(h323_cfg_t, verify_remote_media, sip_dscp);
BEFORE(h323_cfg_t, sip_dscp, updated);

/* Profiles: codecs before the SIP settings; dial plan rule layout. */
BEFORE(profile_cfg_t, codecs, sip);
BEFORE(codecs_cfg_t, flashtransfer, payload);
BEFORE(codecs_cfg_t, t38_bitrate, t38_datagram);
BEFORE(dial_plan_t, field3, field2);
BEFORE(dial_plan_t, protocol, port_mask);

/* The line switches of a port fit one byte; the port flags one word. */
STATIC_CHECK_MSG(sizeof(port_line_flags_t) == 1, "port_line_flags_t is one byte");
STATIC_CHECK_MSG(sizeof(port_flags_t) == 4, "port_flags_t is one 32-bit word");
BEFORE(port_cfg_t, cfb_pri_over_cw, flags);
BEFORE(port_cfg_t, cpc_rus, line_flags);
BEFORE(port_cfg_t, line_flags, agc_spk_level);
