// Writer of the static host table.
#include "cfgdump/numbered_params.h"
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_network.h"
#include "cfgmngr/list_words.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
using cfg::dump::numbered_name;
using cfg::lists::field_text;
using cfg::lists::filled;

namespace {
constexpr const char *host_key =
    cfg::dump::only_row(cfg::keys::hosts_keys, cfg::routes::rows_hosts_sendHostsToCfgMngr).wire_name().data();
} // namespace

extern "C" {

// The node announces the params actually written: when the application left
// fewer filled hosts than `current` says, the count follows what is sent.
int sendHostsToCfgMngr(uint8_t **cursor, const hosts_cfg_t *hosts) CFG_NOEXCEPT
{
    if (cfg::dump::refused("sendHostsToCfgMngr", cursor, {hosts}))
        return 0;
    msg_writer w(cursor, "sendHostsToCfgMngr");
    w.node("config.Network.hosts");
    uint32_t k = 0;
    for (int i = 0; i < CFG_HOSTS && k < hosts->current; ++i) {
        if (!filled(hosts->name[i]) || !filled(hosts->address[i]))
            continue;
        const std::string_view address = field_text(hosts->address[i]);
        const std::string_view name = field_text(hosts->name[i]);
        char value[sizeof hosts->address[i] + sizeof hosts->name[i] + 2];
        std::snprintf(value, sizeof value, "%.*s %.*s", static_cast<int>(address.size()), address.data(),
                      static_cast<int>(name.size()), name.data());
        w.text(numbered_name(host_key, k).text, value);
        ++k;
    }
    if (hosts->start > hosts->current)
        cfg::dump::pad_empty(w, host_key, k, hosts->start - hosts->current);
    return w.finish();
}

} // extern "C"
