// all_parser on a whole message. The body length field is set to the bytes
// that follow the header, so that every input is a message the parser may
// receive and the fuzzer spends its time inside the nodes. Header word 0,
// which the parser does not read, picks max_ports: 0 gives 72, n gives n - 1
// (the application may set any count; the port lists stop at 72). After
// every input RWlockCfg must be free, and every hunt group may only hold
// ports below max_ports and below 72, at most 72 of them.
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
    if (size < CFG_MSG_HEADER_SIZE || size - CFG_MSG_HEADER_SIZE > UINT32_MAX)
        return -1;
    // A copy of exactly the input's size, so that any read past the body
    // is caught.
    std::vector<uint8_t> message(data, data + size);
    const auto body_length = static_cast<uint32_t>(size - CFG_MSG_HEADER_SIZE);
    for (int i = 0; i < 4; ++i)
        message[CFG_MSG_BODY_LENGTH_OFFSET + i] = static_cast<uint8_t>(body_length >> (8 * i));

    // Zero-filled for every input, so that a crash replays from its input alone.
    std::memset(&image, 0, sizeof image);
    const uint32_t word0 = static_cast<uint32_t>(data[0]) | (static_cast<uint32_t>(data[1]) << 8) |
                           (static_cast<uint32_t>(data[2]) << 16) | (static_cast<uint32_t>(data[3]) << 24);
    image.max_ports = word0 == 0 ? CFG_MAX_PORTS : word0 - 1;
    all_parser(&image, message.data());
    fuzz::check(fuzz::lock_is_free(), "RWlockCfg held after all_parser");
    const uint32_t port_bound = image.max_ports < CFG_MAX_PORTS ? image.max_ports : CFG_MAX_PORTS;
    fuzz::check(group_ports_in_range(image.groups, port_bound) &&
                    group_ports_in_range(image.fxo_groups, port_bound),
                "a hunt group holds a port past max_ports or past the 72 port records");
    return 0;
}
