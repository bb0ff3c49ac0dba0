// Builders of configuration message nodes and params. They write at the
// caller's cursor, step it, and return the running byte count plus what they
// wrote. No bounds checks: the caller's buffer must be large enough.
#include "cfgmngr/msg_writer.h"
#include "cfgmngr/wire.h"

#include <cfgparser.h>

#include <cstdio>
#include <cstring>
#include <string_view>

namespace cfg::build {
namespace {

void put_text(uint8_t **cursor, std::string_view text) noexcept
{
    wire::put_u16(*cursor, static_cast<uint32_t>(text.size()));
    *cursor += 2;
    if (!text.empty())
        std::memcpy(*cursor, text.data(), text.size());
    *cursor += text.size();
}

uint32_t put_param(uint8_t **cursor, std::string_view name, std::string_view value, uint32_t running) noexcept
{
    put_text(cursor, name);
    put_text(cursor, value);
    return running + 4 + static_cast<uint32_t>(name.size() + value.size());
}

// Room for any 32-bit value in "%u", "%d" or "0x%x".
constexpr std::size_t number_room = 32;

template <typename T>
uint32_t put_number(uint8_t **cursor, const char *name, const char *format, T value,
                    uint32_t running) noexcept
{
    char text[number_room];
    int n = std::snprintf(text, sizeof text, format, value);
    return put_param(cursor, name, std::string_view(text, n > 0 ? static_cast<std::size_t>(n) : 0), running);
}

} // namespace

uint32_t string_param(uint8_t **cursor, const char *name, const char *value, std::size_t length,
                      uint32_t running) noexcept
{
    // An empty text travels as the two characters "" so that it is not
    // mistaken for a missing value.
    const std::string_view v = length == 0 ? std::string_view("\"\"") : std::string_view(value, length);
    return put_param(cursor, name, v, running);
}

} // namespace cfg::build

using namespace cfg::build;

extern "C" {

uint32_t setUInt16ValueInMsg(uint8_t **cursor, const char *path, int param_count,
                             uint32_t running) CFG_NOEXCEPT
{
    std::string_view p(path);
    put_text(cursor, p);
    cfg::wire::put_u16(*cursor, static_cast<uint32_t>(param_count) & 0xffffu);
    *cursor += 2;
    return running + 4 + static_cast<uint32_t>(p.size());
}

uint32_t setUIntValueInMsg(uint8_t **cursor, const char *name, uint32_t value, uint32_t running) CFG_NOEXCEPT
{
    return put_number(cursor, name, "%u", static_cast<unsigned>(value), running);
}

uint32_t setIntValueInMsg(uint8_t **cursor, const char *name, int32_t value, uint32_t running) CFG_NOEXCEPT
{
    return put_number(cursor, name, "%d", static_cast<int>(value), running);
}

uint32_t setXValueInMsg(uint8_t **cursor, const char *name, uint32_t value, uint32_t running) CFG_NOEXCEPT
{
    return put_number(cursor, name, "0x%x", static_cast<unsigned>(value), running);
}

uint32_t setStringValueInMsg(uint8_t **cursor, const char *name, const char *value,
                             uint32_t running) CFG_NOEXCEPT
{
    return string_param(cursor, name, value, value != nullptr ? std::strlen(value) : 0, running);
}

uint32_t setEmptyStringValueInMsg(uint8_t **cursor, const char *name, uint32_t running) CFG_NOEXCEPT
{
    return put_param(cursor, name, std::string_view(), running);
}

} // extern "C"
