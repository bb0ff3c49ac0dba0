// Shared by the sweep programs: the full sample configuration, a clock that
// stands still (so that two images parsed from the same nodes are equal byte
// for byte, time-stamps included); and, for the unit tests too (support.h),
// a fresh image, the lock check and the body length field.
#pragma once

#include <cfgparser.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

namespace sweep {

struct image_free {
    void operator()(cfg_image_t *image) const noexcept { std::free(image); }
};
using image_ptr = std::unique_ptr<cfg_image_t, image_free>;

// A zero-filled image, as an application allocates it.
inline image_ptr fresh_image(uint32_t max_ports = CFG_MAX_PORTS)
{
    image_ptr image(static_cast<cfg_image_t *>(std::calloc(1, sizeof(cfg_image_t))));
    if (!image)
        throw std::bad_alloc();
    image->max_ports = max_ports;
    return image;
}

// examples/full-config.msg: header and body.
const std::vector<uint8_t> &full_sample();

// Offsets (from the message start) where each node of a message begins,
// followed by the offset of the terminating byte.
std::vector<std::size_t> node_starts(const std::vector<uint8_t> &message);

// Sets the body length field of a header.
inline void set_body_length_at(uint8_t *message, uint32_t length)
{
    for (int i = 0; i < 4; ++i)
        message[4 + i] = static_cast<uint8_t>(length >> (8 * i));
}
inline void set_body_length(std::vector<uint8_t> &message, uint32_t length)
{
    set_body_length_at(message.data(), length);
}

// While frozen, clock_gettime and time report one fixed instant.
void freeze_clock(bool frozen);

inline bool lock_is_free()
{
    if (pthread_mutex_trylock(&RWlockCfg) != 0)
        return false;
    pthread_mutex_unlock(&RWlockCfg);
    return true;
}

} // namespace sweep
