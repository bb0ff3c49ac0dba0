// Time services: the seconds stored in every time-stamp, the status
// time-stamps, and the pause of the list waits.
#include <cfgparser.h>

#include <ctime>
#include <sys/select.h>

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
