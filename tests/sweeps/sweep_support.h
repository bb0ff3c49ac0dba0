// Shared by the sweep programs: the full sample configuration, a clock that
// stands still (so that two images parsed from the same nodes are equal byte
// for byte, time-stamps included) and the lock check.
#pragma once

#include <cfgparser.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace sweep {

struct image_free {
    void operator()(cfg_image_t *image) const noexcept { std::free(image); }
};
using image_ptr = std::unique_ptr<cfg_image_t, image_free>;

// A zero-filled image for every port, as an application allocates it.
image_ptr fresh_image();

// examples/full-config.msg: header and body.
const std::vector<uint8_t> &full_sample();

// Offsets (from the message start) where each node of a message begins,
// followed by the offset of the terminating byte.
std::vector<std::size_t> node_starts(const std::vector<uint8_t> &message);

// Sets the body length field of a header.
void set_body_length_at(uint8_t *message, uint32_t length);
inline void set_body_length(std::vector<uint8_t> &message, uint32_t length)
{
    set_body_length_at(message.data(), length);
}

// While frozen, clock_gettime and time report one fixed instant.
void freeze_clock(bool frozen);

bool lock_is_free();

} // namespace sweep
