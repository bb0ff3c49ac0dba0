// check's judgement against the library (check_agrees.h) on whole
// messages (fuzz::whole_message), max_ports from header word 0.
#include "check.h"
#include "check_agrees.h"

#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::vector<uint8_t> message = fuzz::whole_message(data, size);
    if (message.empty())
        return -1;
    const std::string fault = check_agrees::check(message, fuzz::max_ports_of(message.data()));
    if (!fault.empty())
        std::fprintf(stderr, "check agrees: %s\n", fault.c_str());
    fuzz::check(fault.empty(), "check's judgement disagrees with the library");
    fuzz::check(fuzz::lock_is_free(), "RWlockCfg held after the check");
    return 0;
}
