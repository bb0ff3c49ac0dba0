// Firewall rules: "config.Network.rules", params rule_0 .. rule_29, each one
// rule text.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

namespace cfg::handlers {
namespace {

void store_rule(firewall_rule_t &rule, const char *value) noexcept
{
    if (value == nullptr) {
        rule = firewall_rule_t{};
        return;
    }
    // The rule text is split in place: the value is the param's own heap
    // copy, made for this param alone and freed right after the store.
    firewall_rule_string_to_t(const_cast<char *>(value), &rule);
}

} // namespace

// A "rule" param whose name has no readable slot number after its '_' names
// no slot and is ignored like a number outside 0..29.
node_end firewall(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        if (!p.is("rule"))
            continue;
        const int32_t i =
            numbers::entry_within(numbers::after_underscore(p.name()), CFG_FIREWALL_RULES, -1);
        if (i < 0)
            continue;
        const parse::image_lock lock;
        store_rule(image.firewall.rules[i], p.value());
    }
    return parse::finish_node(n, image.firewall.updated);
}

} // namespace cfg::handlers
