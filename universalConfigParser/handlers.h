// Section handlers, named by the rows of the route table (cfgmngr/routes.cpp).
// Each lives in the file named after its section and reads exactly the
// params of its node; n.route is the row that chose it.
#pragma once

#include "universalConfigParser/node_params.h"

#include <cfgparser.h>

namespace cfg::handlers {

using parse::node;
using parse::node_end;

node_end port_defaults(cfg_image_t &image, node &n);    // ports.cpp
node_end ports(cfg_image_t &image, node &n);            // ports.cpp
node_end profile_codecs(cfg_image_t &image, node &n);   // codecs.cpp
node_end dialplan_profile(cfg_image_t &image, node &n); // codecs.cpp
node_end h323(cfg_image_t &image, node &n);             // h323.cpp
node_end range(cfg_image_t &image, node &n);            // range.cpp
node_end sip_cadence(cfg_image_t &image, node &n);      // sip_cadences.cpp
node_end sip_profile(cfg_image_t &image, node &n);      // sip_profile.cpp
node_end common_sip(cfg_image_t &image, node &n);       // sip.cpp
node_end general(cfg_image_t &image, node &n);          // general.cpp
node_end tones(cfg_image_t &image, node &n);            // tones.cpp
node_end trace_settings(cfg_image_t &image, node &n);   // trace_settings.cpp
node_end dialplan(cfg_image_t &image, node &n);         // dialplan.cpp
node_end groups(cfg_image_t &image, node &n);           // groups.cpp
node_end fxo_groups(cfg_image_t &image, node &n);       // groups.cpp
node_end cadences(cfg_image_t &image, node &n);         // cadences.cpp
node_end network(cfg_image_t &image, node &n);          // network.cpp
node_end snmp_users(cfg_image_t &image, node &n);       // snmp.cpp
node_end snmp(cfg_image_t &image, node &n);             // snmp.cpp
node_end lldp(cfg_image_t &image, node &n);             // network.cpp
node_end ipsec(cfg_image_t &image, node &n);            // ipsec.cpp
node_end tr069(cfg_image_t &image, node &n);            // tr069.cpp
node_end switch_vlan(cfg_image_t &image, node &n);      // switch_vlan.cpp
node_end hosts(cfg_image_t &image, node &n);            // hosts.cpp
node_end mac_filter(cfg_image_t &image, node &n);       // mac_filter.cpp
node_end routes(cfg_image_t &image, node &n);           // routes.cpp
node_end switch_qos(cfg_image_t &image, node &n);       // switch_qos.cpp
node_end regexprd(cfg_image_t &image, node &n);         // regexprd.cpp
node_end dvo(cfg_image_t &image, node &n);              // dvo.cpp
node_end switch_vtu(cfg_image_t &image, node &n);       // switch_vtu.cpp
node_end limits(cfg_image_t &image, node &n);           // limits.cpp
node_end firewall(cfg_image_t &image, node &n);         // firewall.cpp
node_end modifiers(cfg_image_t &image, node &n);        // modifiers.cpp

} // namespace cfg::handlers
