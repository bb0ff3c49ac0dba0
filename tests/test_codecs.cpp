// Codec settings of the VoIP profiles and the dial-plan profiles: the profile
// numbers taken from the path and the shared part of the writers (what the
// parser stores: tests/cases/profiles.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

// Profile numbers come from the path; a number out of range ends the whole
// message, with the nodes before it kept.
TEST(CodecBlock, ProfileNumbers)
{
    // path, the level-1 line expected on stdout (nullptr: none), later nodes parsed
    const std::vector<std::tuple<const char *, const char *, bool>> rows = {
        {"config.VOIP.profile.profile_7.codecs", nullptr, true},
        {"config.VOIP.profile.profile_8.codecs", "Incorrect number of profile [8]", false},
        {"config.VOIP.profile.profile_4294967299.codecs", "Incorrect number of profile [2147483647]", false},
        {"config.VOIP.dialplan_profiles.dialplan_profile0", nullptr, true},
        {"config.VOIP.dialplan_profiles.dialplan_profile4", "Incorrect number of dialplan profile [4]", false},
        {"config.VOIP.dialplan_profiles.dialplan_profile10", "Incorrect number of dialplan profile [10]", false},
        // Not a dial-plan profile path: an unknown node, skipped.
        {"config.VOIP.dialplan_profiles.dialplan_profile_2", nullptr, true},
    };
    for (const auto &[path, report, later_nodes_parsed] : rows) {
        SCOPED_TRACE(path);
        auto image = fresh_image();
        image->routes.start = CFG_LIST_UPDATING;
        const std::string printed = support::stdout_of([&] {
            parse(*image, std::string("[config.VOIP.h323]\n timetolive = 4\n[") + path +
                              "]\n g711u = 6\n[config.VOIP.range]\n sip_dscp = 9\n");
        });
        EXPECT_EQ(image->h323.timetolive, 4); // stored before the profile node
        EXPECT_EQ(image->h323.sip_dscp == 9, later_nodes_parsed);
        EXPECT_EQ(image->routes.start != CFG_LIST_UPDATING, later_nodes_parsed);
        if (report != nullptr)
            EXPECT_NE(printed.find(report), std::string::npos) << printed;
        else
            EXPECT_EQ(printed, "");
        EXPECT_TRUE(support::lock_is_free());
    }
    // The edge numbers store into their own records.
    auto image = fresh_image();
    parse(*image, "[config.VOIP.profile.profile_7.codecs]\n g711u = 6\n"
                  "[config.VOIP.dialplan_profiles.dialplan_profile0]\n g711u = 8\n");
    EXPECT_EQ(image->profiles[7].codecs.g711u, 6);
    EXPECT_EQ(image->dialplan_profiles[0].g711u, 8);
}

// codec_params_save continues inside a node opened by its caller and hands
// back the running count.
TEST(CodecWriters, SharedParamsContinueACallersNode)
{
    const codecs_cfg_t codecs{};
    const auto out = support::write([&](uint8_t **c) {
        **c = 2;
        ++*c;
        uint32_t running = setUInt16ValueInMsg(c, "config.test", 33, 1);
        const uint8_t *before = *c;
        const uint32_t after = codec_params_save(c, &codecs, running);
        EXPECT_EQ(after - running, static_cast<uint32_t>(*c - before));
        **c = 0;
        return after + 1;
    });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().params.size(), 33u); // the params the two codec nodes share
}

} // namespace
