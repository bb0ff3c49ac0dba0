// Call limits: "config.VOIP.limits", params "limit_0" .. "limit_29", each
// value a target word and a number ("[proxy]" or any other word).
#include "universalConfigParser/handlers.h"
#include "cfgmngr/key_tables.h"
#include "cfgmngr/text_class.h"
#include "universalConfigParser/text_numbers.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

namespace cfg::handlers {
namespace {

constexpr std::string_view proxy_keyword = "[proxy]";

void clear_limit(limit_cfg_t &r, int32_t i) noexcept
{
    std::memset(r.target[i], 0, sizeof r.target[i]);
    r.value[i] = 0;
    r.not_proxy[i] = -1;
}

// A value is a word and a number separated by white space. A word longer
// than the field is cut to its 255 characters; the number is read after the
// whole word. A missing number keeps the entry's number. A value made only of
// white space holds no word and clears the entry like an empty value.
void store_limit(limit_cfg_t &r, int32_t i, const char *value) noexcept
{
    if (numbers::absent(value))
        return clear_limit(r, i);
    std::string_view rest(value);
    while (!rest.empty() && text::is_space(rest.front()))
        rest.remove_prefix(1);
    std::size_t length = 0;
    while (length < rest.size() && !text::is_space(rest[length]))
        ++length;
    if (length == 0)
        return clear_limit(r, i);

    auto &target = r.target[i];
    const std::size_t kept = std::min(length, sizeof target - 1);
    std::memcpy(target, rest.data(), kept);
    target[kept] = '\0';
    numbers::scan_int(rest.data() + length, r.value[i]);
    r.not_proxy[i] = numbers::begins_with(target, proxy_keyword) ? 0 : 1;
}

} // namespace

node_end limits(cfg_image_t &image, node &n)
{
    limit_cfg_t &r = image.limits;
    while (parse::param p = parse::next_param(n)) {
        const keys::key *k = keys::find(keys::limits, p.name_view());
        if (k == nullptr)
            continue;
        const int32_t i = keys::entry_of(*k, p.name());
        if (i < 0)
            continue; // no entry of this number: dropped
        const parse::image_lock lock;
        store_limit(r, i, p.value());
    }
    return parse::finish_node(n, r.updated);
}

} // namespace cfg::handlers
