// Writers of the codec settings: the shared block of codec params, the
// codecs node of a VoIP profile and the node of a dial-plan profile.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

#include <cstdio>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// The params shared by the profile codecs node and the dial-plan profile
// node, in the order they are sent; "g729a" (not kept) goes out as 0 between
// the first two and the rest.
constexpr auto codec_keys_first = keys::pick(keys::codec_keys, "g711a", "g711u");
constexpr const keys::key &g729a = keys::row(keys::codec_keys, "g729a");
constexpr auto codec_keys_rest = keys::pick(
    keys::codec_keys, "g729b", "g729x", "g723", "g726_32", "g711pte", "g729pte", "g723pte", "g726_32_pte",
    "g726_32_pt", "dtmftransfer", "payload", "rfc3264_pt_common", "nse_payload", "faxdirection",
    "faxtransfer", "slave_faxtransfer", "modemtransfer", "silencedetector", "echocanceller",
    "ecan_nlp_disable", "comfortnoise", "jb_pt_delay", "jb_vo_delay_min", "jb_vo_delay_max", "jb_vo_adaptive",
    "jb_vo_del_threshold", "jb_vo_del_mode_soft", "t38_datagram", "t38_bitrate", "dispersion_time");

// What each node adds after them.
constexpr auto profile_codec_keys =
    keys::pick(keys::codec_keys, "flashtransfer", "rtcp_timer", "rtcp_period", "rtcp_xr");
constexpr auto dialplan_profile_keys = keys::pick(keys::codec_keys, "agc_spk_enable", "agc_spk_level",
                                                  "agc_mic_enable", "agc_mic_level", "max_calls");

// Written into the node the caller has opened.
void codec_params(msg_writer &w, const codecs_cfg_t &c) noexcept
{
    w.fields(keys::codec_keys, codec_keys_first, &c);
    w.uint(g729a.wire_name().data(), 0);
    w.fields(keys::codec_keys, codec_keys_rest, &c);
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
    w.fields(keys::codec_keys, profile_codec_keys, &cfg->codecs);
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
    w.fields(keys::codec_keys, dialplan_profile_keys, cfg);
    return w.finish();
}

} // extern "C"
