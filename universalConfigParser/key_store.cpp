// Stores a param's value by its key row: the converters of every kind of
// key, and the few keys with a rule of their own.
#include "cfgmngr/key_table.h"
#include "cfgmngr/list_words.h"
#include "cfgmngr/text_class.h"
#include "universalConfigParser/text_numbers.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace cfg::keys {
namespace {

uint8_t *member(const key &k, void *record, unsigned entry) noexcept
{
    return static_cast<uint8_t *>(record) + k.at.offset + static_cast<std::size_t>(entry) * k.stride;
}

// Writes a number as a cast to the member's type writes it (its low bytes),
// or into the member's bits.
void put(const key &k, uint8_t *at, int64_t value) noexcept
{
    auto v = static_cast<uint32_t>(value);
    if (k.at.width != 0) {
        uint32_t word = 0;
        switch (k.at.size) { // little-endian targets: the low bytes
        case 1:
            std::memcpy(&word, at, 1);
            break;
        case 2:
            std::memcpy(&word, at, 2);
            break;
        default:
            std::memcpy(&word, at, 4);
            break;
        }
        const uint32_t mask = ((1u << k.at.width) - 1u) << k.at.bit;
        v = (word & ~mask) | ((v << k.at.bit) & mask);
    }
    switch (k.at.size) {
    case 1: {
        const auto b = static_cast<uint8_t>(v);
        std::memcpy(at, &b, 1);
        break;
    }
    case 2: {
        const auto h = static_cast<uint16_t>(v);
        std::memcpy(at, &h, 2);
        break;
    }
    default:
        std::memcpy(at, &v, 4);
        break;
    }
}

bool pickup_separator(char c) noexcept
{
    return c == ',' || c == ';';
}

// Pickup groups: numbers separated by ',' or ';' (a run of separators counts
// as one). 0..31 set their bit, other numbers are ignored, a piece without a
// number reads as 0. Only the first 255 characters of the value are read.
uint32_t pickup_groups(const char *value) noexcept
{
    if (numbers::absent(value))
        return 0;
    char copy[256];
    get_string(copy, sizeof copy, value);
    uint32_t groups = 0;
    const char *at = copy;
    for (;;) {
        while (pickup_separator(*at))
            ++at;
        if (*at == '\0')
            return groups;
        const int32_t g = numbers::parse_int(at); // stops at the next separator
        if (g >= 0 && g <= 31)
            groups |= 1u << g;
        while (*at != '\0' && !pickup_separator(*at))
            ++at;
    }
}

// The SNMP user line: three blank-separated words; a word the line does not
// have leaves its field as it was, an empty line clears all three.
void store_snmp_user(snmp_user_t &u, const char *value) noexcept
{
    if (numbers::absent(value)) {
        lists::store_word(u.word1, {});
        lists::store_word(u.word2, {});
        lists::store_word(u.word3, {});
        return;
    }
    std::string_view rest(value);
    if (lists::scan_word(u.word1, rest) && lists::scan_word(u.word2, rest))
        lists::scan_word(u.word3, rest);
}

// A host line: a value with one word changes the address and keeps the name.
void store_host(hosts_cfg_t &r, unsigned i, const char *value) noexcept
{
    if (value == nullptr) {
        lists::store_word(r.address[i], {});
        lists::store_word(r.name[i], {});
        return;
    }
    std::string_view rest(value);
    if (lists::scan_word(r.address[i], rest))
        lists::scan_word(r.name[i], rest);
}

// A route line: words are stored in order until the value runs out, so
// fields without a word keep their text (three words leave `extra` as it
// was). The optional fourth field follows a literal '.'.
void store_route(route_t &r, const char *value) noexcept
{
    if (value == nullptr) {
        r = route_t{};
        return;
    }
    std::string_view rest(value);
    if (lists::scan_word(r.destination, rest) && lists::scan_word(r.netmask, rest) &&
        lists::scan_word(r.gateway, rest) && lists::take_char(rest, '.'))
        lists::scan_word(r.extra, rest);
}

// Flag numbers separated by ",", e.g. "0,2,5". A piece whose value lies
// outside 0..flags-1 is ignored; a piece without digits counts as 0. Empty
// pieces (two commas in a row, a comma at either end) name no flag, so a
// stray comma does not turn on flag 0. Only the first 255 characters count.
uint32_t flag_list(const char *value, int32_t flags) noexcept
{
    uint32_t set = 0;
    if (numbers::absent(value))
        return set;
    char text[256] = {};
    std::memcpy(text, value, strnlen(value, sizeof text - 1));
    const char *piece = text;
    for (;;) {
        const char *comma = std::strchr(piece, ',');
        const bool empty = comma == piece || *piece == '\0';
        if (!empty) {
            const int32_t k = numbers::entry_within(piece, flags, 0);
            if (k >= 0)
                set |= 1u << k;
        }
        if (comma == nullptr)
            return set;
        piece = comma + 1;
    }
}

bool begins(const char *value, std::string_view word) noexcept
{
    return value != nullptr && numbers::begins_with(value, word);
}

// Part of a value into a text field of `size` bytes, cut to size - 1
// characters, the rest of the field zero-filled.
void text_part(uint8_t *at, std::size_t size, std::string_view part) noexcept
{
    std::memset(at, 0, size);
    if (!part.empty())
        std::memcpy(at, part.data(), std::min(part.size(), size - 1));
}

void store_special(const key &k, uint8_t *at, void *record, const char *value, unsigned entry) noexcept
{
    const auto min = static_cast<int32_t>(k.min);
    const auto max = static_cast<int32_t>(k.max);
    const auto def = static_cast<int32_t>(k.def);
    switch (k.special) {
    case rule::none:
        return;
    case rule::pickup_groups:
        return put(k, at, pickup_groups(value));
    case rule::text_or_default:
        return get_string(reinterpret_cast<char *>(at), k.at.size,
                          numbers::absent(value) ? k.text_default.data() : value);
    case rule::number_or_keep: {
        int32_t n = 0;
        if (!numbers::absent(value) && numbers::scan_int(value, n))
            put(k, at, n);
        return;
    }
    case rule::text_and_flag:
        get_string(reinterpret_cast<char *>(at), k.at.size, value);
        static_cast<uint8_t *>(record)[k.aux] = 1;
        return;
    case rule::packet_time: {
        // The remainder is that of signed division, so -30 passes for a step of 30.
        const int32_t n = numbers::absent(value) ? def : numbers::parse_int(value);
        return put(k, at, n != 0 && n % min == 0 && n < max ? n : def);
    }
    case rule::g726_packet_time: {
        const int32_t n = numbers::absent(value) ? def : numbers::parse_int(value);
        return put(k, at, (n == 10 || n == 20 || n == 30) ? n : def);
    }
    case rule::t38_datagram:
        if (value != nullptr && std::strcmp(value, "0") == 0)
            return put(k, at, 0);
        return put(k, at, get_digit_from_min_to_max_or_set_default(value, min, max, def));
    // ---- rules of the network and switch sections
    case rule::trap_version:
        return put(k, at, (value != nullptr && std::strcmp(value, "v2") == 0) ? 2 : 1);
    case rule::snmp_user_line:
        return store_snmp_user(*reinterpret_cast<snmp_user_t *>(at), value);
    case rule::port_flags: {
        // Read from a zeroed 255-byte copy: characters past the 254th never
        // count, and no value reads as no flags.
        char text[255] = {};
        if (value != nullptr)
            std::strncpy(text, value, sizeof text - 1);
        return put(k, at, eth_port_string_to_output(text));
    }
    case rule::vtu_vid: {
        auto &vtu = *reinterpret_cast<vtu_rule_t *>(at - offsetof(vtu_rule_t, vid));
        if (numbers::absent(value)) {
            vtu.vid = 0;
            vtu.valid = 0;
            return;
        }
        numbers::scan_int(value, vtu.vid);
        vtu.valid = 1;
        return;
    }
    case rule::entry_text:
        return get_string(reinterpret_cast<char *>(at), k.at.size, value);
    case rule::host_line:
        return store_host(*static_cast<hosts_cfg_t *>(record), entry, value);
    case rule::route_line:
        return store_route(*reinterpret_cast<route_t *>(at), value);
    case rule::firewall_rule:
        if (value == nullptr) {
            *reinterpret_cast<firewall_rule_t *>(at) = firewall_rule_t{};
            return;
        }
        // The rule text is split in place: the value is the param's own heap
        // copy, made for this param alone and freed right after the store.
        firewall_rule_string_to_t(const_cast<char *>(value), reinterpret_cast<firewall_rule_t *>(at));
    // ---- rules of the VoIP sections
    case rule::not_kept:
        return;
    case rule::one_or_default:
        return put(k, at, !numbers::absent(value) && numbers::parse_int(value) == 1 ? 1 : def);
    case rule::inverse_checkbox:
        return put(k, at, 1 - get_checkbox(value));
    case rule::on_unless_zero:
        return put(k, at, numbers::absent(value) || numbers::parse_int(value) != 0 ? 1 : 0);
    case rule::dtmf_mime:
        return put(k, at,
                   begins(value, "dtmfr")   ? 0
                   : begins(value, "dtmf")  ? 1
                   : begins(value, "audio") ? 2
                                            : 0);
    case rule::hookflash_mime:
        return put(k, at,
                   begins(value, "dtmf")        ? 1
                   : begins(value, "hookf")     ? 0
                   : begins(value, "sscc")      ? 3
                   : begins(value, "broadsoft") ? 2
                                                : 0);
    case rule::user_at_host: {
        // Both texts are zero-filled first, so an empty part clears its field.
        const std::string_view text = numbers::absent(value) ? std::string_view() : value;
        const std::size_t sep = std::min(text.find('@'), text.size());
        text_part(at, k.at.size, std::string_view(text.data(), sep));
        text_part(static_cast<uint8_t *>(record) + k.aux, static_cast<std::size_t>(k.max),
                  sep == text.size() ? std::string_view()
                                     : std::string_view(text.data() + sep + 1, text.size() - sep - 1));
        return;
    }
    case rule::server_text:
        return get_string(reinterpret_cast<char *>(at), k.at.size, value);
    case rule::clamped: {
        // The 64-bit conversion saturates, so a huge text is held at max.
        const long long n = numbers::absent(value) ? 0 : numbers::parse_int64(value);
        return put(k, at, n < k.min ? k.min : n > k.max ? k.max : n);
    }
    case rule::flag_list:
        return put(k, at, flag_list(value, static_cast<int32_t>(k.max) + 1));
    case rule::group_ports: // the handlers store these with their own parsers
    case rule::limit_line:
    case rule::modifier_rule:
    case rule::dial_plan_line:
        return;
    }
}

} // namespace

void store(const key &k, void *record, const char *value, unsigned entry) noexcept
{
    uint8_t *at = member(k, record, entry);
    switch (k.how) {
    case kind::text:
        return get_string(reinterpret_cast<char *>(at), k.at.size, value);
    case kind::checkbox:
        return put(k, at, get_checkbox(value));
    case kind::range:
        return put(k, at,
                   get_digit_from_min_to_max_or_set_default(value, static_cast<int32_t>(k.min),
                                                            static_cast<int32_t>(k.max),
                                                            static_cast<int32_t>(k.def)));
    case kind::urange:
        return put(k, at,
                   get_long_from_min_to_max_or_set_default(value, static_cast<uint32_t>(k.min),
                                                           static_cast<uint32_t>(k.max),
                                                           static_cast<uint32_t>(k.def)));
    case kind::number: {
        if (numbers::absent(value))
            return put(k, at, k.def);
        int32_t n = 0;
        if (numbers::scan_int(value, n))
            put(k, at, n);
        return;
    }
    case kind::integer:
        return put(k, at, numbers::absent(value) ? k.def : numbers::parse_int(value));
    case kind::hex: {
        if (numbers::absent(value))
            return put(k, at, k.def);
        uint32_t n = 0;
        if (value[0] == '0' && value[1] == 'x' && numbers::scan_hex(value + 2, n))
            put(k, at, n);
        return;
    }
    case kind::special:
        return store_special(k, at, record, value, entry);
    }
}

int32_t entry_of(const key &k, const char *name) noexcept
{
    using numbers::underscore;
    const int32_t count = k.count;
    const char *text = nullptr;
    switch (k.entry) {
    case entry_form::after_key:
        return numbers::entry_within(name + k.name.size(), count, k.missing);
    case entry_form::after_key_underscore:
        text = name + k.name.size();
        return text[0] == '_' ? numbers::entry_within(text + 1, count, k.missing) : k.missing;
    case entry_form::after_underscore:
        return numbers::entry_within(numbers::after_underscore(name), count, k.missing);
    case entry_form::digits_after_underscore:
    case entry_form::digits_after_last_underscore: {
        const underscore which =
            k.entry == entry_form::digits_after_underscore ? underscore::first : underscore::last;
        const int32_t n = numbers::entry_number(numbers::after_underscore(name, which));
        return n >= 0 && n < count ? n : -1;
    }
    case entry_form::leading_digits_after_underscore: {
        text = numbers::after_underscore(name);
        int64_t n = 0;
        if (text == nullptr || *text < '0' || *text > '9' || numbers::scan_entry(text, n) == nullptr)
            return -1;
        return n < count ? static_cast<int32_t>(n) : -1;
    }
    case entry_form::rule_then_key:
        return -1;
    }
    return -1;
}

bool split_rule_name(std::string_view prefix, const char *name, int32_t rules, int32_t &rule,
                     std::string_view &field) noexcept
{
    constexpr std::size_t field_word_max = 15;
    if (!numbers::begins_with(name, prefix))
        return false;
    int64_t n = 0;
    const char *text = numbers::scan_entry(name + prefix.size(), n);
    if (text == nullptr || *text != '.')
        return false;
    ++text;
    while (text::is_space(*text))
        ++text;
    std::size_t length = 0;
    while (text[length] != '\0' && !text::is_space(text[length]))
        ++length;
    if (length == 0 || length > field_word_max || n < 0 || n >= rules)
        return false;
    rule = static_cast<int32_t>(n);
    field = std::string_view(text, length);
    return true;
}

} // namespace cfg::keys
