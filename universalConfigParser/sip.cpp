// SIP settings common to the whole gateway: "config.VOIP.sip".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

void store_common_sip(sip_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("enablesip"))         return store::checkbox(r.enablesip, v);
    // Transport 1, 2 or 3; no value and every other number store 0.
    if (p.is("transport"))         return store::digit(r.transport, v, 1, 3, 0);
    if (p.is("invite_init_t"))     return store::digit(r.invite_init_t, v, 100, 1000, 500);
    if (p.is("invite_init_max_t")) return store::digit(r.invite_init_max_t, v, 1000, 32000, 4000);
    if (p.is("invite_total_t"))    return store::digit(r.invite_total_t, v, 1000, 39000, 32000);
    if (p.is("sip_mtu"))           return store::digit(r.sip_mtu, v, 1300, 1450, 1300);
    if (p.is("shortmode"))         return store::checkbox(r.shortmode, v);
    if (p.is("port_reg_delay_t"))  return store::digit(r.port_reg_delay_t, v, 0, 5000, 0);
    if (p.is("stun_enable"))       return store::checkbox(r.stun_enable, v);
    if (p.is("stun_server"))       return store::text(r.stun_server, v);
    // 0 (STUN keep-alive off) for no value and for anything outside 10..1800.
    if (p.is("stun_interval"))     return store::digit(r.stun_interval, v, 10, 1800, 0);
    if (p.is("publicip"))          return store::text(r.publicip, v);
}

} // namespace

node_end common_sip(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_common_sip(image.sip, p);
    }
    return parse::finish_node(n, image.sip.updated);
}

} // namespace cfg::handlers
