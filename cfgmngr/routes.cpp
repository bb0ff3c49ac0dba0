// The route table and the classification of a path.
#include "cfgmngr/routes.h"

#include "cfgmngr/keys_network.h"
#include "cfgmngr/keys_ports.h"
#include "cfgmngr/keys_switch.h"
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/path_match.h"
#include "cfgmngr/writer_rows.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

#include <array>
#include <bit>
#include <cstddef>

namespace cfg::routes {
namespace {

namespace h = cfg::handlers;
using keys::node_kind;
using keys::node_rules;

#define IMAGE(member) static_cast<uint32_t>(offsetof(cfg_image_t, member))
#define KIND(table, rows, member, record, first, last)                               \
    node_kind                                                                        \
    {                                                                                \
        {}, &keys::table, keys::rows, IMAGE(member), sizeof(record), first, last, {} \
    }

// A route recognised by the beginning of its path.
constexpr route by_beginning(std::string_view beginning, node_kind kind, std::span<const writer> writers,
                             handler handle, numbers reads = numbers::none,
                             refusal refuses = refusal::none) noexcept
{
    route r;
    r.beginning = beginning;
    r.kind = kind;
    r.writers = writers;
    r.handle = handle;
    r.reads = reads;
    r.refuses = refuses;
    return r;
}

// A route recognised by a profile pattern; an out-of-range number ends the
// message.
constexpr route by_pattern(pattern p, node_kind kind, std::span<const writer> writers, handler handle,
                           numbers reads) noexcept
{
    route r;
    r.matched = p;
    r.kind = kind;
    r.writers = writers;
    r.handle = handle;
    r.reads = reads;
    r.refuses = refusal::stop_message;
    return r;
}

constexpr node_kind inner(node_kind k, uint32_t stride, uint16_t last) noexcept
{
    k.inner_stride = stride;
    k.inner_last = last;
    return k;
}

constexpr node_kind groups_kind(node_kind k) noexcept
{
    k.rules = node_rules::group;
    return k;
}

constexpr route ports_below_max(route r) noexcept
{
    r.writers_stop_at_max_ports = true;
    return r;
}

using enum numbers;

// The classification order: the first row whose test a path passes takes it.
constexpr route rows[] = {
    // ---- VoIP sections
    by_beginning("config.VOIP.ports.port_def_",
                 KIND(ports, port_keys, port_defaults, port_cfg_t, 0, CFG_PORT_PROFILES - 1),
                 writers_port_def, h::port_defaults, last_underscore, refusal::stop_if_number),
    ports_below_max(by_beginning("config.VOIP.ports.port_",
                                 KIND(ports, port_keys, ports, port_cfg_t, 0, CFG_MAX_PORTS - 1),
                                 writers_port, h::ports, first_underscore, refusal::skip_node)),
    by_pattern(codecs_pattern,
               KIND(codecs, codec_keys, profiles[0].codecs, profile_cfg_t, 0, CFG_PROFILES - 1),
               writers_codecs, h::profile_codecs, first_underscore),
    by_pattern(
        dialplan_profile_pattern,
        KIND(codecs, codec_keys, dialplan_profiles, dialplan_profile_cfg_t, 0, CFG_DIALPLAN_PROFILES - 1),
        writers_dialplan_profile, h::dialplan_profile, captured),
    by_beginning("config.VOIP.h323", KIND(h323, h323_keys, h323, h323_cfg_t, 0, 0), writers_h323, h::h323),
    by_beginning("config.VOIP.range", KIND(range_ports, range_keys, h323, h323_cfg_t, 0, 0), writers_range,
                 h::range),
    by_pattern(sip_cadence_pattern,
               inner(KIND(sip_cadence, sip_cadence_keys, profiles[0].sip.sip_cadences, profile_cfg_t, 0,
                          CFG_PROFILES - 1),
                     sizeof(sip_cadence_cfg_t), CFG_SIP_CADENCES - 1),
               writers_sip_cadence, h::sip_cadence, captured),
    by_pattern(sip_profile_pattern,
               KIND(sip_profile, sip_profile_keys, profiles[0].sip, profile_cfg_t, 0, CFG_PROFILES - 1),
               writers_sip_profile, h::sip_profile, first_underscore),
    by_beginning("config.VOIP.sip", KIND(sip, sip_keys, sip, sip_cfg_t, 0, 0), writers_sip, h::common_sip),
    by_beginning("config.VOIP.general", KIND(general, general_keys, general, general_cfg_t, 0, 0),
                 writers_general, h::general),
    by_beginning("config.VOIP.tones", KIND(tones, tones_keys, tones, tones_cfg_t, 0, 0), writers_tones,
                 h::tones),
    by_beginning("config.VOIP.trace", KIND(trace, trace_keys, trace, trace_cfg_t, 0, 0), writers_trace,
                 h::trace_settings),
    by_pattern(dialplan_pattern,
               KIND(dialplan, dialplan_keys, dialplans, profile_dialplan_cfg_t, 0, CFG_PROFILES - 1),
               writers_dialplan, h::dialplan, first_underscore),
    by_beginning("config.VOIP.groups.group",
                 groups_kind(KIND(groups, group_keys, groups.entries, group_cfg_t, 0, CFG_GROUPS - 1)),
                 writers_group, h::groups, digits_after_last_underscore, refusal::skip_node),
    by_beginning("config.VOIP.groups.fxo_group",
                 groups_kind(KIND(groups, group_keys, fxo_groups.entries, group_cfg_t, 0, CFG_GROUPS - 1)),
                 writers_fxo_group, h::fxo_groups, digits_after_last_underscore, refusal::skip_node),
    by_beginning("config.VOIP.cadences.cadence",
                 KIND(cadences, cadence_keys, cadences, cadence_cfg_t, 0, CFG_CADENCES - 1), writers_cadence,
                 h::cadences, digits_after_last_underscore, refusal::skip_node),
    // ---- Network and switch sections
    by_beginning("config.Network.network", KIND(network, network_keys, network, network_cfg_t, 0, 0),
                 writers_network, h::network),
    by_beginning("config.Network.snmp_users", KIND(snmp_users, snmp_users_keys, snmp, snmp_cfg_t, 0, 0),
                 writers_snmp_users, h::snmp_users),
    by_beginning("config.Network.snmp", KIND(snmp, snmp_keys, snmp, snmp_cfg_t, 0, 0), writers_snmp, h::snmp),
    by_beginning("config.Network.LLDP", KIND(lldp, lldp_keys, lldp, lldp_cfg_t, 0, 0), writers_lldp, h::lldp),
    by_beginning("config.Network.IPSec", KIND(ipsec, ipsec_keys, ipsec, ipsec_cfg_t, 0, 0), writers_ipsec,
                 h::ipsec),
    by_beginning("config.Network.TR069", KIND(tr069, tr069_keys, tr069, tr069_cfg_t, 0, 0), writers_tr069,
                 h::tr069),
    by_beginning("config.Switch.vlan", KIND(switch_vlan, switch_vlan_keys, switch_cfg, switch_cfg_t, 0, 0),
                 writers_switch_vlan, h::switch_vlan),
    by_beginning("config.Network.hosts", KIND(hosts, hosts_keys, hosts, hosts_cfg_t, 0, 0), writers_hosts,
                 h::hosts),
    by_beginning("config.Network.mac_filter",
                 KIND(mac_filter, mac_filter_keys, mac_filter, mac_filter_cfg_t, 0, 0), writers_mac_filter,
                 h::mac_filter),
    by_beginning("config.Network.routes", KIND(routes, routes_keys, routes, routes_cfg_t, 0, 0),
                 writers_routes, h::routes),
    by_beginning("config.Switch.qos", KIND(switch_qos, switch_qos_keys, switch_cfg, switch_cfg_t, 0, 0),
                 writers_switch_qos, h::switch_qos),
    by_pattern(regexprd_pattern,
               KIND(regexprd, regexprd_keys, dialplans, profile_dialplan_cfg_t, 0, CFG_PROFILES - 1),
               writers_regexprd, h::regexprd, first_underscore),
    by_beginning("config.VOIP.dvo", KIND(dvo, dvo_keys, dvo, dvo_cfg_t, 0, 0), writers_dvo, h::dvo),
    by_beginning("config.Switch.vtu",
                 KIND(switch_vtu, switch_vtu_keys, switch_cfg.vtu, decltype(switch_cfg_t::vtu), 0, 0),
                 writers_switch_vtu, h::switch_vtu),
    by_beginning("config.VOIP.limits", KIND(limits, limit_keys, limits, limit_cfg_t, 0, 0), writers_limits,
                 h::limits),
    by_beginning("config.Network.rules", KIND(firewall, firewall_keys, firewall, firewall_cfg_t, 0, 0),
                 writers_firewall, h::firewall),
    by_beginning("config.VOIP.modifiers.modifier_",
                 KIND(modifiers, modifier_keys, modifiers, modifier_cfg_t, 0, CFG_MODIFIERS - 1),
                 writers_modifier, h::modifiers, digits_after_last_underscore, refusal::stop_message),
};

#undef KIND
#undef IMAGE

constexpr std::size_t route_count = std::size(rows);

// ---- The paths as the reference shows them, made from the rows at compile
// time: the beginning and "{first..last}", or the pattern with its numbers
// shown so.

constexpr std::size_t path_room = 96;

struct shown_paths {
    char text[route_count][path_room] = {};
    std::size_t length[route_count] = {};
};

constexpr void append(char *out, std::size_t &n, std::string_view s) noexcept
{
    for (char c : s)
        out[n++] = c;
}

constexpr void append_number(char *out, std::size_t &n, unsigned v) noexcept
{
    char digits[10] = {};
    std::size_t k = 0;
    do {
        digits[k++] = static_cast<char>('0' + v % 10);
        v /= 10;
    } while (v != 0);
    while (k > 0)
        out[n++] = digits[--k];
}

constexpr void append_bounds(char *out, std::size_t &n, unsigned first, unsigned last) noexcept
{
    append(out, n, "{");
    append_number(out, n, first);
    append(out, n, "..");
    append_number(out, n, last);
    append(out, n, "}");
}

constexpr shown_paths make_shown_paths() noexcept
{
    shown_paths s;
    for (std::size_t i = 0; i < route_count; ++i) {
        const route &r = rows[i];
        char *out = s.text[i];
        std::size_t n = 0;
        if (r.matched == no_pattern) {
            append(out, n, r.beginning);
            if (r.reads != numbers::none) {
                if (!r.beginning.ends_with('_'))
                    append(out, n, "_");
                append_bounds(out, n, r.kind.first, r.kind.last);
            }
        } else {
            const std::string_view p = pattern_text[r.matched];
            unsigned part = 0;
            for (std::size_t j = 0; j < p.size(); ++j) {
                const std::string_view rest = p.substr(j);
                if (rest.starts_with("(\\d+)") || rest.starts_with("\\d+")) {
                    if (part++ == 0)
                        append_bounds(out, n, r.kind.first, r.kind.last);
                    else
                        append_bounds(out, n, 0, r.kind.inner_last);
                    j += rest.starts_with("(") ? 4 : 2;
                } else if (p[j] == '\\') {
                    out[n++] = p[++j];
                } else if (p[j] != '^' && p[j] != '$') {
                    out[n++] = p[j];
                }
            }
        }
        s.length[i] = n;
    }
    return s;
}

constexpr shown_paths shown = make_shown_paths();

constexpr std::array<route, route_count> make_table() noexcept
{
    std::array<route, route_count> t{};
    for (std::size_t i = 0; i < route_count; ++i) {
        t[i] = rows[i];
        t[i].kind.path = std::string_view(shown.text[i], shown.length[i]);
        t[i].kind.writer = rows[i].writers.empty() ? std::string_view() : rows[i].writers[0].name;
    }
    return t;
}

constexpr std::array<route, route_count> table = make_table();

constexpr std::array<node_kind, route_count> make_kinds() noexcept
{
    std::array<node_kind, route_count> k{};
    for (std::size_t i = 0; i < route_count; ++i)
        k[i] = table[i].kind;
    return k;
}

constexpr std::array<node_kind, route_count> kinds = make_kinds();

// ---- The compiled patterns.

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

bool may_match_a_pattern(std::string_view path) noexcept
{
    for (std::string_view beginning : pattern_beginnings)
        if (cfg::numbers::begins_with(path, beginning))
            return true;
    return false;
}

// Whether the path begins with the row's beginning, whose first `known`
// bytes were seen to agree: compared eight bytes at a time in place.
bool begins_with_rest(std::string_view path, std::string_view beginning, std::size_t known) noexcept
{
    const std::size_t n = beginning.size();
    if (path.size() < n)
        return false;
    std::size_t i = known;
    for (; i + 8 <= n; i += 8) {
        uint64_t a = 0, b = 0;
        __builtin_memcpy(&a, path.data() + i, 8);
        __builtin_memcpy(&b, beginning.data() + i, 8);
        if (a != b)
            return false;
    }
    for (; i < n; ++i)
        if (path[i] != beginning[i])
            return false;
    return true;
}

// A shortcut to the rows a path can take, from two of its bytes: the one
// after "config." (the section: VOIP, Network, Switch) and the first one
// after the section's '.'. Bit i of a mask stands for row i; the rows whose
// beginning (or pattern's beginning) has the path's two bytes there are
// tested in order, as all of them would be: a row passed over could not
// have taken the path.
struct byte_masks {
    uint64_t section[128] = {}; // by the byte after "config."
    uint64_t first[128] = {};   // by the first byte after the section's '.'
    uint8_t first_at[128] = {}; // where that byte is, by the section's byte (0: no section)
    bool consistent = true;     // each section's '.' at one place
};

// The unescaped beginning of a pattern.
constexpr std::string_view beginning_of(pattern p) noexcept
{
    for (std::string_view b : pattern_beginnings) {
        const std::string_view text = pattern_text[p];
        std::size_t j = 1; // after '^'
        std::size_t k = 0;
        while (k < b.size() && j < text.size()) {
            if (text[j] == '\\')
                ++j;
            if (j >= text.size() || text[j] != b[k])
                break;
            ++j;
            ++k;
        }
        if (k == b.size())
            return b;
    }
    return {};
}

constexpr byte_masks make_byte_masks() noexcept
{
    static_assert(route_count <= 64, "one bit per row");
    byte_masks m;
    for (std::size_t i = 0; i < route_count; ++i) {
        const std::string_view b =
            rows[i].matched == no_pattern ? rows[i].beginning : beginning_of(rows[i].matched);
        const std::size_t start = common_beginning.size();
        const std::size_t dot = b.find('.', start);
        if (!b.starts_with(common_beginning) || dot == std::string_view::npos || dot + 1 >= b.size() ||
            static_cast<unsigned char>(b[start]) >= 128 || static_cast<unsigned char>(b[dot + 1]) >= 128) {
            m.consistent = false;
            continue;
        }
        const auto section = static_cast<unsigned char>(b[start]);
        if (m.first_at[section] != 0 && m.first_at[section] != dot + 1)
            m.consistent = false;
        m.first_at[section] = static_cast<uint8_t>(dot + 1);
        m.section[section] |= uint64_t{1} << i;
        m.first[static_cast<unsigned char>(b[dot + 1])] |= uint64_t{1} << i;
    }
    return m;
}

constexpr byte_masks masks = make_byte_masks();
static_assert(masks.consistent,
              "every beginning is config.<section>.<more>, each section's '.' at one place");

} // namespace

std::span<const route> all() noexcept
{
    return table;
}

const route *route_of(std::string_view path, const int32_t *matches) noexcept
{
    // A row whose two bytes the path does not have cannot take it.
    const std::size_t start = common_beginning.size();
    if (path.size() <= start || !cfg::numbers::begins_with(path, common_beginning))
        return nullptr;
    const auto section = static_cast<unsigned char>(path[start]);
    if (section >= 128 || masks.first_at[section] == 0 || masks.first_at[section] >= path.size())
        return nullptr;
    const auto first = static_cast<unsigned char>(path[masks.first_at[section]]);
    if (first >= 128)
        return nullptr;
    for (uint64_t candidates = masks.section[section] & masks.first[first]; candidates != 0;
         candidates &= candidates - 1) {
        const route &r = table[static_cast<std::size_t>(std::countr_zero(candidates))];
        if (r.matched == no_pattern ? begins_with_rest(path, r.beginning, start) : matches[r.matched] > 0)
            return &r;
    }
    return nullptr;
}

path_number number_of(const route &r, const char *path, int32_t matches, char *const *substrings,
                      unsigned part) noexcept
{
    using cfg::numbers::underscore;
    path_number n;
    switch (r.reads) {
    case numbers::none:
        break;
    case numbers::first_underscore:
    case numbers::last_underscore:
        n.text = cfg::numbers::after_underscore(
            path, r.reads == numbers::first_underscore ? underscore::first : underscore::last);
        n.found = cfg::numbers::scan_entry(n.text, n.value) != nullptr;
        break;
    case numbers::digits_after_last_underscore:
        n.text = cfg::numbers::after_underscore(path, underscore::last);
        n.value = cfg::numbers::entry_number(n.text);
        n.found = n.value >= 0;
        break;
    case numbers::captured: {
        const int32_t group = static_cast<int32_t>(part) + 1;
        if (matches > group && substrings != nullptr && substrings[group] != nullptr) {
            n.text = substrings[group];
            n.found = cfg::numbers::scan_entry(n.text, n.value) != nullptr;
        }
        break;
    }
    }
    return n;
}

const keys::key *row_of(const route &r, const char *name, int32_t &entry) noexcept
{
    entry = 0;
    const std::span<const keys::key> rows_of_kind = r.kind.keys->rows;
    if (!rows_of_kind.empty() && rows_of_kind[0].entry == keys::entry_form::rule_then_key) {
        std::string_view field;
        if (!keys::split_rule_name("vtu", name, static_cast<int32_t>(rows_of_kind[0].count), entry, field))
            return nullptr;
        return keys::find(*r.kind.keys, field);
    }
    const keys::key *k = keys::find(*r.kind.keys, name);
    if (k != nullptr && k->count != 0)
        entry = keys::entry_of(*k, name);
    return k;
}

// The path is a C string everywhere in the walk (prefix tests and patterns
// alike), so a NUL byte inside a path ends it there.
void match_patterns(const char *path, int32_t *matches, char ***substrings) noexcept
{
    const std::string_view p(path);
    if (!may_match_a_pattern(p))
        return;
    const compiled_patterns &compiled = patterns();
    for (int i = 0; i < pattern_count; ++i) {
        const pcre *re = compiled.re[i];
        if (re != nullptr)
            matches[i] =
                match::run(re, compiled.studied[i], path, static_cast<int>(p.size()), &substrings[i]);
        else // not compiled (no memory at the time): compiled for this match alone
            matches[i] = pcre_preg_match(pattern_text[i], path, static_cast<int>(p.size()), &substrings[i]);
    }
}

void free_matches(int32_t *matches, char ***substrings) noexcept
{
    for (int i = 0; i < pattern_count; ++i) {
        free_table(substrings[i], matches[i]);
        substrings[i] = nullptr;
        matches[i] = 0;
    }
}

} // namespace cfg::routes

namespace cfg::keys {

std::span<const node_kind> node_kinds() noexcept
{
    return ::cfg::routes::kinds;
}

} // namespace cfg::keys
