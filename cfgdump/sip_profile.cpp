// Writer of the SIP settings of a VoIP profile.
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_voip.h"

#include <cfgparser.h>

#include <cstdio>
#include <cstring>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

constexpr const auto &rows = keys::sip_profile_keys;

// The rows in the order they are sent (the route table's list). The account
// and server rows, from the retry interval through the registrars, go out
// only when the profile registers (mode > 0).
constexpr auto &sent_rows = cfg::routes::rows_sip_profile_profile_sip_save;
constexpr std::size_t account_first = cfg::dump::place_of(rows, sent_rows, "register_retry_interval");
constexpr std::size_t account_last = cfg::dump::place_of(rows, sent_rows, "regrar");

// The rows sent in a format of their own.
constexpr const keys::key &no_replaces = keys::row(rows, "no_replaces");
constexpr const keys::key &proxy = keys::row(rows, "proxy");
constexpr const keys::key &regrar = keys::row(rows, "regrar");
constexpr const keys::key &dtmfmime = keys::row(rows, "dtmfmime");
constexpr const keys::key &hfmime = keys::row(rows, "hfmime");
constexpr const keys::key &timer = keys::row(rows, "timer");
constexpr const keys::key &conference = keys::row(rows, "conference_serv_name");

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

// The servers go out in pairs, proxy_N then regrar_N, where the proxy row
// stands.
void servers(msg_writer &w, const profile_sip_cfg_t &s) noexcept
{
    for (int i = 0; i < CFG_SIP_SERVERS; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "%s_%d", name_of(proxy), i);
        w.text(name, s.servers[i].proxy);
        std::snprintf(name, sizeof name, "%s_%d", name_of(regrar), i);
        w.text(name, s.servers[i].regrar);
    }
}

// A row of its own format; the registrars went out with the proxies.
void own_format(msg_writer &w, const keys::key &k, const profile_sip_cfg_t &s) noexcept
{
    if (&k == &no_replaces)
        w.uint(name_of(k), s.replaces == 0 ? 1u : 0u);
    else if (&k == &proxy)
        servers(w, s);
    else if (&k == &dtmfmime)
        w.text(name_of(k), dtmf_mime_word(s.dtmfmime));
    else if (&k == &hfmime)
        w.text(name_of(k), hookflash_mime_word(s.hfmime));
    else if (&k == &timer)
        w.uint(name_of(k), s.timer != 0 ? 1u : 0u);
    else if (&k == &conference)
        conference_server(w, s);
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
    const std::span<const uint16_t> all(sent_rows);
    const auto own = [&](const keys::key &k) { own_format(w, k, s); };
    cfg::dump::send_rows(w, rows, all.first(account_first), &s, own);
    if (s.mode > 0)
        cfg::dump::send_rows(w, rows, all.subspan(account_first, account_last - account_first + 1), &s, own);
    cfg::dump::send_rows(w, rows, all.subspan(account_last + 1), &s, own);
    return w.finish();
}

} // extern "C"
