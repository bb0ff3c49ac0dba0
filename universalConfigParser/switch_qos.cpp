// Quality of service of the Ethernet switch: "config.Switch.qos". Seven
// settings per switch port (the port number right after the key) and five
// switch-wide masks. Masks travel as "0x%x".
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"
#include "universalConfigParser/switch_names.h"

namespace cfg::handlers {
namespace {

// Tried in this order, each over its own length; the first seven carry the
// port number.
constexpr std::string_view qos_keys[] = {
    "prio", "qos_mode", "tag_remap_mask", "ingress_limit_mode", "ingress_rate", "ingress_mask",
    "egress_rate", "ieee_pri", "diffserv_remap003C_mask", "diffserv_remap407C_mask",
    "diffserv_remap80BC_mask", "diffserv_remapC0FC_mask",
};
constexpr std::size_t per_port_keys = 7;

// A name without a number addresses port 0.
constexpr int32_t bare_key_port = 0;

// "%d": a value without a number keeps the field; no value stores `empty`.
void decimal(uint32_t &field, const char *value, uint32_t empty) noexcept
{
    if (numbers::absent(value)) {
        field = empty;
        return;
    }
    int32_t n = 0;
    if (numbers::scan_int(value, n))
        field = static_cast<uint32_t>(n);
}

// "0x%x": the value must begin with the two characters 0x and go on with a
// hexadecimal number; otherwise the field is kept. No value stores `empty`.
void hexadecimal(uint32_t &field, const char *value, uint32_t empty) noexcept
{
    if (numbers::absent(value)) {
        field = empty;
        return;
    }
    uint32_t n = 0;
    if (value[0] == '0' && value[1] == 'x' && numbers::scan_hex(value + 2, n))
        field = n;
}

void store_port(qos_port_t &q, std::string_view key, const char *v) noexcept
{
    if (key == "prio")               return decimal(q.prio, v, 0);
    if (key == "qos_mode")           return decimal(q.qos_mode, v, 3);
    if (key == "tag_remap_mask")     return hexadecimal(q.tag_remap_mask, v, 0);
    if (key == "ingress_limit_mode") return decimal(q.ingress_limit_mode, v, 0);
    if (key == "ingress_rate")       return decimal(q.ingress_rate, v, 0);
    if (key == "ingress_mask")       return hexadecimal(q.ingress_mask, v, 0);
    if (key == "egress_rate")        return decimal(q.egress_rate, v, 0);
}

// The empty-param values of the DiffServ masks give every 2-bit group of the
// Nth mask the value N.
void store_switch_wide(switch_cfg_t &sw, std::string_view key, const char *v) noexcept
{
    if (key == "ieee_pri")                return hexadecimal(sw.ieee_pri, v, 0);
    if (key == "diffserv_remap003C_mask") return hexadecimal(sw.diffserv_remap003C_mask, v, 0x00000000);
    if (key == "diffserv_remap407C_mask") return hexadecimal(sw.diffserv_remap407C_mask, v, 0x55555555);
    if (key == "diffserv_remap80BC_mask") return hexadecimal(sw.diffserv_remap80BC_mask, v, 0xAAAAAAAA);
    if (key == "diffserv_remapC0FC_mask") return hexadecimal(sw.diffserv_remapC0FC_mask, v, 0xFFFFFFFF);
}

bool is_per_port(std::string_view key) noexcept
{
    for (std::size_t i = 0; i < per_port_keys; ++i)
        if (key == qos_keys[i])
            return true;
    return false;
}

void store_qos(switch_cfg_t &sw, const parse::param &p) noexcept
{
    const std::string_view key = switch_names::first_key(p.name(), qos_keys);
    if (key.empty())
        return;
    if (!is_per_port(key))
        return store_switch_wide(sw, key, p.value());
    const int32_t port = numbers::entry_within(p.name() + key.size(), CFG_SWITCH_PORTS, bare_key_port);
    if (port < 0)
        return;
    qos_port_t &q = sw.qos_port[port];
    store_port(q, key, p.value());
    if (key == "qos_mode")
        cfg_trace(4, "QOS MODE %d = %d", port, static_cast<int>(q.qos_mode));
}

} // namespace

node_end switch_qos(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_qos(image.switch_cfg, p);
    }
    return parse::finish_node(n, image.qos_updated);
}

} // namespace cfg::handlers
