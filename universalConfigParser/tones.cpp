// Call-progress tones played by the analog ports: "config.VOIP.tones". The
// frequency and cadence texts are kept as they come.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

void store_tones(tones_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("country"))                return store::text(r.country, v);
    if (p.is("dialtone_freq"))          return store::text(r.dialtone_freq, v);
    if (p.is("dialtone_cadence"))       return store::text(r.dialtone_cadence, v);
    if (p.is("busytone_freq"))          return store::text(r.busytone_freq, v);
    if (p.is("busytone_cadence"))       return store::text(r.busytone_cadence, v);
    if (p.is("disconnect_freq"))        return store::text(r.disconnect_freq, v);
    if (p.is("disconnect_cadence"))     return store::text(r.disconnect_cadence, v);
    if (p.is("ringbacktone_freq"))      return store::text(r.ringbacktone_freq, v);
    if (p.is("ringbacktone_cadence"))   return store::text(r.ringbacktone_cadence, v);
    if (p.is("congestiontone_freq"))    return store::text(r.congestiontone_freq, v);
    if (p.is("congestiontone_cadence")) return store::text(r.congestiontone_cadence, v);
}

} // namespace

node_end tones(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_tones(image.tones, p);
    }
    return parse::finish_node(n, image.tones.updated);
}

} // namespace cfg::handlers
