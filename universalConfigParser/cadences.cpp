// Ring cadences: "config.VOIP.cadences.cadence_N", N from 0 to 31.
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/text_numbers.h"

#include <cstring>

namespace cfg::handlers {

node_end cadences(cfg_image_t &image, node &n)
{
    // The cadence number is the text after the last "_" of the path. Only a
    // text made of decimal digits alone counts: a path without "_", with
    // nothing after it, or with anything but digits there ("cadence_x",
    // "cadence_3a", "cadence_-1") names no cadence, so that it can never fall
    // back to cadence 0.
    const routes::path_number found = n.number();
    const char *number = found.text;
    const auto c = static_cast<int32_t>(found.value);
    cfg_trace(CFG_TRACE_DEBUG, "%s: cadence_number = %s  actual_cadence = %d", "all_parser",
              number == nullptr ? "" : number, c);

    // A path that names no cadence 0..31: reported, its params read and
    // dropped, no cadence and no time-stamp touched; the message goes on.
    if (c < 0 || c >= CFG_CADENCES) {
        cfg_trace(CFG_TRACE_ERROR, "%s: no cadence 0..%d in path [%s], node dropped", "all_parser",
                  CFG_CADENCES - 1, n.path);
        return parse::skip_unknown(n);
    }
    cadence_cfg_t &cadence = image.cadences[c];

    // A node without params clears the whole cadence.
    if (n.param_count == 0) {
        const parse::image_lock lock;
        std::memset(&cadence, 0, sizeof cadence);
    }
    return parse::keyed_node(n, keys::cadences, &cadence, image.cadences_updated);
}

} // namespace cfg::handlers
