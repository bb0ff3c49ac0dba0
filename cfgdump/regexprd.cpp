// Writer of the regular-expression dial plan of one profile.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

#include <cstdio>

using cfg::dump::msg_writer;

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
    w.uint("regex_on", cfg->regex_on);
    w.text("proto", cfg->proto);
    w.text("regex", cfg->regex);
    w.uint("start_timer", cfg->start_timer);
    return w.finish();
}

} // extern "C"
