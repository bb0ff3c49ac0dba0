// The port flag string of the switch ("1 0 1 0 0 1": six flags, flag i at
// character 2i) and the entry numbers in switch param names.
#include "universalConfigParser/switch_names.h"

#include <cfgparser.h>

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace cfg::switch_names {

bool scan_number(const char *&text, int64_t &out) noexcept
{
    const char *p = text;
    while (std::isspace(static_cast<unsigned char>(*p)))
        ++p;
    if (*p == '+' || *p == '-')
        ++p;
    if (*p < '0' || *p > '9')
        return false;
    char *end = nullptr;
    const int saved = errno;
    out = std::strtoll(text, &end, 10); // saturates on overflow
    errno = saved;
    text = end;
    return true;
}

int32_t entry_after_key(const char *name, std::string_view key, int32_t count, int32_t none) noexcept
{
    const char *text = name + key.size();
    int64_t n = 0;
    if (!scan_number(text, n))
        return none;
    return n >= 0 && n < count ? static_cast<int32_t>(n) : -1;
}

} // namespace cfg::switch_names

extern "C" {

// A null text holds no flags and gives 0. A flag counts only when the number
// read is exactly 1: "1" followed by more digits is a different (larger)
// number, even one whose low 32 bits happen to be 1.
uint32_t eth_port_string_to_output(const char *text) CFG_NOEXCEPT
{
    if (text == nullptr)
        return 0;
    const std::size_t length = std::strlen(text);
    uint32_t mask = 0;
    for (std::size_t i = 0; i < CFG_SWITCH_PORTS; ++i) {
        const std::size_t at = 2 * i;
        if (at >= length)
            break;
        const char *flag = text + at;
        int64_t n = 0;
        if (cfg::switch_names::scan_number(flag, n) && n == 1)
            mask |= 1u << i;
    }
    return mask;
}

} // extern "C"
