// Writer of the 32 ring cadences.
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_voip.h"

#include <cfgparser.h>

#include <cstdio>

using cfg::dump::msg_writer;
namespace keys = cfg::keys;

namespace {

// Room for every flag: "0,1,2,3,4,5,6,7" and the NUL.
using mask_text_t = char[16];

// The set flags 0..7 in ascending order, separated by ","; no flag gives
// the empty text. Bits above 7 are not flags and are not written.
void mask_to_text(uint32_t mask, mask_text_t &out) noexcept
{
    std::size_t at = 0;
    for (unsigned k = 0; k < 8; ++k) {
        if ((mask & (1u << k)) == 0)
            continue;
        if (at != 0)
            out[at++] = ',';
        out[at++] = static_cast<char>('0' + k);
    }
    out[at] = '\0';
}

void cadence_node(msg_writer &w, int number, const cadence_cfg_t &cadence) noexcept
{
    char path[48];
    std::snprintf(path, sizeof path, "config.VOIP.cadences.cadence_%d", number);
    mask_text_t mask;
    mask_to_text(cadence.mask, mask);

    w.node(path);
    // The mask goes out as its flag list.
    cfg::dump::send_rows(
        w, keys::cadence_keys, cfg::routes::rows_cadence_cadence_config_save, &cadence,
        [&](const keys::key &k) { w.text(k.wire_name().data(), static_cast<const char *>(mask)); });
}

} // namespace

extern "C" {

// Every cadence is written, empty ones included.
int cadence_config_save(uint8_t **cursor, const cfg_image_t *image) CFG_NOEXCEPT
{
    if (cfg::dump::refused("cadence_config_save", cursor, {image}))
        return 0;
    msg_writer w(cursor, "cadence_config_save");
    for (int c = 0; c < CFG_CADENCES; ++c)
        cadence_node(w, c, image->cadences[c]);
    return w.finish();
}

} // extern "C"
