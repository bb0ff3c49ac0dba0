// Logging settings of the voice applications: "config.VOIP.trace". These
// are the application's settings; the library's own trace does not use them.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"
#include "universalConfigParser/trace_flags.h"

namespace cfg::handlers {
namespace {

namespace flag = trace_flag;

// A flag param sets or clears its own bit only.
void store_trace(trace_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("sip_level"))      return store::digit(r.sip_level, v, -1, 9, 0);
    if (p.is("h323_level"))     return store::digit(r.h323_level, v, 0, 6, 0);
    if (p.is("vapi_level"))     return store::digit(r.vapi_level, v, 0, 65, 0);
    if (p.is("vapi_enabled"))   return store::bit(r.flags, flag::vapi_enabled, v);
    if (p.is("app_info"))       return store::bit(r.flags, flag::app_info, v);
    if (p.is("app_warn"))       return store::bit(r.flags, flag::app_warn, v);
    if (p.is("app_err"))        return store::bit(r.flags, flag::app_err, v);
    if (p.is("app_dbg"))        return store::bit(r.flags, flag::app_dbg, v);
    if (p.is("app_alarm"))      return store::bit(r.flags, flag::app_alarm, v);
    if (p.is("trace_out"))      return store::text(r.trace_out, v);
    if (p.is("syslog_port"))    return store::digit(r.syslog_port, v, 0, 65535, 514);
    if (p.is("syslog_addr"))    return store::text(r.syslog_addr, v);
    if (p.is("run_syslog"))     return store::bit(r.flags, flag::run_syslog, v);
    if (p.is("syslog_to_file")) return store::bit(r.flags, flag::syslog_to_file, v);
}

} // namespace

node_end trace_settings(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_trace(image.trace, p);
    }
    return parse::finish_node(n, image.trace.updated);
}

} // namespace cfg::handlers
