// Alert-info cadences of the VoIP profiles: the node handler with its two
// numbers from the path, and the writer of all 16 cadences.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

std::string cadence_path(const std::string &profile, const std::string &cadence)
{
    return "config.VOIP.profile.profile_" + profile + ".sip_cadences.sip_cadence_" + cadence;
}

TEST(SipCadence, Params)
{
    const std::string forty(40, 'n');
    const std::string long_rule(100, 'r');
    const struct {
        std::string params, name, ring_rule;
    } rows[] = {
        {"name = Bellcore-dr2\n ring_rule = 800,400,800", "Bellcore-dr2", "800,400,800"},
        {"ring_rule = 1000,4000", "old name", "1000,4000"},   // name left as it was
        {"name = " + forty, forty.substr(0, 29), "old rule"},
        {"ring_rule = " + long_rule, "old name", long_rule.substr(0, 71)},
        {"name =\n ring_rule = \"\"", "", ""},
        {"names = x", "x", "old rule"},                        // prefix of the name
        {"rule = x\n ring = y", "old name", "old rule"},       // dropped
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        sip_cadence_cfg_t &cadence = image->profiles[6].sip.sip_cadences[15];
        std::strcpy(cadence.name, "old name");
        std::strcpy(cadence.ring_rule, "old rule");
        parse(*image, "[" + cadence_path("6", "15") + "]\n " + r.params + "\n");
        EXPECT_EQ(std::string(cadence.name), r.name) << r.params;
        EXPECT_EQ(std::string(cadence.ring_rule), r.ring_rule) << r.params;
        EXPECT_NE(image->profiles_updated[6], 0u);
        EXPECT_TRUE(support::lock_is_free());
    }
}

// Either number out of range ends the whole message after its report.
TEST(SipCadence, NumbersFromThePath)
{
    const struct {
        std::string path;
        const char *report;
    } rows[] = {
        {cadence_path("0", "0"), nullptr}, {cadence_path("7", "15"), nullptr},
        {cadence_path("0", "16"), "Incorrect number of sip cadence [16]"},
        {cadence_path("8", "0"), "Incorrect number of profile [8]"},
        {cadence_path("9", "99"), "Incorrect number of profile [9]"}, // the profile is checked first
        {cadence_path("1", "4294967296"), "Incorrect number of sip cadence [2147483647]"},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->routes.start = CFG_LIST_UPDATING;
        testing::internal::CaptureStdout();
        parse(*image, "[" + cadence_path("2", "3") + "]\n name = first\n[" + r.path +
                          "]\n name = x\n[" + cadence_path("2", "4") + "]\n name = after\n");
        const std::string printed = testing::internal::GetCapturedStdout();
        const bool accepted = r.report == nullptr;
        EXPECT_STREQ(image->profiles[2].sip.sip_cadences[3].name, "first") << r.path;
        EXPECT_STREQ(image->profiles[2].sip.sip_cadences[4].name, accepted ? "after" : "") << r.path;
        EXPECT_EQ(image->routes.start != CFG_LIST_UPDATING, accepted) << r.path;
        if (accepted)
            EXPECT_EQ(printed, "") << r.path;
        else
            EXPECT_NE(printed.find(r.report), std::string::npos) << r.path << ": " << printed;
        EXPECT_TRUE(support::lock_is_free());
    }
}

TEST(SipCadenceWriter, AllSixteenCadences)
{
    profile_cfg_t profile{};
    std::strcpy(profile.sip.sip_cadences[0].name, "first");
    std::strcpy(profile.sip.sip_cadences[0].ring_rule, "800,400");
    std::strcpy(profile.sip.sip_cadences[15].name, "last");
    const auto out = support::write([&](uint8_t **c) { return profile_alert_info_save(c, 5, &profile); });
    ASSERT_EQ(out.message.nodes.size(), 16u);
    for (int c = 0; c < CFG_SIP_CADENCES; ++c) {
        const auto &node = out.node(static_cast<std::size_t>(c));
        EXPECT_EQ(node.path, cadence_path("5", std::to_string(c)));
        EXPECT_EQ(support::names(node), (std::vector<std::string>{"name", "ring_rule"}));
    }
    EXPECT_EQ(out.node(15).params, (std::vector<cfgmsg::param>{{"name", "last"}, {"ring_rule", "\"\""}}));

    // Parsed back into a fresh image, the cadences come back as they were.
    auto image = fresh_image();
    all_parser(image.get(), out.as_message().data());
    EXPECT_EQ(std::memcmp(image->profiles[5].sip.sip_cadences, profile.sip.sip_cadences,
                          sizeof profile.sip.sip_cadences), 0);
    EXPECT_NE(image->profiles_updated[5], 0u);
}

} // namespace
