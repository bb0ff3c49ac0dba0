#include "msgjson.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>

namespace cfgmsg {

namespace {

std::string dumped(const nlohmann::ordered_json &j)
{
    return j.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace

std::string json_head(const message &msg)
{
    using json = nlohmann::ordered_json;
    const json doc{{"header0", msg.header0},
                   {"header2", msg.header2},
                   {"operation", msg.operation},
                   {"terminator", msg.terminator ? json(*msg.terminator) : json(nullptr)},
                   {"nodes", json::array()}};
    std::string head = dumped(doc); // ends with "[]\n}"
    return head.substr(0, head.rfind("[]") + 1);
}

std::string json_node(const node &nd)
{
    using json = nlohmann::ordered_json;
    json params = json::array();
    for (const param &p : nd.params)
        params.push_back(json{{"name", p.name}, {"value", p.value ? json(*p.value) : json(nullptr)}});
    // As an element of "nodes": every line indented by two levels.
    std::string out = "    ";
    for (const char c : dumped(json{{"path", nd.path}, {"params", std::move(params)}})) {
        out += c;
        if (c == '\n')
            out += "    ";
    }
    return out;
}

std::string json_tail(std::size_t nodes)
{
    return nodes == 0 ? "]\n}\n" : "\n  ]\n}\n";
}

std::string to_json(const message &msg)
{
    std::string out = json_head(msg);
    for (std::size_t i = 0; i < msg.nodes.size(); ++i)
        out += (i == 0 ? "\n" : ",\n") + json_node(msg.nodes[i]);
    return out + json_tail(msg.nodes.size());
}

namespace {

using json = nlohmann::json;

// A document of the wrong shape: where (a JSON pointer) and why.
struct shape_error {
    std::string where;
    std::string reason;
};

void check_keys(const json &object, const std::string &where, std::initializer_list<const char *> known)
{
    if (!object.is_object())
        throw shape_error{where.empty() ? "/" : where, "expected an object"};
    for (const auto &[key, value] : object.items()) {
        bool ok = false;
        for (const char *k : known)
            ok = ok || key == k;
        if (!ok)
            throw shape_error{where + "/" + key, "unknown key '" + key + "'"};
    }
}

std::uint32_t number(const json &object, const char *key, const std::string &where, std::uint32_t max,
                     std::uint32_t fallback)
{
    if (!object.contains(key))
        return fallback;
    const json &v = object[key];
    if (!v.is_number_unsigned() || v.get<std::uint64_t>() > max)
        throw shape_error{where + "/" + key, "expected a whole number from 0 to " + std::to_string(max)};
    return static_cast<std::uint32_t>(v.get<std::uint64_t>());
}

std::string text(const json &v, const std::string &where, const char *what)
{
    if (!v.is_string())
        throw shape_error{where, std::string("expected a string (the ") + what + ")"};
    std::string s = v.get<std::string>();
    if (s.size() > max_field)
        throw shape_error{where,
                          std::string(what) + " longer than 65535 bytes (" + std::to_string(s.size()) + ")"};
    return s;
}

node to_node(const json &n, const std::string &at)
{
    check_keys(n, at, {"path", "params"});
    if (!n.contains("path"))
        throw shape_error{at, "node without \"path\""};
    node nd{text(n["path"], at + "/path", "path"), {}};
    if (n.contains("params")) {
        const json &params = n["params"];
        if (!params.is_array())
            throw shape_error{at + "/params", "expected an array of params"};
        if (params.size() > max_field)
            throw shape_error{at + "/params", "more than 65535 params in one node"};
        for (std::size_t k = 0; k < params.size(); ++k) {
            const std::string pat = at + "/params/" + std::to_string(k);
            check_keys(params[k], pat, {"name", "value"});
            if (!params[k].contains("name"))
                throw shape_error{pat, "param without \"name\""};
            param p{text(params[k]["name"], pat + "/name", "name"), std::nullopt};
            if (params[k].contains("value") && !params[k]["value"].is_null()) {
                std::string value = text(params[k]["value"], pat + "/value", "value, or null for none");
                if (!value.empty())
                    p.value = std::move(value);
            }
            nd.params.push_back(std::move(p));
        }
    }
    return nd;
}

message to_message(const json &doc)
{
    check_keys(doc, "", {"header0", "header2", "operation", "terminator", "nodes"});
    message msg;
    msg.header0 = number(doc, "header0", "", 0xFFFFFFFFu, 0);
    msg.header2 = number(doc, "header2", "", 0xFFFFFFFFu, 0);
    msg.operation = static_cast<std::uint8_t>(number(doc, "operation", "", 0xFF, 2));
    if (doc.contains("terminator") && doc["terminator"].is_null())
        msg.terminator.reset();
    else
        msg.terminator = static_cast<std::uint8_t>(number(doc, "terminator", "", 0xFF, 0));
    if (!doc.contains("nodes"))
        return msg;
    if (!doc["nodes"].is_array())
        throw shape_error{"/nodes", "expected an array of nodes"};
    for (std::size_t i = 0; i < doc["nodes"].size(); ++i)
        msg.nodes.push_back(to_node(doc["nodes"][i], "/nodes/" + std::to_string(i)));
    return msg;
}

// Length of the UTF-8 sequence at s[i], or 0 when it is not one.
std::size_t utf8_length(std::string_view s, std::size_t i)
{
    const auto b = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
    const unsigned c = b(i);
    const std::size_t n = c < 0x80             ? 1
                          : (c & 0xE0) == 0xC0 ? 2
                          : (c & 0xF0) == 0xE0 ? 3
                          : (c & 0xF8) == 0xF0 ? 4
                                               : 0;
    if (n == 0 || i + n > s.size())
        return 0;
    std::uint32_t cp = n == 1 ? c : c & (0x7F >> n);
    for (std::size_t k = 1; k < n; ++k) {
        if ((b(i + k) & 0xC0) != 0x80)
            return 0;
        cp = cp << 6 | (b(i + k) & 0x3F);
    }
    static constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (cp < smallest[n] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        return 0;
    return n;
}

bool is_utf8(std::string_view s)
{
    for (std::size_t i = 0, n; i < s.size(); i += n)
        if ((n = utf8_length(s, i)) == 0)
            return false;
    return true;
}

} // namespace

bool from_json(std::string_view text, message &out, json_error &err)
{
    try {
        // Each element of the top "nodes" array is taken into a node as soon
        // as it is parsed and dropped from the document, so that a large
        // document is never held whole. Faults are reported in the order of
        // a whole reading: syntax, then the top object, then the first node.
        std::vector<node> nodes;
        std::optional<shape_error> node_fault;
        bool in_nodes = false, nodes_key = false;
        const json::parser_callback_t take = [&](int depth, json::parse_event_t event, json &parsed) {
            using ev = json::parse_event_t;
            if (depth == 1 && event == ev::key) {
                nodes_key = parsed == "nodes";
                if (nodes_key)
                    nodes.clear(), node_fault.reset(); // the last "nodes" counts
            } else if (depth == 1 && event == ev::array_start)
                in_nodes = nodes_key;
            else if (depth == 1 && event == ev::array_end)
                in_nodes = false;
            else if (depth == 2 && in_nodes &&
                     (event == ev::object_end || event == ev::array_end || event == ev::value)) {
                if (!node_fault)
                    try {
                        nodes.push_back(to_node(parsed, "/nodes/" + std::to_string(nodes.size())));
                    } catch (const shape_error &e) {
                        node_fault = e;
                    }
                return false;
            }
            return true;
        };
        message msg = to_message(json::parse(text, take));
        if (node_fault)
            throw *node_fault;
        msg.nodes = std::move(nodes);
        out = std::move(msg);
        return true;
    } catch (const json::parse_error &e) {
        // "[json.exception.parse_error.101] parse error at line 1, column 2: reason"
        std::string what = e.what();
        const std::size_t at = what.find(" at line ");
        const std::size_t colon = what.find(": ", at == std::string::npos ? 0 : at);
        err.where = at != std::string::npos && colon != std::string::npos
                        ? what.substr(at + 4, colon - at - 4)
                        : "byte " + std::to_string(e.byte);
        err.reason = colon != std::string::npos ? what.substr(colon + 2) : what;
    } catch (const shape_error &e) {
        err.where = e.where;
        err.reason = e.reason;
    }
    return false;
}

std::optional<std::string> first_non_utf8(const message &msg)
{
    for (std::size_t i = 0; i < msg.nodes.size(); ++i)
        if (auto where = non_utf8_in(msg.nodes[i], i))
            return where;
    return std::nullopt;
}

std::optional<std::string> non_utf8_in(const node &nd, std::size_t index)
{
    const std::string label = "node " + std::to_string(index + 1);
    if (!is_utf8(nd.path))
        return label + " path";
    for (std::size_t k = 0; k < nd.params.size(); ++k) {
        const param &p = nd.params[k];
        const std::string at =
            label + " (" + escape(nd.path, field_kind::path) + ") param " + std::to_string(k + 1);
        if (!is_utf8(p.name))
            return at + " name";
        if (p.value && !is_utf8(*p.value))
            return at + " (" + escape(p.name, field_kind::name) + ") value";
    }
    return std::nullopt;
}

} // namespace cfgmsg
