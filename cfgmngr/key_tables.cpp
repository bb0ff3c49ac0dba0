// The lookup index of every key table, built at compile time, and the node
// kinds that use them.
#include "cfgmngr/key_tables.h"

#include "cfgmngr/keys_network.h"
#include "cfgmngr/keys_ports.h"
#include "cfgmngr/keys_switch.h"

#include <cstddef>

namespace cfg::keys {
namespace {

// ---- VoIP sections
constexpr auto ports_index = make_index(port_keys);

// ---- Network and switch sections
constexpr auto network_index = make_index(network_keys);
constexpr auto lldp_index = make_index(lldp_keys);
constexpr auto snmp_index = make_index(snmp_keys);
constexpr auto snmp_users_index = make_index(snmp_users_keys);
constexpr auto ipsec_index = make_index(ipsec_keys);
constexpr auto tr069_index = make_index(tr069_keys);
constexpr auto switch_vlan_index = make_index(switch_vlan_keys);
constexpr auto switch_qos_index = make_index(switch_qos_keys);
constexpr auto switch_vtu_index = make_index(switch_vtu_keys);
constexpr auto hosts_index = make_index(hosts_keys);
constexpr auto mac_filter_index = make_index(mac_filter_keys);
constexpr auto routes_index = make_index(routes_keys);
constexpr auto firewall_index = make_index(firewall_keys);

} // namespace

// ---- VoIP sections
constinit const table ports = make_table(port_keys, ports_index);

// ---- Network and switch sections
constinit const table network = make_table(network_keys, network_index);
constinit const table lldp = make_table(lldp_keys, lldp_index);
constinit const table snmp = make_table(snmp_keys, snmp_index);
constinit const table snmp_users = make_table(snmp_users_keys, snmp_users_index);
constinit const table ipsec = make_table(ipsec_keys, ipsec_index);
constinit const table tr069 = make_table(tr069_keys, tr069_index);
constinit const table switch_vlan = make_table(switch_vlan_keys, switch_vlan_index);
constinit const table switch_qos = make_table(switch_qos_keys, switch_qos_index);
constinit const table switch_vtu = make_table(switch_vtu_keys, switch_vtu_index);
constinit const table hosts = make_table(hosts_keys, hosts_index);
constinit const table mac_filter = make_table(mac_filter_keys, mac_filter_index);
constinit const table routes = make_table(routes_keys, routes_index);
constinit const table firewall = make_table(firewall_keys, firewall_index);

namespace {

#define IMAGE(member) static_cast<uint32_t>(offsetof(cfg_image_t, member))

constexpr node_kind kinds[] = {
    // ---- VoIP sections
    {"config.VOIP.ports.port_def_{0..7}", &ports, port_keys, IMAGE(port_defaults), sizeof(port_cfg_t), 0, 7,
     "profile_def_port_to_file"},
    {"config.VOIP.ports.port_{0..71}", &ports, port_keys, IMAGE(ports), sizeof(port_cfg_t), 0, 71,
     "one_port_to_file"},
    // ---- Network and switch sections
    {"config.Network.network", &network, network_keys, IMAGE(network), sizeof(network_cfg_t), 0, 0, "save_network"},
    {"config.Network.snmp_users", &snmp_users, snmp_users_keys, IMAGE(snmp), sizeof(snmp_cfg_t), 0, 0, "snmp_user_save"},
    {"config.Network.snmp", &snmp, snmp_keys, IMAGE(snmp), sizeof(snmp_cfg_t), 0, 0, "snmp_save"},
    {"config.Network.LLDP", &lldp, lldp_keys, IMAGE(lldp), sizeof(lldp_cfg_t), 0, 0, "save_network"},
    {"config.Network.IPSec", &ipsec, ipsec_keys, IMAGE(ipsec), sizeof(ipsec_cfg_t), 0, 0, "ipsec_save"},
    {"config.Network.TR069", &tr069, tr069_keys, IMAGE(tr069), sizeof(tr069_cfg_t), 0, 0, "save_acs"},
    {"config.Switch.vlan", &switch_vlan, switch_vlan_keys, IMAGE(switch_cfg), sizeof(switch_cfg_t), 0, 0, "vlan_config_save"},
    {"config.Network.hosts", &hosts, hosts_keys, IMAGE(hosts), sizeof(hosts_cfg_t), 0, 0, "sendHostsToCfgMngr"},
    {"config.Network.mac_filter", &mac_filter, mac_filter_keys, IMAGE(mac_filter), sizeof(mac_filter_cfg_t), 0, 0,
     "sendMacsToCfgMngr"},
    {"config.Network.routes", &routes, routes_keys, IMAGE(routes), sizeof(routes_cfg_t), 0, 0, "sendRoutesToCfgMngr"},
    {"config.Switch.qos", &switch_qos, switch_qos_keys, IMAGE(switch_cfg), sizeof(switch_cfg_t), 0, 0, "qos_save"},
    {"config.Switch.vtu", &switch_vtu, switch_vtu_keys, IMAGE(switch_cfg.vtu), sizeof(switch_cfg_t::vtu), 0, 0,
     "switch_config_save"},
    {"config.Network.rules", &firewall, firewall_keys, IMAGE(firewall), sizeof(firewall_cfg_t), 0, 0,
     "all_firewall_to_file"},
};

#undef IMAGE

} // namespace

std::span<const node_kind> node_kinds() noexcept
{
    return kinds;
}

} // namespace cfg::keys
