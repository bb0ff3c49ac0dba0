// The route table: every kind of node the parser stores, stated once.
//
// One row per node kind, in the order in which all_parser classifies a path:
// how the path is recognised (the beginning it starts with, or one of the
// profile patterns), how its handler reads the path's numbers, the record
// and key table it fills, its bounds, and the writers that send it with the
// rows each of them sends, in the order sent. all_parser dispatches through
// route_of(); the cfgmsg tool (schema, check, get, set, completion) reads the
// same rows.
#pragma once

#include "cfgmngr/key_tables.h"

#include <cfgparser.h>

#include <cstdint>
#include <span>
#include <string_view>

namespace cfg::parse {
struct node;
enum class node_end;
} // namespace cfg::parse

namespace cfg::routes {

// The profile patterns, in the order all_parser evaluates them (every one
// for each path that begins with one of `pattern_beginnings`). A "(\d+)"
// captures its number for the handler; "\d+" only has to be there.
enum pattern : int8_t {
    no_pattern = -1,
    sip_profile_pattern,      // ...profile_N.sip
    sip_cadence_pattern,      // ...profile_N.sip_cadences.sip_cadence_M
    codecs_pattern,           // ...profile_N.codecs
    regexprd_pattern,         // ...profile_N.regexprd
    dialplan_pattern,         // ...profile_N.dialplan
    dialplan_profile_pattern, // ...dialplan_profiles.dialplan_profileN
    pattern_count
};

inline constexpr const char *pattern_text[pattern_count] = {
    "^config\\.VOIP\\.profile\\.profile_\\d+\\.sip$",
    "^config\\.VOIP\\.profile\\.profile_(\\d+)\\.sip_cadences\\.sip_cadence_(\\d+)$",
    "^config\\.VOIP\\.profile\\.profile_\\d+\\.codecs$",
    "^config\\.VOIP\\.profile\\.profile_\\d+\\.regexprd$",
    "^config\\.VOIP\\.profile\\.profile_\\d+\\.dialplan$",
    "^config\\.VOIP\\.dialplan_profiles\\.dialplan_profile(\\d+)$",
};

// Every pattern is anchored at the start with one of these literals, so a
// path that begins with neither can match none of them.
inline constexpr std::string_view pattern_beginnings[] = {
    "config.VOIP.profile.profile_",
    "config.VOIP.dialplan_profiles.dialplan_profile",
};

// How a handler reads the numbers of a path.
enum class numbers : uint8_t {
    none,                         // the path names one record
    first_underscore,             // "%d" after the path's first '_' (blanks and a sign
                                  // before the digits, anything after them ignored)
    last_underscore,              // "%d" after the path's last '_'
    digits_after_last_underscore, // nothing but digits after the last '_'
    captured,                     // the numbers the row's pattern captures, each read as "%d"
};

// What a handler does with a path whose number names no record.
enum class refusal : uint8_t {
    none,           // the path always names its record
    skip_node,      // the node's params are read and dropped; the message goes on
    stop_message,   // the rest of the message is abandoned
    stop_if_number, // no number: skip the node; a number out of range: stop
};

// A writer of a node kind and the rows of the kind's key table it sends,
// in the order it sends them (a numbered row once, for all its entries).
struct writer {
    std::string_view name;
    std::span<const uint16_t> rows;
};

using handler = parse::node_end (*)(cfg_image_t &, parse::node &);

struct route {
    // Recognition: the path begins with `beginning`, or (no beginning) it
    // matches the pattern.
    std::string_view beginning;
    pattern matched = no_pattern;
    numbers reads = numbers::none;
    refusal refuses = refusal::none;
    keys::node_kind kind;                   // the record, key table and bounds; its path
                                            // ("...port_{0..71}") is made from the above
    std::span<const writer> writers;        // every writer that sends the kind
    bool writers_stop_at_max_ports = false; // the writers send entries below max_ports only
    handler handle = nullptr;
};

// Every beginning and pattern starts with it.
inline constexpr std::string_view common_beginning = "config.";

// Every route, in classification order.
std::span<const route> all() noexcept;

// The route of a path: the first row (in classification order) whose test
// it passes; `matches` are the results of the patterns (match_patterns).
// nullptr: no handler knows the path.
const route *route_of(std::string_view path, const int32_t *matches) noexcept;

// A number read from a path: its text (nullptr where the path has no place
// for it), and whether a number could be read there.
struct path_number {
    const char *text = nullptr;
    int64_t value = 0;
    bool found = false;
};

// Number `part` (0: the first numbered part) of a path of the route, read as
// the route's handler reads it. `substrings` is the table the row's pattern
// gave (captured numbers).
path_number number_of(const route &r, const char *path, int32_t matches, char *const *substrings,
                      unsigned part = 0) noexcept;

// The row of the route's key table that a param name selects, and the entry
// it addresses: 0 for a key without entries, -1 for a name whose entry
// number is missing or out of range ("vtu3.vid": rule 3 of the field "vid").
// nullptr when no row takes the name.
const keys::key *row_of(const route &r, const char *name, int32_t &entry) noexcept;

// Matches the profile patterns against a path (only for a path that begins
// as they do): `matches[i]` and `substrings[i]` per pattern, as libpcre gave
// them; free_matches releases the substring tables.
void match_patterns(const char *path, int32_t *matches, char ***substrings) noexcept;
void free_matches(int32_t *matches, char ***substrings) noexcept;

} // namespace cfg::routes
