// Gateway-wide voice settings: "config.VOIP.general".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

namespace cfg::handlers {
namespace {

void store_general(general_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("device_name"))                return store::text(r.device_name, v);
    if (p.is("unit_prefix"))                return store::text(r.unit_prefix, v);
    if (p.is("use_uni"))                    return store::checkbox(r.use_uni, v);
    if (p.is("start_timer"))                return store::digit(r.start_timer, v, 10, 300, 300);
    if (p.is("wait_answer_timer"))          return store::digit(r.wait_answer_timer, v, 40, 300, 180);
    if (p.is("duration_timer"))             return store::digit(r.duration_timer, v, 10, 300, 300);
    if (p.is("fans_force_enable"))          return store::checkbox(r.fans_force_enable, v);
    if (p.is("fans_threshold_temperature")) return store::digit(r.fans_threshold_temperature, v, 35, 55, 55);
    if (p.is("power_mode"))                 return store::checkbox(r.power_mode, v);
}

} // namespace

node_end general(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_general(image.general, p);
    }
    return parse::finish_node(n, image.general.updated);
}

} // namespace cfg::handlers
