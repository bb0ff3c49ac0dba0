// Port ranges of the voice services: "config.VOIP.range". The fields live in
// the H.323 record and share its time-stamp.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

// Ports above 65500 are kept free for the system.
constexpr int32_t port_min = 1024;
constexpr int32_t port_max = 65500;

void store_range(h323_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("tcpportmin"))          return store::digit(r.tcpportmin, v, port_min, port_max, 10000);
    if (p.is("tcpportmax"))          return store::digit(r.tcpportmax, v, port_min, port_max, 11920);
    if (p.is("udpportmin"))          return store::digit(r.udpportmin, v, port_min, port_max, 12000);
    if (p.is("udpportmax"))          return store::digit(r.udpportmax, v, port_min, port_max, 13920);
    if (p.is("rtph323min"))          return store::digit(r.rtph323min, v, port_min, port_max, 33000);
    if (p.is("rtph323max"))          return store::digit(r.rtph323max, v, port_min, port_max, 35000);
    if (p.is("rtpsipmin"))           return store::digit(r.rtpsipmin, v, port_min, port_max, 16384);
    if (p.is("rtpsipmax"))           return store::digit(r.rtpsipmax, v, port_min, port_max, 32767);
    if (p.is("intrcpmin"))           return store::digit(r.intrcpmin, v, port_min, port_max, 50000);
    if (p.is("intrcpmax"))           return store::digit(r.intrcpmax, v, port_min, port_max, 50100);
    if (p.is("verify_remote_media")) return store::checkbox(r.verify_remote_media, v);
    if (p.is("sip_dscp"))            return store::digit(r.sip_dscp, v, 0, 63, 26);
}

} // namespace

node_end range(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_range(image.h323, p);
    }
    return parse::finish_node(n, image.h323.updated);
}

} // namespace cfg::handlers
