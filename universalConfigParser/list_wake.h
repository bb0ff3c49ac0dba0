// Wake-up of the list waits. Every recount moves a generation number on and
// wakes every thread pausing in a wait, which then tests its marker at once
// instead of at the end of its 10 ms pause. The generation has its own mutex
// (never RWlockCfg), so that nothing here holds the image's lock.
#pragma once

#include <cstdint>

namespace cfg::wake {

// The current generation. A wait takes it before it tests its marker, so
// that a recount between the test and the pause ends the pause at once.
uint32_t generation() noexcept;

// Pauses until the generation is no longer `seen`, or for `max_ns`
// nanoseconds at most (less than a second). True when a recount ended it.
bool pause(uint32_t seen, long max_ns) noexcept;

// Called after every recount: next generation, every paused thread woken.
void recounted() noexcept;

// Nanoseconds of the monotonic clock, for the waits' deadline.
int64_t monotonic_ns() noexcept;

} // namespace cfg::wake
