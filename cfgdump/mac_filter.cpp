// Writer of the MAC address filter.
#include "cfgdump/numbered_params.h"
#include "cfgmngr/keys_network.h"
#include "cfgmngr/list_words.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
using cfg::dump::numbered_name;
using cfg::keys::mac_filter_keys;
using cfg::lists::filled;

namespace {
constexpr const char *client_key = cfg::keys::row(mac_filter_keys, "client").wire_name().data();
} // namespace

extern "C" {

int sendMacsToCfgMngr(uint8_t **cursor, const mac_filter_cfg_t *macs) CFG_NOEXCEPT
{
    if (cfg::dump::refused("sendMacsToCfgMngr", cursor, {macs}))
        return 0;
    msg_writer w(cursor, "sendMacsToCfgMngr");
    w.node("config.Network.mac_filter");
    w.field(cfg::keys::row(mac_filter_keys, "mac_filter_mode"), macs);
    uint32_t k = 0;
    for (int i = 0; i < CFG_MAC_CLIENTS && k < macs->current; ++i) {
        if (!filled(macs->client[i]))
            continue;
        w.text(numbered_name(client_key, k).text, macs->client[i]);
        ++k;
    }
    if (macs->start > macs->current)
        cfg::dump::pad_empty(w, client_key, k, static_cast<uint32_t>(macs->start - macs->current));
    return w.finish();
}

} // extern "C"
