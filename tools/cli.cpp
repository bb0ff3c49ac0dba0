#include "cli.h"

#include <cstdio>

namespace cfgmsg::cli {

int fail(int status, const std::string &text) {
    std::fprintf(stderr, "cfgmsg: %s\n", text.c_str());
    return status;
}

}  // namespace cfgmsg::cli
