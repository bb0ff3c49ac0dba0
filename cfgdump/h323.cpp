// Writers of the H.323 settings and of the port ranges.
#include "cfgmngr/msg_writer.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;

extern "C" {

int h323_save(uint8_t **cursor, const h323_cfg_t *h323) CFG_NOEXCEPT
{
    if (cfg::dump::refused("h323_save", cursor, {h323}))
        return 0;
    msg_writer w(cursor, "h323_save");
    w.node("config.VOIP.h323");
    w.uint("enableh323", h323->enableh323);
    w.uint("ignore_gcf", h323->ignore_gcf);
    w.uint("disablefaststart", h323->disablefaststart);
    w.uint("disabletunneling", h323->disabletunneling);
    w.uint("h235", h323->h235);
    w.text("password", h323->password);
    w.uint("usegatekeeper", h323->usegatekeeper);
    w.text("gatekeeperip", h323->gatekeeperip);
    w.text("h323aliase", h323->h323aliase);
    w.uint("isgateway", h323->isgateway);
    w.uint("dtmftransfer", h323->dtmftransfer);
    w.uint("timetolive", h323->timetolive);
    w.uint("keepalivetime", h323->keepalivetime);
    w.uint("bearercapability", h323->bearercapability);
    return w.finish();
}

int RANGE_save(uint8_t **cursor, const h323_cfg_t *h323) CFG_NOEXCEPT
{
    if (cfg::dump::refused("RANGE_save", cursor, {h323}))
        return 0;
    msg_writer w(cursor, "RANGE_save");
    w.node("config.VOIP.range");
    w.uint("tcpportmin", h323->tcpportmin);
    w.uint("tcpportmax", h323->tcpportmax);
    w.uint("udpportmin", h323->udpportmin);
    w.uint("udpportmax", h323->udpportmax);
    w.uint("rtph323min", h323->rtph323min);
    w.uint("rtph323max", h323->rtph323max);
    w.uint("rtpsipmin", h323->rtpsipmin);
    w.uint("rtpsipmax", h323->rtpsipmax);
    w.uint("intrcpmax", h323->intrcpmax);
    w.uint("intrcpmin", h323->intrcpmin);
    w.uint("sip_dscp", h323->sip_dscp);
    w.uint("verify_remote_media", h323->verify_remote_media);
    return w.finish();
}

} // extern "C"
