// Writers of the codec settings: the shared block of codec params, the
// codecs node of a VoIP profile and the node of a dial-plan profile.
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_voip.h"

#include <cfgparser.h>

#include <cstdio>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// The rows of a codec node, or of the params codec_params_save adds; "g729a"
// (not kept) goes out as 0.
void codec_rows(msg_writer &w, std::span<const uint16_t> order, const codecs_cfg_t &c) noexcept
{
    cfg::dump::send_rows(w, keys::codec_keys, order, &c,
                         [&](const keys::key &k) { w.uint(k.wire_name().data(), 0); });
}

} // namespace

extern "C" {

uint32_t codec_params_save(uint8_t **cursor, const codecs_cfg_t *codecs, uint32_t running) CFG_NOEXCEPT
{
    if (cfg::dump::refused("codec_params_save", cursor, {codecs}))
        return running;
    msg_writer w = msg_writer::continuing(cursor, running);
    codec_rows(w, cfg::routes::rows_codec_params, *codecs);
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
    codec_rows(w, cfg::routes::rows_codecs_profile_codecs_save, cfg->codecs);
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
    codec_rows(w, cfg::routes::rows_dialplan_profile_dialplan_profile_save, *cfg);
    return w.finish();
}

} // extern "C"
