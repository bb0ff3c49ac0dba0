// Element numbers of the profile paths ("config.VOIP.profile.profile_N...",
// "...dialplan_profileN", "...sip_cadence_M"), shared by the codec-block, SIP
// profile, alert-info and dial-plan handlers. A number out of range ends the
// message.
#pragma once

#include "universalConfigParser/node_params.h"
#include "universalConfigParser/text_numbers.h"

#include <cfgparser.h>

#include <cstdint>

namespace cfg::profiles {

// Number `part` that the node's pattern captured, read as "%d"; `missing`
// when it holds none. A number too large for 32 bits is held at the int
// limits, so that a path such as profile_4294967299 can never be taken for
// profile 3.
inline int32_t captured_number(const parse::node &n, unsigned part, int32_t missing) noexcept
{
    const routes::path_number number = n.number(part);
    return numbers::held_int32(number.found ? number.value : missing);
}

// The VoIP profile of a "config.VOIP.profile.profile_N..." path: the number
// after the first "_". Reports and returns false when the message has to
// stop: no "_" at all, or a number outside 0..7 (8 when none can be read).
inline bool profile_of_path(const parse::node &node, int32_t &profile) noexcept
{
    const routes::path_number number = node.number();
    if (number.text == nullptr) {
        cfg_trace(CFG_TRACE_ERROR, "Incorrect format of profile (%d)", __LINE__);
        return false;
    }
    const int64_t n = number.found ? number.value : CFG_PROFILES;
    if (n < node.route->kind.first || n > node.route->kind.last) {
        cfg_trace(CFG_TRACE_ERROR, "%d: Incorrect number of profile [%d]", __LINE__, numbers::held_int32(n));
        return false;
    }
    profile = static_cast<int32_t>(n);
    return true;
}

} // namespace cfg::profiles
