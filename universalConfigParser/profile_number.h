// Element numbers of the profile paths ("config.VOIP.profile.profile_N...",
// "...dialplan_profileN", "...sip_cadence_M"), shared by the codec-block, SIP
// profile and alert-info handlers. A number out of range ends the message.
#pragma once

#include <cfgparser.h>

#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace cfg::profiles {

// Reads a decimal number as "%d" does (white space, one optional sign, then
// at least one digit); false when the text holds no number. A number too
// large for 32 bits is held at the int limits instead of wrapping, so a
// path such as profile_4294967299 can never be taken for profile 3.
inline bool read_number(const char *text, int32_t &out) noexcept
{
    const char *p = text;
    while (std::isspace(static_cast<unsigned char>(*p)))
        ++p;
    if (*p == '+' || *p == '-')
        ++p;
    if (!std::isdigit(static_cast<unsigned char>(*p)))
        return false;
    const long long n = std::strtoll(text, nullptr, 10);
    constexpr long long lo = std::numeric_limits<int32_t>::min();
    constexpr long long hi = std::numeric_limits<int32_t>::max();
    out = static_cast<int32_t>(n < lo ? lo : n > hi ? hi : n);
    return true;
}

// Number of a captured substring of a path pattern; `missing` when the group
// is not in the table.
inline int32_t captured_number(int32_t found, char *const *table, int32_t group,
                               int32_t missing) noexcept
{
    int32_t n = missing;
    if (found > group && table != nullptr && table[group] != nullptr)
        read_number(table[group], n);
    return n;
}

// The VoIP profile of a "config.VOIP.profile.profile_N..." path: the number
// after the first "_". Reports and returns false when the message has to
// stop: no "_" at all, or a number outside 0..7 (8 when none can be read).
inline bool profile_of_path(const char *path, int32_t &profile) noexcept
{
    const char *underscore = std::strchr(path, '_');
    if (underscore == nullptr) {
        cfg_trace(1, "Incorrect format of profile (%d)", __LINE__);
        return false;
    }
    profile = CFG_PROFILES;
    read_number(underscore + 1, profile);
    if (profile < 0 || profile >= CFG_PROFILES) {
        cfg_trace(1, "%d: Incorrect number of profile [%d]", __LINE__, profile);
        return false;
    }
    return true;
}

} // namespace cfg::profiles
