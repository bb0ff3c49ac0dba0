#include "msgedit.h"

#include <algorithm>

namespace cfgmsg {

bool split_param_ref(std::string_view ref, std::string &path, std::string &name)
{
    const std::size_t dot = ref.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == ref.size())
        return false;
    path = ref.substr(0, dot);
    name = ref.substr(dot + 1);
    return true;
}

bool apply_edits(message &msg, const message_edits &edits, std::string &error)
{
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
            if (n.path == u.path)
                gone += std::erase_if(n.params, [&](const param &p) { return p.name == u.name; });
        if (gone == 0) {
            error = "no param '" + escape(u.name, field_kind::name) + "' in [" +
                    escape(u.path, field_kind::path) + "] to unset";
            return false;
        }
    }
    for (const param_set &s : edits.sets) {
        node *last = nullptr;
        bool found = false;
        for (node &n : nodes) {
            if (n.path != s.path)
                continue;
            last = &n;
            for (param &p : n.params)
                if (p.name == s.name)
                    p.value = s.value, found = true;
        }
        if (found)
            continue;
        if (last == nullptr)
            last = &nodes.emplace_back(node{s.path, {}});
        if (last->params.size() == max_field) {
            error = "[" + escape(s.path, field_kind::path) + "] already has 65535 params";
            return false;
        }
        last->params.push_back(param{s.name, s.value});
    }
    return true;
}

} // namespace cfgmsg
