// Time services: the seconds stored in every time-stamp, the status
// time-stamps, the exported pause, and the wake-up of the list waits.
#include "universalConfigParser/list_wake.h"

#include <cfgparser.h>

#include <ctime>
#include <pthread.h>
#include <sys/select.h>

namespace cfg::wake {
namespace {

constexpr long ns_per_s = 1000000000;

pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
pthread_cond_t recount_done;            // initialised once, by set_up
clockid_t pause_clock = CLOCK_REALTIME; // the clock of recount_done's time-outs
pthread_once_t set_up_once = PTHREAD_ONCE_INIT;
uint32_t current = 0; // the generation, under `mutex`

// The condition times out on the monotonic clock where the platform allows,
// so that a change of the wall clock neither stretches nor cuts a pause.
void set_up() noexcept
{
    pthread_condattr_t attributes;
    pthread_condattr_init(&attributes);
    if (pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC) == 0)
        pause_clock = CLOCK_MONOTONIC;
    pthread_cond_init(&recount_done, &attributes);
    pthread_condattr_destroy(&attributes);
}

} // namespace

int64_t monotonic_ns() noexcept
{
    timespec t{};
    clock_gettime(CLOCK_MONOTONIC, &t);
    return static_cast<int64_t>(t.tv_sec) * ns_per_s + t.tv_nsec;
}

uint32_t generation() noexcept
{
    pthread_mutex_lock(&mutex);
    const uint32_t g = current;
    pthread_mutex_unlock(&mutex);
    return g;
}

bool pause(uint32_t seen, long max_ns) noexcept
{
    pthread_once(&set_up_once, set_up);
    timespec until{};
    clock_gettime(pause_clock, &until);
    until.tv_nsec += max_ns > 0 ? max_ns : 0;
    if (until.tv_nsec >= ns_per_s) {
        until.tv_sec += 1;
        until.tv_nsec -= ns_per_s;
    }
    pthread_mutex_lock(&mutex);
    // Woken (or woken for nothing): test again; timed out (or any error): done.
    while (current == seen && pthread_cond_timedwait(&recount_done, &mutex, &until) == 0) {
    }
    const bool recounted = current != seen;
    pthread_mutex_unlock(&mutex);
    return recounted;
}

void recounted() noexcept
{
    pthread_once(&set_up_once, set_up);
    pthread_mutex_lock(&mutex);
    ++current;
    pthread_cond_broadcast(&recount_done);
    pthread_mutex_unlock(&mutex);
}

} // namespace cfg::wake

extern "C" {

// The mutex that guards every field of the configuration image.
pthread_mutex_t RWlockCfg = PTHREAD_MUTEX_INITIALIZER;

uint32_t cfgpars_get_monotonic_now_time(void) CFG_NOEXCEPT
{
    // Despite the name this follows the wall clock: the stamps are compared
    // with times the application takes from the same clock.
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<uint32_t>(now.tv_sec);
}

int32_t cfgpars_getTimeSec(void) CFG_NOEXCEPT
{
    return static_cast<int32_t>(time(nullptr));
}

int cfg_pause(int seconds, int milliseconds) CFG_NOEXCEPT
{
    timeval timeout{};
    timeout.tv_sec = seconds;
    timeout.tv_usec = static_cast<suseconds_t>(milliseconds) * 1000;
    return select(0, nullptr, nullptr, nullptr, &timeout);
}

} // extern "C"
