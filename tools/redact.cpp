#include "redact.h"

#include "cfgmngr/routes.h"

#include <algorithm>
#include <cctype>

namespace cfgmsg {

namespace {

// Whether the library stores the node as the SNMP user line: its route, as
// all_parser finds it (that route is recognised by the beginning of the
// path, no pattern needed), fills the SNMP users' table.
bool is_snmp_users(std::string_view path)
{
    const int32_t no_pattern_matched[cfg::routes::pattern_count] = {};
    const cfg::routes::route *r = cfg::routes::route_of(path, no_pattern_matched);
    return r != nullptr && r->kind.keys == &cfg::keys::snmp_users;
}

// The white space that separates the words of an SNMP user line: the
// library reads them with sscanf's "%39s %39s %15s".
bool is_space(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// "USER PASSWORD LEVEL" with the password shown as ***. When the line is
// not three whole words (a word longer than the library keeps runs on
// into the next one, or more words follow), everything after the user
// name is hidden.
std::string redacted_user_line(const std::string &v)
{
    std::size_t i = 0;
    const auto skip_space = [&] {
        while (i < v.size() && is_space(v[i]))
            ++i;
    };
    const auto word = [&](std::size_t width) {
        const std::size_t from = i;
        while (i < v.size() && !is_space(v[i]) && i - from < width)
            ++i;
        return std::pair{from, i};
    };
    const auto whole = [&](std::size_t end) { return end == v.size() || is_space(v[end]); };
    skip_space();
    const auto [user_from, user_to] = word(39);
    skip_space();
    const auto [pass_from, pass_to] = word(39);
    if (pass_from == pass_to)
        return v; // no password word
    skip_space();
    const auto [level_from, level_to] = word(v.size());
    skip_space();
    if (whole(user_to) && whole(pass_to) && level_to - level_from <= 15 && i == v.size())
        return v.substr(0, pass_from) + "***" + v.substr(pass_to);
    return v.substr(0, user_to) + (whole(user_to) ? v.substr(user_to, pass_from - user_to) : " ") + "***";
}

} // namespace

bool is_secret(std::string_view path, std::string_view name)
{
    if (is_snmp_users(path))
        return true;
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    for (std::string_view word : {"pass", "secret", "key", "communit", "psk"})
        if (lower.find(word) != std::string::npos)
            return true;
    return false;
}

std::optional<std::string> redacted(std::string_view path, std::string_view name,
                                    const std::optional<std::string> &value)
{
    if (!value || *value == "\"\"" || !is_secret(path, name))
        return value;
    return is_snmp_users(path) ? redacted_user_line(*value) : "***";
}

void redact(message &msg)
{
    for (node &n : msg.nodes)
        for (param &p : n.params)
            p.value = redacted(n.path, p.name, p.value);
}

} // namespace cfgmsg
