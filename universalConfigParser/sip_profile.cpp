// SIP settings of a VoIP profile: "config.VOIP.profile.profile_N.sip".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/profile_number.h"
#include "universalConfigParser/store.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace cfg::handlers {
namespace {

// 1 only for the number 1; anything else, no value included, gives 0.
void only_one(uint32_t &field, const char *value) noexcept
{
    field = !numbers::absent(value) && numbers::parse_int(value) == 1 ? 1u : 0u;
}

// "authentication": 1 for the number 1, every other value (and none) is 2.
void authentication(uint32_t &field, const char *value) noexcept
{
    field = !numbers::absent(value) && numbers::parse_int(value) == 1 ? 1u : 2u;
}

// "no_replaces" is stored as its inverse, `replaces`.
void inverse_checkbox(uint32_t &field, const char *value) noexcept
{
    field = 1u - static_cast<uint32_t>(get_checkbox(value));
}

// "timer": no value switches the session timer on.
void session_timer(uint32_t &field, const char *value) noexcept
{
    field = numbers::absent(value) || numbers::parse_int(value) != 0 ? 1u : 0u;
}

bool begins(const char *value, std::string_view word) noexcept
{
    return value != nullptr && std::string_view(value).starts_with(word);
}

// DTMF signalling: "dtmfr" 0, "dtmf" 1, "audio" 2; other words and no value 0.
void dtmf_mime(uint32_t &field, const char *v) noexcept
{
    field = begins(v, "dtmfr") ? 0u : begins(v, "dtmf") ? 1u : begins(v, "audio") ? 2u : 0u;
}

// Hook-flash signalling: "dtmf" 1, "hookf" 0, "sscc" 3, "broadsoft" 2; other
// words and no value 0.
void hookflash_mime(uint32_t &field, const char *v) noexcept
{
    field = begins(v, "dtmf")        ? 1u
            : begins(v, "hookf")     ? 0u
            : begins(v, "sscc")      ? 3u
            : begins(v, "broadsoft") ? 2u
                                     : 0u;
}

// Copies part of a value into a text field, cut to N - 1 characters. The
// whole field is zero-filled first, so an empty part clears it.
template <std::size_t N>
void text_part(char (&field)[N], std::string_view part) noexcept
{
    std::memset(field, 0, N);
    if (!part.empty())
        std::memcpy(field, part.data(), std::min(part.size(), N - 1));
}

// "user@host": the user before the first "@", the host after it. Without an
// "@" the whole text is the user and the host is cleared.
void conference_server(profile_sip_cfg_t &r, const char *value) noexcept
{
    const std::string_view text = numbers::absent(value) ? std::string_view() : value;
    const std::size_t at = text.find('@');
    text_part(r.conference_user, text.substr(0, at));
    text_part(r.conference_host, at == std::string_view::npos ? std::string_view() : text.substr(at + 1));
}

// XCAP service names: no value restores the service's standard name.
template <std::size_t N>
void xcap_name(char (&field)[N], const char *value, const char *standard) noexcept
{
    store::text(field, numbers::absent(value) ? standard : value);
}

// "proxy_%d" / "regrar_%d": the server index follows the key and "_"; a name
// without it is server 0. Indexes outside the server table drop the param.
template <std::size_t N>
void server_address(char (sip_server_t::*member)[N], profile_sip_cfg_t &r, const parse::param &p,
                    std::string_view key) noexcept
{
    const char *rest = p.name() + key.size();
    const int32_t index = rest[0] == '_' ? numbers::entry_within(rest + 1, CFG_SIP_SERVERS, 0) : 0;
    if (index < 0)
        return;
    store::text(r.servers[index].*member, p.value());
}

void store_sip_profile(profile_sip_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("cw_ringback"))             return only_one(r.cw_ringback, v);
    if (p.is("ringback_sdp"))            return store::digit(r.ringback_sdp, v, 1, 3, 0);
    if (p.is("ringback"))                return only_one(r.ringback, v);
    if (p.is("mode"))                    return store::digit(r.mode, v, 1, 2, 0);
    if (p.is("uri_escape_hash"))         return store::checkbox(r.uri_escape_hash, v);
    if (p.is("register_retry_interval")) return store::digit(r.register_retry_interval, v, 10, 3600, 30);
    if (p.is("inbound_proxy"))           return store::checkbox(r.inbound_proxy, v);
    if (p.is("domain_to_reg"))           return store::checkbox(r.domain_to_reg, v);
    if (p.is("options"))                 return store::digit(r.options, v, 1, 2, 0);
    if (p.is("user_phone"))              return store::checkbox(r.user_phone, v);
    if (p.is("keepalivet"))              return store::digit(r.keepalivet, v, 10000, 3600000, 60000);
    if (p.is("outbound"))                return store::digit(r.outbound, v, 1, 2, 0);
    if (p.is("obtimeout"))               return store::digit(r.obtimeout, v, 0, 300, 10);
    if (p.is("expires"))                 return store::digit(r.expires, v, 0, 2147483647, 1800);
    if (p.is("authentication"))          return authentication(r.authentication, v);
    if (p.is("registration"))            return store::digit(r.registration, v, 0, 31, 0);
    if (p.is("username"))                return store::text(r.username, v);
    if (p.is("password"))                return store::text(r.password, v);
    if (p.is("domain"))                  return store::text(r.domain, v);
    if (p.is("dtmfmime"))                return dtmf_mime(r.dtmfmime, v);
    if (p.is("hfmime"))                  return hookflash_mime(r.hfmime, v);
    if (p.is("proxy"))                   return server_address(&sip_server_t::proxy, r, p, "proxy");
    if (p.is("regrar"))                  return server_address(&sip_server_t::regrar, r, p, "regrar");
    if (p.is("reduce_sdp_media_count"))  return store::checkbox(r.reduce_sdp_media_count, v);
    if (p.is("p_rtp_stat"))              return store::checkbox(r.p_rtp_stat, v);
    if (p.is("no_replaces"))             return inverse_checkbox(r.replaces, v);
    if (p.is("100rel"))                  return store::digit(r.rel100, v, 1, 2, 0);
    if (p.is("timer"))                   return session_timer(r.timer, v);
    if (p.is("min_se"))                  return store::digit(r.min_se, v, 90, 1800, 120);
    if (p.is("session_expires"))         return store::digit(r.session_expires, v, 90, 80000, 0);
    if (p.is("keep_alive_interval"))     return store::digit(r.keep_alive_interval, v, 30, 120, 30);
    if (p.is("keep_alive_mode"))         return store::digit(r.keep_alive_mode, v, 0, 3, 0);
    if (p.is("conference_type"))         return store::digit(r.conference_type, v, 0, 2, 0);
    if (p.is("conference_serv_name"))    return conference_server(r, v);
    if (p.is("ims_notify_on"))           return store::digit(r.ims_notify_on, v, 0, 2, 0);
    if (p.is("xcap_conference_name"))    return xcap_name(r.xcap_conference_name, v, "three-party-conference");
    if (p.is("xcap_hotline_name"))       return xcap_name(r.xcap_hotline_name, v, "hot-line-service");
    if (p.is("xcap_cw_name"))            return xcap_name(r.xcap_cw_name, v, "call-waiting");
    if (p.is("xcap_callhold_name"))      return xcap_name(r.xcap_callhold_name, v, "call-hold");
    if (p.is("xcap_calltransfer_name"))  return xcap_name(r.xcap_calltransfer_name, v, "explicit-call-transfer");
    if (p.is("use_alert_info"))          return store::checkbox(r.use_alert_info, v);
    if (p.is("changeover_by_408"))       return store::checkbox(r.changeover_by_408, v);
    if (p.is("changeover"))              return store::digit(r.changeover, v, 0, 3, 0);
    if (p.is("ruri_full_compliance"))    return store::checkbox(r.ruri_full_compliance, v);
}

} // namespace

node_end sip_profile(cfg_image_t &image, node &n)
{
    int32_t profile = 0;
    if (!profiles::profile_of_path(n.path, profile))
        return node_end::stop;
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_sip_profile(image.profiles[profile].sip, p);
    }
    return parse::finish_node(n, image.profiles_updated[profile]);
}

} // namespace cfg::handlers
