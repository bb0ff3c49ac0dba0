// Writers of the network settings. Each sends one group of params of
// "config.Network.network"; save_network also sends the LLDP node. The
// on/off settings go out as 0 or 1, one param per bit.
#include "cfgdump/network_nodes.h"
#include "cfgmngr/keys_network.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

namespace cfg::dump {
namespace {

using keys::network_keys;

constexpr const char *network_path = "config.Network.network";

// A frame with one "config.Network.network" node of the listed keys.
template <std::size_t M>
int network_frame(uint8_t **cursor, const char *writer, const std::array<uint16_t, M> &sent,
                  const network_cfg_t &network, int line = __builtin_LINE()) noexcept
{
    msg_writer w(cursor, writer, line);
    w.node(network_path);
    w.fields(network_keys, sent, &network);
    return w.finish(line);
}

} // namespace

void network_snmp_node(msg_writer &w, const network_cfg_t &network) noexcept
{
    w.node(network_path);
    w.fields(network_keys, routes::rows_network_snmp_save, &network);
}

void network_ipsec_vlans_node(msg_writer &w, const network_cfg_t &network) noexcept
{
    w.node(network_path);
    w.fields(network_keys, routes::rows_network_ipsec_save, &network);
}

} // namespace cfg::dump

using cfg::dump::msg_writer;
using cfg::dump::network_frame;

extern "C" {

int save_network(uint8_t **cursor, const network_cfg_t *network, const lldp_cfg_t *lldp) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_network", cursor, {network, lldp}))
        return 0;
    msg_writer w(cursor, "save_network");
    w.node(cfg::dump::network_path);
    w.fields(cfg::keys::network_keys, cfg::routes::rows_network_save_network, network);
    w.node("config.Network.LLDP");
    w.fields(cfg::keys::lldp_keys, cfg::routes::rows_lldp_save_network, lldp);
    return w.finish();
}

int save_autoupdate(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_autoupdate", cursor, {network}))
        return 0;
    return network_frame(cursor, "save_autoupdate", cfg::routes::rows_network_save_autoupdate, *network);
}

int save_ntp(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_ntp", cursor, {network}))
        return 0;
    return network_frame(cursor, "save_ntp", cfg::routes::rows_network_save_ntp, *network);
}

int save_radius(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_radius", cursor, {network}))
        return 0;
    return network_frame(cursor, "save_radius", cfg::routes::rows_network_save_radius, *network);
}

int language_save(uint8_t **cursor, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("language_save", cursor, {network}))
        return 0;
    return network_frame(cursor, "language_save", cfg::routes::rows_network_language_save, *network);
}

} // extern "C"
