// Converters from a param's value text to a field of the configuration image,
// and the reader of element numbers in node paths and param names.
#include "cfgmngr/text_class.h"
#include "universalConfigParser/text_numbers.h"

#include <cfgparser.h>

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace cfg::numbers {
namespace {

const char *skip_space_and_sign(const char *text, bool &negative) noexcept
{
    while (text::is_space(*text))
        ++text;
    negative = *text == '-';
    if (*text == '+' || *text == '-')
        ++text;
    return text;
}

bool is_digit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

// True when a "%d" / "%u" number begins the text (after white space and one
// optional sign).
bool number_follows(const char *text) noexcept
{
    bool negative = false;
    return text != nullptr && is_digit(*skip_space_and_sign(text, negative));
}

} // namespace

int64_t parse_int64(const char *text) noexcept
{
    int64_t n = 0;
    const char *end = nullptr;
    return plain_decimal(text, n, end) ? n : std::strtoll(text, nullptr, 10);
}

// The text is read once where it has the common form; only other texts are
// tested for a number and then converted by the C library.
bool scan_int(const char *text, int32_t &out) noexcept
{
    int64_t n = 0;
    const char *end = nullptr;
    if (text != nullptr && plain_decimal(text, n, end)) {
        out = static_cast<int32_t>(n);
        return true;
    }
    if (!number_follows(text))
        return false;
    out = parse_int(text);
    return true;
}

bool scan_uint(const char *text, uint32_t &out) noexcept
{
    int64_t n = 0;
    const char *end = nullptr;
    if (text != nullptr && plain_decimal(text, n, end)) {
        out = static_cast<uint32_t>(static_cast<uint64_t>(n));
        return true;
    }
    if (!number_follows(text))
        return false;
    out = parse_uint_low32(text);
    return true;
}

const char *scan_entry(const char *text, int64_t &out) noexcept
{
    const char *plain_end = nullptr;
    if (text != nullptr && plain_decimal(text, out, plain_end))
        return plain_end;
    if (!number_follows(text))
        return nullptr;
    char *end = nullptr;
    const int saved = errno;
    out = std::strtoll(text, &end, 10); // held at the 64-bit limits, errno left alone
    errno = saved;
    return end;
}

int32_t entry_within(const char *text, int32_t count, int32_t missing) noexcept
{
    if (text == nullptr)
        return -1;
    int64_t n = 0;
    if (scan_entry(text, n) == nullptr)
        return missing;
    return n >= 0 && n < count ? static_cast<int32_t>(n) : -1;
}

bool scan_hex(const char *text, uint32_t &out) noexcept
{
    bool negative = false;
    if (text == nullptr)
        return false;
    const char *digits = skip_space_and_sign(text, negative);
    if (digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X') &&
        std::isxdigit(static_cast<unsigned char>(digits[2])))
        digits += 2;
    if (!std::isxdigit(static_cast<unsigned char>(*digits)))
        return false;
    auto value = static_cast<uint32_t>(std::strtoull(digits, nullptr, 16));
    out = negative ? 0u - value : value;
    return true;
}

} // namespace cfg::numbers

extern "C" {

int32_t get_checkbox(const char *value) CFG_NOEXCEPT
{
    using namespace cfg::numbers;
    if (absent(value))
        return 0;
    if (parse_int(value) != 0)
        return 1;
    return value[0] == 'y' ? 1 : 0;
}

int32_t get_digit_from_min_to_max_or_set_default(const char *value, int32_t min, int32_t max,
                                                 int32_t def) CFG_NOEXCEPT
{
    using namespace cfg::numbers;
    if (absent(value))
        return def;
    int32_t n = parse_int(value);
    return (min <= n && n <= max) ? n : def;
}

uint32_t get_long_from_min_to_max_or_set_default(const char *value, uint32_t min, uint32_t max,
                                                 uint32_t def) CFG_NOEXCEPT
{
    using namespace cfg::numbers;
    if (absent(value))
        return def;
    uint32_t n = parse_uint_low32(value);
    return (min <= n && n <= max) ? n : def;
}

void get_string(char *field, size_t size, const char *value) CFG_NOEXCEPT
{
    if (field == nullptr || size == 0)
        return;
    if (cfg::numbers::absent(value)) {
        std::memset(field, 0, size);
        return;
    }
    // Only the text and its NUL are written; bytes behind them are kept.
    std::size_t n = strnlen(value, size - 1);
    std::memcpy(field, value, n);
    field[n] = '\0';
    field[size - 1] = '\0';
}

} // extern "C"
