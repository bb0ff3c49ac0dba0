// Writer of the service codes.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// The keys in the order they are sent.
constexpr auto dvo_order = keys::pick(keys::dvo_keys, "callwaiting", "ct_attended", "ct_unattended",
                                      "cf_unconditional", "cf_busy", "cf_noanswer", "cf_outofservice", "dnd");

} // namespace

extern "C" {

int dvo_config_save(uint8_t **cursor, const dvo_cfg_t *dvo) CFG_NOEXCEPT
{
    if (cfg::dump::refused("dvo_config_save", cursor, {dvo}))
        return 0;
    msg_writer w(cursor, "dvo_config_save");
    w.node("config.VOIP.dvo");
    w.fields(keys::dvo_keys, dvo_order, dvo);
    return w.finish();
}

} // extern "C"
