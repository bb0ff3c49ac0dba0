// Regular-expression dial plan of a profile: a bad profile number ends the
// message. Its keys and writer follow the key-table properties and the
// samples' apply reference.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

TEST(RegexDialPlan, BadProfileAbandonsTheMessage)
{
    auto image = fresh_image();
    image->routes.start = CFG_LIST_UPDATING;
    parse(*image, "[config.VOIP.profile.profile_9.regexprd]\n regex_on = 1\n"
                  "[config.VOIP.h323]\n timetolive = 5\n");
    for (const profile_dialplan_cfg_t &plan : image->dialplans)
        EXPECT_EQ(plan.regex_on, 0u);
    EXPECT_EQ(image->h323.timetolive, 0);
    EXPECT_EQ(image->routes.start, CFG_LIST_UPDATING);
    EXPECT_TRUE(support::lock_is_free());
}

} // namespace
