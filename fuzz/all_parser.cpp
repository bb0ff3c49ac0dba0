// all_parser on a whole message (fuzz::whole_message, max_ports from header
// word 0). After every input RWlockCfg must be free, and every hunt group
// may only hold ports below max_ports and below 72, at most 72 of them.
#include "check.h"

#include <cfgparser.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

cfg_image_t image;

bool group_ports_in_range(const groups_cfg_t &groups, uint32_t max_ports) noexcept
{
    for (const group_cfg_t &g : groups.entries) {
        if (g.port_count > CFG_MAX_PORTS)
            return false;
        for (uint32_t i = 0; i < g.port_count; ++i)
            if (g.port_list[i] >= max_ports)
                return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::vector<uint8_t> message = fuzz::whole_message(data, size);
    if (message.empty())
        return -1;
    // Zero-filled for every input, so that a crash replays from its input alone.
    std::memset(&image, 0, sizeof image);
    image.max_ports = fuzz::max_ports_of(data);
    all_parser(&image, message.data());
    fuzz::check(fuzz::lock_is_free(), "RWlockCfg held after all_parser");
    const uint32_t port_bound = image.max_ports < CFG_MAX_PORTS ? image.max_ports : CFG_MAX_PORTS;
    fuzz::check(group_ports_in_range(image.groups, port_bound) &&
                    group_ports_in_range(image.fxo_groups, port_bound),
                "a hunt group holds a port past max_ports or past the 72 port records");
    return 0;
}
