// VTU rules of the Ethernet switch: "config.Switch.vtu", params named
// "vtu<rule>.<field>" (for example vtu3.port1); the field words are the rows
// in cfgmngr/keys_switch.h.
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"

namespace cfg::handlers {

node_end switch_vtu(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        int32_t rule = 0;
        std::string_view field;
        if (!keys::split_rule_name("vtu", p.name(), CFG_VTU_RULES, rule, field))
            continue;
        const keys::key *k = keys::find(keys::switch_vtu, field);
        const parse::image_lock lock;
        if (k != nullptr)
            keys::store(*k, image.switch_cfg.vtu, p.value(), static_cast<unsigned>(rule));
    }
    return parse::finish_node(n, image.vtu_updated);
}

} // namespace cfg::handlers
