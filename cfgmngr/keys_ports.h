// Key table of the port settings ("config.VOIP.ports.port_N" and the
// port-profile defaults "config.VOIP.ports.port_def_N"): one row per key, in
// the order the keys are matched (a key that is a prefix of another comes
// after it: "usealtnumber_as_private" before "usealtnumber", "aon_hide_*"
// before "aon").
#pragma once

#include "cfgmngr/key_table.h"

#include <cstdint>

namespace cfg::keys {

// Bits of port_flags_t and port_line_flags_t: the bit-fields are laid out
// from the lowest bit up, in the order the header declares them.
namespace port_bits {
enum : uint8_t {
    custom,
    playmoh,
    aon_hide_date,
    aon_hide_name,
    mwi_dialtone,
    dnd,
    stop_dial,
    usealtnumber,
    disabled,
    ct_busy,
    ct_unconditional,
    ct_outofservice,
    ct_noanswer,
    callwaiting,
    hotline,
    dvo_callwaiting_en,
    dvo_ct_attended_en,
    dvo_ct_unattended_en,
    dvo_cf_unconditional_en,
    dvo_cf_busy_en,
    dvo_cf_noanswer_en,
    dvo_cf_outofservice_en,
    dvo_dnd_en,
    fxo_detect_line_presence,
    fxo_block_line_presence,
    usepstncid,
    dont_detect_DT,
    enable_cpc,
    dont_transmit_prefix,
    transmit_number,
    fxo_call_busy,
    usealtnumber_as_private,
};
// port_line_flags_t
enum : uint8_t { agc_spk_enable = 0, agc_mic_enable = 1, clir = 2, no_offhook_at_ringing = 4 };
} // namespace port_bits

#define F(member)  CFG_FIELD(port_cfg_t, member)
#define FLAG(name) flag(#name, F(flags), port_bits::name)
inline constexpr key port_keys[] = {
    text("phone", F(phone)),
    text("user_name", F(user_name)),
    text("auth_name", F(auth_name)),
    text("auth_pass", F(auth_pass)),
    FLAG(custom),
    range("port_profile_id", F(port_profile_id), 0, 7, 0),
    range("profile_id", F(profile_id), 0, 7, 0),
    range("taxophone", F(taxophone), 0, 3, 0),
    range("min_flashtime", F(min_flashtime), 70, 2000, 0),
    range("flashtime", F(flashtime), 200, 2000, 0),
    range("gainr", F(gainr), -230, 20, 0),
    range("gaint", F(gaint), -170, 60, 0),
    range("category", F(category), 0, 255, 10),
    range("cpc_rus", F(cpc_rus), 0, 10, 0),
    range("calltransfer", F(calltransfer), 0, 4, 0),
    FLAG(callwaiting),
    FLAG(mwi_dialtone),
    FLAG(hotline),
    range("no_offhook_at_ringing", bits(F(line_flags), port_bits::no_offhook_at_ringing, 2), 0, 2, 0),
    checkbox("tdmhotline", F(tdmhotline)),
    number("hottimeout", F(hottimeout)).sent_as(sent::uint),
    range("tdmhottimeout", F(tdmhottimeout), 0, 300, 15),
    FLAG(ct_busy),
    FLAG(ct_noanswer),
    range("ct_timeout", F(ct_timeout), 0, 300, 0),
    range("clir", bits(F(line_flags), port_bits::clir, 2), 0, 2, 0),
    FLAG(disabled),
    FLAG(aon_hide_date),
    FLAG(aon_hide_name),
    range("aon", F(aon), 0, 4, 0),
    text("hotnumber", F(hotnumber)),
    text("tdmhotnumber", F(tdmhotnumber)),
    FLAG(ct_unconditional),
    FLAG(ct_outofservice),
    text("ct_number", F(ct_number)).not_sent(), // no port writer sends it
    text("cfu_number", F(cfu_number)),
    text("cfb_number", F(cfb_number)),
    text("cfnr_number", F(cfnr_number)),
    text("cfoos_number", F(cfoos_number)),
    FLAG(dnd),
    FLAG(stop_dial),
    text("altnumber", F(altnumber)),
    FLAG(usealtnumber_as_private),
    FLAG(usealtnumber),
    special("pickup", F(pickupgroup), rule::pickup_groups).as("pickupgroup").sent_as(sent::pickup_groups),
    range("sip_port", F(sip_port), 0, 65535, 0),
    checkbox("cfb_pri_over_cw", F(cfb_pri_over_cw)),
    FLAG(dvo_callwaiting_en),
    FLAG(dvo_ct_attended_en),
    FLAG(dvo_ct_unattended_en),
    FLAG(dvo_cf_unconditional_en),
    FLAG(dvo_cf_busy_en),
    FLAG(dvo_cf_noanswer_en),
    FLAG(dvo_cf_outofservice_en),
    FLAG(dvo_dnd_en),
    FLAG(playmoh),
    special("dialing", F(dialing), rule::text_or_default).with_text_default("DTMF"),
    range("fxoflashtime", F(fxoflashtime), 70, 1000, 0),
    range("fxo_dtmfpause", F(fxo_dtmfpause), 80, 2500, 100),
    range("fxoringtdm", F(fxoringtdm), 0, 10, 0),
    text("pstn_numberprefix", F(pstn_numberprefix)),
    text("pstn_nameprefix", F(pstn_nameprefix)),
    FLAG(usepstncid),
    FLAG(dont_transmit_prefix),
    FLAG(transmit_number),
    FLAG(enable_cpc),
    range("cpc_time", F(cpc_time), 200, 600, 0),
    range("dscp", F(dscp), 0, 63, 46),
    FLAG(dont_detect_DT),
    range("fxo_delay_dialing", F(fxo_delay_dialing), 0, 10, 0),
    text("dial_tone_detect", F(dial_tone_detect)),
    text("rb_tone_detect", F(rb_tone_detect)),
    text("busy_tone_detect", F(busy_tone_detect)),
    text("disconnect_tone_detect", F(disconnect_tone_detect)),
    range("min_level_detect", F(min_level_detect), 20, 40, 32),
    // Any integer is taken as it is; only an empty value selects 5.
    range("dt_detect_time", F(dt_detect_time), INT32_MIN, INT32_MAX, 5).sent_as(sent::uint),
    range("decade_pulse_time", F(decade_pulse_time), 50, 120, 80),
    range("decade_pause_time", F(decade_pause_time), 30, 100, 80),
    range("fxo_dtmftime", F(fxo_dtmftime), 65, 100, 80),
    FLAG(fxo_call_busy),
    range("pstn_200_at_answer", F(pstn_200_at_answer), 0, 4, 1),
    range("pstn_rb_detect_timeout", F(pstn_rb_detect_timeout), 1, 60, 5),
    FLAG(fxo_detect_line_presence),
    FLAG(fxo_block_line_presence),
    range("modifier", F(modifier), -1, 15, -1),
    flag("agc_spk_enable", F(line_flags), port_bits::agc_spk_enable),
    range("agc_spk_level", F(agc_spk_level), -25, -1, -25),
    flag("agc_mic_enable", F(line_flags), port_bits::agc_mic_enable),
    range("agc_mic_level", F(agc_mic_level), -25, -1, -25),
};
#undef FLAG
#undef F

} // namespace cfg::keys
