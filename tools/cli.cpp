#include "cli.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace cfgmsg::cli {

int fail(int status, const std::string &text)
{
    std::fprintf(stderr, "cfgmsg: %s\n", text.c_str());
    return status;
}

std::optional<loaded_message> load(const std::string &file, std::optional<msg_format> want, unsigned accepts)
{
    std::string error;
    auto m = load_message(file, want, error, accepts);
    if (!m)
        fail(exit_trouble, error);
    return m;
}

int write_stdout(std::string_view data)
{
    if (std::fwrite(data.data(), 1, data.size(), stdout) != data.size() || std::fflush(stdout) != 0)
        return fail(exit_trouble, std::string("cannot write standard output: ") + std::strerror(errno));
    return exit_ok;
}

} // namespace cfgmsg::cli
