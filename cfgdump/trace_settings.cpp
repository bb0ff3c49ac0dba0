// Writer of the logging settings of the voice applications.
#include "cfgmngr/msg_writer.h"
#include "universalConfigParser/trace_flags.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace flag = cfg::trace_flag;

extern "C" {

int syslog_save(uint8_t **cursor, const trace_cfg_t *trace) CFG_NOEXCEPT
{
    if (cfg::dump::refused("syslog_save", cursor, {trace}))
        return 0;
    const uint8_t f = trace->flags;
    msg_writer w(cursor, "syslog_save");
    w.node("config.VOIP.trace");
    w.sint("sip_level", trace->sip_level); // -1 (trace off) goes out signed
    w.uint("h323_level", trace->h323_level);
    w.uint("vapi_level", trace->vapi_level);
    w.uint("vapi_enabled", flag::get(f, flag::vapi_enabled));
    w.uint("app_alarm", flag::get(f, flag::app_alarm));
    w.uint("app_err", flag::get(f, flag::app_err));
    w.uint("app_warn", flag::get(f, flag::app_warn));
    w.uint("app_info", flag::get(f, flag::app_info));
    w.uint("app_dbg", flag::get(f, flag::app_dbg));
    // Trace output always goes to the syslog server, whatever was stored.
    w.text("trace_out", "syslog_server");
    w.text("syslog_addr", trace->syslog_addr);
    w.uint("syslog_port", trace->syslog_port);
    w.uint("run_syslog", flag::get(f, flag::run_syslog));
    w.uint("syslog_to_file", flag::get(f, flag::syslog_to_file));
    return w.finish();
}

} // extern "C"
