// Writer of the call limits: the limits below `ceiling` renumbered from 0,
// then empty params for the numbers the configuration manager must drop.
#include "cfgdump/sent_rows.h"
#include "cfgmngr/keys_voip.h"

#include <cfgparser.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

using cfg::dump::msg_writer;

namespace {

constexpr const char *limit_name =
    cfg::dump::only_row(cfg::keys::limit_keys, cfg::routes::rows_limits_save_limits).wire_name().data();

} // namespace

extern "C" {

int save_limits(uint8_t **cursor, const limit_cfg_t *limits) CFG_NOEXCEPT
{
    if (cfg::dump::refused("save_limits", cursor, {limits}))
        return 0;
    msg_writer w(cursor, "save_limits");
    const limit_cfg_t &r = *limits;
    constexpr uint32_t entries = std::size(limit_cfg_t{}.value);

    const uint32_t count = std::max(r.start, r.current);
    cfg_trace(CFG_TRACE_DEBUG, "%s max=%d\n", "save_limits", static_cast<int>(count));
    w.node("config.VOIP.limits");

    uint32_t j = 0;
    char name[32];
    for (uint32_t i = 0; i < entries && j < r.current; ++i) {
        const std::size_t target_length = strnlen(r.target[i], sizeof r.target[i]);
        if (target_length == 0 && r.not_proxy[i] != 0)
            continue;
        if (r.value[i] <= 0 || static_cast<uint32_t>(r.value[i]) >= r.ceiling)
            continue;
        char text[sizeof r.target[i] + 16];
        if (r.not_proxy[i] != 0)
            std::snprintf(text, sizeof text, "%.*s %d", static_cast<int>(target_length), r.target[i],
                          static_cast<int>(r.value[i]));
        else
            std::snprintf(text, sizeof text, "%s %d", "[proxy]", static_cast<int>(r.value[i]));
        std::snprintf(name, sizeof name, "%s_%d", limit_name, static_cast<int>(j++));
        w.text(name, static_cast<const char *>(text));
    }

    const auto extra = static_cast<int32_t>(r.start - r.current);
    cfg_trace(CFG_TRACE_DEBUG, "%s mustDeleteNum=%d\n", "save_limits", static_cast<int>(extra));
    // Empty params fill up to the announced count: the `extra` numbers the
    // configuration manager holds beyond `current`, and also the numbers of
    // entries skipped for lying at or above `ceiling`, which the manager must
    // drop as well. So the node carries exactly max(start, current) params.
    // Only numbers of the 30 entries are written: a `start` still holding the
    // in-progress marker does not produce thousands of params.
    const uint32_t last = std::min(count, entries);
    while (j < last) {
        std::snprintf(name, sizeof name, "%s_%d", limit_name, static_cast<int>(j++));
        w.empty(name);
    }
    return w.finish();
}

} // extern "C"
