// cfgpars_string_from0_to_mask and cfg_mask_to_string. The first input byte
// is max_ports (0..255), the rest the mask text. A refused text leaves the
// mask as it was; a taken one, written back as text and read again, keeps
// every position below max_ports (a mask has 96 positions at most).
#include "check.h"
#include "text_input.h"

#include <cfgparser.h>

#include <cstdint>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return -1;
    const uint32_t max_ports = data[0];
    const auto text = fuzz::text_input(data + 1, size - 1);

    const uint32_t untouched[3] = {0x12345678u, 0x9abcdef0u, 0x0f0f0f0fu};
    uint32_t mask[3] = {untouched[0], untouched[1], untouched[2]};
    const int result = cfgpars_string_from0_to_mask(text.data(), mask, max_ports);
    fuzz::check(result == 0 || result == -1, "mask reader returned neither 0 nor -1");
    if (result != 0) {
        fuzz::check(std::memcmp(mask, untouched, sizeof mask) == 0, "a refused mask text changed the mask");
        return 0;
    }

    // Pickup rules (type 6) read 32 positions whatever max_ports is.
    char out[CFG_MASK_TEXT_SIZE];
    for (const uint32_t type : {4u, 6u}) {
        std::memset(out, 'x', sizeof out);
        fuzz::check(cfg_mask_to_string(mask, out, type, max_ports) == out,
                    "mask writer returned another buffer");
        fuzz::check(std::memchr(out, '\0', sizeof out) != nullptr, "mask text without its NUL");
    }

    if (max_ports == 0)
        return 0;
    cfg_mask_to_string(mask, out, 4, max_ports);
    uint32_t back[3] = {0, 0, 0};
    fuzz::check(cfgpars_string_from0_to_mask(out, back, max_ports) == 0, "the written mask text is refused");
    for (uint32_t k = 0; k < max_ports && k < 96; ++k)
        fuzz::check(((mask[k / 32] >> (k % 32)) & 1u) == ((back[k / 32] >> (k % 32)) & 1u),
                    "mask -> text -> mask lost a position");
    return 0;
}
