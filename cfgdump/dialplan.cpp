// Writer of the dial-plan rules of one profile.
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_voip.h"

#include <cfgparser.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

using cfg::dump::msg_writer;

namespace {

constexpr const char *rule_name =
    cfg::dump::only_row(cfg::keys::dialplan_keys, cfg::routes::rows_dialplan_profile_dialplan_to_file)
        .wire_name()
        .data();

// Characters of a text field up to its NUL, never past the field.
template <std::size_t N>
int shown(const char (&field)[N]) noexcept
{
    return static_cast<int>(strnlen(field, N));
}

// The longest rule line: the five text fields at their full width, six
// numbers of 11 characters, the separators and the quotes of field 6.
constexpr std::size_t rule_line_size = sizeof(dial_plan_t::field1) + sizeof(dial_plan_t::protocol) +
                                       sizeof(dial_plan_t::destination) + sizeof(dial_plan_t::field6) +
                                       CFG_MASK_TEXT_SIZE + std::size_t{6} * 11 + 16;

void rule_param(msg_writer &w, uint32_t index, const dial_plan_t &e, uint32_t max_ports) noexcept
{
    char mask[CFG_MASK_TEXT_SIZE];
    cfg_mask_to_string(e.port_mask, mask, e.type, max_ports);
    char line[rule_line_size];
    std::snprintf(line, sizeof line, "%.*s %d %d %.*s %.*s \"%.*s\" %d %d %d %s %d", shown(e.field1),
                  e.field1, e.field2, e.field3, shown(e.protocol), e.protocol, shown(e.destination),
                  e.destination, shown(e.field6), e.field6, e.field7, static_cast<int>(e.field8), e.field9,
                  mask, e.field11);
    char name[24];
    std::snprintf(name, sizeof name, "%s_%u", rule_name, index);
    w.text(name, line);
}

} // namespace

extern "C" {

int profile_dialplan_to_file(uint8_t **cursor, int profile, const profile_dialplan_cfg_t *cfg,
                             uint32_t max_ports) CFG_NOEXCEPT
{
    if (cfg::dump::refused("profile_dialplan_to_file", cursor, {cfg}, profile, CFG_PROFILES))
        return 0;
    msg_writer w(cursor, "profile_dialplan_to_file");
    char path[64];
    std::snprintf(path, sizeof path, "config.VOIP.profile.profile_%d.dialplan", profile);
    w.node(path);

    // Filled rules, renumbered from 0 without gaps.
    uint32_t j = 0;
    for (const dial_plan_t &e : cfg->entries) {
        if (j >= cfg->current)
            break;
        if (e.type == 0)
            continue;
        rule_param(w, j++, e, max_ports);
    }

    // Empty params for the rules the configuration manager still holds from
    // the last count, so that it drops them. No index goes past the last
    // rule a profile can hold: a list written while its update is still in
    // progress (start 65535) pads up to rule 299 instead of announcing
    // 65535 params.
    const auto dropped = static_cast<int32_t>(cfg->start - cfg->current);
    for (int32_t k = 0; k < dropped && j < CFG_DIALPLAN_ENTRIES; ++k) {
        char name[24];
        std::snprintf(name, sizeof name, "%s_%u", rule_name, j++);
        w.empty(name);
    }
    return w.finish();
}

} // extern "C"
