#include "universalConfigParser/node_params.h"

#include "cfgmngr/key_index.h"

#include <cstring>

namespace cfg::parse {

param next_param(node &n, bool quotes_mean_empty) noexcept
{
    param p;
    while (!n.malformed && n.params_read < n.param_count) {
        ++n.params_read;
        int result = find_params(n.cursor, n.remaining, &p.name_, &p.value_, quotes_mean_empty ? 1 : 0);
        if (result == 0) {
            p.name_length_ = std::strlen(p.name_);
            return p;
        }
        if (result < 0)
            n.malformed = true;
        // result 1: the param could not be copied and was skipped
    }
    return p;
}

node_end finish_node(const node &n, uint32_t &updated) noexcept
{
    if (n.malformed)
        return node_end::stop;
    const image_lock lock;
    updated = cfgpars_get_monotonic_now_time();
    return node_end::next;
}

// The loop of most params: the reading of the next param and the hashed
// part of the lookup are compiled into it.
[[gnu::flatten]] node_end keyed_node(node &n, const keys::table &keys, void *record,
                                     uint32_t &updated) noexcept
{
    while (param p = next_param(n)) {
        const keys::key *k = keys::find_inline(keys, p.name_view());
        const image_lock lock;
        if (k != nullptr)
            keys::store(*k, record, p.value());
    }
    return finish_node(n, updated);
}

node_end skip_unknown(node &n) noexcept
{
    while (param p = next_param(n))
        cfg_trace(CFG_TRACE_DEBUG, "%s: !!UNKNOWN!! path = %s, paramName = %s", "all_parser", n.path,
                  p.name());
    return n.malformed ? node_end::stop : node_end::next;
}

} // namespace cfg::parse
