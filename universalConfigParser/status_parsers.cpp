// Status messages: fixed binary payloads behind the 12-byte header, copied
// into the status areas of the image under one take of the lock each.
#include "cfgmngr/wire.h"
#include "universalConfigParser/node_params.h"

#include <cfgparser.h>

#include <cstring>
#include <ctime>

namespace cfg::status {
namespace {

using wire::get_u32;

constexpr uint32_t switch_groups_offset = 13;
constexpr int switch_skipped_group = 4; // kept as it was
constexpr uint32_t fxs_block_offset = 15;
constexpr uint32_t fxs_block_size = 671;
static_assert(sizeof(cfg_image_t::fxs_statistics[0]) == fxs_block_size,
              "a port's statistics block is copied whole");
constexpr uint32_t number_offset = 19;
constexpr uint32_t version_offset = 13;
constexpr uint32_t kind_offset = 15;
constexpr uint32_t block_offset = 19; // every monitoring kind but 3
constexpr uint32_t t3_block_offset = 23;

// Monitoring kinds 1 and 7: the state word and the word that stamps it.
constexpr std::size_t t1_state_at = 84;
constexpr std::size_t t1_event_at = 4;
constexpr uint32_t t1_stamped_event = 12;
constexpr uint8_t t5_state_received = 2;

// Port numbers count from 1 in status messages; the blocks from 0.
bool port_index(uint32_t number, uint32_t &index) noexcept
{
    index = number - 1;
    return number >= 1 && number <= CFG_MAX_PORTS;
}

template <std::size_t N>
void copy_block(uint8_t (&block)[N], const uint8_t *from) noexcept
{
    std::memcpy(block, from, N);
}

void store_t1(cfg_image_t &im, uint32_t port, const uint8_t *from) noexcept
{
    uint8_t(&block)[92] = im.mon_t1[port];
    uint8_t kept_state[4];
    std::memcpy(kept_state, block + t1_state_at, sizeof kept_state);
    copy_block(block, from);
    if (get_u32(block + t1_state_at) == 0)
        std::memcpy(block + t1_state_at, kept_state, sizeof kept_state);
    if (get_u32(block + t1_event_at) == t1_stamped_event)
        im.mon_t1_time[port] = static_cast<uint32_t>(time(nullptr));
}

void store_t5(cfg_image_t &im, uint32_t port, const uint8_t *from) noexcept
{
    copy_block(im.mon_t5[port], from);
    im.mon_t5_state[port] = t5_state_received;
    im.mon_t5_time[port] = static_cast<uint32_t>(cfgpars_getTimeSec());
    im.mon_t5_ref_copy[port] = im.mon_t5_ref[port];
}

} // namespace
} // namespace cfg::status

extern "C" {

void switch_status_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT
{
    using namespace cfg::status;
    if (image == nullptr || message == nullptr)
        return;
    const cfg::parse::image_lock lock;
    const uint8_t *at = message + switch_groups_offset;
    for (int group = 0; group < 7; ++group) {
        for (int value = 0; value < 3; ++value, at += 2) {
            if (group != switch_skipped_group)
                image->switch_status[group][value] = cfg::wire::get_u16(at);
        }
    }
}

void fxs_statistics_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT
{
    using namespace cfg::status;
    if (image == nullptr || message == nullptr)
        return;
    uint32_t port = 0;
    const bool valid = port_index(get_u32(message + number_offset), port);
    cfg_trace(CFG_TRACE_ERROR, "FXS STATISTICS %d PORT\n", static_cast<int>(port));
    if (!valid)
        return;
    const cfg::parse::image_lock lock;
    copy_block(image->fxs_statistics[port], message + fxs_block_offset);
    image->fxs_statistics_fresh[port] = 1;
}

void cfg_version_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT
{
    using namespace cfg::status;
    if (image == nullptr || message == nullptr)
        return;
    const cfg::parse::image_lock lock;
    std::memcpy(image->version, message + version_offset, sizeof image->version);
    image->version_received = 1;
}

void monitoring_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT
{
    using namespace cfg::status;
    if (image == nullptr || message == nullptr)
        return;
    const uint32_t kind = get_u32(message + kind_offset);
    const uint32_t number = get_u32(message + number_offset);
    const uint8_t *block = message + block_offset;
    uint32_t port = 0;
    const bool port_ok = port_index(number, port);
    cfg_image_t &im = *image;

    switch (kind) {
    case 1:
    case 7:
        if (port_ok) {
            const cfg::parse::image_lock lock;
            store_t1(im, port, block);
        }
        break;
    case 3:
        if (port_ok) {
            const cfg::parse::image_lock lock;
            copy_block(im.fxs_statistics[port], message + t3_block_offset);
            im.fxs_statistics_fresh[port] = 1;
        }
        break;
    case 4:
        if (port_ok) {
            const cfg::parse::image_lock lock;
            copy_block(im.mon_t4[port], block);
        }
        break;
    case 5:
        if (port_ok) {
            const cfg::parse::image_lock lock;
            store_t5(im, port, block);
        }
        break;
    case 6: {
        const cfg::parse::image_lock lock;
        copy_block(im.mon_t6, block);
        break;
    }
    case 8:
        if (port_ok) {
            const cfg::parse::image_lock lock;
            copy_block(im.mon_t8[port], block);
        }
        break;
    case 9: {
        const cfg::parse::image_lock lock;
        im.mon_t9_flag = 1;
        break;
    }
    case 10:
        // Numbers 1..64, block n - 1 for number n.
        if (number >= 1 && number <= CFG_MON_T10_BLOCKS) {
            const cfg::parse::image_lock lock;
            copy_block(im.mon_t10[number - 1], block);
        }
        break;
    case 11:
        if (port_ok) {
            const cfg::parse::image_lock lock;
            copy_block(im.mon_t11[port], block);
            im.mon_t11_fresh[port] = 1;
        }
        break;
    default: // kind 2 and unknown kinds carry nothing for the image
        break;
    }
}

} // extern "C"
