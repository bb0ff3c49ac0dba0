// Writers of single VTU rules. The rule number is not checked: the
// configuration manager owns the numbering.
#include "cfgdump/switch_nodes.h"

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

// Numbers go out unsigned, so -1 is written as 4294967295.
uint32_t as_sent(int32_t value) noexcept { return static_cast<uint32_t>(value); }

} // namespace

void vtu_rule(msg_writer &w, int32_t index, const vtu_rule_t &rule) noexcept
{
    w.uint(rule_name(index, "vid"), as_sent(rule.vid));
    w.uint(rule_name(index, "override"), as_sent(rule.override));
    w.uint(rule_name(index, "priority"), as_sent(rule.priority));
    w.uint(rule_name(index, "port0"), as_sent(rule.port0));
    w.uint(rule_name(index, "port1"), as_sent(rule.port1));
    w.uint(rule_name(index, "port2"), as_sent(rule.port2));
    w.uint(rule_name(index, "cpu"), as_sent(rule.cpu));
    w.uint(rule_name(index, "sfp0"), as_sent(rule.sfp0));
    w.uint(rule_name(index, "sfp1"), as_sent(rule.sfp1));
}

void vtu_blank(msg_writer &w, int32_t index) noexcept
{
    w.empty(rule_name(index, "vid"));
    w.empty(rule_name(index, "override"));
    w.empty(rule_name(index, "priority"));
    w.empty(rule_name(index, "port0"));
    w.empty(rule_name(index, "port1"));
    w.empty(rule_name(index, "port2"));
    w.empty(rule_name(index, "cpu"));
    w.empty(rule_name(index, "sfp0"));
    w.empty(rule_name(index, "sfp1"));
}

} // namespace cfg::dump::switch_nodes

extern "C" {

int del_rule_from_vtu(uint8_t **cursor, int32_t index) CFG_NOEXCEPT
{
    if (cfg::dump::refused("del_rule_from_vtu", cursor, {}))
        return 0;
    cfg::dump::msg_writer w(cursor, "del_rule_from_vtu");
    w.node("config.Switch.vtu");
    cfg::dump::switch_nodes::vtu_blank(w, index);
    return w.finish();
}

int ins_rule_in_vtu(uint8_t **cursor, int32_t index, const vtu_rule_t *rule) CFG_NOEXCEPT
{
    if (cfg::dump::refused("ins_rule_in_vtu", cursor, {rule}))
        return 0;
    cfg::dump::msg_writer w(cursor, "ins_rule_in_vtu");
    w.node("config.Switch.vtu");
    cfg::dump::switch_nodes::vtu_rule(w, index, *rule);
    return w.finish();
}

} // extern "C"
