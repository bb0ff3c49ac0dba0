// Key tables of the VoIP sections: one row per key, in the order the keys
// are matched (a key that is the prefix of another comes after it:
// "g723pte" before "g723").
#pragma once

#include "cfgmngr/key_table.h"

#include <cstdint>

namespace cfg::keys {

// ---------------------------------------------------------------------------
// Codec and media settings: the codecs node of a VoIP profile and the node of
// a dial-plan profile. The writers send every number through the unsigned
// builder (-1 as 4294967295), the AGC levels excepted.
#define F(member) CFG_FIELD(codecs_cfg_t, member)
inline constexpr key codec_keys[] = {
    integer("g711a", F(g711a)).sent_as(sent::uint),
    integer("g711u", F(g711u)).sent_as(sent::uint),
    integer("g729x", F(g729x)).sent_as(sent::uint),
    integer("g729b", F(g729b)).sent_as(sent::uint),
    special("g723pte", F(g723pte), rule::packet_time, 30, 91, 30).sent_as(sent::uint),
    integer("g723", F(g723)).sent_as(sent::uint),
    special("g711pte", F(g711pte), rule::packet_time, 10, 61, 20).sent_as(sent::uint),
    special("g729pte", F(g729pte), rule::packet_time, 10, 81, 20).sent_as(sent::uint),
    special("g726_32_pte", F(g726_32_pte), rule::g726_packet_time, 0, 0, 20),
    range("g726_32_pt", F(g726_32_pt), 96, 127, 102),
    integer("g726_32", F(g726_32)).sent_as(sent::uint),
    integer("dtmftransfer", F(dtmftransfer)).sent_as(sent::uint),
    integer("flashtransfer", F(flashtransfer)).sent_as(sent::uint),
    integer("faxtransfer", F(faxtransfer)).sent_as(sent::uint),
    integer("slave_faxtransfer", F(slave_faxtransfer), 3).sent_as(sent::uint),
    integer("faxdirection", F(faxdirection)).sent_as(sent::uint),
    integer("modemtransfer", F(modemtransfer)).sent_as(sent::uint),
    integer("payload", F(payload)).sent_as(sent::uint),
    checkbox("rfc3264_pt_common", F(rfc3264_pt_common)),
    range("nse_payload", F(nse_payload), 96, 127, 100),
    checkbox("silencedetector", F(silencedetector)),
    checkbox("echocanceller", F(echocanceller)),
    checkbox("ecan_nlp_disable", F(ecan_nlp_disable)),
    range("rtcp_timer", F(rtcp_timer), 5, 65535, 0),
    range("rtcp_period", F(rtcp_period), 2, 65535, 0),
    checkbox("rtcp_xr", F(rtcp_xr)),
    checkbox("comfortnoise", F(comfortnoise)),
    integer("jb_pt_delay", F(jb_pt_delay)).sent_as(sent::uint),
    integer("jb_vo_delay_min", F(jb_vo_delay_min)).sent_as(sent::uint),
    integer("jb_vo_delay_max", F(jb_vo_delay_max)).sent_as(sent::uint),
    integer("jb_vo_adaptive", F(jb_vo_adaptive)).sent_as(sent::uint),
    integer("jb_vo_del_threshold", F(jb_vo_del_threshold)).sent_as(sent::uint),
    integer("jb_vo_del_mode_soft", F(jb_vo_del_mode_soft)).sent_as(sent::uint),
    integer("t38_bitrate", F(t38_bitrate), 14400).sent_as(sent::uint),
    special("t38_datagram", F(t38_datagram), rule::t38_datagram, 272, 512, 512),
    range("dispersion_time", F(dispersion_time), 8, 128, 64),
    checkbox("agc_spk_enable", F(agc_spk_enable)),
    range("agc_spk_level", F(agc_spk_level), -25, -1, -25),
    checkbox("agc_mic_enable", F(agc_mic_enable)),
    range("agc_mic_level", F(agc_mic_level), -25, -1, -25),
    range("max_calls", F(max_calls), 1, 143, 12),
    // Not kept: the writers always send it as 0 (not through the row).
    special("g729a", field{}, rule::not_kept).sent_as(sent::uint),
};
#undef F

} // namespace cfg::keys
