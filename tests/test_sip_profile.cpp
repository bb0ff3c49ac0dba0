// SIP settings of the VoIP profiles: the profile number of the path and the
// writer (what the parser stores: tests/cases/profiles.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

std::string sip_node(int profile, const std::string &params)
{
    return "[config.VOIP.profile.profile_" + std::to_string(profile) + ".sip]\n" + params + "\n";
}

TEST(SipProfile, ProfileNumberOutOfRangeEndsTheMessage)
{
    auto image = fresh_image();
    image->routes.start = CFG_LIST_UPDATING;
    const std::string printed = support::stdout_of(
        [&] { parse(*image, sip_node(2, "mode = 1") + sip_node(8, "mode = 1") + sip_node(3, "mode = 1")); });
    EXPECT_NE(printed.find("Incorrect number of profile [8]"), std::string::npos) << printed;
    EXPECT_EQ(image->profiles[2].sip.mode, 1u);
    EXPECT_EQ(image->profiles[3].sip.mode, 0u);
    EXPECT_EQ(image->profiles_updated[3], 0u);
    EXPECT_EQ(image->routes.start, CFG_LIST_UPDATING); // no recount
    EXPECT_TRUE(support::lock_is_free());
}

// The hfmime words of codes 1 and 2 and the server text without a host (the
// dtmfmime word of code 1 and the hfmime word of code 0 are those of the
// samples' reference output).
TEST(SipProfileWriter, ValuesWrittenBack)
{
    const struct {
        std::string input;
        const char *name, *written;
    } rows[] = {
        {"hfmime = broadsoft", "hfmime", "broadsoft"},
        {"hfmime = dtmf", "hfmime", "dtmf"},
        {"conference_serv_name = conf", "conference_serv_name", "conf"},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        parse(*image, sip_node(4, r.input));
        const auto out =
            support::write([&](uint8_t **c) { return profile_sip_save(c, 4, &image->profiles[4]); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        EXPECT_EQ(support::value(out.node(), r.name), r.written) << r.input;
    }
}

} // namespace
