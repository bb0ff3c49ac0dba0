// The round-trip property (roundtrip.h) on any input made a whole message
// (fuzz::whole_message). A fault stops the run with the first difference.
// Inputs below whole_from bytes run the focused check, which writes only
// the sections the message touched; larger ones, the whole configurations
// among the seeds (fuzz/run replays them whole before it fuzzes with
// smaller inputs), run the whole check.
#include "check.h"
#include "roundtrip.h"

#include <cstdio>

namespace {
constexpr size_t whole_from = 64 * 1024;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::vector<uint8_t> message = fuzz::whole_message(data, size);
    if (message.empty())
        return -1;
    const std::string fault = roundtrip::check(message.data(), size < whole_from);
    if (!fault.empty())
        std::fprintf(stderr, "round trip: %s\n", fault.c_str());
    fuzz::check(fault.empty(), "a parsed image does not round-trip through the writers");
    fuzz::check(fuzz::lock_is_free(), "RWlockCfg held after the round trip");
    return 0;
}
