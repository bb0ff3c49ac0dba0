// Port settings: "config.VOIP.ports.port_N" fills ports[N] (N 0..71) and
// "config.VOIP.ports.port_def_N" fills the port-profile defaults
// port_defaults[N] (N 0..7). Both kinds of node take every key of the table.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

#include <cstdint>
#include <string_view>

namespace cfg::handlers {
namespace {

constexpr std::string_view port_def_prefix = "config.VOIP.ports.port_def_";

// Checkbox value of a one-bit switch: the switches are bit-fields, which
// cannot be bound to a reference, so the row assigns the result itself.
uint32_t checked(const char *value) noexcept
{
    return get_checkbox(value) != 0 ? 1u : 0u;
}

// Range value of a 2-bit line switch (assigned to its bit-field by the row).
uint8_t two_bits(const char *value, int32_t min, int32_t max, int32_t def) noexcept
{
    return static_cast<uint8_t>(get_digit_from_min_to_max_or_set_default(value, min, max, def) & 3);
}

bool pickup_separator(char c) noexcept
{
    return c == ',' || c == ';';
}

// Pickup groups: numbers separated by ',' or ';' (a run of separators counts
// as one). 0..31 set their bit, other numbers are ignored, a piece without a
// number reads as 0. Only the first 255 characters of the value are read.
uint32_t pickup_groups(const char *value) noexcept
{
    if (numbers::absent(value))
        return 0;
    char copy[256];
    store::text(copy, value);
    uint32_t groups = 0;
    const char *at = copy;
    for (;;) {
        while (pickup_separator(*at))
            ++at;
        if (*at == '\0')
            return groups;
        const int32_t g = numbers::parse_int(at); // stops at the next separator
        if (g >= 0 && g <= 31)
            groups |= 1u << g;
        while (*at != '\0' && !pickup_separator(*at))
            ++at;
    }
}

// "dialing": an empty value selects tone dialling.
void store_dialing(port_cfg_t &r, const char *value) noexcept
{
    store::text(r.dialing, numbers::absent(value) ? "DTMF" : value);
}

// One row per key, in the order the configuration manager's keys are
// matched: a key that is a prefix of another comes after it
// ("usealtnumber_as_private" before "usealtnumber", "aon_hide_*" before "aon").
void store_port(port_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("phone"))                    return store::text(r.phone, v);
    if (p.is("user_name"))                return store::text(r.user_name, v);
    if (p.is("auth_name"))                return store::text(r.auth_name, v);
    if (p.is("auth_pass"))                return store::text(r.auth_pass, v);
    if (p.is("custom"))                   { r.flags.custom = checked(v); return; }
    if (p.is("port_profile_id"))          return store::digit(r.port_profile_id, v, 0, 7, 0);
    if (p.is("profile_id"))               return store::digit(r.profile_id, v, 0, 7, 0);
    if (p.is("taxophone"))                return store::digit(r.taxophone, v, 0, 3, 0);
    if (p.is("min_flashtime"))            return store::digit(r.min_flashtime, v, 70, 2000, 0);
    if (p.is("flashtime"))                return store::digit(r.flashtime, v, 200, 2000, 0);
    if (p.is("gainr"))                    return store::digit(r.gainr, v, -230, 20, 0);
    if (p.is("gaint"))                    return store::digit(r.gaint, v, -170, 60, 0);
    if (p.is("category"))                 return store::digit(r.category, v, 0, 255, 10);
    if (p.is("cpc_rus"))                  return store::digit(r.cpc_rus, v, 0, 10, 0);
    if (p.is("calltransfer"))             return store::digit(r.calltransfer, v, 0, 4, 0);
    if (p.is("callwaiting"))              { r.flags.callwaiting = checked(v); return; }
    if (p.is("mwi_dialtone"))             { r.flags.mwi_dialtone = checked(v); return; }
    if (p.is("hotline"))                  { r.flags.hotline = checked(v); return; }
    if (p.is("no_offhook_at_ringing"))    { r.line_flags.no_offhook_at_ringing = two_bits(v, 0, 2, 0); return; }
    if (p.is("tdmhotline"))               return store::checkbox(r.tdmhotline, v);
    if (p.is("hottimeout"))               return store::number(r.hottimeout, v);
    if (p.is("tdmhottimeout"))            return store::digit(r.tdmhottimeout, v, 0, 300, 15);
    if (p.is("ct_busy"))                  { r.flags.ct_busy = checked(v); return; }
    if (p.is("ct_noanswer"))              { r.flags.ct_noanswer = checked(v); return; }
    if (p.is("ct_timeout"))               return store::digit(r.ct_timeout, v, 0, 300, 0);
    if (p.is("clir"))                     { r.line_flags.clir = two_bits(v, 0, 2, 0); return; }
    if (p.is("disabled"))                 { r.flags.disabled = checked(v); return; }
    if (p.is("aon_hide_date"))            { r.flags.aon_hide_date = checked(v); return; }
    if (p.is("aon_hide_name"))            { r.flags.aon_hide_name = checked(v); return; }
    if (p.is("aon"))                      return store::digit(r.aon, v, 0, 4, 0);
    if (p.is("hotnumber"))                return store::text(r.hotnumber, v);
    if (p.is("tdmhotnumber"))             return store::text(r.tdmhotnumber, v);
    if (p.is("ct_unconditional"))         { r.flags.ct_unconditional = checked(v); return; }
    if (p.is("ct_outofservice"))          { r.flags.ct_outofservice = checked(v); return; }
    if (p.is("ct_number"))                return store::text(r.ct_number, v);
    if (p.is("cfu_number"))               return store::text(r.cfu_number, v);
    if (p.is("cfb_number"))               return store::text(r.cfb_number, v);
    if (p.is("cfnr_number"))              return store::text(r.cfnr_number, v);
    if (p.is("cfoos_number"))             return store::text(r.cfoos_number, v);
    if (p.is("dnd"))                      { r.flags.dnd = checked(v); return; }
    if (p.is("stop_dial"))                { r.flags.stop_dial = checked(v); return; }
    if (p.is("altnumber"))                return store::text(r.altnumber, v);
    if (p.is("usealtnumber_as_private"))  { r.flags.usealtnumber_as_private = checked(v); return; }
    if (p.is("usealtnumber"))             { r.flags.usealtnumber = checked(v); return; }
    if (p.is("pickup"))                   { r.pickupgroup = pickup_groups(v); return; }
    if (p.is("sip_port"))                 return store::digit(r.sip_port, v, 0, 65535, 0);
    if (p.is("cfb_pri_over_cw"))          return store::checkbox(r.cfb_pri_over_cw, v);
    if (p.is("dvo_callwaiting_en"))       { r.flags.dvo_callwaiting_en = checked(v); return; }
    if (p.is("dvo_ct_attended_en"))       { r.flags.dvo_ct_attended_en = checked(v); return; }
    if (p.is("dvo_ct_unattended_en"))     { r.flags.dvo_ct_unattended_en = checked(v); return; }
    if (p.is("dvo_cf_unconditional_en"))  { r.flags.dvo_cf_unconditional_en = checked(v); return; }
    if (p.is("dvo_cf_busy_en"))           { r.flags.dvo_cf_busy_en = checked(v); return; }
    if (p.is("dvo_cf_noanswer_en"))       { r.flags.dvo_cf_noanswer_en = checked(v); return; }
    if (p.is("dvo_cf_outofservice_en"))   { r.flags.dvo_cf_outofservice_en = checked(v); return; }
    if (p.is("dvo_dnd_en"))               { r.flags.dvo_dnd_en = checked(v); return; }
    if (p.is("playmoh"))                  { r.flags.playmoh = checked(v); return; }
    if (p.is("dialing"))                  return store_dialing(r, v);
    if (p.is("fxoflashtime"))             return store::digit(r.fxoflashtime, v, 70, 1000, 0);
    if (p.is("fxo_dtmfpause"))            return store::digit(r.fxo_dtmfpause, v, 80, 2500, 100);
    if (p.is("fxoringtdm"))               return store::digit(r.fxoringtdm, v, 0, 10, 0);
    if (p.is("pstn_numberprefix"))        return store::text(r.pstn_numberprefix, v);
    if (p.is("pstn_nameprefix"))          return store::text(r.pstn_nameprefix, v);
    if (p.is("usepstncid"))               { r.flags.usepstncid = checked(v); return; }
    if (p.is("dont_transmit_prefix"))     { r.flags.dont_transmit_prefix = checked(v); return; }
    if (p.is("transmit_number"))          { r.flags.transmit_number = checked(v); return; }
    if (p.is("enable_cpc"))               { r.flags.enable_cpc = checked(v); return; }
    if (p.is("cpc_time"))                 return store::digit(r.cpc_time, v, 200, 600, 0);
    if (p.is("dscp"))                     return store::digit(r.dscp, v, 0, 63, 46);
    if (p.is("dont_detect_DT"))           { r.flags.dont_detect_DT = checked(v); return; }
    if (p.is("fxo_delay_dialing"))        return store::digit(r.fxo_delay_dialing, v, 0, 10, 0);
    if (p.is("dial_tone_detect"))         return store::text(r.dial_tone_detect, v);
    if (p.is("rb_tone_detect"))           return store::text(r.rb_tone_detect, v);
    if (p.is("busy_tone_detect"))         return store::text(r.busy_tone_detect, v);
    if (p.is("disconnect_tone_detect"))   return store::text(r.disconnect_tone_detect, v);
    if (p.is("min_level_detect"))         return store::digit(r.min_level_detect, v, 20, 40, 32);
    // Any integer is taken as it is; only an empty value selects 5.
    if (p.is("dt_detect_time"))           return store::digit(r.dt_detect_time, v, INT32_MIN, INT32_MAX, 5);
    if (p.is("decade_pulse_time"))        return store::digit(r.decade_pulse_time, v, 50, 120, 80);
    if (p.is("decade_pause_time"))        return store::digit(r.decade_pause_time, v, 30, 100, 80);
    if (p.is("fxo_dtmftime"))             return store::digit(r.fxo_dtmftime, v, 65, 100, 80);
    if (p.is("fxo_call_busy"))            { r.flags.fxo_call_busy = checked(v); return; }
    if (p.is("pstn_200_at_answer"))       return store::digit(r.pstn_200_at_answer, v, 0, 4, 1);
    if (p.is("pstn_rb_detect_timeout"))   return store::digit(r.pstn_rb_detect_timeout, v, 1, 60, 5);
    if (p.is("fxo_detect_line_presence")) { r.flags.fxo_detect_line_presence = checked(v); return; }
    if (p.is("fxo_block_line_presence"))  { r.flags.fxo_block_line_presence = checked(v); return; }
    if (p.is("modifier"))                 return store::digit(r.modifier, v, -1, 15, -1);
    if (p.is("agc_spk_enable"))           { r.line_flags.agc_spk_enable = checked(v) & 1u; return; }
    if (p.is("agc_spk_level"))            return store::digit(r.agc_spk_level, v, -25, -1, -25);
    if (p.is("agc_mic_enable"))           { r.line_flags.agc_mic_enable = checked(v) & 1u; return; }
    if (p.is("agc_mic_level"))            return store::digit(r.agc_mic_level, v, -25, -1, -25);
}

// The record a node fills, or why it fills none.
struct port_target {
    port_cfg_t *record = nullptr;
    uint32_t *updated = nullptr;
    bool abandon = false; // end the whole message
};

port_target select_port_default(cfg_image_t &image, const char *path) noexcept
{
    // The prefix holds a '_'.
    const char *text = numbers::after_underscore(path, numbers::underscore::last);
    int64_t number = 0;
    if (numbers::scan_entry(text, number) == nullptr || number != numbers::held_int32(number)) {
        // No number at all (one too large for 32 bits counts as none): like a
        // bad port number below, the node is reported and skipped; only a
        // number outside 0..7 ends the message.
        cfg_trace(1, "%d: Incorrect number of port's profile [%s]", __LINE__, text);
        return {};
    }
    const auto n = static_cast<int32_t>(number);
    port_target t;
    {
        const parse::image_lock lock;
        if (n < 0 || n >= CFG_PORT_PROFILES) {
            cfg_trace(1, "%d: Incorrect number of port's profile [%d]", __LINE__, n);
            t.abandon = true;
            return t;
        }
        t.record = &image.port_defaults[n];
        t.updated = &image.port_defaults_updated;
    }
    cfg_trace(4, "%s: port_def_%d", "all_parser", n);
    return t;
}

// A port number outside 0..71, or a path without a readable number, is
// reported at the error level and its node is skipped: it names no record,
// and the rest of the message (other ports and sections) is still good.
port_target select_port(cfg_image_t &image, const char *path) noexcept
{
    const char *text = numbers::after_underscore(path); // the prefix holds a '_'
    const int32_t n = numbers::entry_within(text, CFG_MAX_PORTS, -1);
    if (n < 0) {
        cfg_trace(1, "%d: Incorrect port number [%s]", __LINE__, text);
        return {};
    }
    port_target t;
    {
        const parse::image_lock lock;
        t.record = &image.ports[n];
        t.updated = &image.ports_updated[n];
    }
    cfg_trace(4, "%s: port_number = %s  actual_port = %d", "all_parser", text, n);
    return t;
}

} // namespace

node_end ports(cfg_image_t &image, node &n)
{
    const port_target t = std::string_view(n.path).starts_with(port_def_prefix)
                              ? select_port_default(image, n.path)
                              : select_port(image, n.path);
    if (t.abandon)
        return node_end::stop;
    if (t.record == nullptr)
        return parse::skip_unknown(n);
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_port(*t.record, p);
    }
    // Port-default nodes share one stamp; each port has its own.
    return parse::finish_node(n, *t.updated);
}

} // namespace cfg::handlers
