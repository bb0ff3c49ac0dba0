// The round-trip property (roundtrip.h) on any message: the body length
// field is set to the bytes after the header, header word 0 picks max_ports
// as in fuzz_all_parser. A fault stops the run with the first difference.
#include "check.h"
#include "roundtrip.h"

#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < CFG_MSG_HEADER_SIZE || size - CFG_MSG_HEADER_SIZE > UINT32_MAX)
        return -1;
    std::vector<uint8_t> message(data, data + size);
    const auto body_length = static_cast<uint32_t>(size - CFG_MSG_HEADER_SIZE);
    for (int i = 0; i < 4; ++i)
        message[CFG_MSG_BODY_LENGTH_OFFSET + i] = static_cast<uint8_t>(body_length >> (8 * i));

    const std::string fault = roundtrip::check(message.data());
    if (!fault.empty())
        std::fprintf(stderr, "round trip: %s\n", fault.c_str());
    fuzz::check(fault.empty(), "a parsed image does not round-trip through the writers");
    fuzz::check(fuzz::lock_is_free(), "RWlockCfg held after the round trip");
    return 0;
}
