// Writers of the port settings and of the port-profile defaults.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

using cfg::dump::msg_writer;

namespace {

// Node paths: the longest is a port-default path with a 10-digit number.
using port_path = char[48];

void port_node(msg_writer &w, const char *format, uint32_t n) noexcept
{
    port_path path;
    std::snprintf(path, sizeof path, format, static_cast<int>(n));
    w.node(path);
}

// The pickup groups as text: the set bits 0..31 in ascending order,
// separated by single commas ("1,5,31"); no group gives an empty text.
// All 32 groups take 85 characters. Both writers that send pickup groups
// build the text here, so they always send the same text.
using pickup_text = char[86];

void build_pickup_text(uint32_t groups, pickup_text &out) noexcept
{
    out[0] = '\0';
    std::size_t used = 0;
    for (int g = 0; g < 32; ++g) {
        if ((groups & (1u << g)) == 0)
            continue;
        const int n = std::snprintf(out + used, sizeof out - used, used == 0 ? "%d" : ",%d", g);
        if (n > 0)
            used = std::min(used + static_cast<std::size_t>(n), sizeof out - 1);
    }
}

// The ports that the all-ports writers cover: 0 .. max_ports - 1, never more
// than the image holds.
uint32_t ports_to_write(const cfg_image_t &image) noexcept
{
    return std::min<uint32_t>(image.max_ports, CFG_MAX_PORTS);
}

void port_summary(msg_writer &w, uint32_t n, const port_cfg_t &port) noexcept
{
    port_node(w, "config.VOIP.ports.port_%d", n);
    w.text("phone", port.phone);
    w.text("user_name", port.user_name);
    w.uint("custom", port.flags.custom);
    w.uint("cpc_rus", port.cpc_rus);
    w.uint("calltransfer", port.calltransfer);
    w.uint("disabled", port.flags.disabled);
    w.uint("port_profile_id", port.port_profile_id);
    w.uint("profile_id", port.profile_id);
}

void port_pickup(msg_writer &w, uint32_t n, const port_cfg_t &port) noexcept
{
    pickup_text groups;
    build_pickup_text(port.pickupgroup, groups);
    port_node(w, "config.VOIP.ports.port_%d", n);
    w.text("pickupgroup", groups);
}

} // namespace

extern "C" {

int all_ports_to_file(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT
{
    if (cfg::dump::refused("all_ports_to_file", cursor, {image}))
        return 0;
    msg_writer w(cursor, "all_ports_to_file");
    for (uint32_t i = 0; i < ports_to_write(*image); ++i)
        port_summary(w, i, image->ports[i]);
    return w.finish();
}

int all_ports_pickup_to_file(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT
{
    if (cfg::dump::refused("all_ports_pickup_to_file", cursor, {image}))
        return 0;
    msg_writer w(cursor, "all_ports_pickup_to_file");
    for (uint32_t i = 0; i < ports_to_write(*image); ++i)
        port_pickup(w, i, image->ports[i]);
    return w.finish();
}

// Every member of the port except ct_number.
int one_port_to_file(uint8_t **cursor, uint32_t port, const port_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("one_port_to_file", cursor, {cfg}, port, CFG_MAX_PORTS))
        return 0;
    pickup_text groups;
    build_pickup_text(cfg->pickupgroup, groups);
    cfg_trace(4, "PICKUP %s for port %d", groups, static_cast<int>(port));

    msg_writer w(cursor, "one_port_to_file");
    port_node(w, "config.VOIP.ports.port_%d", port);
    w.text("phone", cfg->phone);
    w.text("user_name", cfg->user_name);
    w.text("auth_name", cfg->auth_name);
    w.text("auth_pass", cfg->auth_pass);
    w.uint("usealtnumber", cfg->flags.usealtnumber);
    w.text("altnumber", cfg->altnumber);
    w.uint("usealtnumber_as_private", cfg->flags.usealtnumber_as_private);
    w.uint("custom", cfg->flags.custom);
    w.uint("port_profile_id", cfg->port_profile_id);
    w.uint("profile_id", cfg->profile_id);
    w.uint("aon", cfg->aon);
    w.uint("aon_hide_date", cfg->flags.aon_hide_date);
    w.uint("aon_hide_name", cfg->flags.aon_hide_name);
    w.uint("taxophone", cfg->taxophone);
    w.uint("flashtime", cfg->flashtime);
    w.uint("min_flashtime", cfg->min_flashtime);
    w.sint("gainr", cfg->gainr);
    w.sint("gaint", cfg->gaint);
    w.uint("category", cfg->category);
    w.uint("cpc_rus", cfg->cpc_rus);
    w.uint("calltransfer", cfg->calltransfer);
    w.uint("callwaiting", cfg->flags.callwaiting);
    w.uint("cfb_pri_over_cw", cfg->cfb_pri_over_cw);
    w.uint("playmoh", cfg->flags.playmoh);
    w.uint("hotline", cfg->flags.hotline);
    w.uint("no_offhook_at_ringing", cfg->line_flags.no_offhook_at_ringing);
    w.text("hotnumber", cfg->hotnumber);
    w.uint("hottimeout", static_cast<uint32_t>(cfg->hottimeout));
    w.uint("ct_busy", cfg->flags.ct_busy);
    w.uint("ct_noanswer", cfg->flags.ct_noanswer);
    w.uint("ct_unconditional", cfg->flags.ct_unconditional);
    w.uint("ct_outofservice", cfg->flags.ct_outofservice);
    w.uint("ct_timeout", cfg->ct_timeout);
    w.text("cfu_number", cfg->cfu_number);
    w.text("cfb_number", cfg->cfb_number);
    w.text("cfnr_number", cfg->cfnr_number);
    w.text("cfoos_number", cfg->cfoos_number);
    w.uint("dvo_callwaiting_en", cfg->flags.dvo_callwaiting_en);
    w.uint("dvo_ct_attended_en", cfg->flags.dvo_ct_attended_en);
    w.uint("dvo_ct_unattended_en", cfg->flags.dvo_ct_unattended_en);
    w.uint("dvo_cf_unconditional_en", cfg->flags.dvo_cf_unconditional_en);
    w.uint("dvo_cf_busy_en", cfg->flags.dvo_cf_busy_en);
    w.uint("dvo_cf_noanswer_en", cfg->flags.dvo_cf_noanswer_en);
    w.uint("dvo_cf_outofservice_en", cfg->flags.dvo_cf_outofservice_en);
    w.uint("dvo_dnd_en", cfg->flags.dvo_dnd_en);
    w.uint("clir", cfg->line_flags.clir);
    w.uint("dnd", cfg->flags.dnd);
    w.uint("stop_dial", cfg->flags.stop_dial);
    w.uint("sip_port", cfg->sip_port);
    w.uint("disabled", cfg->flags.disabled);
    w.text("pickupgroup", groups);
    w.uint("tdmhotline", cfg->tdmhotline);
    w.uint("tdmhottimeout", cfg->tdmhottimeout);
    w.text("tdmhotnumber", cfg->tdmhotnumber);
    w.uint("fxoflashtime", cfg->fxoflashtime);
    w.uint("fxo_dtmfpause", cfg->fxo_dtmfpause);
    w.uint("fxoringtdm", cfg->fxoringtdm);
    w.text("pstn_numberprefix", cfg->pstn_numberprefix);
    w.text("pstn_nameprefix", cfg->pstn_nameprefix);
    w.uint("usepstncid", cfg->flags.usepstncid);
    w.uint("dont_detect_DT", cfg->flags.dont_detect_DT);
    w.uint("fxo_delay_dialing", cfg->fxo_delay_dialing);
    w.uint("enable_cpc", cfg->flags.enable_cpc);
    w.uint("cpc_time", cfg->cpc_time);
    w.text("dialing", cfg->dialing);
    w.uint("dont_transmit_prefix", cfg->flags.dont_transmit_prefix);
    w.uint("transmit_number", cfg->flags.transmit_number);
    w.text("dial_tone_detect", cfg->dial_tone_detect);
    w.uint("dt_detect_time", static_cast<uint32_t>(cfg->dt_detect_time));
    w.text("rb_tone_detect", cfg->rb_tone_detect);
    w.text("busy_tone_detect", cfg->busy_tone_detect);
    w.uint("min_level_detect", cfg->min_level_detect);
    w.uint("decade_pulse_time", cfg->decade_pulse_time);
    w.uint("decade_pause_time", cfg->decade_pause_time);
    w.uint("fxo_call_busy", cfg->flags.fxo_call_busy);
    w.uint("pstn_200_at_answer", cfg->pstn_200_at_answer);
    w.uint("pstn_rb_detect_timeout", cfg->pstn_rb_detect_timeout);
    w.uint("fxo_detect_line_presence", cfg->flags.fxo_detect_line_presence);
    w.uint("fxo_block_line_presence", cfg->flags.fxo_block_line_presence);
    w.sint("modifier", cfg->modifier);
    w.uint("mwi_dialtone", cfg->flags.mwi_dialtone);
    w.uint("agc_spk_enable", cfg->line_flags.agc_spk_enable);
    w.sint("agc_spk_level", cfg->agc_spk_level);
    w.uint("agc_mic_enable", cfg->line_flags.agc_mic_enable);
    w.sint("agc_mic_level", cfg->agc_mic_level);
    w.uint("fxo_dtmftime", cfg->fxo_dtmftime);
    w.uint("dscp", cfg->dscp);
    w.text("disconnect_tone_detect", cfg->disconnect_tone_detect);
    return w.finish();
}

// The line settings that a port profile gives its ports; numbers, accounts
// and call-forwarding targets belong to each port and are not written here.
int profile_def_port_to_file(uint8_t **cursor, uint32_t profile, const port_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("profile_def_port_to_file", cursor, {cfg}, profile, CFG_PORT_PROFILES))
        return 0;
    msg_writer w(cursor, "profile_def_port_to_file");
    port_node(w, "config.VOIP.ports.port_def_%d", profile);
    w.uint("aon", cfg->aon);
    w.uint("taxophone", cfg->taxophone);
    w.uint("min_flashtime", cfg->min_flashtime);
    w.uint("flashtime", cfg->flashtime);
    w.uint("fxoflashtime", cfg->fxoflashtime);
    w.uint("fxo_dtmfpause", cfg->fxo_dtmfpause);
    w.uint("fxoringtdm", cfg->fxoringtdm);
    w.sint("gainr", cfg->gainr);
    w.sint("gaint", cfg->gaint);
    w.uint("category", cfg->category);
    w.uint("cpc_rus", cfg->cpc_rus);
    w.uint("cfb_pri_over_cw", cfg->cfb_pri_over_cw);
    w.uint("aon_hide_date", cfg->flags.aon_hide_date);
    w.uint("aon_hide_name", cfg->flags.aon_hide_name);
    w.uint("playmoh", cfg->flags.playmoh);
    w.uint("usepstncid", cfg->flags.usepstncid);
    w.text("pstn_numberprefix", cfg->pstn_numberprefix);
    w.text("pstn_nameprefix", cfg->pstn_nameprefix);
    w.uint("dont_detect_DT", cfg->flags.dont_detect_DT);
    w.uint("fxo_delay_dialing", cfg->fxo_delay_dialing);
    w.uint("enable_cpc", cfg->flags.enable_cpc);
    w.uint("cpc_time", cfg->cpc_time);
    w.uint("transmit_number", cfg->flags.transmit_number);
    w.uint("dont_transmit_prefix", cfg->flags.dont_transmit_prefix);
    w.text("dialing", cfg->dialing);
    w.text("dial_tone_detect", cfg->dial_tone_detect);
    w.uint("dt_detect_time", static_cast<uint32_t>(cfg->dt_detect_time));
    w.text("rb_tone_detect", cfg->rb_tone_detect);
    w.text("busy_tone_detect", cfg->busy_tone_detect);
    w.uint("min_level_detect", cfg->min_level_detect);
    w.uint("decade_pulse_time", cfg->decade_pulse_time);
    w.uint("decade_pause_time", cfg->decade_pause_time);
    w.uint("fxo_call_busy", cfg->flags.fxo_call_busy);
    w.uint("pstn_200_at_answer", cfg->pstn_200_at_answer);
    w.uint("pstn_rb_detect_timeout", cfg->pstn_rb_detect_timeout);
    w.uint("fxo_detect_line_presence", cfg->flags.fxo_detect_line_presence);
    w.uint("fxo_block_line_presence", cfg->flags.fxo_block_line_presence);
    w.uint("stop_dial", cfg->flags.stop_dial);
    w.sint("modifier", cfg->modifier);
    w.uint("fxo_dtmftime", cfg->fxo_dtmftime);
    w.uint("dscp", cfg->dscp);
    w.text("disconnect_tone_detect", cfg->disconnect_tone_detect);
    return w.finish();
}

} // extern "C"
