// The port flag string of the switch ("1 0 1 0 0 1": six flags, flag i at
// character 2i).
#include "universalConfigParser/text_numbers.h"

#include <cfgparser.h>

#include <cstdint>
#include <cstring>

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
        if (cfg::numbers::scan_entry(flag, n) != nullptr && n == 1)
            mask |= 1u << i;
    }
    return mask;
}

} // extern "C"
