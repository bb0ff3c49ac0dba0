// Codec and media settings: the codecs node of a VoIP profile
// ("config.VOIP.profile.profile_N.codecs") and the node of a dial-plan
// profile ("config.VOIP.dialplan_profiles.dialplan_profileN"). Both fill a
// codecs_cfg_t from the same key table.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/profile_number.h"
#include "universalConfigParser/store.h"

#include <cstring>

namespace cfg::handlers {
namespace {

// Integer stored unchecked; no value gives `empty`.
template <typename Field>
void integer(Field &field, const char *value, int32_t empty) noexcept
{
    field = static_cast<Field>(numbers::absent(value) ? empty : numbers::parse_int(value));
}

// Packet time: a non-zero multiple of `step` below `below`, else the default.
// The remainder is that of signed division, so -30 passes for a step of 30.
template <typename Field>
void packet_time(Field &field, const char *value, int32_t step, int32_t below, int32_t def) noexcept
{
    const int32_t n = numbers::absent(value) ? def : numbers::parse_int(value);
    field = static_cast<Field>(n != 0 && n % step == 0 && n < below ? n : def);
}

// G.726 packet time: 10, 20 or 30 only.
void g726_packet_time(uint32_t &field, const char *value) noexcept
{
    const int32_t n = numbers::absent(value) ? 20 : numbers::parse_int(value);
    field = (n == 10 || n == 20 || n == 30) ? static_cast<uint32_t>(n) : 20u;
}

// T.38 datagram: exactly the text "0" switches it off, anything else is a
// size in 272..512.
void t38_datagram(uint32_t &field, const char *value) noexcept
{
    if (value != nullptr && std::strcmp(value, "0") == 0)
        field = 0;
    else
        store::digit(field, value, 272, 512, 512);
}

void store_codecs(codecs_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("g711a"))               return integer(r.g711a, v, 0);
    if (p.is("g711u"))               return integer(r.g711u, v, 0);
    if (p.is("g729x"))               return integer(r.g729x, v, 0);
    if (p.is("g729b"))               return integer(r.g729b, v, 0);
    if (p.is("g723pte"))             return packet_time(r.g723pte, v, 30, 91, 30);
    if (p.is("g723"))                return integer(r.g723, v, 0);
    if (p.is("g711pte"))             return packet_time(r.g711pte, v, 10, 61, 20);
    if (p.is("g729pte"))             return packet_time(r.g729pte, v, 10, 81, 20);
    if (p.is("g726_32_pte"))         return g726_packet_time(r.g726_32_pte, v);
    if (p.is("g726_32_pt"))          return store::digit(r.g726_32_pt, v, 96, 127, 102);
    if (p.is("g726_32"))             return integer(r.g726_32, v, 0);
    if (p.is("dtmftransfer"))        return integer(r.dtmftransfer, v, 0);
    if (p.is("flashtransfer"))       return integer(r.flashtransfer, v, 0);
    if (p.is("faxtransfer"))         return integer(r.faxtransfer, v, 0);
    if (p.is("slave_faxtransfer"))   return integer(r.slave_faxtransfer, v, 3);
    if (p.is("faxdirection"))        return integer(r.faxdirection, v, 0);
    if (p.is("modemtransfer"))       return integer(r.modemtransfer, v, 0);
    if (p.is("payload"))             return integer(r.payload, v, 0);
    if (p.is("rfc3264_pt_common"))   return store::checkbox(r.rfc3264_pt_common, v);
    if (p.is("nse_payload"))         return store::digit(r.nse_payload, v, 96, 127, 100);
    if (p.is("silencedetector"))     return store::checkbox(r.silencedetector, v);
    if (p.is("echocanceller"))       return store::checkbox(r.echocanceller, v);
    if (p.is("ecan_nlp_disable"))    return store::checkbox(r.ecan_nlp_disable, v);
    if (p.is("rtcp_timer"))          return store::digit(r.rtcp_timer, v, 5, 65535, 0);
    if (p.is("rtcp_period"))         return store::digit(r.rtcp_period, v, 2, 65535, 0);
    if (p.is("rtcp_xr"))             return store::checkbox(r.rtcp_xr, v);
    if (p.is("comfortnoise"))        return store::checkbox(r.comfortnoise, v);
    if (p.is("jb_pt_delay"))         return integer(r.jb_pt_delay, v, 0);
    if (p.is("jb_vo_delay_min"))     return integer(r.jb_vo_delay_min, v, 0);
    if (p.is("jb_vo_delay_max"))     return integer(r.jb_vo_delay_max, v, 0);
    if (p.is("jb_vo_adaptive"))      return integer(r.jb_vo_adaptive, v, 0);
    if (p.is("jb_vo_del_threshold")) return integer(r.jb_vo_del_threshold, v, 0);
    if (p.is("jb_vo_del_mode_soft")) return integer(r.jb_vo_del_mode_soft, v, 0);
    if (p.is("t38_bitrate"))         return integer(r.t38_bitrate, v, 14400);
    if (p.is("t38_datagram"))        return t38_datagram(r.t38_datagram, v);
    if (p.is("dispersion_time"))     return store::digit(r.dispersion_time, v, 8, 128, 64);
    if (p.is("agc_spk_enable"))      return store::checkbox(r.agc_spk_enable, v);
    if (p.is("agc_spk_level"))       return store::digit(r.agc_spk_level, v, -25, -1, -25);
    if (p.is("agc_mic_enable"))      return store::checkbox(r.agc_mic_enable, v);
    if (p.is("agc_mic_level"))       return store::digit(r.agc_mic_level, v, -25, -1, -25);
    if (p.is("max_calls"))           return store::digit(r.max_calls, v, 1, 143, 12);
}

// The params of either node, then the owner's time-stamp.
node_end codec_params(codecs_cfg_t &codecs, uint32_t &updated, node &n) noexcept
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_codecs(codecs, p);
    }
    return parse::finish_node(n, updated);
}

} // namespace

node_end codec_block(cfg_image_t &image, node &n)
{
    if (n.matched(parse::codecs_pattern)) {
        int32_t profile = 0;
        if (!profiles::profile_of_path(n.path, profile))
            return node_end::stop;
        cfg_trace(3, "%d: Valid number of profile [%d]", __LINE__, profile);
        return codec_params(image.profiles[profile].codecs, image.profiles_updated[profile], n);
    }

    const int32_t number = profiles::captured_number(
        n.matches[parse::dialplan_profile_pattern], n.substrings[parse::dialplan_profile_pattern], 1,
        CFG_DIALPLAN_PROFILES);
    if (number < 0 || number >= CFG_DIALPLAN_PROFILES) {
        cfg_trace(1, "%d: Incorrect number of dialplan profile [%d]", __LINE__, number);
        return node_end::stop;
    }
    cfg_trace(3, "%d: Valid number of dialplan profile [%d]", __LINE__, number);
    return codec_params(image.dialplan_profiles[number], image.dialplan_profiles_updated[number], n);
}

} // namespace cfg::handlers
