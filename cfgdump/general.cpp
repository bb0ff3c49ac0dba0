// Writer of the gateway-wide voice settings.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// The keys in the order they are sent.
constexpr auto general_order =
    keys::pick(keys::general_keys, "unit_prefix", "use_uni", "start_timer", "device_name", "duration_timer",
               "wait_answer_timer", "fans_force_enable", "fans_threshold_temperature", "power_mode");

} // namespace

extern "C" {

int general_save(uint8_t **cursor, const general_cfg_t *general) CFG_NOEXCEPT
{
    if (cfg::dump::refused("general_save", cursor, {general}))
        return 0;
    msg_writer w(cursor, "general_save");
    w.node("config.VOIP.general");
    w.fields(keys::general_keys, general_order, general);
    return w.finish();
}

} // extern "C"
