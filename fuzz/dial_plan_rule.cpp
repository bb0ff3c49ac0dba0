// cfgpars_dial_plan_string_to_t. The first input byte is max_ports (0..255),
// the rest the rule text. A refused text returns no entry and leaves the
// entry as it was; a taken one returns the entry, with every text member
// ending inside its array.
#include "check.h"
#include "text_input.h"

#include <cfgparser.h>

#include <cstdint>
#include <cstring>

namespace {

template <std::size_t N>
bool terminated(const char (&field)[N]) noexcept
{
    return std::memchr(field, '\0', N) != nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return -1;
    const uint32_t max_ports = data[0];
    const auto text = fuzz::text_input(data + 1, size - 1);

    dial_plan_t entry{};
    std::strcpy(entry.field1, "old");
    std::strcpy(entry.destination, "olddest");
    std::strcpy(entry.protocol, "sip");
    std::strcpy(entry.field6, "oldf6");
    entry.type = 4;
    entry.port_mask[0] = 0x5;
    const dial_plan_t before = entry;

    const dial_plan_t *result = cfgpars_dial_plan_string_to_t(&entry, text.data(), max_ports);
    if (result == nullptr) {
        fuzz::check(std::memcmp(&entry, &before, sizeof entry) == 0, "a refused rule changed the entry");
        return 0;
    }
    fuzz::check(result == &entry, "a taken rule returned another entry");
    fuzz::check(terminated(entry.destination) && terminated(entry.field1) && terminated(entry.protocol) &&
                    terminated(entry.field6),
                "a text member without its NUL");
    return 0;
}
