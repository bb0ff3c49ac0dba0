// Writer of the TR-069 management client settings.
#include "cfgmngr/keys_network.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int save_acs(uint8_t **cursor, const tr069_cfg_t *tr069) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_acs", cursor, {tr069}))
        return 0;
    msg_writer w(cursor, "save_acs");
    w.node("config.Network.TR069");
    w.fields(cfg::keys::tr069_keys, cfg::routes::rows_tr069_save_acs, tr069);
    return w.finish();
}

} // extern "C"
