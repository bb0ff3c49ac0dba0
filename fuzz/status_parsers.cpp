// The four status parsers. The first input byte picks the parser; the rest
// is the message from its first byte on, zero-padded (or cut) to the size
// that message has: the parsers read fixed offsets and the payload ends at
// the last block the message carries, so a read past it is caught.
#include "check.h"

#include <cfgparser.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

cfg_image_t image;

// Bytes of a monitoring message of this kind: through the end of its block,
// or through the number field for the kinds that carry none.
std::size_t monitoring_size(uint32_t kind) noexcept
{
    switch (kind) {
    case 1:
    case 7:
        return 19 + 92;
    case 3:
        return 23 + 671;
    case 4:
    case 10:
        return 19 + 148;
    case 5:
        return 19 + 52;
    case 6:
        return 19 + 112;
    case 8:
        return 19 + 56;
    case 11:
        return 19 + 80;
    default:
        return 23;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return -1;
    const uint8_t which = data[0] % 4;
    // The input, zero-padded to the largest message (monitoring kind 3).
    uint8_t padded[23 + 671] = {};
    std::memcpy(padded, data + 1, std::min(size - 1, sizeof padded));
    const uint32_t kind = static_cast<uint32_t>(padded[15]) | (static_cast<uint32_t>(padded[16]) << 8) |
                          (static_cast<uint32_t>(padded[17]) << 16) |
                          (static_cast<uint32_t>(padded[18]) << 24);

    std::size_t length = 0;
    switch (which) {
    case 0:
        length = 13 + 42;
        break;
    case 1:
        length = 15 + 671;
        break;
    case 2:
        length = 13 + 20;
        break;
    default:
        length = monitoring_size(kind);
        break;
    }
    // A heap copy of exactly the message's size.
    const std::vector<uint8_t> message(padded, padded + length);
    switch (which) {
    case 0:
        switch_status_parser(&image, message.data());
        break;
    case 1:
        fxs_statistics_parser(&image, message.data());
        break;
    case 2:
        cfg_version_parser(&image, message.data());
        break;
    default:
        monitoring_parser(&image, message.data());
        break;
    }
    fuzz::check(fuzz::lock_is_free(), "RWlockCfg held after a status parser");
    return 0;
}
