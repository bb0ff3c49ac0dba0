// The decimal conversions against the C library: the value, the end and
// errno that strtoll gives, and "%d"'s test for a number (white space, one
// optional sign, a digit). The input is the text.
#include "check.h"
#include "text_input.h"

#include "universalConfigParser/text_numbers.h"

#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace cfg::numbers;
    const auto input = fuzz::text_input(data, size);
    const char *text = input.data();

    char *c_end = nullptr;
    errno = 0;
    const long long c_value = std::strtoll(text, &c_end, 10);
    const int c_errno = errno;
    errno = 0;
    fuzz::check(parse_int64(text) == c_value, "parse_int64 differs from strtoll");
    fuzz::check(errno == c_errno, "parse_int64 leaves another errno than strtoll");
    fuzz::check(parse_int(text) == static_cast<int32_t>(c_value), "parse_int differs from strtoll");
    fuzz::check(parse_uint_low32(text) == static_cast<uint32_t>(c_value),
                "parse_uint_low32 differs from strtoll");

    const char *at = text;
    while (std::isspace(static_cast<unsigned char>(*at)))
        ++at;
    at += *at == '+' || *at == '-';
    const bool number = *at >= '0' && *at <= '9';
    int32_t i = -7;
    uint32_t u = 7;
    int64_t entry = -7;
    fuzz::check(scan_int(text, i) == number && i == (number ? static_cast<int32_t>(c_value) : -7),
                "scan_int differs from %d");
    fuzz::check(scan_uint(text, u) == number && u == (number ? static_cast<uint32_t>(c_value) : 7u),
                "scan_uint differs from %u");
    errno = 0;
    fuzz::check(scan_entry(text, entry) == (number ? c_end : nullptr) && entry == (number ? c_value : -7),
                "scan_entry differs from strtoll");
    fuzz::check(errno == 0, "scan_entry changed errno");
    return 0;
}
