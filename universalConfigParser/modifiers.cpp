// Number modifiers: "config.VOIP.modifiers.modifier_M" (M = 0..15), params
// "mod_rule_0" .. "mod_rule_31", each value a line of three words.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "cfgmngr/list_words.h"
#include "universalConfigParser/text_numbers.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

namespace cfg::handlers {
namespace {

constexpr std::size_t line_limit = 254; // characters of a rule line that are read

// A word longer than its member is cut to the member's size.
template <std::size_t N>
void put_word(char (&field)[N], std::string_view word) noexcept
{
    const std::size_t kept = std::min(word.size(), N - 1);
    std::memcpy(field, word.data(), kept);
    field[kept] = '\0';
}

// A line of three words (more are ignored) fills the rule; anything else
// leaves it empty.
void store_rule(mod_rule_t &rule, const char *value) noexcept
{
    rule = mod_rule_t{};
    if (numbers::absent(value))
        return;
    std::string_view line(value, strnlen(value, line_limit));
    const std::string_view w1 = lists::next_word(line);
    const std::string_view w2 = lists::next_word(line);
    const std::string_view w3 = lists::next_word(line);
    if (w3.empty())
        return;
    put_word(rule.word1, w1);
    put_word(rule.word2, w2);
    put_word(rule.word3, w3);
}

void store_modifier(modifier_cfg_t &m, const parse::param &p, bool is_rule) noexcept
{
    const char *v = p.value();
    cfg_trace(CFG_TRACE_INFO, "paramName: %s, paramValue: %s", p.name(), v != nullptr ? v : "");
    if (!is_rule)
        return;
    // The rule number: the digits after the last "_" of the name.
    const int32_t r = numbers::entry_number(numbers::after_underscore(p.name(), numbers::underscore::last));
    if (r < 0 || r >= static_cast<int32_t>(std::size(m.rules))) {
        cfg_trace(CFG_TRACE_ERROR, "%s: invalid modifier rule number %d (valid %d..%d)", "all_parser",
                  static_cast<int>(r), 0, static_cast<int>(std::size(m.rules)) - 1);
        return;
    }
    store_rule(m.rules[r], v);
}

} // namespace

node_end modifiers(cfg_image_t &image, node &n)
{
    // The modifier number: the digits after the last "_" of the path. A path
    // without one is reported with the number -1. Either way the rest of the
    // message is abandoned.
    const auto m = static_cast<int32_t>(n.number().value);
    if (m < 0 || m >= static_cast<int32_t>(std::size(image.modifiers))) {
        cfg_trace(CFG_TRACE_ERROR, "%s: invalid modifier entry number %d (valid %d..%d)", "all_parser",
                  static_cast<int>(m), 0, static_cast<int>(std::size(image.modifiers)) - 1);
        return node_end::stop;
    }
    cfg_trace(CFG_TRACE_INFO, "Path: %s; countParams: %d", n.path, static_cast<int>(n.param_count));
    modifier_cfg_t &modifier = image.modifiers[m];
    while (parse::param p = parse::next_param(n)) {
        const bool is_rule = keys::find(keys::modifiers, p.name_view()) != nullptr;
        const parse::image_lock lock;
        store_modifier(modifier, p, is_rule);
    }
    // No time-stamp: the modifier record has none, and its count is the
    // recount's alone.
    return n.malformed ? node_end::stop : node_end::next;
}

} // namespace cfg::handlers
