// cfgmsg check: which params of a message the library did not store exactly
// as sent, and why.
//
// The messages are walked in order over an image of our own, with the
// library's key tables: each param's row is found and stored by the
// library's own store function, so the stored value is the one all_parser
// stores. A value counts as stored as sent when the member, shown as the
// section's writer would send it, reads back as the text that was sent.
#include "check.h"
#include "msgedit.h"
#include "value_check.h"

#include "msgload.h"
#include "apply.h"
#include "msgtext.h"
#include "route.h"
#include "schema.h"

#include <nlohmann/json.hpp>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace cfgmsg {

using cfg::keys::key;
using cfg::keys::kind;
using cfg::keys::rule;

namespace {

// "%d" reads a number here: white space, one sign, then a digit.
bool has_number(const char *value)
{
    while (*value == ' ' || (*value >= '\t' && *value <= '\r'))
        ++value;
    if (*value == '+' || *value == '-')
        ++value;
    return *value >= '0' && *value <= '9';
}

std::string why(const key &k, const char *value, const std::string &stored)
{
    const bool absent = value == nullptr || value[0] == '\0';
    const std::string def = "default " + stored + " used";
    switch (k.how) {
    case kind::text:
        return "longer than its field (" + std::to_string(k.at.size - 1) + " characters): cut";
    case kind::range:
    case kind::urange:
        if (absent)
            return "no value: " + def;
        if (!has_number(value))
            return k.min <= 0 && 0 <= k.max ? "not a number: read as 0" : "not a number: " + def;
        {
            const int64_t n = k.how == kind::urange
                                  ? int64_t{static_cast<uint32_t>(std::strtoll(value, nullptr, 10))}
                                  : int64_t{static_cast<int32_t>(std::strtoll(value, nullptr, 10))};
            if (n < k.min || n > k.max)
                return "out of range " + rule_text(k).substr(0, rule_text(k).find(',')) + ": " + def;
        }
        return "read as " + stored;
    case kind::number:
    case kind::integer:
    case kind::hex:
        if (absent)
            return "no value: " + stored + " stored";
        if (k.how != kind::integer && !has_number(value))
            return "not a number: value kept";
        return "read as " + stored;
    case kind::checkbox:
        return "read as " + stored;
    case kind::special:
        break;
    }
    if (k.special == rule::text_or_default && absent)
        return "no value: " + def;
    if ((k.special == rule::text_or_default || k.special == rule::text_and_flag) && value != nullptr &&
        std::strlen(value) > k.at.size - 1u)
        return "longer than its field (" + std::to_string(k.at.size - 1) + " characters): cut";
    return "read as " + stored;
}

// The rows whose stored member `check` can show as text: all but the list
// entries with formats of their own.
bool comparable(const key &k)
{
    switch (k.special) {
    case rule::none:
    case rule::pickup_groups:
    case rule::text_or_default:
    case rule::number_or_keep:
    case rule::text_and_flag:
    case rule::packet_time:
    case rule::g726_packet_time:
    case rule::t38_datagram:
        return true;
    default:
        return false;
    }
}

// The row and entry a param name addresses in a route; entry -1 when the
// name's entry number is missing or out of range.
const key *row_of(const cfg::routes::route &r, const std::string &name, int &entry)
{
    int32_t e = 0;
    const key *k = cfg::routes::row_of(r, name.c_str(), e);
    entry = e;
    return k;
}

} // namespace

void check_message(const std::string &file, const message &msg, cfg_image_t &image, std::vector<finding> &out)
{
    for (const node &nd : msg.nodes) {
        const routed where = route_path(nd.path, image.max_ports);
        if (where.route == nullptr) {
            out.push_back({file, nd.path, "", std::nullopt, std::nullopt, "unknown node: skipped"});
            continue;
        }
        if (where.fate == routed::skipped) {
            out.push_back({file, nd.path, "", std::nullopt, std::nullopt, "names no record: skipped"});
            continue;
        }
        if (where.fate == routed::stops_message) {
            out.push_back({file, nd.path, "", std::nullopt, std::nullopt,
                           "names no record: the rest of the message is dropped"});
            return;
        }
        if (where.stored_path != nd.path)
            out.push_back({file, nd.path, "", std::nullopt, std::nullopt, "stored as " + where.stored_path});
        if (where.beyond_max_ports)
            out.push_back({file, nd.path, "", std::nullopt, std::nullopt,
                           "stored, but not sent with max_ports " + std::to_string(image.max_ports)});
        const cfg::routes::route *nk = where.route;
        auto *record = reinterpret_cast<uint8_t *>(&image) + where.record;
        const bool group = nk->kind.rules == cfg::keys::node_rules::group;
        for (const param &p : nd.params) {
            // A hunt group keeps what a param without a value names.
            if (group && !p.value)
                continue;
            int n = 0;
            const key *k = row_of(*nk, p.name, n);
            if (k == nullptr) {
                out.push_back({file, nd.path, p.name, p.value, std::nullopt, "unknown key: ignored"});
                continue;
            }
            if (n < 0) {
                out.push_back(
                    {file, nd.path, p.name, p.value, std::nullopt, "entry number out of range: ignored"});
                continue;
            }
            // The two quote characters stand for an empty text.
            const char *value = !p.value || *p.value == "\"\"" ? nullptr : p.value->c_str();
            cfg::keys::store(*k, record, value, static_cast<unsigned>(n));
            if (!comparable(*k))
                continue;
            const std::string stored = stored_text(*k, record, static_cast<unsigned>(n));
            if (value == nullptr ? stored.empty() || stored == "0" : stored == *p.value)
                continue; // stored as sent (no value clears a number)
            // The library reads a value up to its first NUL byte.
            const bool cut_at_nul =
                value != nullptr && p.value->size() != std::strlen(value) && stored == value;
            out.push_back({file, nd.path, p.name, p.value, stored,
                           cut_at_nul ? "a NUL byte in the value: read up to it" : why(*k, value, stored)});
        }
    }
}

namespace {

// The list entries of one message that the writers (their output `sent`)
// do not send as they came: renumbered, or not kept or not counted.
void list_entries_of(const std::string &file, const message &msg, const message &sent, uint32_t max_ports,
                     std::vector<finding> &out)
{
    for (const node &nd : msg.nodes) {
        const routed where = route_path(nd.path, max_ports);
        if (where.route == nullptr || where.fate != routed::stored)
            continue;
        const node *out_node = nullptr;
        for (const node &o : sent.nodes)
            if (o.path == where.stored_path && out_node == nullptr)
                out_node = &o;
        for (const param &p : nd.params) {
            int32_t entry = 0;
            const key *k = cfg::routes::row_of(*where.route, p.name.c_str(), entry);
            if (k == nullptr || k->count == 0 || entry < 0 || !p.value || *p.value == "\"\"" ||
                (k->special != rule::host_line && k->special != rule::route_line &&
                 k->special != rule::limit_line && k->special != rule::snmp_user_line))
                continue;
            std::optional<std::string> same_name, same_value;
            if (out_node != nullptr)
                for (const param &q : out_node->params) {
                    if (q.name == p.name)
                        same_name = q.value.value_or("");
                    else if (q.value == p.value && !same_value)
                        same_value = q.name;
                }
            if (same_name && *same_name == *p.value)
                continue;
            if (same_value)
                out.push_back(
                    {file, nd.path, p.name, p.value, std::nullopt, "renumbered: sent as " + *same_value});
            else if (!same_name || same_name != p.value)
                out.push_back({file, nd.path, p.name, p.value, same_name,
                               "list entry not kept or not counted: not sent as " + p.name});
        }
    }
}

// The entries of the lists with line formats of their own (hosts, routes,
// rules, limits, ...), judged by what the library's writers send after every
// message: an entry sent under another name was renumbered (the writers send
// the entries they counted, from the first), one not sent at all was not
// kept or not counted.
void list_entries(const std::vector<std::pair<std::string, message>> &messages, uint32_t max_ports,
                  std::vector<finding> &out)
{
    image_ptr image = fresh_image(max_ports);
    for (const auto &[file, msg] : messages) {
        // Each message is judged by what the writers send right after it,
        // as a later message may fill the same entries again. The library's
        // error lines are dropped meanwhile: standard output carries the
        // findings, which report what those lines are about.
        message sent;
        std::string error;
        std::fflush(stdout);
        const int saved = dup(STDOUT_FILENO);
        const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (saved >= 0 && null >= 0)
            dup2(null, STDOUT_FILENO);
        if (null >= 0)
            close(null);
        apply_message(*image, encode(msg));
        const bool written = configuration_of(*image, sent, error);
        std::fflush(stdout);
        if (saved >= 0) {
            dup2(saved, STDOUT_FILENO);
            close(saved);
        }
        if (written)
            list_entries_of(file, msg, sent, max_ports, out);
    }
}

} // namespace

std::optional<std::string> value_warning(std::string_view path, std::string_view param,
                                         std::string_view value)
{
    if (auto why = path_warning(std::string(path)))
        return why;
    const routed where = route_path(std::string(path), CFG_MAX_PORTS);
    const cfg::routes::route *nk = where.route;
    int n = 0;
    const key *k = row_of(*nk, std::string(param), n);
    if (k == nullptr)
        return "no such key: the library ignores it";
    if (n < 0)
        return "entry number out of range: the library ignores it";
    std::vector<uint8_t> record(nk->kind.stride, 0);
    const std::string text(value);
    const char *v = text.empty() || text == "\"\"" ? nullptr : text.c_str();
    cfg::keys::store(*k, record.data(), v, static_cast<unsigned>(n));
    if (!comparable(*k))
        return std::nullopt;
    const std::string stored = stored_text(*k, record.data(), static_cast<unsigned>(n));
    if (stored == (v == nullptr ? "" : text) || (v == nullptr && stored == "0"))
        return std::nullopt;
    return "stored as \"" + stored + "\": " + why(*k, v, stored);
}

namespace {

std::string quoted(const std::optional<std::string> &v)
{
    return v ? "\"" + escape(*v, field_kind::value) + "\"" : "(no value)";
}

} // namespace

const char *const check_help =
    "usage: cfgmsg check [--ports N] [--json | -q] [--redact] FILE...\n"
    "\n"
    "Reads the messages in order, as 'apply' does, and reports every param\n"
    "that the library did not store exactly as sent: its node path, name, the\n"
    "value sent, the value stored (as the section's writer sends it) and why:\n"
    "  out of range or not a number: the default was used\n"
    "  longer than its field: the text was cut\n"
    "  unknown key: ignored; unknown node: skipped\n"
    "A param without a value that clears its field (an empty text, 0) counts\n"
    "as stored as sent. List entries with formats of their own (dial-plan\n"
    "rules, hosts, routes, ...) are stored but not compared.\n"
    "\n"
    "options:\n"
    "  --ports N  max_ports of the image (1..72, default 72)\n"
    "  --json     the findings as a JSON array of {\"file\", \"path\", \"param\",\n"
    "             \"sent\", \"stored\", \"reason\"}\n"
    "  -q, --quiet print no finding; the exit status alone tells\n"
    "  --redact   show the values of secret params as *** (as decode --redact)\n"
    "  --help     this text\n"
    "\n"
    "Exit status: 0 every param stored as sent, 1 any was not, 2 usage error\n"
    "or a FILE that cannot be read or is malformed (reported on standard\n"
    "error with the place of the fault, never as a finding).\n";

int run_check(const cli::options &opt)
{
    const bool json = opt.json;
    const uint32_t ports = opt.ports;
    const std::vector<std::string> &files = opt.args;
    std::unique_ptr<cfg_image_t, image_free> image(
        static_cast<cfg_image_t *>(std::calloc(1, sizeof(cfg_image_t))));
    image->max_ports = ports;
    std::vector<finding> findings;
    std::vector<std::pair<std::string, message>> loaded_messages;
    for (const std::string &file : files) {
        const auto loaded = cli::load(file);
        if (!loaded)
            return cli::exit_trouble;
        check_message(file, loaded->msg, *image, findings);
        loaded_messages.push_back({file, loaded->msg});
    }
    list_entries(loaded_messages, ports, findings);
    if (opt.redact)
        for (finding &f : findings) {
            f.sent = redacted(f.path, f.param, f.sent);
            f.stored = redacted(f.path, f.param, f.stored);
        }

    if (opt.quiet)
        return findings.empty() ? cli::exit_ok : cli::exit_no;
    if (json) {
        auto all = nlohmann::ordered_json::array();
        for (const finding &f : findings) {
            nlohmann::ordered_json j;
            j["file"] = f.file;
            j["path"] = f.path;
            j["param"] = f.param;
            j["sent"] = f.sent ? nlohmann::ordered_json(*f.sent) : nlohmann::ordered_json();
            j["stored"] = f.stored ? nlohmann::ordered_json(*f.stored) : nlohmann::ordered_json();
            j["reason"] = f.reason;
            all.push_back(std::move(j));
        }
        std::printf("%s\n",
                    all.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace).c_str());
    } else {
        for (const finding &f : findings) {
            std::string line = f.file + ": ";
            if (!f.path.empty())
                line += escape(f.path, field_kind::path);
            if (!f.param.empty())
                line += " " + escape(f.param, field_kind::name) + ": sent " + quoted(f.sent) +
                        (f.stored ? ", stored " + quoted(f.stored) : std::string());
            line += (f.path.empty() ? "" : ": ") + f.reason;
            std::printf("%s\n", line.c_str());
        }
    }
    if (std::fflush(stdout) != 0)
        return cli::fail(cli::exit_trouble, "cannot write standard output");
    return findings.empty() ? cli::exit_ok : cli::exit_no;
}

} // namespace cfgmsg
