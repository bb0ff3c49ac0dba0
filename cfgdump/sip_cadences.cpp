// Writer of the alert-info cadences of a VoIP profile.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

#include <cstdio>

using cfg::dump::msg_writer;

extern "C" {

// All 16 cadences are sent, empty ones included (their texts as "").
int profile_alert_info_save(uint8_t **cursor, int profile, const profile_cfg_t *cfg) CFG_NOEXCEPT
{
    if (cfg::dump::refused("profile_alert_info_save", cursor, {cfg}, profile, CFG_PROFILES))
        return 0;
    msg_writer w(cursor, "profile_alert_info_save");
    for (int c = 0; c < CFG_SIP_CADENCES; ++c) {
        const sip_cadence_cfg_t &cadence = cfg->sip.sip_cadences[c];
        char path[96];
        std::snprintf(path, sizeof path, "config.VOIP.profile.profile_%d.sip_cadences.sip_cadence_%d",
                      profile, c);
        w.node(path);
        w.fields(cfg::keys::sip_cadence_keys, cfg::routes::rows_sip_cadence_profile_alert_info_save,
                 &cadence);
    }
    return w.finish();
}

} // extern "C"
