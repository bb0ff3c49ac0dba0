// Little-endian, unaligned access to configuration message bytes.
// Integers are assembled byte by byte so the code does not depend on the
// host's byte order or alignment rules.
#pragma once

#include <cstdint>

namespace cfg::wire {

inline constexpr uint32_t header_size = 12;   // three header words
inline constexpr uint32_t body_offset = 12;   // operation byte
inline constexpr uint32_t nodes_offset = 13;  // first node
inline constexpr uint8_t operation_write = 2; // what our writers send

constexpr uint16_t get_u16(const uint8_t *p) noexcept
{
    return static_cast<uint16_t>(p[0] | (p[1] << 8));
}

constexpr uint32_t get_u32(const uint8_t *p) noexcept
{
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) |
           (static_cast<uint32_t>(p[2]) << 16) | (static_cast<uint32_t>(p[3]) << 24);
}

constexpr void put_u16(uint8_t *p, uint32_t v) noexcept
{
    p[0] = static_cast<uint8_t>(v & 0xffu);
    p[1] = static_cast<uint8_t>((v >> 8) & 0xffu);
}

} // namespace cfg::wire
