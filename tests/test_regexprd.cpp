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

TEST(RegexDialPlan, HandlerKeys)
{
    const std::string regex_1200(1200, 'r');
    // The image starts from regex_on 7, proto "old", regex "old", start_timer 50.
    const struct {
        std::string params; // the node's param lines
        uint32_t regex_on;
        std::string proto, regex;
        uint32_t start_timer;
    } rows[] = {
        {"start_timer = 5", 7, "old", "old", 300}, {"start_timer =", 7, "old", "old", 300},
        {"start_timer = 10", 7, "old", "old", 10}, {"start_timer = 301", 7, "old", "old", 300},
        {"regex_on = y", 1, "old", "old", 50}, {"regex_onward = 1", 1, "old", "old", 50}, // prefix of "regex_on"
        {"regex = x_on", 7, "old", "x_on", 50}, {"regexp = [0-9]+", 7, "old", "[0-9]+", 50}, // prefix of "regex"
        {"regex = " + regex_1200, 7, "old", std::string(1000, 'r'), 50}, {"regex =", 7, "old", "", 50},
        {"proto = \"\"", 7, "", "old", 50}, {"proto = 0123456789abcdefXYZ", 7, "0123456789abcde", "old", 50},
        {"start = 10\n timer = 10\n other = 1", 7, "old", "old", 50}, // unknown names
    };
    for (const auto &r : rows) {
        SCOPED_TRACE(r.params);
        auto image = fresh_image();
        profile_dialplan_cfg_t &plan = image->dialplans[4];
        plan.regex_on = 7;
        std::strcpy(plan.proto, "old");
        std::strcpy(plan.regex, "old");
        plan.start_timer = 50;
        parse(*image, "[config.VOIP.profile.profile_4.regexprd]\n " + r.params + "\n");
        EXPECT_EQ(plan.regex_on, r.regex_on);
        EXPECT_EQ(plan.proto, r.proto);
        EXPECT_EQ(plan.regex, r.regex);
        EXPECT_EQ(plan.start_timer, r.start_timer);
        EXPECT_NE(image->dialplans_updated[4], 0u);
        EXPECT_TRUE(support::lock_is_free());
    }
}

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
