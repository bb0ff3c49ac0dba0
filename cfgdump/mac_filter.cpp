// Writer of the MAC address filter.
#include "cfgdump/numbered_params.h"
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_network.h"
#include "cfgmngr/list_words.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
using cfg::dump::numbered_name;
using cfg::keys::mac_filter_keys;
using cfg::lists::filled;

namespace {

// The filled clients renumbered from 0, then empty params up to the last count.
void client_lines(msg_writer &w, const cfg::keys::key &client, const mac_filter_cfg_t &macs) noexcept
{
    const char *client_key = client.wire_name().data();
    uint32_t k = 0;
    for (int i = 0; i < CFG_MAC_CLIENTS && k < macs.current; ++i) {
        if (!filled(macs.client[i]))
            continue;
        w.text(numbered_name(client_key, k).text, macs.client[i]);
        ++k;
    }
    if (macs.start > macs.current)
        cfg::dump::pad_empty(w, client_key, k, static_cast<uint32_t>(macs.start - macs.current));
}

} // namespace

extern "C" {

int sendMacsToCfgMngr(uint8_t **cursor, const mac_filter_cfg_t *macs) CFG_NOEXCEPT
{
    if (cfg::dump::refused("sendMacsToCfgMngr", cursor, {macs}))
        return 0;
    msg_writer w(cursor, "sendMacsToCfgMngr");
    w.node("config.Network.mac_filter");
    cfg::dump::send_rows(w, mac_filter_keys, cfg::routes::rows_mac_filter_sendMacsToCfgMngr, macs,
                         [&](const cfg::keys::key &client) { client_lines(w, client, *macs); });
    return w.finish();
}

} // extern "C"
