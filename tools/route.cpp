#include "route.h"

#include "msgedit.h"

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
        const bool stop =
            r.refuses == refusal::stop_message || (r.refuses == refusal::stop_if_number && number);
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

} // namespace cfgmsg

namespace cfgmsg {

bool split_by_route(std::string_view ref, std::string &path, std::string &name)
{
    for (std::size_t dot = ref.rfind('.'); dot != std::string_view::npos && dot > 0;
         dot = ref.rfind('.', dot - 1)) {
        if (dot + 1 == ref.size())
            continue;
        const std::string p(ref.substr(0, dot));
        const std::string n(ref.substr(dot + 1));
        const routed where = route_path(p, CFG_MAX_PORTS);
        int32_t entry = 0;
        if (where.route != nullptr && where.fate == routed::stored && where.stored_path == p &&
            cfg::routes::row_of(*where.route, n.c_str(), entry) != nullptr) {
            path = p;
            name = n;
            return true;
        }
    }
    return split_param_ref(ref, path, name);
}

std::optional<std::string> path_warning(const std::string &path)
{
    const routed where = route_path(path, CFG_MAX_PORTS);
    if (where.route == nullptr)
        return "unknown node: the library skips it";
    if (where.fate == routed::skipped)
        return "the path names no record: the library skips the node";
    if (where.fate == routed::stops_message)
        return "the path names no record: the library drops the rest of the message";
    if (where.stored_path != path)
        return "the library stores the node as " + where.stored_path;
    return std::nullopt;
}

} // namespace cfgmsg
