// Firewall rules: "config.Network.rules", params rule_0 .. rule_29, each one
// rule text (the row in cfgmngr/keys_network.h).
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

namespace cfg::handlers {

// A "rule" param whose name has no readable slot number after its '_' names
// no slot and is ignored like a number outside 0..29.
node_end firewall(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const keys::key *k = keys::find(keys::firewall, p.name_view());
        if (k == nullptr)
            continue;
        const int32_t i = keys::entry_of(*k, p.name());
        if (i < 0)
            continue;
        const parse::image_lock lock;
        keys::store(*k, &image.firewall, p.value(), static_cast<unsigned>(i));
    }
    return parse::finish_node(n, image.firewall.updated);
}

} // namespace cfg::handlers
