// Writer of the SIP settings of a VoIP profile.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

#include <cstdio>
#include <cstring>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

constexpr const auto &rows = keys::sip_profile_keys;

// The keys sent through their rows, in the order they are sent, between the
// params sent in their own format.
constexpr auto head_keys = keys::pick(rows, "cw_ringback");
constexpr const keys::key &no_replaces = keys::row(rows, "no_replaces");
constexpr auto mode_keys = keys::pick(rows, "100rel", "ringback_sdp", "ringback", "mode");
// Account and server block, sent only when the profile registers (mode > 0).
constexpr auto account_keys =
    keys::pick(rows, "register_retry_interval", "inbound_proxy", "domain_to_reg", "options", "keepalivet",
               "outbound", "expires", "authentication", "registration", "username", "password", "domain");
constexpr const keys::key &proxy = keys::row(rows, "proxy");
constexpr const keys::key &regrar = keys::row(rows, "regrar");
constexpr auto line_keys = keys::pick(rows, "uri_escape_hash", "user_phone", "obtimeout");
constexpr const keys::key &dtmfmime = keys::row(rows, "dtmfmime");
constexpr const keys::key &hfmime = keys::row(rows, "hfmime");
constexpr auto sdp_keys = keys::pick(rows, "reduce_sdp_media_count", "p_rtp_stat");
constexpr const keys::key &timer = keys::row(rows, "timer");
constexpr auto session_keys = keys::pick(rows, "min_se", "session_expires", "keep_alive_interval",
                                         "keep_alive_mode", "conference_type");
constexpr const keys::key &conference = keys::row(rows, "conference_serv_name");
constexpr auto service_keys = keys::pick(
    rows, "ims_notify_on", "xcap_conference_name", "xcap_hotline_name", "xcap_cw_name", "xcap_callhold_name",
    "xcap_calltransfer_name", "use_alert_info", "changeover", "ruri_full_compliance", "changeover_by_408");

const char *name_of(const keys::key &k) noexcept
{
    return k.wire_name().data(); // every row's names are literals
}

// Characters of a text field before its NUL, never past the field.
template <std::size_t N>
int field_length(const char (&field)[N]) noexcept
{
    return static_cast<int>(strnlen(field, N));
}

const char *dtmf_mime_word(uint32_t code) noexcept
{
    switch (code) {
    case 1:
        return "dtmf";
    case 2:
        return "audio";
    default:
        return "dtmfr";
    }
}

const char *hookflash_mime_word(uint32_t code) noexcept
{
    switch (code) {
    case 1:
        return "dtmf";
    case 2:
        return "broadsoft";
    case 3:
        return "sscc";
    default:
        return "hookf";
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
    w.text(name_of(conference), static_cast<const char *>(text));
}

void account_and_servers(msg_writer &w, const profile_sip_cfg_t &s) noexcept
{
    w.fields(rows, account_keys, &s);
    for (int i = 0; i < CFG_SIP_SERVERS; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "%s_%d", name_of(proxy), i);
        w.text(name, s.servers[i].proxy);
        std::snprintf(name, sizeof name, "%s_%d", name_of(regrar), i);
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
    w.fields(rows, head_keys, &s);
    w.uint(name_of(no_replaces), s.replaces == 0 ? 1u : 0u);
    w.fields(rows, mode_keys, &s);
    if (s.mode > 0)
        account_and_servers(w, s);
    w.fields(rows, line_keys, &s);
    w.text(name_of(dtmfmime), dtmf_mime_word(s.dtmfmime));
    w.text(name_of(hfmime), hookflash_mime_word(s.hfmime));
    w.fields(rows, sdp_keys, &s);
    w.uint(name_of(timer), s.timer != 0 ? 1u : 0u);
    w.fields(rows, session_keys, &s);
    conference_server(w, s);
    w.fields(rows, service_keys, &s);
    return w.finish();
}

} // extern "C"
