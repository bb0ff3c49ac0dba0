// Writers of the SNMP settings and of the SNMP user line.
#include "cfgdump/network_nodes.h"
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_network.h"
#include "cfgmngr/list_words.h"

#include <cfgparser.h>

#include <cstdio>

using cfg::dump::msg_writer;
using cfg::keys::snmp_keys;

namespace {

constexpr const cfg::keys::key &user_line =
    cfg::dump::only_row(cfg::keys::snmp_users_keys, cfg::routes::rows_snmp_users_snmp_user_save);

} // namespace

extern "C" {

int snmp_save(uint8_t **cursor, const snmp_cfg_t *snmp, const network_cfg_t *network) CFG_NOEXCEPT
{
    if (cfg::dump::refused("snmp_save", cursor, {snmp, network}))
        return 0;
    const char *trap_version = snmp->trap_type == 2 ? "v2" : "v1";
    msg_writer w(cursor, "snmp_save");
    cfg::dump::network_snmp_node(w, *network);
    w.node("config.Network.snmp");
    // The trap type goes out as its version word.
    cfg::dump::send_rows(w, snmp_keys, cfg::routes::rows_snmp_snmp_save, snmp,
                         [&](const cfg::keys::key &k) { w.text(k.wire_name().data(), trap_version); });
    return w.finish();
}

int snmp_user_save(uint8_t **cursor, const snmp_cfg_t *snmp) CFG_NOEXCEPT
{
    if (cfg::dump::refused("snmp_user_save", cursor, {snmp}))
        return 0;
    using cfg::lists::filled;
    const snmp_user_t &u = snmp->user;
    msg_writer w(cursor, "snmp_user_save");
    w.node("config.Network.snmp_users");
    if (filled(u.word1) && filled(u.word2) && filled(u.word3)) {
        // The precisions keep every read inside its field.
        char line[sizeof u.word1 + sizeof u.word2 + sizeof u.word3];
        std::snprintf(line, sizeof line, "%.39s %.39s %.15s", u.word1, u.word2, u.word3);
        w.text(user_line.wire_name().data(), line);
    } else {
        w.empty(user_line.wire_name().data());
    }
    return w.finish();
}

} // extern "C"
