// Writers of the codec settings: the shared block of codec params, the
// codecs node of a VoIP profile and the node of a dial-plan profile.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

#include <cstdio>

using cfg::dump::msg_writer;

namespace {

// Every member goes out through the unsigned builder, so a negative value is
// sent as its 32-bit two's complement (-1 as 4294967295).
uint32_t as_unsigned(int32_t value) noexcept { return static_cast<uint32_t>(value); }

// The 33 params shared by the profile codecs node and the dial-plan profile
// node, written into the node the caller has opened.
void codec_params(msg_writer &w, const codecs_cfg_t &c) noexcept
{
    w.uint("g711a", as_unsigned(c.g711a));
    w.uint("g711u", as_unsigned(c.g711u));
    w.uint("g729a", 0); // not kept: always sent as off
    w.uint("g729b", as_unsigned(c.g729b));
    w.uint("g729x", as_unsigned(c.g729x));
    w.uint("g723", as_unsigned(c.g723));
    w.uint("g726_32", as_unsigned(c.g726_32));
    w.uint("g711pte", as_unsigned(c.g711pte));
    w.uint("g729pte", as_unsigned(c.g729pte));
    w.uint("g723pte", as_unsigned(c.g723pte));
    w.uint("g726_32_pte", c.g726_32_pte);
    w.uint("g726_32_pt", c.g726_32_pt);
    w.uint("dtmftransfer", as_unsigned(c.dtmftransfer));
    w.uint("payload", as_unsigned(c.payload));
    w.uint("rfc3264_pt_common", c.rfc3264_pt_common);
    w.uint("nse_payload", c.nse_payload);
    w.uint("faxdirection", as_unsigned(c.faxdirection));
    w.uint("faxtransfer", as_unsigned(c.faxtransfer));
    w.uint("slave_faxtransfer", as_unsigned(c.slave_faxtransfer));
    w.uint("modemtransfer", as_unsigned(c.modemtransfer));
    w.uint("silencedetector", c.silencedetector);
    w.uint("echocanceller", c.echocanceller);
    w.uint("ecan_nlp_disable", c.ecan_nlp_disable);
    w.uint("comfortnoise", c.comfortnoise);
    w.uint("jb_pt_delay", as_unsigned(c.jb_pt_delay));
    w.uint("jb_vo_delay_min", as_unsigned(c.jb_vo_delay_min));
    w.uint("jb_vo_delay_max", as_unsigned(c.jb_vo_delay_max));
    w.uint("jb_vo_adaptive", as_unsigned(c.jb_vo_adaptive));
    w.uint("jb_vo_del_threshold", as_unsigned(c.jb_vo_del_threshold));
    w.uint("jb_vo_del_mode_soft", as_unsigned(c.jb_vo_del_mode_soft));
    w.uint("t38_datagram", c.t38_datagram);
    w.uint("t38_bitrate", as_unsigned(c.t38_bitrate));
    w.uint("dispersion_time", c.dispersion_time);
}

} // namespace

extern "C" {

uint32_t codec_params_save(uint8_t **cursor, const codecs_cfg_t *codecs, uint32_t running) CFG_NOEXCEPT
{
    if (cfg::dump::refused("codec_params_save", cursor, {codecs}))
        return running;
    msg_writer w = msg_writer::continuing(cursor, running);
    codec_params(w, *codecs);
    return w.running();
}

int profile_codecs_save(uint8_t **cursor, int profile, const profile_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("profile_codecs_save", cursor, {cfg}, profile, CFG_PROFILES))
        return 0;
    char path[64];
    std::snprintf(path, sizeof path, "config.VOIP.profile.profile_%d.codecs", profile);
    msg_writer w(cursor, "profile_codecs_save");
    w.node(path);
    codec_params(w, cfg->codecs);
    w.uint("flashtransfer", as_unsigned(cfg->codecs.flashtransfer));
    w.uint("rtcp_timer", cfg->codecs.rtcp_timer);
    w.uint("rtcp_period", cfg->codecs.rtcp_period);
    w.uint("rtcp_xr", cfg->codecs.rtcp_xr);
    return w.finish();
}

int dialplan_profile_save(uint8_t **cursor, int number, const dialplan_profile_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("dialplan_profile_save", cursor, {cfg}, number, CFG_DIALPLAN_PROFILES))
        return 0;
    char path[64];
    std::snprintf(path, sizeof path, "config.VOIP.dialplan_profiles.dialplan_profile%d", number);
    msg_writer w(cursor, "dialplan_profile_save");
    w.node(path);
    codec_params(w, *cfg);
    w.uint("agc_spk_enable", cfg->agc_spk_enable);
    w.sint("agc_spk_level", cfg->agc_spk_level);
    w.uint("agc_mic_enable", cfg->agc_mic_enable);
    w.sint("agc_mic_level", cfg->agc_mic_level);
    w.uint("max_calls", cfg->max_calls);
    return w.finish();
}

} // extern "C"
