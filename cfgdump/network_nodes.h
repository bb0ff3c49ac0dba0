// Nodes of "config.Network.network" that other sections' writers send along
// with their own nodes: the SNMP agent switch (sent by snmp_save before the
// SNMP node) and the control / signalling VLAN choice (sent by ipsec_save
// after the IPSec node). Each opens its own "config.Network.network" node.
#pragma once

#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

namespace cfg::dump {

// Node "config.Network.network" with "SNMP" (0 or 1).
void network_snmp_node(msg_writer &w, const network_cfg_t &network) noexcept;

// Node "config.Network.network" with "CTL_VLAN", then "SIG_VLAN".
void network_ipsec_vlans_node(msg_writer &w, const network_cfg_t &network) noexcept;

} // namespace cfg::dump
