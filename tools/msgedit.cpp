#include "msgedit.h"

#include <algorithm>
#include <cctype>

namespace cfgmsg {

bool split_param_ref(std::string_view ref, std::string &path, std::string &name) {
    const std::size_t dot = ref.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == ref.size()) return false;
    path = ref.substr(0, dot);
    name = ref.substr(dot + 1);
    return true;
}

bool apply_edits(message &msg, const message_edits &edits, std::string &error) {
    auto &nodes = msg.nodes;
    for (const std::string &path : edits.delete_nodes) {
        const auto gone = std::erase_if(nodes, [&](const node &n) { return n.path == path; });
        if (gone == 0) {
            error = "no node [" + escape(path, field_kind::path) + "] to delete";
            return false;
        }
    }
    for (const param_ref &u : edits.unsets) {
        std::size_t gone = 0;
        for (node &n : nodes)
            if (n.path == u.path) gone += std::erase_if(n.params, [&](const param &p) { return p.name == u.name; });
        if (gone == 0) {
            error = "no param '" + escape(u.name, field_kind::name) + "' in [" + escape(u.path, field_kind::path) +
                    "] to unset";
            return false;
        }
    }
    for (const param_set &s : edits.sets) {
        node *last = nullptr;
        bool found = false;
        for (node &n : nodes) {
            if (n.path != s.path) continue;
            last = &n;
            for (param &p : n.params)
                if (p.name == s.name) p.value = s.value, found = true;
        }
        if (found) continue;
        if (last == nullptr) last = &nodes.emplace_back(node{s.path, {}});
        if (last->params.size() == max_field) {
            error = "[" + escape(s.path, field_kind::path) + "] already has 65535 params";
            return false;
        }
        last->params.push_back(param{s.name, s.value});
    }
    return true;
}

namespace {

bool contains_word(std::string_view name, std::string_view word) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    return lower.find(word) != std::string::npos;
}

}  // namespace

std::optional<std::string> redacted(std::string_view path, std::string_view name,
                                    const std::optional<std::string> &value) {
    if (!value || *value == "\"\"") return value;  // nothing, or an empty text: no secret shown
    if (path.starts_with("config.Network.snmp_users")) {
        // "USER PASSWORD LEVEL": the second word is the secret.
        const std::size_t from = value->find_first_not_of(' ', value->find(' '));
        if (from == std::string::npos) return value;
        const std::size_t to = std::min(value->find(' ', from), value->size());
        return value->substr(0, from) + "***" + value->substr(to);
    }
    for (std::string_view word : {"pass", "secret", "key", "communit", "psk"})
        if (contains_word(name, word)) return "***";
    return value;
}

void redact(message &msg) {
    for (node &n : msg.nodes)
        for (param &p : n.params) p.value = redacted(n.path, p.name, p.value);
}

}  // namespace cfgmsg
