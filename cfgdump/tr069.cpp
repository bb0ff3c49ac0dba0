// Writer of the TR-069 management client settings.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int save_acs(uint8_t **cursor, const tr069_cfg_t *tr069) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_acs", cursor, {tr069}))
        return 0;
    msg_writer w(cursor, "save_acs");
    w.node("config.Network.TR069");
    w.uint("Enable", tr069->enable);
    w.text("URL", tr069->url);
    w.uint("PeriodicInformEnable", tr069->periodic_inform_enable);
    w.uint("PeriodicInformInterval", tr069->periodic_inform_interval);
    w.text("Username", tr069->username);
    w.text("Password", tr069->password);
    w.text("ConnectionRequestUsername", tr069->connection_request_username);
    w.text("ConnectionRequestPassword", tr069->connection_request_password);
    w.text("NATMode", tr069->nat_mode);
    w.text("STUNServerAddress", tr069->stun_server_address);
    w.uint("STUNServerPort", tr069->stun_server_port);
    w.sint("STUNMinimumKeepAlivePeriod", tr069->stun_minimum_keepalive_period);
    w.sint("STUNMaximumKeepAlivePeriod", tr069->stun_maximum_keepalive_period);
    w.text("NATAddress", tr069->nat_address);
    return w.finish();
}

} // extern "C"
