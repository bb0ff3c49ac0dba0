// Writers of the H.323 settings and of the port ranges.
#include "cfgmngr/keys_voip.h"
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cfgparser.h>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

extern "C" {

int h323_save(uint8_t **cursor, const h323_cfg_t *h323) CFG_NOEXCEPT
{
    if (cfg::dump::refused("h323_save", cursor, {h323}))
        return 0;
    msg_writer w(cursor, "h323_save");
    w.node("config.VOIP.h323");
    w.fields(keys::h323_keys, cfg::routes::rows_h323_h323_save, h323);
    return w.finish();
}

int RANGE_save(uint8_t **cursor, const h323_cfg_t *h323) CFG_NOEXCEPT
{
    if (cfg::dump::refused("RANGE_save", cursor, {h323}))
        return 0;
    msg_writer w(cursor, "RANGE_save");
    w.node("config.VOIP.range");
    w.fields(keys::range_keys, cfg::routes::rows_range_RANGE_save, h323);
    return w.finish();
}

} // extern "C"
