// Writers of single VTU rules. The rule number is not checked: the
// configuration manager owns the numbering.
#include "cfgdump/switch_nodes.h"
#include "cfgmngr/keys_switch.h"
#include "cfgmngr/writer_rows.h"

#include <cstdio>

namespace cfg::dump::switch_nodes {
namespace {

// One name built with the rule number, e.g. "vtu3.port1" (room for any
// 32-bit number).
struct rule_name {
    char text[40];
    rule_name(int32_t rule, const char *field) noexcept
    {
        std::snprintf(text, sizeof text, "vtu%d.%s", static_cast<int>(rule), field);
    }
    operator const char *() const noexcept { return text; }
};

using keys::switch_vtu_keys;

} // namespace

// Numbers go out unsigned, so -1 is written as 4294967295.
void vtu_rule(msg_writer &w, int32_t index, const vtu_rule_t &rule, std::span<const uint16_t> order) noexcept
{
    for (const uint16_t i : order) {
        const keys::key &k = switch_vtu_keys[i];
        w.uint(rule_name(index, k.wire_name().data()), static_cast<uint32_t>(keys::read_number(k, &rule)));
    }
}

void vtu_blank(msg_writer &w, int32_t index, std::span<const uint16_t> order) noexcept
{
    for (const uint16_t i : order)
        w.empty(rule_name(index, switch_vtu_keys[i].wire_name().data()));
}

} // namespace cfg::dump::switch_nodes

extern "C" {

int del_rule_from_vtu(uint8_t **cursor, int32_t index) CFG_NOEXCEPT
{
    if (cfg::dump::refused("del_rule_from_vtu", cursor, {}))
        return 0;
    cfg::dump::msg_writer w(cursor, "del_rule_from_vtu");
    w.node("config.Switch.vtu");
    // The rows that ins_rule_in_vtu sends, blanked.
    cfg::dump::switch_nodes::vtu_blank(w, index, cfg::routes::rows_switch_vtu_ins_rule_in_vtu);
    return w.finish();
}

int ins_rule_in_vtu(uint8_t **cursor, int32_t index, const vtu_rule_t *rule) CFG_NOEXCEPT
{
    if (cfg::dump::refused("ins_rule_in_vtu", cursor, {rule}))
        return 0;
    cfg::dump::msg_writer w(cursor, "ins_rule_in_vtu");
    w.node("config.Switch.vtu");
    cfg::dump::switch_nodes::vtu_rule(w, index, *rule, cfg::routes::rows_switch_vtu_ins_rule_in_vtu);
    return w.finish();
}

} // extern "C"
