// Writer of the SIP settings common to the whole gateway.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int common_sip_save(uint8_t **cursor, const sip_cfg_t *sip) CFG_NOEXCEPT
{
    if (cfg::dump::refused("common_sip_save", cursor, {sip}))
        return 0;
    msg_writer w(cursor, "common_sip_save");
    w.node("config.VOIP.sip");
    w.uint("enablesip", sip->enablesip);
    w.uint("shortmode", sip->shortmode);
    w.uint("transport", sip->transport);
    w.uint("sip_mtu", sip->sip_mtu);
    w.uint("invite_total_t", sip->invite_total_t);
    w.uint("invite_init_t", sip->invite_init_t);
    w.uint("invite_init_max_t", sip->invite_init_max_t);
    w.uint("port_reg_delay_t", sip->port_reg_delay_t);
    w.uint("stun_enable", sip->stun_enable);
    w.text("stun_server", sip->stun_server);
    w.uint("stun_interval", sip->stun_interval);
    w.text("publicip", sip->publicip);
    return w.finish();
}

} // extern "C"
