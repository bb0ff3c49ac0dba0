// H.323 signalling settings: "config.VOIP.h323".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

void store_h323(h323_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("timetolive"))       return store::number(r.timetolive, v);
    if (p.is("keepalivetime"))    return store::number(r.keepalivetime, v);
    if (p.is("enableh323"))       return store::number(r.enableh323, v);
    if (p.is("h235"))             return store::number(r.h235, v);
    if (p.is("ignore_gcf"))       return store::number(r.ignore_gcf, v);
    if (p.is("disabletunneling")) return store::number(r.disabletunneling, v);
    if (p.is("disablefaststart")) return store::number(r.disablefaststart, v);
    if (p.is("usegatekeeper"))    return store::number(r.usegatekeeper, v);
    if (p.is("gatekeeperip"))     return store::text(r.gatekeeperip, v);
    if (p.is("h323aliase"))       return store::text(r.h323aliase, v);
    if (p.is("isgateway"))        return store::number(r.isgateway, v);
    if (p.is("dtmftransfer"))     return store::number(r.dtmftransfer, v);
    if (p.is("bearercapability")) return store::number(r.bearercapability, v);
    if (p.is("password"))         return store::text(r.password, v);
}

} // namespace

node_end h323(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_h323(image.h323, p);
    }
    return parse::finish_node(n, image.h323.updated);
}

} // namespace cfg::handlers
