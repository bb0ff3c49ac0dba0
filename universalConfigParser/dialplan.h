// What the two dial-plan handlers of a profile share: the profile number of
// their node path.
#pragma once

#include "universalConfigParser/node_params.h"

namespace cfg::handlers {

// The profile N of a "config.VOIP.profile.profile_N...." path, 0 to 7. A path
// without a number or one outside 0 to 7 is traced at the error level and
// gives -1: the handler then ends the whole message.
int dialplan_profile_of(const parse::node &n) noexcept;

} // namespace cfg::handlers
