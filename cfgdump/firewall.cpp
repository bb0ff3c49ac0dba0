// Writers of the firewall rules.
#include "cfgdump/numbered_params.h"
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_network.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
using cfg::dump::numbered_name;

namespace {

// Also the name of the one rule firewall_to_file sends.
constexpr const char *rule_key =
    cfg::dump::only_row(cfg::keys::firewall_keys, cfg::routes::rows_firewall_all_firewall_to_file)
        .wire_name()
        .data();

// One "rule_<k>" param with the rule's text form.
void rule_param(msg_writer &w, uint32_t k, const firewall_rule_t &rule) noexcept
{
    char text[CFG_RULE_TEXT_SIZE];
    print_rule_string(&rule, text);
    w.text(numbered_name(rule_key, k).text, text);
}

} // namespace

extern "C" {

// Accepted rules renumbered from 0 in slot order; every further number up to
// 29 goes out with no value so that the receiver clears it.
int all_firewall_to_file(uint8_t **cursor, const firewall_cfg_t *firewall) CFG_NOEXCEPT
{
    if (cfg::dump::refused("all_firewall_to_file", cursor, {firewall}))
        return 0;
    msg_writer w(cursor, "all_firewall_to_file");
    w.node("config.Network.rules");
    uint32_t k = 0;
    for (const firewall_rule_t &rule : firewall->rules) {
        if (rule.valid == 1)
            rule_param(w, k++, rule);
    }
    cfg::dump::pad_empty(w, rule_key, k, CFG_FIREWALL_RULES - k);
    return w.finish();
}

int firewall_to_file(uint8_t **cursor, uint32_t slot, const firewall_rule_t *rule) CFG_NOEXCEPT
{
    if (cfg::dump::refused("firewall_to_file", cursor, {rule}))
        return 0;
    msg_writer w(cursor, "firewall_to_file");
    w.node("config.Network.rules");
    rule_param(w, slot, *rule);
    return w.finish();
}

} // extern "C"
