// Writer of the call-progress tones.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int tones_save(uint8_t **cursor, const tones_cfg_t *tones) CFG_NOEXCEPT
{
    if (cfg::dump::refused("tones_save", cursor, {tones}))
        return 0;
    msg_writer w(cursor, "tones_save");
    w.node("config.VOIP.tones");
    w.fields(cfg::keys::tones_keys, cfg::routes::rows_tones_tones_save, tones);
    return w.finish();
}

} // extern "C"
