// Regular-expression dial plan of a profile:
// "config.VOIP.profile.profile_N.regexprd" and profile_dialplan_regular_to_file.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

TEST(RegexDialPlan, NodeWithoutParamsOnlyStamps)
{
    auto image = fresh_image();
    auto before = fresh_image();
    parse(*image, "[config.VOIP.profile.profile_0.regexprd]\n");
    EXPECT_NE(image->dialplans_updated[0], 0u);
    image->dialplans_updated[0] = 0;
    image->limits.recalculated = 0; // stamped by the recount
    EXPECT_EQ(std::memcmp(image.get(), before.get(), sizeof(cfg_image_t)), 0);
}

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

TEST(RegexDialPlan, WriterAndRoundTrip)
{
    auto image = fresh_image();
    profile_dialplan_cfg_t &plan = image->dialplans[6];
    plan.regex_on = 1; // proto stays empty: it travels as ""
    std::memset(plan.regex, 'x', 1000);
    plan.start_timer = 120;

    const auto out = support::write([&](uint8_t **c) { return profile_dialplan_regular_to_file(c, 6, &plan); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    const auto &node = out.node();
    EXPECT_EQ(node.path, "config.VOIP.profile.profile_6.regexprd");
    EXPECT_EQ(support::names(node), (std::vector<std::string>{"regex_on", "proto", "regex", "start_timer"}));
    EXPECT_EQ(support::value(node, "proto"), "\"\"");

    auto back = fresh_image();
    back->dialplans[6].proto[0] = 'z';
    all_parser(back.get(), out.as_message().data());
    EXPECT_EQ(back->dialplans[6].regex_on, 1u);
    EXPECT_STREQ(back->dialplans[6].proto, "");
    EXPECT_EQ(std::string(back->dialplans[6].regex), std::string(1000, 'x'));
    EXPECT_EQ(back->dialplans[6].start_timer, 120u);
}

} // namespace
