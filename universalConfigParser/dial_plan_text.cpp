// Dial-plan rules in their text form: the rule line of a "dialplan_N" param
// read into a dial_plan_t, and the port-mask text read into and written from
// the rule's 96-position mask.
#include <cfgparser.h>

#include "cfgmngr/text_class.h"
#include "universalConfigParser/text_numbers.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace cfg::dial_plan {
namespace {

// Rule kinds kept in dial_plan_t::type; 0 marks an empty entry.
enum rule_kind : uint32_t {
    h323_gatekeeper = 1,
    sip_proxy = 2,
    h323_direct = 3,
    sip_direct = 4,
    sip_t = 5,
    pickup = 6,
};

constexpr uint32_t mask_positions = 96;
constexpr uint32_t mask_words = 3;
constexpr uint32_t pickup_positions = 32;

// What the reader accepts for the text fields of a rule line. A longer
// field makes the whole rule refused (the entry keeps its content): cutting
// it would silently change the rule, and reading past a field would shift
// every field after it.
constexpr std::size_t word_limit = 64;   // fields 1, 4 and 5
constexpr std::size_t field6_limit = 11; // field 6, its double quotes included
constexpr std::size_t mask_limit = 255;  // field 10

// The eleven fields of a rule line, as read.
struct rule_fields {
    char field1[word_limit + 1] = {};
    int32_t field2 = 0;
    int32_t field3 = 0;
    char protocol[word_limit + 1] = {};
    char destination[word_limit + 1] = {};
    char field6[field6_limit + 1] = {};
    int32_t field7 = 0;
    int32_t field8 = 0;
    int32_t field9 = 0;
    char mask[mask_limit + 1] = {};
    int32_t field11 = 0;
};

using text::is_space;

// Decimal digits are the same ten characters in every locale.
bool is_digit(char c) noexcept
{
    return static_cast<unsigned>(static_cast<unsigned char>(c) - '0') < 10;
}

// Reads the line field by field the way "%s" and "%d" conversions do: the
// first field that is missing or not a number ends the reading, and it and
// every field after it keep 0 or the empty text.
struct line_reader {
    const char *at;
    bool ended = false;
    bool too_long = false;

    void skip_space() noexcept
    {
        while (is_space(*at))
            ++at;
    }

    template <std::size_t N>
    void word(char (&out)[N]) noexcept
    {
        if (ended)
            return;
        skip_space();
        const char *end = at;
        while (*end != '\0' && !is_space(*end))
            ++end;
        const auto length = static_cast<std::size_t>(end - at);
        if (length == 0 || length > N - 1) {
            too_long = length != 0;
            ended = true;
            return;
        }
        std::memcpy(out, at, length);
        out[length] = '\0';
        at = end;
    }

    void number(int32_t &out) noexcept
    {
        if (ended)
            return;
        skip_space();
        const char *digits = at;
        if (*digits == '+' || *digits == '-')
            ++digits;
        if (!is_digit(*digits)) {
            ended = true;
            return;
        }
        out = numbers::parse_int(at);
        at = digits;
        while (is_digit(*at))
            ++at;
    }
};

// False when a text field is longer than the reader accepts.
bool read_rule(const char *text, rule_fields &f) noexcept
{
    line_reader in{text};
    in.word(f.field1);
    in.number(f.field2);
    in.number(f.field3);
    in.word(f.protocol);
    in.word(f.destination);
    in.word(f.field6);
    in.number(f.field7);
    in.number(f.field8);
    in.number(f.field9);
    in.word(f.mask);
    in.number(f.field11);
    return !in.too_long;
}

// Zero-fills the field and copies at most N - 1 characters into it.
template <std::size_t N>
void copy_cut(char (&field)[N], std::string_view text) noexcept
{
    std::memset(field, 0, N);
    std::memcpy(field, text.data(), std::min(text.size(), N - 1));
}

// Field 6 travels in double quotes; the text up to the closing quote is
// kept. A field 6 without an opening quote is kept whole (cut to the field)
// rather than losing its first character: the writer quotes it, so such a
// rule comes back from the configuration manager in the quoted form.
template <std::size_t N>
void store_field6(char (&field)[N], std::string_view read) noexcept
{
    if (read.empty() || read.front() != '"') {
        copy_cut(field, read);
        return;
    }
    // Slices without substr: the library carries no C++ runtime to throw from.
    std::string_view inner(read.data() + 1, std::min(read.size() - 1, N - 1));
    inner = std::string_view(inner.data(), std::min(inner.find('"'), inner.size()));
    copy_cut(field, inner);
}

// The kind named by the protocol and destination fields; 0 for a protocol
// that is none of the four words.
uint32_t kind_of(std::string_view protocol, std::string_view destination) noexcept
{
    if (protocol == "h323")
        return destination == "\"gatekeeper\"" ? h323_gatekeeper : h323_direct;
    if (protocol == "sip")
        return destination == "\"proxy\"" ? sip_proxy : sip_direct;
    if (protocol == "sip-t")
        return sip_t;
    if (protocol == "pickup")
        return pickup;
    return 0;
}

bool has(const uint32_t (&set)[mask_words], uint32_t k) noexcept
{
    return ((set[k / 32] >> (k % 32)) & 1u) != 0;
}

// One position of a mask text: a base-10 number as strtol reads it, below
// the bound. Steps `at` past it.
bool read_position(const char *&at, uint32_t bound, long &out) noexcept
{
    char *end = nullptr;
    out = std::strtol(at, &end, 10);
    if (end == at)
        return false;
    at = end;
    return out >= 0 && static_cast<unsigned long>(out) < bound;
}

} // namespace
} // namespace cfg::dial_plan

extern "C" {

int cfgpars_string_from0_to_mask(const char *text, uint32_t mask[3], uint32_t max_ports) CFG_NOEXCEPT
{
    using namespace cfg::dial_plan;
    if (mask == nullptr)
        return -1;
    const char sign = text != nullptr ? text[0] : '\0';
    if (sign != '+' && sign != '-') {
        std::memset(mask, 0, mask_words * sizeof(uint32_t));
        return 0;
    }
    const uint32_t bound = std::min(max_ports, mask_positions);
    uint32_t set[mask_words] = {};
    const char *at = text + 1;
    while (*at != '\0') {
        long first = 0;
        if (!read_position(at, bound, first))
            return -1;
        long last = first;
        if (*at == '-') {
            ++at;
            if (!read_position(at, bound, last) || last < first)
                return -1;
        }
        if (*at == ',')
            ++at;
        else if (*at != '\0')
            return -1;
        for (auto k = static_cast<uint32_t>(first); k <= static_cast<uint32_t>(last); ++k)
            set[k / 32] |= 1u << (k % 32);
    }
    for (uint32_t &word : set)
        word = sign == '-' ? ~word : word;
    std::memcpy(mask, set, sizeof set);
    return 0;
}

char *cfg_mask_to_string(const uint32_t mask[3], char *out, uint32_t type, uint32_t max_ports) CFG_NOEXCEPT
{
    using namespace cfg::dial_plan;
    cfg_trace(CFG_TRACE_DEBUG, "%s %d\n", "cfg_mask_to_string", __LINE__);
    if (out == nullptr)
        return nullptr;
    std::memset(out, 0, CFG_MASK_TEXT_SIZE);
    uint32_t set[mask_words] = {};
    if (mask != nullptr) // no mask reads as the empty one
        std::memcpy(set, mask, sizeof set);

    const uint32_t n = std::min(type == pickup ? pickup_positions : max_ports, mask_positions);
    uint32_t set_count = 0;
    for (uint32_t k = 0; k < n; ++k)
        set_count += has(set, k) ? 1 : 0;

    if (set_count == n) {
        out[0] = '-';
    } else if (set_count == 0) {
        out[0] = '+';
    } else {
        // The shorter list: the set positions, or the clear ones after "-".
        const bool list_set = n - set_count > set_count;
        out[0] = list_set ? '+' : '-';
        std::size_t length = 1;
        bool first = true;
        for (uint32_t k = 0; k < n; ++k) {
            if (has(set, k) != list_set)
                continue;
            // At most 48 numbers of two digits: well inside the 256 bytes.
            const int wrote = std::snprintf(out + length, CFG_MASK_TEXT_SIZE - length, first ? "%d" : ",%d",
                                            static_cast<int>(k));
            if (wrote > 0)
                length =
                    std::min<std::size_t>(length + static_cast<std::size_t>(wrote), CFG_MASK_TEXT_SIZE - 1);
            first = false;
        }
    }
    cfg_trace(CFG_TRACE_DEBUG, "%s %d\n", "cfg_mask_to_string", __LINE__);
    return out;
}

dial_plan_t *cfgpars_dial_plan_string_to_t(dial_plan_t *entry, const char *text,
                                           uint32_t max_ports) CFG_NOEXCEPT
{
    using namespace cfg::dial_plan;
    if (entry == nullptr || text == nullptr)
        return nullptr;
    rule_fields f;
    if (!read_rule(text, f))
        return nullptr;
    const std::string_view protocol(f.protocol);
    if (protocol.empty())
        return nullptr;
    if (f.field2 == 0 && protocol != "pickup")
        return nullptr;

    dial_plan_t taken = *entry;
    store_field6(taken.field6, f.field6);
    if (const uint32_t kind = kind_of(protocol, f.destination); kind != 0)
        taken.type = kind; // an unknown protocol keeps the kind the entry had
    // A refused mask text keeps the old mask; the rest of the rule is taken.
    cfgpars_string_from0_to_mask(f.mask, taken.port_mask, max_ports);
    copy_cut(taken.field1, f.field1);
    copy_cut(taken.destination, f.destination);
    taken.field7 = f.field7;
    taken.field3 = f.field3;
    taken.field2 = f.field2;
    taken.field11 = f.field11;
    taken.field8 = static_cast<uint8_t>(f.field8);
    taken.field9 = f.field9;
    copy_cut(taken.protocol, protocol);
    *entry = taken;
    return entry;
}

} // extern "C"
