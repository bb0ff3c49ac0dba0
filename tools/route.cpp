#include "route.h"

#include "universalConfigParser/text_numbers.h"

namespace cfgmsg {

std::string path_of_record(const cfg::routes::route &r, const unsigned numbers[2])
{
    const std::string_view shown = r.kind.path;
    std::string out;
    unsigned part = 0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (shown[i] != '{') {
            out += shown[i];
            continue;
        }
        const std::size_t close = shown.find('}', i);
        out += std::to_string((part == 0 ? r.kind.first : 0) + numbers[part < 2 ? part : 1]);
        ++part;
        i = close;
    }
    return out;
}

routed route_path(const std::string &path, uint32_t max_ports)
{
    using cfg::routes::numbers;
    using cfg::routes::refusal;
    routed out;
    int32_t matches[cfg::routes::pattern_count] = {};
    char **tables[cfg::routes::pattern_count] = {};
    cfg::routes::match_patterns(path.c_str(), matches, tables);
    out.route = cfg::routes::route_of(path, matches);
    if (out.route == nullptr) {
        cfg::routes::free_matches(matches, tables);
        return out;
    }
    const cfg::routes::route &r = *out.route;
    const int which = r.matched;
    const unsigned parts = r.reads == numbers::none ? 0 : r.kind.inner_last != 0 ? 2 : 1;
    out.fate = routed::stored;
    for (unsigned part = 0; part < parts && out.fate == routed::stored; ++part) {
        const cfg::routes::path_number n = cfg::routes::number_of(
            r, path.c_str(), which < 0 ? 0 : matches[which], which < 0 ? nullptr : tables[which], part);
        const int64_t first = part == 0 ? r.kind.first : 0;
        const int64_t last = part == 0 ? r.kind.last : r.kind.inner_last;
        const bool number = n.found && n.value == cfg::numbers::held_int32(n.value);
        if (number && n.value >= first && n.value <= last) {
            out.numbers[part] = static_cast<unsigned>(n.value - first);
            continue;
        }
        const bool stop = r.refuses == refusal::stop_message || (r.refuses == refusal::stop_if_number && number);
        out.fate = stop ? routed::stops_message : routed::skipped;
    }
    cfg::routes::free_matches(matches, tables);
    if (out.fate == routed::stored) {
        out.stored_path = path_of_record(r, out.numbers);
        out.record = r.kind.record_offset(out.numbers[0], out.numbers[1]);
        out.beyond_max_ports = r.writers_stop_at_max_ports && r.kind.first + out.numbers[0] >= max_ports;
    }
    return out;
}

}  // namespace cfgmsg
