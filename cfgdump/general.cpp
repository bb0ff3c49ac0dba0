// Writer of the gateway-wide voice settings.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

extern "C" {

int general_save(uint8_t **cursor, const general_cfg_t *general) CFG_NOEXCEPT
{
    if (cfg::dump::refused("general_save", cursor, {general}))
        return 0;
    msg_writer w(cursor, "general_save");
    w.node("config.VOIP.general");
    w.fields(keys::general_keys, cfg::routes::rows_general_general_save, general);
    return w.finish();
}

} // extern "C"
