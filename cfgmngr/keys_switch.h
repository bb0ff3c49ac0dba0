// Key tables of the Ethernet switch sections ("config.Switch.*"): one row
// per key, in the order the keys are matched. The per-port and per-VLAN keys
// are numbered: the entry number follows the key ("prio3", "portmask5").
#pragma once

#include "cfgmngr/key_table.h"

#include <cfgparser.h>

#include <cstdint>

namespace cfg::keys {

#define F(member) CFG_FIELD(switch_cfg_t, member)

// "config.Switch.qos": seven settings per switch port (a name without a
// number addresses port 0), then five switch-wide masks. Masks travel as
// "0x%x"; the empty-param values of the DiffServ masks give every 2-bit
// group of the Nth mask the value N.
#define PORT(key) key.numbered(CFG_SWITCH_PORTS, sizeof(qos_port_t), entry_form::after_key, 0)
inline constexpr key switch_qos_keys[] = {
    PORT(number("prio", F(qos_port[0].prio), 0)),
    PORT(number("qos_mode", F(qos_port[0].qos_mode), 3)),
    PORT(hex("tag_remap_mask", F(qos_port[0].tag_remap_mask), 0)),
    PORT(number("ingress_limit_mode", F(qos_port[0].ingress_limit_mode), 0)),
    PORT(number("ingress_rate", F(qos_port[0].ingress_rate), 0)),
    PORT(hex("ingress_mask", F(qos_port[0].ingress_mask), 0)),
    PORT(number("egress_rate", F(qos_port[0].egress_rate), 0)),
    hex("ieee_pri", F(ieee_pri), 0),
    hex("diffserv_remap003C_mask", F(diffserv_remap003C_mask), 0x00000000),
    hex("diffserv_remap407C_mask", F(diffserv_remap407C_mask), 0x55555555),
    hex("diffserv_remap80BC_mask", F(diffserv_remap80BC_mask), 0xAAAAAAAA),
    hex("diffserv_remapC0FC_mask", F(diffserv_remapC0FC_mask), 0xFFFFFFFF),
};
#undef PORT

// "config.Switch.vlan": every key but "hubmode" carries the VLAN number
// 0..5 ("vid3"); a name without a number is ignored.
#define VLAN(key) key.numbered(CFG_SWITCH_PORTS, sizeof(switch_vlan_t), entry_form::after_key)
inline constexpr key switch_vlan_keys[] = {
    VLAN(special("portmask", F(vlan[0].portmask), rule::port_flags).sent_as(sent::own_format)),
    VLAN(text("portmode", F(vlan[0].portmode))),
    VLAN(text("backup_port", F(vlan[0].backup_port))),
    VLAN(text("preemption", F(vlan[0].preemption))),
    VLAN(checkbox("enable", F(vlan[0].enable))),
    VLAN(range("vid", F(vlan[0].vid), 0, 4095, 0)),
    VLAN(range("im", F(vlan[0].im), 0, 2, 0)),
    VLAN(range("eg", F(vlan[0].eg), 0, 3, 0)),
    VLAN(checkbox("ov", F(vlan[0].ov))),
    checkbox("hubmode", F(hubmode)),
};
#undef VLAN

#undef F

// "config.Switch.vtu": params "vtu<rule>.<field>" (vtu3.port1), rule 0..15;
// the rows are the field words, matched over their own length. Numbers go
// out unsigned (-1 as 4294967295). Only "vid" says whether the rule is in use.
#define F(member) CFG_FIELD(vtu_rule_t, member)
#define RULE(key) \
    key.numbered(CFG_VTU_RULES, sizeof(vtu_rule_t), entry_form::rule_then_key).sent_as(sent::uint)
inline constexpr key switch_vtu_keys[] = {
    RULE(special("vid", F(vid), rule::vtu_vid)),
    RULE(number("override", F(override))),
    RULE(number("priority", F(priority))),
    RULE(number("port0", F(port0))),
    RULE(number("port1", F(port1))),
    RULE(number("port2", F(port2))),
    RULE(number("cpu", F(cpu))),
    RULE(number("sfp0", F(sfp0))),
    RULE(number("sfp1", F(sfp1))),
};
#undef RULE
#undef F

} // namespace cfg::keys
