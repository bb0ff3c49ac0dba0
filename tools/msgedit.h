// Edits of a message by node path and param name, as 'cfgmsg set' makes
// them (the redaction of secrets is redact.h).
#pragma once

#include "msgtext.h"
#include "redact.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cfgmsg {

// "config.VOIP.h323.password" -> path "config.VOIP.h323", name "password":
// the name is what follows the last '.'. False when there is no '.' or
// either part is empty.
bool split_param_ref(std::string_view ref, std::string &path, std::string &name);

struct param_ref {
    std::string path;
    std::string name;
};

struct param_set {
    std::string path;
    std::string name;
    std::optional<std::string> value; // nullopt: 'PATH.PARAM=' (no value)
};

// Applied in this order: every node of each deleted path is removed, then
// every occurrence of each unset param, then each set: every occurrence of
// the param in nodes of its path takes the value; when there is none, the
// param is added at the end of the last node of that path, or in a new node
// at the end of the message.
struct message_edits {
    std::vector<std::string> delete_nodes;
    std::vector<param_ref> unsets;
    std::vector<param_set> sets;
};

// False with `error` set ("no node [PATH] to delete", "no param ... to
// unset") when a deletion or unset finds nothing; `msg` is then partly
// edited and must be dropped.
bool apply_edits(message &msg, const message_edits &edits, std::string &error);

} // namespace cfgmsg
