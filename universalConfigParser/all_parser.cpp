// The entry point for received configuration messages: walks the nodes,
// classifies each path and runs its section handler; a message that ends
// normally is followed by the recount of every list.
#include "cfgmngr/path_match.h"
#include "cfgmngr/wire.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/msg_reader.h"
#include "universalConfigParser/text_numbers.h"

#include <cfgparser.h>

#include <cstdlib>
#include <cstring>
#include <string_view>

namespace cfg::parse {
namespace {

constexpr const char *pattern_text[pattern_count] = {
    "^config\\.VOIP\\.profile\\.profile_\\d+\\.sip$",
    "^config\\.VOIP\\.profile\\.profile_(\\d+)\\.sip_cadences\\.sip_cadence_(\\d+)$",
    "^config\\.VOIP\\.profile\\.profile_\\d+\\.codecs$",
    "^config\\.VOIP\\.profile\\.profile_\\d+\\.regexprd$",
    "^config\\.VOIP\\.profile\\.profile_\\d+\\.dialplan$",
    "^config\\.VOIP\\.dialplan_profiles\\.dialplan_profile(\\d+)$",
};

// The patterns are compiled once, on first use (pthread_once, so that the
// library needs no C++ runtime for a guarded static), and kept for the life
// of the process. One that could not be compiled then (memory exhausted) is
// compiled at each match instead. Matching a cached pattern gives the same
// result as compiling it for every call. Each is also studied once (with the
// JIT where libpcre has it), which only speeds up the matching; where study
// gives nothing, the pattern is matched as compiled.
struct compiled_patterns {
    pcre *re[pattern_count];
    pcre_extra *studied[pattern_count];
};

compiled_patterns cache{};
pthread_once_t cache_once = PTHREAD_ONCE_INIT;

void compile_patterns() noexcept
{
    for (int i = 0; i < pattern_count; ++i) {
        const char *error = nullptr;
        int offset = 0;
        cache.re[i] = pcre_compile(pattern_text[i], 0, &error, &offset, nullptr);
        if (cache.re[i] != nullptr)
            cache.studied[i] = pcre_study(cache.re[i], PCRE_STUDY_JIT_COMPILE, &error);
    }
}

const compiled_patterns &patterns() noexcept
{
    pthread_once(&cache_once, compile_patterns);
    return cache;
}

// Every pattern is anchored at the start with one of these literals, so a
// path that begins with neither can match none of them.
bool may_match_a_pattern(std::string_view path) noexcept
{
    return cfg::numbers::begins_with(path, "config.VOIP.profile.profile_") ||
           cfg::numbers::begins_with(path, "config.VOIP.dialplan_profiles.dialplan_profile");
}

// The path is a C string everywhere in the walk (prefix tests and patterns
// alike), so a NUL byte inside a path ends it there.
void match_patterns(node &n) noexcept
{
    std::string_view path(n.path);
    if (!may_match_a_pattern(path))
        return;
    const compiled_patterns &compiled = patterns();
    for (int i = 0; i < pattern_count; ++i) {
        const pcre *re = compiled.re[i];
        if (re != nullptr)
            n.matches[i] = match::run(re, compiled.studied[i], n.path, static_cast<int>(path.size()),
                                      &n.substrings[i]);
        else // not compiled (no memory at the time): compiled for this match alone
            n.matches[i] = pcre_preg_match(pattern_text[i], n.path, static_cast<int>(path.size()),
                                           &n.substrings[i]);
    }
}

void free_patterns(node &n) noexcept
{
    for (int i = 0; i < pattern_count; ++i) {
        free_table(n.substrings[i], n.matches[i]);
        n.substrings[i] = nullptr;
        n.matches[i] = 0;
    }
}

bool prefix(const node &n, std::string_view literal) noexcept
{
    return cfg::numbers::begins_with(n.path, literal);
}

// The classification chain: the first test that succeeds picks the handler.
node_end dispatch(cfg_image_t &image, node &n) noexcept
{
    using namespace cfg::handlers;
    if (prefix(n, "config.VOIP.ports.port_")) return ports(image, n);
    if (n.matched(codecs_pattern) || n.matched(dialplan_profile_pattern)) return codec_block(image, n);
    if (prefix(n, "config.VOIP.h323")) return h323(image, n);
    if (prefix(n, "config.VOIP.range")) return range(image, n);
    if (n.matched(sip_cadence_pattern)) return sip_cadence(image, n);
    if (n.matched(sip_profile_pattern)) return sip_profile(image, n);
    if (prefix(n, "config.VOIP.sip")) return common_sip(image, n);
    if (prefix(n, "config.VOIP.general")) return general(image, n);
    if (prefix(n, "config.VOIP.tones")) return tones(image, n);
    if (prefix(n, "config.VOIP.trace")) return trace_settings(image, n);
    if (n.matched(dialplan_pattern)) return dialplan(image, n);
    if (prefix(n, "config.VOIP.groups.group") || prefix(n, "config.VOIP.groups.fxo_group")) return groups(image, n);
    if (prefix(n, "config.VOIP.cadences.cadence")) return cadences(image, n);
    if (prefix(n, "config.Network.network")) return network(image, n);
    if (prefix(n, "config.Network.snmp_users")) return snmp_users(image, n);
    if (prefix(n, "config.Network.snmp")) return snmp(image, n);
    if (prefix(n, "config.Network.LLDP")) return lldp(image, n);
    if (prefix(n, "config.Network.IPSec")) return ipsec(image, n);
    if (prefix(n, "config.Network.TR069")) return tr069(image, n);
    if (prefix(n, "config.Switch.vlan")) return switch_vlan(image, n);
    if (prefix(n, "config.Network.hosts")) return hosts(image, n);
    if (prefix(n, "config.Network.mac_filter")) return mac_filter(image, n);
    if (prefix(n, "config.Network.routes")) return routes(image, n);
    if (prefix(n, "config.Switch.qos")) return switch_qos(image, n);
    if (n.matched(regexprd_pattern)) return regexprd(image, n);
    if (prefix(n, "config.VOIP.dvo")) return dvo(image, n);
    if (prefix(n, "config.Switch.vtu")) return switch_vtu(image, n);
    if (prefix(n, "config.VOIP.limits")) return limits(image, n);
    if (prefix(n, "config.Network.rules")) return firewall(image, n);
    if (prefix(n, "config.VOIP.modifiers.modifier_")) return modifiers(image, n);
    return skip_unknown(n);
}

void report_malformed(int line) noexcept
{
    cfg_trace(CFG_TRACE_ERROR, "Incorrect format of message, bytesToRead > currentLenOfMessage (%d)", line);
}

} // namespace
} // namespace cfg::parse

extern "C" void all_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT
{
    using namespace cfg::parse;
    namespace wire = cfg::wire;

    cfg_trace(CFG_TRACE_DEBUG, "%s: called", "all_parser");
    if (image == nullptr || message == nullptr)
        return;

    const uint32_t body_length = wire::get_u32(message + 4);
    // A body length of 0 leaves no room even for the operation byte: the
    // message holds no node and ends at once, as a body length of 1 does.
    uint32_t remaining = body_length == 0 ? 0 : body_length - 1;
    const uint8_t *cursor = message + wire::nodes_offset;
    cfg_trace(CFG_TRACE_INFO, "%s: started", "all_parser");
    cfg_trace(CFG_TRACE_INFO, "Current LEN msg %d", static_cast<int>(remaining));

    for (;;) {
        if (remaining < 2) {
            cfg_trace(CFG_TRACE_INFO, "%s: !buff || !buff[0] - it's end of msg", "all_parser");
            break;
        }
        const uint16_t path_length = wire::get_u16(cursor);
        if (static_cast<uint32_t>(path_length) + 4 > remaining) {
            report_malformed(__LINE__);
            return;
        }
        remaining -= static_cast<uint32_t>(path_length) + 2;
        cursor += 2;
        char *path = cfg::GetToken(cursor, path_length);
        cursor += path_length;
        const uint16_t param_count = wire::get_u16(cursor);
        remaining -= 2;
        cursor += 2;
        if (path == nullptr)
            break; // no memory for the path: the message ends here

        cfg_trace(CFG_TRACE_INFO, "%s: :-) :-)) :-))) nodePath = [%s] countParams = %d", "all_parser", path,
                  static_cast<int>(param_count));
        node n;
        n.path = path;
        n.param_count = param_count;
        n.cursor = &cursor;
        n.remaining = &remaining;
        match_patterns(n);
        const node_end end = dispatch(*image, n);
        free_patterns(n);
        std::free(path);
        if (end == node_end::stop)
            return;
    }

    recalculate_start_and_current_after_timeout(image);
    cfg_trace(CFG_TRACE_DEBUG, "%s: END OF PARSING", "all_parser");
}
