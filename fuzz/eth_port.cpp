// eth_port_string_to_output: the six flags of a switch port string; no bit
// beyond the six ports is ever set.
#include "check.h"
#include "text_input.h"

#include <cfgparser.h>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto text = fuzz::text_input(data, size);
    const uint32_t mask = eth_port_string_to_output(text.data());
    fuzz::check((mask >> CFG_SWITCH_PORTS) == 0, "a flag past the six switch ports");
    return 0;
}
