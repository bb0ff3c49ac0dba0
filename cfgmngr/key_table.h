// Key tables: every param of a keyed section stated once, as data.
//
// A row names the key, how its value is read (its kind and bounds, or a
// named converter for the few keys that need their own rule), its default
// and the record member it lands in. The parser finds a param's row with
// find() and stores it with store(); the writers send a row's member with
// msg_writer::field(); the cfgmsg tool prints the tables as a parameter
// reference and explains with them why a value was not stored as sent.
//
// A table keeps the order in which the keys are matched: a param name is
// compared with each key over the key's own length and the first key that
// matches decides, so a key that is the prefix of another comes after it
// ("IPADDR2" before "IPADDR"). find() answers exactly that without walking
// the rows (a hash of the whole name, then a sorted index for names that only
// begin with a key).
//
// A section's table reads like this:
//
//     #define F(member) CFG_FIELD(tr069_cfg_t, member)
//     inline constexpr key tr069_keys[] = {
//         checkbox("Enable", F(enable)),
//         text("URL", F(url)),
//         urange("PeriodicInformInterval", F(periodic_inform_interval), 1, uint_max, 30),
//         ...
//     };
//     #undef F
#pragma once

#include <cfgparser.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

namespace cfg::keys {

// How a value is read.
enum class kind : uint8_t {
    text,     // char[N]: at most N - 1 characters, longer values cut; no value zero-fills
    checkbox, // 1 for a non-zero number or a value starting with 'y', else 0
    range,    // signed number in min..max, else (and for no value) the default
    urange,   // unsigned number in min..max, else (and for no value) the default
    number,   // "%d": no value stores the default, a value without a number keeps the field
    integer,  // leading number taken as it is (no number reads 0); no value stores the default
    hex,      // "0x" and a hexadecimal number, else the field is kept; no value stores the default
    special,  // a rule of its own, named by `rule`
};

// The keys whose value follows a rule of its own.
enum class rule : uint8_t {
    none,
    pickup_groups,    // "1,5;31": bit g for each group 0..31
    text_or_default,  // text; no value stores the default text (`text_default`)
    number_or_keep,   // "%d"; no value or no number keeps the field
    text_and_flag,    // text; also raises the byte member at `aux` to 1
    packet_time,      // non-zero multiple of `min` below `max`, else the default
    g726_packet_time, // 10, 20 or 30, else the default
    t38_datagram,     // exactly "0", or a size in min..max, else the default
    // ---- rules of the VoIP sections
    not_kept,         // accepted and dropped (no member)
    one_or_default,   // 1 for the number 1, anything else (and no value) the default
    inverse_checkbox, // a checkbox stored inverted
    on_unless_zero,   // 0 for a value reading as 0, anything else (and no value) 1
    dtmf_mime,        // "dtmfr" 0, "dtmf" 1, "audio" 2, other words 0
    hookflash_mime,   // "dtmf" 1, "hookf" 0, "sscc" 3, "broadsoft" 2, other words 0
    user_at_host,     // "user@host": the user, and the host into the text at `aux` of `max` bytes
    server_text,      // text of SIP server N, named key_N (the key alone: server 0)
    clamped,          // the number as strtoll reads it (no digits: 0), held to min..max
    flag_list,        // "0,2,5": bit k for each flag k in min..max; empty pieces name none
    // List entries in a text format of their own, stored by their handler's parser:
    group_ports,    // the member ports of a hunt group ("1,3-5")
    limit_line,     // a call limit, "target number" ("[proxy]" for the proxy), named key_N
    modifier_rule,  // a number-modifier rule, three words, named keyN
    dial_plan_line, // a dial-plan rule line, named key_N

    // ---- rules of the network and switch sections
    trap_version,   // exactly "v2" is 2, anything else 1
    snmp_user_line, // three blank-separated words into an snmp_user_t
    port_flags,     // switch port flags "1 0 1 ...": bit k for flag k (first 254 characters)
    // List entries "<key>_<n>" (n after the first '_'), each a line of its own format:
    entry_text,    // the entry's text, as a text key
    host_line,     // "<address> <name>": a missing word keeps its field; no value clears both
    route_line,    // "<destination> <netmask> <gateway> [.<extra>]"; no value clears the route
    firewall_rule, // a rule text (firewall_rule_string_to_t); no value clears the rule
    vtu_vid,       // "%d" (no number keeps it) and marks the VTU rule valid; no value clears both

};

// How a writer sends a member.
enum class sent : uint8_t {
    none,          // no writer of the section sends it
    uint,          // "%u"
    sint,          // "%d"
    hex,           // "0x%x"
    text,          // the text field as it stands
    pickup_groups, // the set bits as "1,5,31"
    own_format,    // sent by the writer's own code (list lines, version words)
};

// Where the entry number of a numbered key stands in a param name, and how
// it is read. "%d" forms take white space and a sign before the digits and
// ignore what follows them.
enum class entry_form : uint8_t {
    after_key,                       // "prio3": "%d" right after the key
    after_key_underscore,            // "proxy_2": "%d" after a '_' right after the key
    after_underscore,                // "host_3": "%d" after the name's first '_'
    digits_after_underscore,         // "limit_3": nothing but digits after the first '_'
    digits_after_last_underscore,    // "mod_rule_3": nothing but digits after the last '_'
    leading_digits_after_underscore, // "dialplan_3": digits right after the first '_'
    rule_then_key,                   // "vtu3.vid": "vtu", "%d", '.', then the key
};

// Where a value lands: `size` bytes at `offset` of the section's record, or
// `width` bits from bit `bit` of that member (width 0: the whole member).
// Keys that carry an entry number after them ("prio3") address entry n at
// offset + n * stride, n in 0..count-1.
struct field {
    uint16_t offset = 0;
    uint16_t size = 0;
    uint8_t bit = 0;
    uint8_t width = 0;
    bool is_signed = false;
    bool is_text = false;
};

struct key {
    std::string_view name;      // matched over its own length
    std::string_view sent_name; // what the writers send, where it differs
    kind how = kind::text;
    rule special = rule::none;
    sent out = sent::none;
    field at;
    int64_t min = 0;
    int64_t max = 0;
    int64_t def = 0;
    std::string_view text_default;            // rule::text_or_default
    uint16_t aux = 0;                         // rule::text_and_flag: offset of the flag
    uint16_t count = 0;                       // numbered keys: entries 0..count-1
    uint16_t stride = 0;                      // numbered keys: bytes between entries
    entry_form entry = entry_form::after_key; // numbered keys: where the number stands
    int16_t missing = -1; // numbered keys: the entry of a name without a number (-1: none)

    // The writers' name for the key.
    constexpr std::string_view wire_name() const noexcept { return sent_name.empty() ? name : sent_name; }

    // Modifiers for the rows of a table.
    constexpr key as(std::string_view writer_name) const noexcept
    {
        key k = *this;
        k.sent_name = writer_name;
        return k;
    }
    constexpr key sent_as(sent how_sent) const noexcept
    {
        key k = *this;
        k.out = how_sent;
        return k;
    }
    constexpr key with_text_default(std::string_view text) const noexcept
    {
        key k = *this;
        k.text_default = text;
        return k;
    }
    constexpr key not_sent() const noexcept { return sent_as(sent::none); }
    constexpr key numbered(uint16_t entries, uint16_t bytes_between, entry_form form = entry_form::after_key,
                           int16_t without_number = -1) const noexcept
    {
        key k = *this;
        k.count = entries;
        k.stride = bytes_between;
        k.entry = form;
        k.missing = without_number;
        return k;
    }
};

// The field of a record member (also nested: CFG_FIELD(network_cfg_t, vlan_if[1].vid)).
template <typename Member>
constexpr field field_of(std::size_t offset) noexcept
{
    using M = std::remove_cvref_t<Member>;
    field f;
    f.offset = static_cast<uint16_t>(offset);
    f.size = static_cast<uint16_t>(sizeof(M));
    if constexpr (std::is_array_v<M>) {
        f.is_text = true;
    } else {
        f.is_signed = std::is_signed_v<M>;
    }
    return f;
}

#define CFG_FIELD(record, member) \
    ::cfg::keys::field_of<decltype(std::declval<record &>().member)>(offsetof(record, member))

// Bits `bit`..`bit + width - 1` of an integer member.
constexpr field bits(field f, unsigned bit, unsigned width = 1) noexcept
{
    f.bit = static_cast<uint8_t>(bit);
    f.width = static_cast<uint8_t>(width);
    return f;
}

constexpr sent sent_number(const field &f) noexcept
{
    return f.is_signed ? sent::sint : sent::uint;
}

// Row builders, one per kind. The writers send a row as its member's type
// reads (signed or unsigned number, text) unless the row says otherwise.
constexpr key make_key(std::string_view name, kind how, field f, int64_t min = 0, int64_t max = 0,
                       int64_t def = 0) noexcept
{
    key k;
    k.name = name;
    k.how = how;
    k.out = f.is_text ? sent::text : sent_number(f);
    k.at = f;
    k.min = min;
    k.max = max;
    k.def = def;
    return k;
}
constexpr key text(std::string_view name, field f) noexcept
{
    return make_key(name, kind::text, f);
}
constexpr key checkbox(std::string_view name, field f) noexcept
{
    return make_key(name, kind::checkbox, f, 0, 1).sent_as(sent::uint);
}
// A checkbox into one bit of a bit set.
constexpr key flag(std::string_view name, field f, unsigned bit) noexcept
{
    return checkbox(name, bits(f, bit));
}
constexpr key range(std::string_view name, field f, int32_t min, int32_t max, int32_t def) noexcept
{
    return make_key(name, kind::range, f, min, max, def);
}
constexpr key urange(std::string_view name, field f, uint32_t min, uint32_t max, uint32_t def) noexcept
{
    return make_key(name, kind::urange, f, min, max, def);
}
constexpr key number(std::string_view name, field f, int32_t empty = 0) noexcept
{
    return make_key(name, kind::number, f, 0, 0, empty);
}
constexpr key integer(std::string_view name, field f, int32_t empty = 0) noexcept
{
    return make_key(name, kind::integer, f, 0, 0, empty);
}
constexpr key hex(std::string_view name, field f, uint32_t empty = 0) noexcept
{
    return make_key(name, kind::hex, f, 0, 0, empty).sent_as(sent::hex);
}
constexpr key special(std::string_view name, field f, rule r, int64_t min = 0, int64_t max = 0,
                      int64_t def = 0) noexcept
{
    key k = make_key(name, kind::special, f, min, max, def);
    k.special = r;
    return k;
}

// ---------------------------------------------------------------------------
// A table and its index (cfgmngr/key_index.h builds the index at compile
// time), as the parser and the tool use it.

struct name_entry;

struct table {
    std::span<const key> rows;
    const uint16_t *sorted;
    const int16_t *parent;
    const name_entry *entries;
    const uint16_t *hashed;
    std::size_t hash_mask;
    uint32_t seed;
};

// The row a param name selects (the first key in table order that the name
// begins with), or nullptr when it begins with none.
const key *find(const table &t, std::string_view name) noexcept;

// Reached only by row() below for a name that no row has: not constexpr, so
// such a lookup stops the build.
inline void no_such_key() noexcept {}

// The row of a key by its exact name, at compile time (for the writers).
template <std::size_t N>
consteval const key &row(const key (&rows)[N], std::string_view name)
{
    for (const key &k : rows)
        if (k.name == name)
            return k;
    no_such_key();
    return rows[0];
}

// The positions of keys in a table, by their exact names, at compile time: a
// writer's list of the keys it sends, in the order it sends them.
template <std::size_t N>
consteval uint16_t position(const key (&rows)[N], std::string_view name)
{
    for (std::size_t i = 0; i < N; ++i)
        if (rows[i].name == name)
            return static_cast<uint16_t>(i);
    no_such_key();
    return 0;
}

template <std::size_t N, typename... Names>
consteval auto pick(const key (&rows)[N], Names... names)
{
    return std::array<uint16_t, sizeof...(Names)>{position(rows, std::string_view(names))...};
}

// The entry a param name addresses for a numbered key (found for this name):
// 0..count-1, or -1 when the name has no usable number (or a number out of
// range). rule_then_key names are split by split_rule_name instead.
int32_t entry_of(const key &k, const char *name) noexcept;

// "vtu<rule>.<field>": the rule number, a literal '.', then the field word
// (white space before it skipped, ending at white space, at most 15
// characters). False for a name without both parts or a rule outside
// 0..rules-1.
bool split_rule_name(std::string_view prefix, const char *name, int32_t rules, int32_t &rule,
                     std::string_view &field) noexcept;

// ---------------------------------------------------------------------------
// Stores and reads.

// Stores a value (null: no value) into the row's member of `record`, entry
// `entry` of a numbered key.
void store(const key &k, void *record, const char *value, unsigned entry = 0) noexcept;

// The member of `record` as a number (bits read out, sign extended where the
// member is signed).
int64_t read_number(const key &k, const void *record, unsigned entry = 0) noexcept;

// The member of `record` as a text field: its bytes and size.
const char *field_bytes(const key &k, const void *record, unsigned entry = 0) noexcept;

} // namespace cfg::keys
