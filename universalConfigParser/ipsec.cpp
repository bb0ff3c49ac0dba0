// Site-to-site IPSec tunnel: "config.Network.IPSec".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

void store_ipsec(ipsec_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("Enable"))              return store::bit(r.flags, 0, v);
    if (p.is("LocalIP"))             return store::text(r.local_ip, v);
    if (p.is("LocalSubnet"))         return store::text(r.local_subnet, v);
    if (p.is("LocalNetmask"))        return store::text(r.local_netmask, v);
    if (p.is("RemoteSubnet"))        return store::text(r.remote_subnet, v);
    if (p.is("RemoteNetmask"))       return store::text(r.remote_netmask, v);
    if (p.is("RemoteGateway"))       return store::text(r.remote_gateway, v);
    if (p.is("NATPort"))             return store::digit(r.nat_port, v, 0, 65535, 4500);
    if (p.is("NATKeepAlive"))        return store::digit(r.nat_keepalive, v, 0, 86400, 60);
    if (p.is("NAT"))                 return store::text(r.nat, v);
    if (p.is("AgressiveMode"))       return store::bit(r.flags, 1, v);
    if (p.is("IdentifierType"))      return store::text(r.identifier_type, v);
    if (p.is("Identifier"))          return store::text(r.identifier, v);
    if (p.is("PreshareKey"))         return store::text(r.preshare_key, v);
    if (p.is("IKEAuthAlgorithm"))    return store::text(r.ike_auth_algorithm, v);
    if (p.is("IKEEncryptAlgorithm")) return store::text(r.ike_encrypt_algorithm, v);
    if (p.is("IKEDhGroup"))          return store::digit(r.ike_dh_group, v, 1, 5, 1);
    if (p.is("IKELifeTime"))         return store::digit(r.ike_lifetime, v, 0, 86400, 86400);
    if (p.is("AuthAlgorithm"))       return store::text(r.auth_algorithm, v);
    if (p.is("EncryptAlgorithm"))    return store::text(r.encrypt_algorithm, v);
    if (p.is("PfsGroup"))            return store::digit(r.pfs_group, v, 1, 5, 1);
    if (p.is("Lifetime"))            return store::digit(r.lifetime, v, 0, 86400, 3600);
}

} // namespace

node_end ipsec(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_ipsec(image.ipsec, p);
    }
    return parse::finish_node(n, image.ipsec.updated);
}

} // namespace cfg::handlers
