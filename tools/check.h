// `cfgmsg check [--ports N] [--json] FILE...`: the params of configuration
// messages that the library does not store exactly as sent, and why.
#pragma once

namespace cfgmsg {

int check_main(int argc, char **argv);

}  // namespace cfgmsg
