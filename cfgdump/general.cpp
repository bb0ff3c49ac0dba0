// Writer of the gateway-wide voice settings.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int general_save(uint8_t **cursor, const general_cfg_t *general) CFG_NOEXCEPT
{
    if (cfg::dump::refused("general_save", cursor, {general}))
        return 0;
    msg_writer w(cursor, "general_save");
    w.node("config.VOIP.general");
    w.text("unit_prefix", general->unit_prefix);
    w.uint("use_uni", general->use_uni);
    w.uint("start_timer", general->start_timer);
    w.text("device_name", general->device_name);
    w.uint("duration_timer", general->duration_timer);
    w.uint("wait_answer_timer", general->wait_answer_timer);
    w.uint("fans_force_enable", general->fans_force_enable);
    w.uint("fans_threshold_temperature", general->fans_threshold_temperature);
    w.uint("power_mode", general->power_mode);
    return w.finish();
}

} // extern "C"
