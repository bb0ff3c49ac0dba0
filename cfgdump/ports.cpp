// Writers of the port settings and of the port-profile defaults.
#include "cfgmngr/keys_ports.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// Node paths: the longest is a port-default path with a 10-digit number.
using port_path = char[48];

void port_node(msg_writer &w, const char *format, uint32_t n) noexcept
{
    port_path path;
    std::snprintf(path, sizeof path, format, static_cast<int>(n));
    w.node(path);
}

// The keys each writer sends, in the order it sends them.
// The summary of every port.
constexpr auto summary_keys = keys::pick(
    keys::port_keys,
    "phone", "user_name", "custom", "cpc_rus", "calltransfer", "disabled", "port_profile_id",
    "profile_id");

// Every member of the port except ct_number.
constexpr auto one_port_keys = keys::pick(
    keys::port_keys,
    "phone", "user_name", "auth_name", "auth_pass", "usealtnumber", "altnumber",
    "usealtnumber_as_private", "custom", "port_profile_id", "profile_id", "aon", "aon_hide_date",
    "aon_hide_name", "taxophone", "flashtime", "min_flashtime", "gainr", "gaint", "category",
    "cpc_rus", "calltransfer", "callwaiting", "cfb_pri_over_cw", "playmoh", "hotline",
    "no_offhook_at_ringing", "hotnumber", "hottimeout", "ct_busy", "ct_noanswer",
    "ct_unconditional", "ct_outofservice", "ct_timeout", "cfu_number", "cfb_number", "cfnr_number",
    "cfoos_number", "dvo_callwaiting_en", "dvo_ct_attended_en", "dvo_ct_unattended_en",
    "dvo_cf_unconditional_en", "dvo_cf_busy_en", "dvo_cf_noanswer_en", "dvo_cf_outofservice_en",
    "dvo_dnd_en", "clir", "dnd", "stop_dial", "sip_port", "disabled", "pickup", "tdmhotline",
    "tdmhottimeout", "tdmhotnumber", "fxoflashtime", "fxo_dtmfpause", "fxoringtdm",
    "pstn_numberprefix", "pstn_nameprefix", "usepstncid", "dont_detect_DT", "fxo_delay_dialing",
    "enable_cpc", "cpc_time", "dialing", "dont_transmit_prefix", "transmit_number",
    "dial_tone_detect", "dt_detect_time", "rb_tone_detect", "busy_tone_detect", "min_level_detect",
    "decade_pulse_time", "decade_pause_time", "fxo_call_busy", "pstn_200_at_answer",
    "pstn_rb_detect_timeout", "fxo_detect_line_presence", "fxo_block_line_presence", "modifier",
    "mwi_dialtone", "agc_spk_enable", "agc_spk_level", "agc_mic_enable", "agc_mic_level",
    "fxo_dtmftime", "dscp", "disconnect_tone_detect");

// The line settings that a port profile gives its ports; numbers, accounts
// and call-forwarding targets belong to each port and are not written here.
constexpr auto port_def_keys = keys::pick(
    keys::port_keys,
    "aon", "taxophone", "min_flashtime", "flashtime", "fxoflashtime", "fxo_dtmfpause", "fxoringtdm",
    "gainr", "gaint", "category", "cpc_rus", "cfb_pri_over_cw", "aon_hide_date", "aon_hide_name",
    "playmoh", "usepstncid", "pstn_numberprefix", "pstn_nameprefix", "dont_detect_DT",
    "fxo_delay_dialing", "enable_cpc", "cpc_time", "transmit_number", "dont_transmit_prefix",
    "dialing", "dial_tone_detect", "dt_detect_time", "rb_tone_detect", "busy_tone_detect",
    "min_level_detect", "decade_pulse_time", "decade_pause_time", "fxo_call_busy",
    "pstn_200_at_answer", "pstn_rb_detect_timeout", "fxo_detect_line_presence",
    "fxo_block_line_presence", "stop_dial", "modifier", "fxo_dtmftime", "dscp",
    "disconnect_tone_detect");

constexpr const keys::key &pickup = keys::row(keys::port_keys, "pickup");

// The ports that the all-ports writers cover: 0 .. max_ports - 1, never more
// than the image holds.
uint32_t ports_to_write(const cfg_image_t &image) noexcept
{
    return std::min<uint32_t>(image.max_ports, CFG_MAX_PORTS);
}

} // namespace

extern "C" {

int all_ports_to_file(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT
{
    if (cfg::dump::refused("all_ports_to_file", cursor, {image}))
        return 0;
    msg_writer w(cursor, "all_ports_to_file");
    for (uint32_t i = 0; i < ports_to_write(*image); ++i) {
        port_node(w, "config.VOIP.ports.port_%d", i);
        w.fields(keys::port_keys, summary_keys, &image->ports[i]);
    }
    return w.finish();
}

int all_ports_pickup_to_file(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT
{
    if (cfg::dump::refused("all_ports_pickup_to_file", cursor, {image}))
        return 0;
    msg_writer w(cursor, "all_ports_pickup_to_file");
    for (uint32_t i = 0; i < ports_to_write(*image); ++i) {
        port_node(w, "config.VOIP.ports.port_%d", i);
        w.field(pickup, &image->ports[i]);
    }
    return w.finish();
}

int one_port_to_file(uint8_t **cursor, uint32_t port, const port_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("one_port_to_file", cursor, {cfg}, port, CFG_MAX_PORTS))
        return 0;
    cfg::dump::pickup_text groups;
    cfg::dump::build_pickup_text(cfg->pickupgroup, groups);
    cfg_trace(CFG_TRACE_DEBUG, "PICKUP %s for port %d", groups, static_cast<int>(port));

    msg_writer w(cursor, "one_port_to_file");
    port_node(w, "config.VOIP.ports.port_%d", port);
    w.fields(keys::port_keys, one_port_keys, cfg);
    return w.finish();
}

int profile_def_port_to_file(uint8_t **cursor, uint32_t profile, const port_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("profile_def_port_to_file", cursor, {cfg}, profile, CFG_PORT_PROFILES))
        return 0;
    msg_writer w(cursor, "profile_def_port_to_file");
    port_node(w, "config.VOIP.ports.port_def_%d", profile);
    w.fields(keys::port_keys, port_def_keys, cfg);
    return w.finish();
}

} // extern "C"
