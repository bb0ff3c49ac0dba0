// `cfgmsg check [--ports N] [--json] FILE...`: the params of configuration
// messages that the library does not store exactly as sent, and why.
#pragma once

#include "cli.h"

namespace cfgmsg {

extern const char *const check_help;
int run_check(const cli::options &opt);

}  // namespace cfgmsg
