// Writer of the call-progress tones.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int tones_save(uint8_t **cursor, const tones_cfg_t *tones) CFG_NOEXCEPT
{
    if (cfg::dump::refused("tones_save", cursor, {tones}))
        return 0;
    msg_writer w(cursor, "tones_save");
    w.node("config.VOIP.tones");
    w.text("country", tones->country);
    w.text("dialtone_freq", tones->dialtone_freq);
    w.text("dialtone_cadence", tones->dialtone_cadence);
    w.text("busytone_freq", tones->busytone_freq);
    w.text("busytone_cadence", tones->busytone_cadence);
    w.text("disconnect_freq", tones->disconnect_freq);
    w.text("disconnect_cadence", tones->disconnect_cadence);
    w.text("ringbacktone_freq", tones->ringbacktone_freq);
    w.text("ringbacktone_cadence", tones->ringbacktone_cadence);
    w.text("congestiontone_freq", tones->congestiontone_freq);
    w.text("congestiontone_cadence", tones->congestiontone_cadence);
    return w.finish();
}

} // extern "C"
