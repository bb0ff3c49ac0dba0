// Writers of the H.323 settings and of the port ranges.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// The keys each writer sends, in the order it sends them.
constexpr auto h323_order =
    keys::pick(keys::h323_keys, "enableh323", "ignore_gcf", "disablefaststart", "disabletunneling", "h235",
               "password", "usegatekeeper", "gatekeeperip", "h323aliase", "isgateway", "dtmftransfer",
               "timetolive", "keepalivetime", "bearercapability");

constexpr auto range_order = keys::pick(keys::range_keys, "tcpportmin", "tcpportmax", "udpportmin",
                                        "udpportmax", "rtph323min", "rtph323max", "rtpsipmin", "rtpsipmax",
                                        "intrcpmax", "intrcpmin", "sip_dscp", "verify_remote_media");

} // namespace

extern "C" {

int h323_save(uint8_t **cursor, const h323_cfg_t *h323) CFG_NOEXCEPT
{
    if (cfg::dump::refused("h323_save", cursor, {h323}))
        return 0;
    msg_writer w(cursor, "h323_save");
    w.node("config.VOIP.h323");
    w.fields(keys::h323_keys, h323_order, h323);
    return w.finish();
}

int RANGE_save(uint8_t **cursor, const h323_cfg_t *h323) CFG_NOEXCEPT
{
    if (cfg::dump::refused("RANGE_save", cursor, {h323}))
        return 0;
    msg_writer w(cursor, "RANGE_save");
    w.node("config.VOIP.range");
    w.fields(keys::range_keys, range_order, h323);
    return w.finish();
}

} // extern "C"
