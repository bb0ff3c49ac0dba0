// Writer of the SIP settings common to the whole gateway.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

extern "C" {

int common_sip_save(uint8_t **cursor, const sip_cfg_t *sip) CFG_NOEXCEPT
{
    if (cfg::dump::refused("common_sip_save", cursor, {sip}))
        return 0;
    msg_writer w(cursor, "common_sip_save");
    w.node("config.VOIP.sip");
    w.fields(keys::sip_keys, cfg::routes::rows_sip_common_sip_save, sip);
    return w.finish();
}

} // extern "C"
