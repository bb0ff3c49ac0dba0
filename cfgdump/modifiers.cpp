// Writer of one number modifier: its filled rules renumbered from 0, then
// empty params up to its count.
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_voip.h"

#include <cfgparser.h>

#include <cstdio>
#include <cstring>
#include <iterator>

using cfg::dump::msg_writer;

namespace cfg::dump {
namespace {

constexpr const char *rule_name =
    only_row(keys::modifier_keys, routes::rows_modifier_modifier_to_file).wire_name().data();

// Characters of a written rule line.
constexpr std::size_t rule_text_size = 254; // 253 characters and the NUL

template <std::size_t N>
int length_of(const char (&field)[N]) noexcept
{
    return static_cast<int>(strnlen(field, N));
}

} // namespace
} // namespace cfg::dump

extern "C" {

int modifier_to_file(uint8_t **cursor, int number, const modifier_cfg_t *modifier) CFG_NOEXCEPT
{
    if (cfg::dump::refused("modifier_to_file", cursor, {modifier}, number, CFG_MODIFIERS))
        return 0;
    using namespace cfg::dump;
    msg_writer w(cursor, "modifier_to_file");
    const modifier_cfg_t &m = *modifier;
    constexpr uint32_t rule_count = std::size(modifier_cfg_t{}.rules);

    char path[64];
    std::snprintf(path, sizeof path, "config.VOIP.modifiers.modifier_%d", number);
    w.node(path);

    uint32_t j = 0;
    char name[32];
    for (uint32_t r = 0; r < rule_count && j < m.count; ++r) {
        const mod_rule_t &rule = m.rules[r];
        if (rule.word1[0] == '\0')
            continue;
        char text[rule_text_size];
        std::snprintf(text, sizeof text, "%.*s %.*s %.*s", length_of(rule.word1), rule.word1,
                      length_of(rule.word2), rule.word2, length_of(rule.word3), rule.word3);
        std::snprintf(name, sizeof name, "%s%d", rule_name, static_cast<int>(j++));
        w.text(name, static_cast<const char *>(text));
    }
    while (j < rule_count && j < m.count) {
        std::snprintf(name, sizeof name, "%s%d", rule_name, static_cast<int>(j++));
        w.empty(name);
    }
    return w.finish();
}

} // extern "C"
