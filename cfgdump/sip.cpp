// Writer of the SIP settings common to the whole gateway.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// The keys in the order they are sent.
constexpr auto sip_order = keys::pick(
    keys::sip_keys, "enablesip", "shortmode", "transport", "sip_mtu", "invite_total_t", "invite_init_t",
    "invite_init_max_t", "port_reg_delay_t", "stun_enable", "stun_server", "stun_interval", "publicip");

} // namespace

extern "C" {

int common_sip_save(uint8_t **cursor, const sip_cfg_t *sip) CFG_NOEXCEPT
{
    if (cfg::dump::refused("common_sip_save", cursor, {sip}))
        return 0;
    msg_writer w(cursor, "common_sip_save");
    w.node("config.VOIP.sip");
    w.fields(keys::sip_keys, sip_order, sip);
    return w.finish();
}

} // extern "C"
