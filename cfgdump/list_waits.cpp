// Waits for list updates: a thread that asked the configuration manager for
// a list tests its marker at least every 10 ms until a recount clears it, and
// after 500 pauses of 10 ms (a deadline on the monotonic clock, however often
// it was woken) recounts itself and gives up. A recount wakes the waiting
// threads at once; a marker cleared otherwise is seen at the next test.
#include "universalConfigParser/list_wake.h"
#include "universalConfigParser/node_params.h"

#include <cfgparser.h>

namespace cfg::waits {
namespace {

constexpr int max_pauses = 500;
constexpr long pause_ns = 10L * 1000000;

// Tests the marker under the lock, never holding the lock while pausing.
template <typename Marker>
int32_t wait_for(cfg_image_t *image, const Marker &marker, Marker in_progress) noexcept
{
    const int64_t deadline = wake::monotonic_ns() + int64_t{max_pauses} * pause_ns;
    for (;;) {
        const uint32_t seen = wake::generation();
        {
            const parse::image_lock lock;
            if (marker != in_progress)
                return 0;
        }
        const int64_t left = deadline - wake::monotonic_ns();
        if (left <= 0) {
            recalculate_start_and_current_after_timeout(image);
            return 1;
        }
        wake::pause(seen, left < pause_ns ? static_cast<long>(left) : pause_ns);
    }
}

constexpr uint32_t updating = CFG_LIST_UPDATING;

} // namespace
} // namespace cfg::waits

using cfg::waits::updating;
using cfg::waits::wait_for;

// Every wait answers -1 for a null image (and for a profile or modifier
// number that does not exist) instead of faulting.
extern "C" {

int32_t update_limits_conf(cfg_image_t *image) CFG_NOEXCEPT
{
    return image == nullptr ? -1 : wait_for(image, image->limits.start, updating);
}

int32_t update_dialplan_conf(cfg_image_t *image, int profile) CFG_NOEXCEPT
{
    if (image == nullptr)
        return -1;
    // Only the low 8 bits select the profile; a profile that does not exist
    // has nothing to wait for (-1) rather than a read past the array.
    const unsigned p = static_cast<unsigned>(profile) & 0xffu;
    if (p >= CFG_PROFILES)
        return -1;
    return wait_for(image, image->dialplans[p].start, updating);
}

int32_t update_host_conf(cfg_image_t *image) CFG_NOEXCEPT
{
    return image == nullptr ? -1 : wait_for(image, image->hosts.start, updating);
}

int32_t update_mac_conf(cfg_image_t *image) CFG_NOEXCEPT
{
    return image == nullptr
               ? -1
               : wait_for(image, image->mac_filter.start, static_cast<uint8_t>(CFG_MAC_LIST_UPDATING));
}

int32_t update_route_conf(cfg_image_t *image) CFG_NOEXCEPT
{
    return image == nullptr ? -1 : wait_for(image, image->routes.start, updating);
}

int32_t update_groups_config(cfg_image_t *image, int fxo) CFG_NOEXCEPT
{
    if (image == nullptr)
        return -1;
    return wait_for(image, fxo != 0 ? image->fxo_groups.start : image->groups.start, updating);
}

int32_t update_mod_rules_conf(cfg_image_t *image, int modifier) CFG_NOEXCEPT
{
    if (image == nullptr || modifier < 0 || modifier >= CFG_MODIFIERS)
        return -1; // no such modifier: nothing to wait for
    return wait_for(image, image->modifiers[modifier].count, static_cast<uint16_t>(CFG_LIST_UPDATING));
}

int32_t update_firewall_conf(cfg_image_t *image) CFG_NOEXCEPT
{
    return image == nullptr ? -1 : wait_for(image, image->firewall.start, updating);
}

} // extern "C"
