// Shared by the fuzz targets: a property check that stops the run, the
// test that the parser left RWlockCfg free, and how an input becomes a
// whole message.
#pragma once

#include <cfgparser.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace fuzz {

// The message goes to standard error and abort() makes libFuzzer keep the
// input as a crash.
inline void check(bool holds, const char *what) noexcept
{
    if (holds)
        return;
    std::fprintf(stderr, "fuzz check failed: %s\n", what);
    std::abort();
}

inline bool lock_is_free() noexcept
{
    if (pthread_mutex_trylock(&RWlockCfg) != 0)
        return false;
    pthread_mutex_unlock(&RWlockCfg);
    return true;
}

// A copy of exactly the input's size (so that any read past the body is
// caught) with the body length field set to the bytes after the header, so
// that every input is a message the parser may receive and the fuzzer
// spends its time inside the nodes. Empty for an input without a whole
// header or with a body too long for the field.
inline std::vector<uint8_t> whole_message(const uint8_t *data, size_t size)
{
    if (size < CFG_MSG_HEADER_SIZE || size - CFG_MSG_HEADER_SIZE > UINT32_MAX)
        return {};
    std::vector<uint8_t> message(data, data + size);
    const auto body_length = static_cast<uint32_t>(size - CFG_MSG_HEADER_SIZE);
    for (int i = 0; i < 4; ++i)
        message[CFG_MSG_BODY_LENGTH_OFFSET + i] = static_cast<uint8_t>(body_length >> (8 * i));
    return message;
}

// Header word 0, which the parser does not read, picks max_ports: 0 gives
// 72, n gives n - 1 (the application may set any count; the port lists stop
// at 72).
inline uint32_t max_ports_of(const uint8_t *message) noexcept
{
    uint32_t word0 = 0;
    for (int i = 3; i >= 0; --i)
        word0 = (word0 << 8) | message[i]; // little-endian
    return word0 == 0 ? CFG_MAX_PORTS : word0 - 1;
}

} // namespace fuzz
