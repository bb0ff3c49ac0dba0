// What the C library reads from a decimal text, to compare the library's own
// conversions with: the value, end and errno of strtoll, and whether "%d"
// finds a number there at all (white space, one optional sign, a digit).
// Shared by the fuzz target numbers and the unit test of the conversions.
#pragma once

#include <cctype>
#include <cerrno>
#include <cstdlib>

namespace fuzz {

struct c_reading {
    long long value = 0;
    char *end = nullptr;
    int error = 0;       // errno after strtoll
    bool number = false; // "%d" finds a number
};

inline c_reading c_library_reading(const char *text)
{
    c_reading c;
    errno = 0;
    c.value = std::strtoll(text, &c.end, 10);
    c.error = errno;
    const char *at = text;
    while (std::isspace(static_cast<unsigned char>(*at)))
        ++at;
    at += *at == '+' || *at == '-';
    c.number = *at >= '0' && *at <= '9';
    return c;
}

} // namespace fuzz
