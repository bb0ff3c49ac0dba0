// Writer of the logging settings of the voice applications.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// The keys in the order they are sent, around "trace_out".
constexpr auto levels_and_flags =
    keys::pick(keys::trace_keys, "sip_level", "h323_level", "vapi_level", "vapi_enabled", "app_alarm",
               "app_err", "app_warn", "app_info", "app_dbg");
constexpr const keys::key &trace_out = keys::row(keys::trace_keys, "trace_out");
constexpr auto syslog_keys =
    keys::pick(keys::trace_keys, "syslog_addr", "syslog_port", "run_syslog", "syslog_to_file");

} // namespace

extern "C" {

int syslog_save(uint8_t **cursor, const trace_cfg_t *trace) CFG_NOEXCEPT
{
    if (cfg::dump::refused("syslog_save", cursor, {trace}))
        return 0;
    msg_writer w(cursor, "syslog_save");
    w.node("config.VOIP.trace");
    w.fields(keys::trace_keys, levels_and_flags, trace);
    // Trace output always goes to the syslog server, whatever was stored.
    w.text(trace_out.wire_name().data(), "syslog_server");
    w.fields(keys::trace_keys, syslog_keys, trace);
    return w.finish();
}

} // extern "C"
