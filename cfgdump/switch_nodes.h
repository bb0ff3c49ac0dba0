// The switch nodes, written into a frame that the caller opened. The single
// node writers (vlan_config_save, qos_save, ins_rule_in_vtu,
// del_rule_from_vtu) and switch_config_save share them.
#pragma once

#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

#include <cstdint>
#include <cstdio>
#include <span>

namespace cfg::dump::switch_nodes {

// A param name built with an entry number, e.g. "portmask3" or "qos_mode2".
struct numbered_name {
    char text[32];
    numbered_name(const char *key, int number) noexcept
    {
        std::snprintf(text, sizeof text, "%s%d", key, number);
    }
    operator const char *() const noexcept { return text; }
};

// Each writes the rows `order` lists (the calling writer's rows of the
// route table): the numbered rows once per entry, then the others.

// "config.Switch.vlan": nine params per VLAN, then "hubmode" (55 params).
void vlan(msg_writer &w, const switch_cfg_t &sw, std::span<const uint16_t> order) noexcept;

// "config.Switch.qos": seven params per port, then five masks (47 params).
void qos(msg_writer &w, const switch_cfg_t &sw, std::span<const uint16_t> order) noexcept;

// The nine params of one VTU rule inside an open "config.Switch.vtu" node:
// with the rule's values, or blanked (no value) so that the configuration
// manager drops the rule.
void vtu_rule(msg_writer &w, int32_t index, const vtu_rule_t &rule, std::span<const uint16_t> order) noexcept;
void vtu_blank(msg_writer &w, int32_t index, std::span<const uint16_t> order) noexcept;

} // namespace cfg::dump::switch_nodes
