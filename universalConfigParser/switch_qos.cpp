// Quality of service of the Ethernet switch: "config.Switch.qos". Seven
// settings per switch port (the port number right after the key) and five
// switch-wide masks; the keys are in cfgmngr/keys_switch.h.
#include "cfgmngr/key_tables.h"
#include "cfgmngr/keys_switch.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

namespace cfg::handlers {
namespace {

constexpr const keys::key &qos_mode = keys::row(keys::switch_qos_keys, "qos_mode");

void store_qos(switch_cfg_t &sw, const keys::key &k, const parse::param &p) noexcept
{
    if (k.count == 0)
        return keys::store(k, &sw, p.value());
    const int32_t port = keys::entry_of(k, p.name()); // no number: port 0
    if (port < 0)
        return;
    keys::store(k, &sw, p.value(), static_cast<unsigned>(port));
    if (&k == &qos_mode)
        cfg_trace(CFG_TRACE_DEBUG, "QOS MODE %d = %d", port, static_cast<int>(sw.qos_port[port].qos_mode));
}

} // namespace

node_end switch_qos(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const keys::key *k = keys::find(keys::switch_qos, p.name_view());
        const parse::image_lock lock;
        if (k != nullptr)
            store_qos(image.switch_cfg, *k, p);
    }
    return parse::finish_node(n, image.qos_updated);
}

} // namespace cfg::handlers
