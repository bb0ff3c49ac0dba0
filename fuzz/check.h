// Shared by the fuzz targets: a property check that stops the run, and the
// test that the parser left RWlockCfg free.
#pragma once

#include <cfgparser.h>

#include <cstdio>
#include <cstdlib>

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

} // namespace fuzz
