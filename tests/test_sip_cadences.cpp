// Alert-info cadences of the VoIP profiles: the two numbers from the path.
// Their texts follow the key-table properties; the writer's nodes are in the
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

std::string cadence_path(const std::string &profile, const std::string &cadence)
{
    return "config.VOIP.profile.profile_" + profile + ".sip_cadences.sip_cadence_" + cadence;
}

// Either number out of range ends the whole message after its report.
TEST(SipCadence, NumbersFromThePath)
{
    const struct { std::string path; const char *report; } rows[] = {
        {cadence_path("0", "0"), nullptr}, {cadence_path("7", "15"), nullptr},
        {cadence_path("0", "16"), "Incorrect number of sip cadence [16]"},
        {cadence_path("8", "0"), "Incorrect number of profile [8]"},
        {cadence_path("9", "99"), "Incorrect number of profile [9]"}, // the profile is checked first
        {cadence_path("1", "4294967296"), "Incorrect number of sip cadence [2147483647]"},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->routes.start = CFG_LIST_UPDATING;
        const std::string printed = support::stdout_of([&] {
            parse(*image, "[" + cadence_path("2", "3") + "]\n name = first\n[" + r.path + "]\n name = x\n[" +
                              cadence_path("2", "4") + "]\n name = after\n");
        });
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

} // namespace
