// `cfgmsg check [--ports N] [--json] FILE...`: the params of configuration
// messages that the library does not store exactly as sent, and why.
#pragma once

#include "cli.h"
#include "msgtext.h"

#include <cfgparser.h>

#include <optional>
#include <string>
#include <vector>

namespace cfgmsg {

// One param (or node, or message) that the library did not store as sent.
struct finding {
    std::string file;
    std::string path;
    std::string param;                 // empty: the whole node or message
    std::optional<std::string> sent;   // nullopt: no value
    std::optional<std::string> stored; // nullopt: nothing stored
    std::string reason;
};

// check's judgement of one message, stored over `image` (zero-filled at
// first, max_ports set) as the library would store it; findings appended.
void check_message(const std::string &file, const message &msg, cfg_image_t &image,
                   std::vector<finding> &out);

extern const char *const check_help;
int run_check(const cli::options &opt);

} // namespace cfgmsg
