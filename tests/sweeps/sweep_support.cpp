#include "sweep_support.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace sweep {
namespace {

bool clock_frozen = false;
constexpr time_t frozen_seconds = 1'700'000'000;

uint32_t get_u32(const std::vector<uint8_t> &m, std::size_t at)
{
    return uint32_t{m.at(at)} | uint32_t{m.at(at + 1)} << 8 | uint32_t{m.at(at + 2)} << 16 |
           uint32_t{m.at(at + 3)} << 24;
}

uint16_t get_u16(const std::vector<uint8_t> &m, std::size_t at)
{
    return static_cast<uint16_t>(m.at(at) | m.at(at + 1) << 8);
}

} // namespace

const std::vector<uint8_t> &full_sample()
{
    static const std::vector<uint8_t> message = [] {
        std::ifstream in(CFGPARSER_FULL_SAMPLE, std::ios::binary);
        std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        if (bytes.size() < 13 || 12 + get_u32(bytes, 4) != bytes.size())
            throw std::runtime_error("cannot read " CFGPARSER_FULL_SAMPLE);
        return bytes;
    }();
    return message;
}

std::vector<std::size_t> node_starts(const std::vector<uint8_t> &message)
{
    std::vector<std::size_t> starts;
    std::size_t at = 13;
    while (at + 2 <= message.size()) {
        starts.push_back(at);
        const std::size_t path = get_u16(message, at);
        at += 2 + path;
        const std::size_t params = get_u16(message, at);
        at += 2;
        for (std::size_t i = 0; i < params; ++i) {
            at += 2 + get_u16(message, at); // name
            at += 2 + get_u16(message, at); // value
        }
        if (at + 1 == message.size())
            break;
    }
    starts.push_back(at);
    return starts;
}

void freeze_clock(bool frozen)
{
    clock_frozen = frozen;
}

} // namespace sweep

// The program's own clock functions stand in for the C library's, for the
// library linked into it as well.
extern "C" int clock_gettime(clockid_t clock, struct timespec *now) noexcept
{
    if (sweep::clock_frozen) {
        now->tv_sec = sweep::frozen_seconds;
        now->tv_nsec = 0;
        return 0;
    }
    return static_cast<int>(syscall(SYS_clock_gettime, clock, now));
}

extern "C" time_t time(time_t *out) noexcept
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    if (out != nullptr)
        *out = now.tv_sec;
    return now.tv_sec;
}
