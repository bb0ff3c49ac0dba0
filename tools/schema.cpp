#include "schema.h"

#include "select.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace cfgmsg {

using cfg::keys::key;
using cfg::keys::kind;
using cfg::keys::node_kind;
using cfg::keys::rule;
using cfg::keys::sent;
using cfg::routes::route;

namespace {

// Walks a shown path against the beginning of a path for selection: literal
// characters must agree, a "{first..last}" part takes decimal digits in its
// range. (Which record a concrete path reaches is route_path's question.)
struct walk {
    bool whole_path = false;    // the path ran out while it agreed
    bool whole_pattern = false; // pattern and path ended together
};

walk walk_pattern(std::string_view pattern, std::string_view path)
{
    walk w;
    std::size_t i = 0, j = 0;
    while (i < pattern.size()) {
        if (j == path.size()) {
            w.whole_path = true;
            return w;
        }
        if (pattern[i] == '{') {
            const std::size_t close = pattern.find('}', i);
            const std::string_view bounds = pattern.substr(i + 1, close - i - 1);
            const unsigned first = static_cast<unsigned>(std::stoul(std::string(bounds)));
            const unsigned last =
                static_cast<unsigned>(std::stoul(std::string(bounds.substr(bounds.find("..") + 2))));
            std::size_t end = j;
            while (end < path.size() && end - j < 6 && path[end] >= '0' && path[end] <= '9')
                ++end;
            if (end == j || (path[j] == '0' && end - j > 1))
                return w;
            const unsigned n = static_cast<unsigned>(std::stoul(std::string(path.substr(j, end - j))));
            if (n < first || n > last)
                return w;
            j = end;
            i = close + 1;
            continue;
        }
        if (pattern[i] != path[j])
            return w;
        ++i;
        ++j;
    }
    w.whole_pattern = j == path.size();
    w.whole_path = w.whole_pattern;
    return w;
}

std::string number_text(const key &k, int64_t v)
{
    if (k.how == kind::urange || (!k.at.is_signed && v >= 0))
        return std::to_string(static_cast<uint64_t>(v));
    return std::to_string(v);
}

const char *rule_name(rule r)
{
    switch (r) {
    case rule::pickup_groups:
        return "pickup groups";
    case rule::text_or_default:
    case rule::text_and_flag:
    case rule::user_at_host:
    case rule::server_text:
    case rule::entry_text:
        return "text";
    case rule::number_or_keep:
    case rule::clamped:
    case rule::vtu_vid:
        return "number";
    case rule::packet_time:
    case rule::g726_packet_time:
        return "packet time";
    case rule::t38_datagram:
        return "datagram size";
    case rule::one_or_default:
    case rule::inverse_checkbox:
    case rule::on_unless_zero:
        return "checkbox";
    case rule::dtmf_mime:
    case rule::hookflash_mime:
    case rule::trap_version:
        return "word";
    case rule::flag_list:
    case rule::port_flags:
        return "flag list";
    case rule::not_kept:
        return "ignored";
    default:
        return "list entry";
    }
}

// The writers of the route that send the row.
std::vector<std::string> sent_by(const route &r, const key &k)
{
    const auto row = static_cast<uint16_t>(&k - r.kind.keys->rows.data());
    std::vector<std::string> names;
    for (const cfg::routes::writer &w : r.writers)
        for (uint16_t sent_row : w.rows)
            if (sent_row == row && std::find(names.begin(), names.end(), w.name) == names.end())
                names.emplace_back(w.name);
    return names;
}

// "no", "yes" or "as NAME"; with the writers named where the node has more
// than one (`by_name`).
std::string sent_text(const route &r, const key &k, bool by_name)
{
    const std::vector<std::string> writers = sent_by(r, k);
    if (writers.empty())
        return "no";
    std::string text = k.sent_name.empty() ? "yes" : "as " + std::string(k.sent_name);
    if (by_name && r.writers.size() > 1) {
        text += " (";
        for (std::size_t i = 0; i < writers.size(); ++i)
            text += (i == 0 ? "`" : ", `") + writers[i] + "`";
        text += ")";
    }
    return text;
}

// The names of a numbered key, with its numbers as "{0..n}".
std::string numbered_name(const key &k)
{
    using cfg::keys::entry_form;
    const std::string name(k.name);
    if (k.count == 0)
        return name;
    const std::string numbers = "{0.." + std::to_string(k.count - 1) + "}";
    switch (k.entry) {
    case entry_form::after_key:
    case entry_form::digits_after_last_underscore:
        return name + numbers;
    case entry_form::after_key_underscore:
        return name + "[_" + numbers + "]";
    case entry_form::rule_then_key:
        return "vtu" + numbers + "." + name;
    default:
        return name + "_" + numbers;
    }
}

bool is_text(const key &k)
{
    return k.at.is_text;
}

nlohmann::ordered_json param_json(const route &r, const key &k)
{
    nlohmann::ordered_json p;
    p["name"] = numbered_name(k);
    p["kind"] = kind_name(k);
    if (k.how == kind::range || k.how == kind::urange || k.special == rule::t38_datagram ||
        k.special == rule::clamped) {
        p["min"] = k.min;
        p["max"] = k.max;
    }
    if (k.special == rule::text_or_default)
        p["default"] = std::string(k.text_default);
    else if (k.special == rule::on_unless_zero || k.special == rule::trap_version)
        p["default"] = 1; // what no value gives
    else if (!is_text(k) && k.how != kind::checkbox && k.special != rule::number_or_keep &&
             k.special != rule::not_kept && k.special != rule::group_ports)
        p["default"] = k.def;
    if (is_text(k))
        p["length"] = k.at.size - 1;
    p["rule"] = rule_text(k);
    const std::vector<std::string> writers = sent_by(r, k);
    p["sent"] = !writers.empty();
    if (!writers.empty() && !k.sent_name.empty())
        p["sent_as"] = std::string(k.sent_name);
    p["sent_by"] = writers;
    return p;
}

std::string writer_list(const route &r, const char *quote)
{
    std::string list;
    for (std::size_t i = 0; i < r.writers.size(); ++i)
        list += (i == 0 ? "" : ", ") + (quote + std::string(r.writers[i].name)) + quote;
    return list;
}

void print_text(const std::vector<const route *> &nodes)
{
    for (const route *r : nodes) {
        const node_kind *nk = &r->kind;
        std::printf("[%.*s]", static_cast<int>(nk->path.size()), nk->path.data());
        if (!r->writers.empty())
            std::printf("    # written by %s", writer_list(*r, "").c_str());
        std::printf("\n");
        for (const key &k : nk->keys->rows) {
            const std::string name = numbered_name(k);
            std::printf("    %-28s %-14s %s; sent: %s\n", name.c_str(), kind_name(k).c_str(),
                        rule_text(k).c_str(), sent_text(*r, k, false).c_str());
        }
        std::printf("\n");
    }
}

void print_markdown(const std::vector<const route *> &nodes)
{
    std::printf("# Parameter reference\n\n"
                "Generated by `cfgmsg schema --markdown` from the library's key tables\n"
                "(`cmake --build build --target parameters_md`); do not edit by hand.\n\n"
                "Every node path the parser stores, and for each param: how its value is read,\n"
                "its bounds and default (used for no value and for a value outside the bounds),\n"
                "the most characters a text keeps (longer texts are cut), and whether the\n"
                "section's writers send it (naming them where a node has several).\n"
                "`{a..b}` stands for a number from a to b.\n"
                "A param name is matched by prefix: the first key, in the order below, that\n"
                "the name begins with takes the value; names that begin with no key are\n"
                "ignored.\n");
    for (const route *r : nodes) {
        const node_kind *nk = &r->kind;
        std::printf("\n## `%.*s`\n\n", static_cast<int>(nk->path.size()), nk->path.data());
        if (!r->writers.empty())
            std::printf("Written by %s.\n\n", writer_list(*r, "`").c_str());
        std::printf("| param | kind | rule | sent |\n|---|---|---|---|\n");
        for (const key &k : nk->keys->rows)
            std::printf("| `%s` | %s | %s | %s |\n", numbered_name(k).c_str(), kind_name(k).c_str(),
                        rule_text(k).c_str(), sent_text(*r, k, true).c_str());
    }
}

} // namespace

const char *const schema_help =
    "usage: cfgmsg schema [--json | --markdown] [PATH]\n"
    "\n"
    "Prints the parameter reference from the library's key tables: every node\n"
    "path the parser stores ('{a..b}' stands for a number from a to b) and, for\n"
    "each param in the order its keys are matched, how the value is read, its\n"
    "bounds, default and text length, and whether the section's writer sends it.\n"
    "PATH, a concrete path (config.VOIP.ports.port_5) or the beginning of one\n"
    "(config.Network), prints only the nodes it selects; a pattern as in\n"
    "'cfgmsg get' ('*', '?', '{0..7}', '{a,b}': config.VOIP.ports.port_{0..7})\n"
    "selects the nodes with a path that it matches.\n"
    "\n"
    "options:\n"
    "  --json      one JSON object per node: {\"path\", \"writer\", \"writers\", \"params\":\n"
    "              [{\"name\", \"kind\", \"min\", \"max\", \"default\", \"length\", \"rule\",\n"
    "              \"sent\", \"sent_as\", \"sent_by\"}]} (members that do not apply are left out)\n"
    "  --markdown  the reference as a Markdown document (docs/parameters.md)\n"
    "  --help      this text\n"
    "\n"
    "Exit status: 0 success, 1 PATH selects no node, 2 usage error.\n";

bool path_selected(std::string_view pattern, std::string_view filter)
{
    if (filter.empty())
        return true;
    return walk_pattern(pattern, filter).whole_path;
}

std::string kind_name(const key &k)
{
    switch (k.how) {
    case kind::text:
        return "text";
    case kind::checkbox:
        return k.at.width != 0 ? "flag" : "checkbox";
    case kind::range:
        return "range";
    case kind::urange:
        return "unsigned range";
    case kind::number:
        return "number";
    case kind::integer:
        return "integer";
    case kind::hex:
        return "hex";
    case kind::special:
        return rule_name(k.special);
    }
    return "special";
}

std::string rule_text(const key &k)
{
    const std::string def = number_text(k, k.def);
    const std::string length = std::to_string(k.at.size - 1) + " characters";
    switch (k.how) {
    case kind::text:
        return "at most " + length;
    case kind::checkbox:
        return k.at.width != 0 ? "1 or 0, bit " + std::to_string(k.at.bit) : "1 or 0";
    case kind::range:
    case kind::urange:
        return number_text(k, k.min) + ".." + number_text(k, k.max) + ", default " + def;
    case kind::number:
        return "any number; no value " + def + ", no number keeps the value";
    case kind::integer:
        return "any number; no value " + def;
    case kind::hex:
        return "0x and hex digits; no value " + number_text(k, k.def) + ", else keeps the value";
    case kind::special:
        break;
    }
    switch (k.special) {
    case rule::pickup_groups:
        return "groups 0..31 separated by ',' or ';'";
    case rule::text_or_default:
        return "at most " + length + "; no value \"" + std::string(k.text_default) + "\"";
    case rule::number_or_keep:
        return "any number; no value or no number keeps the value";
    case rule::text_and_flag:
        return "at most " + length + "; marks the value as received";
    case rule::packet_time:
        return "a multiple of " + number_text(k, k.min) + " below " + number_text(k, k.max) + ", default " +
               def;
    case rule::g726_packet_time:
        return "10, 20 or 30, default " + def;
    case rule::t38_datagram:
        return "0 (off) or " + number_text(k, k.min) + ".." + number_text(k, k.max) + ", default " + def;
    case rule::not_kept:
        return "dropped by the parser; the codecs writers send it as 0";
    case rule::one_or_default:
        return "1, anything else " + def;
    case rule::inverse_checkbox:
        return "1 or 0, kept inverted";
    case rule::on_unless_zero:
        return "no value 1; a value reading as 0 (or without a number) 0, anything else 1";
    case rule::dtmf_mime:
        return "\"dtmfr\", \"dtmf\" or \"audio\"";
    case rule::hookflash_mime:
        return "\"dtmf\", \"hookf\", \"sscc\" or \"broadsoft\"";
    case rule::user_at_host:
        return "user@host, at most " + length + " before the @";
    case rule::server_text:
    case rule::entry_text:
        return "at most " + length;
    case rule::clamped:
        return "any number, held to " + number_text(k, k.min) + ".." + number_text(k, k.max);
    case rule::flag_list:
        return "flag numbers separated by ','";
    case rule::group_ports:
        return "port numbers below max_ports separated by ',' (\"1,3,5\"); anything else empties the list";
    case rule::limit_line:
        return "\"target number\"";
    case rule::modifier_rule:
        return "three words";
    case rule::dial_plan_line:
        return "a dial-plan rule";
    case rule::trap_version:
        return "\"v2\" gives 2; no value or anything else 1";
    case rule::snmp_user_line:
        return "three words";
    case rule::port_flags:
        return "a flag per switch port, separated by blanks";
    case rule::host_line:
        return "\"address name\"";
    case rule::route_line:
        return "\"destination netmask gateway [.extra]\"";
    case rule::firewall_rule:
        return "a firewall rule";
    case rule::vtu_vid:
        return "any number; marks the rule in use";
    default:
        return "its own format";
    }
}

std::string stored_text(const key &k, const void *record, unsigned entry)
{
    if (is_text(k)) {
        const char *bytes = cfg::keys::field_bytes(k, record, entry);
        return std::string(bytes, strnlen(bytes, k.at.size));
    }
    const int64_t v = cfg::keys::read_number(k, record, entry);
    if (k.special == rule::pickup_groups) {
        std::string groups;
        for (int g = 0; g < 32; ++g)
            if ((v >> g) & 1)
                groups += (groups.empty() ? "" : ",") + std::to_string(g);
        return groups;
    }
    if (k.out == sent::hex) {
        char hex[16];
        std::snprintf(hex, sizeof hex, "0x%x", static_cast<unsigned>(v));
        return hex;
    }
    if (k.out == sent::uint) // "%u" of the member, as the writers send it
        return std::to_string(static_cast<uint32_t>(v));
    return number_text(k, v);
}

int run_schema(const cli::options &opt)
{
    if (opt.json && opt.markdown)
        return cli::fail(cli::exit_usage,
                         "schema: --json and --markdown exclude each other\ntry 'cfgmsg schema --help'");
    const std::optional<std::string> filter =
        opt.args.empty() ? std::nullopt : std::optional<std::string>(opt.args[0]);
    const bool json = opt.json, markdown = opt.markdown;
    // A concrete path selects its own node kind; otherwise PATH is the
    // beginning of the paths it selects.
    std::vector<const route *> nodes;
    glob pattern;
    std::string error;
    if (filter && is_glob(*filter)) {
        if (!compile_glob(*filter, pattern, error))
            return cli::fail(cli::exit_usage, "schema: " + error);
        for (const route &r : cfg::routes::all())
            if (kind_selected(r.kind.path, pattern))
                nodes.push_back(&r);
        if (nodes.empty())
            return cli::fail(cli::exit_no, "schema: no node path matches '" + *filter + "'");
    } else if (filter) {
        const routed where = route_path(*filter, CFG_MAX_PORTS);
        if (where.route != nullptr && where.fate == routed::stored)
            nodes.push_back(where.route);
    }
    if (nodes.empty())
        for (const route &r : cfg::routes::all())
            if (path_selected(r.kind.path, filter.value_or("")))
                nodes.push_back(&r);
    if (nodes.empty()) {
        return cli::fail(cli::exit_no, "schema: no node path begins with '" + *filter + "'");
    }
    if (json) {
        auto all = nlohmann::ordered_json::array();
        for (const route *r : nodes) {
            const node_kind *nk = &r->kind;
            nlohmann::ordered_json node;
            node["path"] = std::string(nk->path);
            node["writer"] = nk->writer.empty() ? nlohmann::ordered_json()
                                                : nlohmann::ordered_json(std::string(nk->writer));
            node["writers"] = nlohmann::ordered_json::array();
            for (const cfg::routes::writer &w : r->writers)
                node["writers"].push_back(std::string(w.name));
            node["params"] = nlohmann::ordered_json::array();
            for (const key &k : nk->keys->rows)
                node["params"].push_back(param_json(*r, k));
            all.push_back(std::move(node));
        }
        std::printf("%s\n", all.dump(2).c_str());
    } else if (markdown) {
        print_markdown(nodes);
    } else {
        print_text(nodes);
    }
    return std::fflush(stdout) == 0 ? cli::exit_ok
                                    : cli::fail(cli::exit_trouble, "cannot write standard output");
}

} // namespace cfgmsg
