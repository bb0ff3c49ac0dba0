// TR-069 management client: "config.Network.TR069".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

#include <cstdint>
#include <limits>

namespace cfg::handlers {
namespace {

constexpr int32_t int_max = std::numeric_limits<int32_t>::max();
constexpr uint32_t uint_max = std::numeric_limits<uint32_t>::max();

void store_tr069(tr069_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("Enable"))                     return store::checkbox(r.enable, v);
    if (p.is("URL"))                        return store::text(r.url, v);
    if (p.is("PeriodicInformEnable"))       return store::checkbox(r.periodic_inform_enable, v);
    if (p.is("PeriodicInformInterval"))     return store::long_number(r.periodic_inform_interval, v, 1, uint_max, 30);
    if (p.is("Username"))                   return store::text(r.username, v);
    if (p.is("Password"))                   return store::text(r.password, v);
    if (p.is("ConnectionRequestUsername"))  return store::text(r.connection_request_username, v);
    if (p.is("ConnectionRequestPassword"))  return store::text(r.connection_request_password, v);
    if (p.is("NATMode"))                    return store::text(r.nat_mode, v);
    if (p.is("STUNServerAddress"))          return store::text(r.stun_server_address, v);
    if (p.is("STUNServerPort"))             return store::digit(r.stun_server_port, v, 1, 65535, 3478);
    if (p.is("STUNMinimumKeepAlivePeriod")) return store::digit(r.stun_minimum_keepalive_period, v, 10, int_max, 30);
    if (p.is("STUNMaximumKeepAlivePeriod")) return store::digit(r.stun_maximum_keepalive_period, v, -1, int_max, 60);
    if (p.is("NATAddress"))                 return store::text(r.nat_address, v);
}

} // namespace

node_end tr069(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_tr069(image.tr069, p);
    }
    return parse::finish_node(n, image.tr069.updated);
}

} // namespace cfg::handlers
