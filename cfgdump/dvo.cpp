// Writer of the service codes.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

extern "C" {

int dvo_config_save(uint8_t **cursor, const dvo_cfg_t *dvo) CFG_NOEXCEPT
{
    if (cfg::dump::refused("dvo_config_save", cursor, {dvo}))
        return 0;
    msg_writer w(cursor, "dvo_config_save");
    w.node("config.VOIP.dvo");
    w.fields(keys::dvo_keys, cfg::routes::rows_dvo_dvo_config_save, dvo);
    return w.finish();
}

} // extern "C"
