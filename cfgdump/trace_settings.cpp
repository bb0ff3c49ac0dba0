// Writer of the logging settings of the voice applications.
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

extern "C" {

int syslog_save(uint8_t **cursor, const trace_cfg_t *trace) CFG_NOEXCEPT
{
    if (cfg::dump::refused("syslog_save", cursor, {trace}))
        return 0;
    msg_writer w(cursor, "syslog_save");
    w.node("config.VOIP.trace");
    // Trace output always goes to the syslog server, whatever was stored.
    cfg::dump::send_rows(w, keys::trace_keys, cfg::routes::rows_trace_syslog_save, trace,
                         [&](const keys::key &k) { w.text(k.wire_name().data(), "syslog_server"); });
    return w.finish();
}

} // extern "C"
