// The decimal conversions against the C library: the value, the end and
// errno that strtoll gives, and "%d"'s test for a number (white space, one
// optional sign, a digit). The input is the text.
#include "c_library_reading.h"
#include "check.h"
#include "text_input.h"

#include "universalConfigParser/text_numbers.h"

#include <cerrno>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace cfg::numbers;
    const auto input = fuzz::text_input(data, size);
    const char *text = input.data();

    const fuzz::c_reading c = fuzz::c_library_reading(text);
    errno = 0;
    fuzz::check(parse_int64(text) == c.value, "parse_int64 differs from strtoll");
    fuzz::check(errno == c.error, "parse_int64 leaves another errno than strtoll");
    fuzz::check(parse_int(text) == static_cast<int32_t>(c.value), "parse_int differs from strtoll");
    fuzz::check(parse_uint_low32(text) == static_cast<uint32_t>(c.value),
                "parse_uint_low32 differs from strtoll");

    int32_t i = -7;
    uint32_t u = 7;
    int64_t entry = -7;
    fuzz::check(scan_int(text, i) == c.number && i == (c.number ? static_cast<int32_t>(c.value) : -7),
                "scan_int differs from %d");
    fuzz::check(scan_uint(text, u) == c.number && u == (c.number ? static_cast<uint32_t>(c.value) : 7u),
                "scan_uint differs from %u");
    errno = 0;
    fuzz::check(scan_entry(text, entry) == (c.number ? c.end : nullptr) && entry == (c.number ? c.value : -7),
                "scan_entry differs from strtoll");
    fuzz::check(errno == 0, "scan_entry changed errno");
    return 0;
}
