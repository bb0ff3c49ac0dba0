#include "msgjson.h"

#include <nlohmann/json.hpp>

namespace cfgmsg {

std::string to_json(const message &msg) {
    using json = nlohmann::ordered_json;
    json nodes = json::array();
    for (const node &nd : msg.nodes) {
        json params = json::array();
        for (const param &p : nd.params)
            params.push_back(json{{"name", p.name}, {"value", p.value ? json(*p.value) : json(nullptr)}});
        nodes.push_back(json{{"path", nd.path}, {"params", std::move(params)}});
    }
    const json doc{{"header0", msg.header0},
                   {"header2", msg.header2},
                   {"operation", msg.operation},
                   {"terminator", msg.terminator ? json(*msg.terminator) : json(nullptr)},
                   {"nodes", std::move(nodes)}};
    return doc.dump(2, ' ', false, json::error_handler_t::replace) + '\n';
}

}  // namespace cfgmsg
