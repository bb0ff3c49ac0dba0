// Writer of the service codes.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int dvo_config_save(uint8_t **cursor, const dvo_cfg_t *dvo) CFG_NOEXCEPT
{
    if (cfg::dump::refused("dvo_config_save", cursor, {dvo}))
        return 0;
    msg_writer w(cursor, "dvo_config_save");
    w.node("config.VOIP.dvo");
    w.text("callwaiting", dvo->callwaiting);
    w.text("ct_attended", dvo->ct_attended);
    w.text("ct_unattended", dvo->ct_unattended);
    w.text("cf_unconditional", dvo->cf_unconditional);
    w.text("cf_busy", dvo->cf_busy);
    w.text("cf_noanswer", dvo->cf_noanswer);
    w.text("cf_outofservice", dvo->cf_outofservice);
    w.text("dnd", dvo->dnd);
    return w.finish();
}

} // extern "C"
