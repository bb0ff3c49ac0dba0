// VLANs of the Ethernet switch: "config.Switch.vlan". Every key but
// "hubmode" carries the VLAN number 0..5 right after it ("vid3"); the keys
// are in cfgmngr/keys_switch.h.
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

namespace cfg::handlers {
namespace {

void store_vlan(switch_cfg_t &sw, const keys::key &k, const parse::param &p) noexcept
{
    if (k.count == 0)
        return keys::store(k, &sw, p.value());
    // A name without a number is ignored, like a number past the last VLAN.
    const int32_t vlan = keys::entry_of(k, p.name());
    if (vlan < 0)
        return;
    keys::store(k, &sw, p.value(), static_cast<unsigned>(vlan));
}

} // namespace

node_end switch_vlan(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const keys::key *k = keys::find(keys::switch_vlan, p.name_view());
        const parse::image_lock lock;
        if (k != nullptr)
            store_vlan(image.switch_cfg, *k, p);
    }
    return parse::finish_node(n, image.vlan_updated);
}

} // namespace cfg::handlers
