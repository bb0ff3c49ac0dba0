// firewall_rule_string_to_t and print_rule_string. The rule text is split
// in place, so the parser gets a NUL-terminated copy. Every record has a
// text form that fits its buffer; the text form of an accepted rule parses
// back into the same record.
#include "check.h"
#include "text_input.h"

#include <cfgparser.h>

#include <cstdint>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    auto text = fuzz::text_input(data, size);
    firewall_rule_t rule;
    std::memset(&rule, 0x5A, sizeof rule); // cleared by the parser
    fuzz::check(firewall_rule_string_to_t(text.data(), &rule) == 0, "rule reader did not return 0");

    char out[CFG_RULE_TEXT_SIZE];
    std::memset(out, 'Z', sizeof out);
    const int n = print_rule_string(&rule, out);
    fuzz::check(n >= 0 && n < CFG_RULE_TEXT_SIZE && static_cast<std::size_t>(n) == std::strlen(out),
                "rule text length disagrees with the result");
    if (rule.valid != 1)
        return 0;

    firewall_rule_t again;
    std::memset(&again, 0xA5, sizeof again);
    fuzz::check(firewall_rule_string_to_t(out, &again) == 0, "rule reader did not return 0");
    fuzz::check(std::memcmp(&again, &rule, sizeof rule) == 0,
                "text form of a rule parsed into another record");
    return 0;
}
