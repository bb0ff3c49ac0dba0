// Service codes of the supplementary services: "config.VOIP.dvo". Each code
// keeps at most 3 characters; no value clears it.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

void store_dvo(dvo_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("dnd"))              return store::text(r.dnd, v);
    if (p.is("callwaiting"))      return store::text(r.callwaiting, v);
    if (p.is("ct_attended"))      return store::text(r.ct_attended, v);
    if (p.is("ct_unattended"))    return store::text(r.ct_unattended, v);
    if (p.is("cf_unconditional")) return store::text(r.cf_unconditional, v);
    if (p.is("cf_busy"))          return store::text(r.cf_busy, v);
    if (p.is("cf_noanswer"))      return store::text(r.cf_noanswer, v);
    if (p.is("cf_outofservice"))  return store::text(r.cf_outofservice, v);
}

} // namespace

node_end dvo(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_dvo(image.dvo, p);
    }
    return parse::finish_node(n, image.dvo.updated);
}

} // namespace cfg::handlers
