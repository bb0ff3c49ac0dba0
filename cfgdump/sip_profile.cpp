// Writer of the SIP settings of a VoIP profile.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

#include <cstdio>
#include <cstring>

using cfg::dump::msg_writer;

namespace {

// Characters of a text field before its NUL, never past the field.
template <std::size_t N>
int field_length(const char (&field)[N]) noexcept
{
    return static_cast<int>(strnlen(field, N));
}

const char *dtmf_mime_word(uint32_t code) noexcept
{
    switch (code) {
    case 1: return "dtmf";
    case 2: return "audio";
    default: return "dtmfr";
    }
}

const char *hookflash_mime_word(uint32_t code) noexcept
{
    switch (code) {
    case 1: return "dtmf";
    case 2: return "broadsoft";
    case 3: return "sscc";
    default: return "hookf";
    }
}

// "user@host", or the user alone when no host is set.
void conference_server(msg_writer &w, const profile_sip_cfg_t &s) noexcept
{
    char text[sizeof s.conference_user + sizeof s.conference_host + 1];
    const int user = field_length(s.conference_user);
    const int host = field_length(s.conference_host);
    if (host > 0)
        std::snprintf(text, sizeof text, "%.*s@%.*s", user, s.conference_user, host, s.conference_host);
    else
        std::snprintf(text, sizeof text, "%.*s", user, s.conference_user);
    w.text("conference_serv_name", static_cast<const char *>(text));
}

// Account and server block, sent only when the profile registers (mode > 0).
void account_and_servers(msg_writer &w, const profile_sip_cfg_t &s) noexcept
{
    w.uint("register_retry_interval", s.register_retry_interval);
    w.uint("inbound_proxy", s.inbound_proxy);
    w.uint("domain_to_reg", s.domain_to_reg);
    w.uint("options", s.options);
    w.uint("keepalivet", s.keepalivet);
    w.uint("outbound", s.outbound);
    w.uint("expires", s.expires);
    w.uint("authentication", s.authentication);
    w.uint("registration", s.registration);
    w.text("username", s.username);
    w.text("password", s.password);
    w.text("domain", s.domain);
    for (int i = 0; i < CFG_SIP_SERVERS; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "proxy_%d", i);
        w.text(name, s.servers[i].proxy);
        std::snprintf(name, sizeof name, "regrar_%d", i);
        w.text(name, s.servers[i].regrar);
    }
}

} // namespace

extern "C" {

int profile_sip_save(uint8_t **cursor, int profile, const profile_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("profile_sip_save", cursor, {cfg}, profile, CFG_PROFILES))
        return 0;
    const profile_sip_cfg_t &s = cfg->sip;
    char path[64];
    std::snprintf(path, sizeof path, "config.VOIP.profile.profile_%d.sip", profile);
    msg_writer w(cursor, "profile_sip_save");
    w.node(path);
    w.uint("cw_ringback", s.cw_ringback);
    w.uint("no_replaces", s.replaces == 0 ? 1u : 0u);
    w.uint("100rel", s.rel100);
    w.uint("ringback_sdp", s.ringback_sdp);
    w.uint("ringback", s.ringback);
    w.uint("mode", s.mode);
    if (s.mode > 0)
        account_and_servers(w, s);
    w.uint("uri_escape_hash", s.uri_escape_hash);
    w.uint("user_phone", s.user_phone);
    w.uint("obtimeout", s.obtimeout);
    w.text("dtmfmime", dtmf_mime_word(s.dtmfmime));
    w.text("hfmime", hookflash_mime_word(s.hfmime));
    w.uint("reduce_sdp_media_count", s.reduce_sdp_media_count);
    w.uint("p_rtp_stat", s.p_rtp_stat);
    w.uint("timer", s.timer != 0 ? 1u : 0u);
    w.uint("min_se", s.min_se);
    w.uint("session_expires", s.session_expires);
    w.uint("keep_alive_interval", s.keep_alive_interval);
    w.uint("keep_alive_mode", s.keep_alive_mode);
    w.uint("conference_type", s.conference_type);
    conference_server(w, s);
    w.uint("ims_notify_on", s.ims_notify_on);
    w.text("xcap_conference_name", s.xcap_conference_name);
    w.text("xcap_hotline_name", s.xcap_hotline_name);
    w.text("xcap_cw_name", s.xcap_cw_name);
    w.text("xcap_callhold_name", s.xcap_callhold_name);
    w.text("xcap_calltransfer_name", s.xcap_calltransfer_name);
    w.uint("use_alert_info", s.use_alert_info);
    w.uint("changeover", s.changeover);
    w.uint("ruri_full_compliance", s.ruri_full_compliance);
    w.uint("changeover_by_408", s.changeover_by_408);
    return w.finish();
}

} // extern "C"
