// The param reader: pulls one name/value pair at a time out of a received
// configuration message, with every length checked against what remains.
#include "universalConfigParser/msg_reader.h"

#include "cfgmngr/wire.h"

#include <cfgparser.h>

#include <cstdlib>
#include <cstring>

namespace cfg {

char *GetToken(const uint8_t *source, uint32_t n) noexcept
{
    auto *copy = static_cast<char *>(std::calloc(static_cast<std::size_t>(n) + 1, 1));
    if (copy != nullptr && n > 0)
        std::memcpy(copy, source, n);
    return copy;
}

namespace {

// A missing name or value is shown as an empty text in the debug report.
const char *shown(const char *text) noexcept
{
    return text != nullptr ? text : "";
}

void report_param(int line, const char *name, const char *value) noexcept
{
    cfg_trace(CFG_TRACE_DEBUG, "%s.%d: paramName [%s] paramValue [%s]", "find_params", line, shown(name),
              shown(value));
}

void report_malformed(int line) noexcept
{
    cfg_trace(CFG_TRACE_ERROR, "Incorrect format of message, bytesToRead > currentLenOfMessage (%d)", line);
}

// Reads a u16 length at the cursor and checks that it and its two length
// bytes fit in what remains. The length field itself is only read when its
// two bytes are there.
bool length_fits(const uint8_t *at, uint32_t remaining, uint16_t &length) noexcept
{
    if (remaining < 2)
        return false;
    length = wire::get_u16(at);
    return static_cast<uint32_t>(length) + 2 <= remaining;
}

} // namespace
} // namespace cfg

extern "C" {

int find_params(const uint8_t **cursor, uint32_t *remaining, char **name, char **value,
                int quotes_mean_empty) CFG_NOEXCEPT
{
    using namespace cfg;
    uint16_t name_len = 0;
    if (!length_fits(*cursor, *remaining, name_len)) {
        report_malformed(__LINE__);
        return -1;
    }
    *remaining -= static_cast<uint32_t>(name_len) + 2;
    *cursor += 2;
    char *name_copy = GetToken(*cursor, name_len);
    *cursor += name_len;

    uint16_t value_len = 0;
    if (!length_fits(*cursor, *remaining, value_len)) {
        report_malformed(__LINE__);
        std::free(name_copy);
        report_param(__LINE__, nullptr, nullptr);
        return -1;
    }
    *remaining -= static_cast<uint32_t>(value_len) + 2;
    *cursor += 2;

    if (name_copy == nullptr) {
        // No memory for the name: the param is consumed and skipped.
        report_param(__LINE__, nullptr, nullptr);
        *cursor += value_len;
        return 1;
    }

    char *value_copy = nullptr;
    if (value_len != 0) {
        value_copy = GetToken(*cursor, value_len);
        if (value_copy == nullptr) {
            std::free(name_copy);
            report_param(__LINE__, nullptr, nullptr);
            *cursor += value_len;
            return 1;
        }
    }
    *cursor += value_len;
    report_param(__LINE__, name_copy, value_copy);

    if (quotes_mean_empty != 0 && value_len == 2 && value_copy[0] == '"' && value_copy[1] == '"') {
        std::free(value_copy);
        value_copy = nullptr;
    }
    *name = name_copy;
    *value = value_copy;
    return 0;
}

void free_params(char **name, char **value) CFG_NOEXCEPT
{
    if (name != nullptr) {
        std::free(*name);
        *name = nullptr;
    }
    if (value != nullptr) {
        std::free(*value);
        *value = nullptr;
    }
}

} // extern "C"
