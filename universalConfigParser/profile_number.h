// Element numbers of the profile paths ("config.VOIP.profile.profile_N...",
// "...dialplan_profileN", "...sip_cadence_M"), shared by the codec-block, SIP
// profile, alert-info and dial-plan handlers. A number out of range ends the
// message.
#pragma once

#include "universalConfigParser/text_numbers.h"

#include <cfgparser.h>

#include <cstdint>

namespace cfg::profiles {

// Number of a captured substring of a path pattern, read as "%d"; `missing`
// when the group is not in the table. A number too large for 32 bits is held
// at the int limits, so that a path such as profile_4294967299 can never be
// taken for profile 3.
inline int32_t captured_number(int32_t found, char *const *table, int32_t group,
                               int32_t missing) noexcept
{
    int64_t n = missing;
    if (found > group && table != nullptr && table[group] != nullptr)
        numbers::scan_entry(table[group], n);
    return numbers::held_int32(n);
}

// The VoIP profile of a "config.VOIP.profile.profile_N..." path: the number
// after the first "_". Reports and returns false when the message has to
// stop: no "_" at all, or a number outside 0..7 (8 when none can be read).
inline bool profile_of_path(const char *path, int32_t &profile) noexcept
{
    const char *number = numbers::after_underscore(path);
    if (number == nullptr) {
        cfg_trace(CFG_TRACE_ERROR, "Incorrect format of profile (%d)", __LINE__);
        return false;
    }
    int64_t n = CFG_PROFILES;
    numbers::scan_entry(number, n);
    if (n < 0 || n >= CFG_PROFILES) {
        cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect number of profile [%d]", __LINE__, numbers::held_int32(n));
        return false;
    }
    profile = static_cast<int32_t>(n);
    return true;
}

} // namespace cfg::profiles
