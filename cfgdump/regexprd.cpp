// Writer of the regular-expression dial plan of one profile.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

#include <cstdio>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

extern "C" {

int profile_dialplan_regular_to_file(uint8_t **cursor, int profile,
                                     const profile_dialplan_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("profile_dialplan_regular_to_file", cursor, {cfg}, profile, CFG_PROFILES))
        return 0;
    msg_writer w(cursor, "profile_dialplan_regular_to_file");
    char path[64];
    std::snprintf(path, sizeof path, "config.VOIP.profile.profile_%d.regexprd", profile);
    w.node(path);
    w.fields(keys::regexprd_keys, cfg::routes::rows_regexprd_profile_dialplan_regular_to_file, cfg);
    return w.finish();
}

} // extern "C"
