// Codec settings of the VoIP profiles and the dial-plan profiles: the keys
// with rules of their own, the profile numbers taken from the path, and the
// shared part of the writers.
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

// A 32-bit member of codecs_cfg_t, read with its own signedness.
struct member {
    std::size_t offset;
    bool is_signed;

    int64_t read(const codecs_cfg_t &c) const
    {
        uint32_t raw = 0;
        std::memcpy(&raw, reinterpret_cast<const char *>(&c) + offset, sizeof raw);
        return is_signed ? static_cast<int64_t>(static_cast<int32_t>(raw)) : static_cast<int64_t>(raw);
    }
    void write(codecs_cfg_t &c, uint32_t raw) const
    {
        std::memcpy(reinterpret_cast<char *>(&c) + offset, &raw, sizeof raw);
    }
};
#define CODEC(m) member{offsetof(codecs_cfg_t, m), std::is_signed_v<decltype(codecs_cfg_t::m)>}

constexpr uint32_t untouched = 0x5A5A5A5Au;

// Every row runs against a profile codecs node and a dial-plan profile node:
// both use the one table.
TEST(CodecBlock, KeyTableRules)
{
    struct row { const char *line; member field; int64_t expected; };
    // The keys with a rule of their own (packet times, T.38 datagram); the
    // rules of each kind of key are checked over every table in test_key_tables.
    const std::vector<row> rows = {
        {"g711a = \"\"", CODEC(g711a), 0},
        {"g729pte = 25", CODEC(g729pte), 20}, {"g729pte = 80", CODEC(g729pte), 80},
        {"g729pte = 90", CODEC(g729pte), 20}, {"g729pte =", CODEC(g729pte), 20},
        {"g723pte = 90", CODEC(g723pte), 90}, {"g723pte = 120", CODEC(g723pte), 30},
        {"g723pte = -30", CODEC(g723pte), -30}, // signed remainder
        {"g723pte = 0", CODEC(g723pte), 30},
        {"g711pte = 60", CODEC(g711pte), 60}, {"g711pte = 70", CODEC(g711pte), 20}, {"g711pte =", CODEC(g711pte), 20},
        {"g726_32_pte = 40", CODEC(g726_32_pte), 20}, {"g726_32_pte =", CODEC(g726_32_pte), 20},
        {"t38_datagram = 0", CODEC(t38_datagram), 0},
        {"t38_datagram = 00", CODEC(t38_datagram), 512}, // only the text "0" switches it off
        {"t38_datagram = 100", CODEC(t38_datagram), 512}, {"t38_datagram =", CODEC(t38_datagram), 512},
    };
    for (const row &r : rows) {
        for (const bool dialplan : {false, true}) {
            auto image = fresh_image();
            codecs_cfg_t &target = dialplan ? image->dialplan_profiles[3] : image->profiles[2].codecs;
            r.field.write(target, untouched);
            const char *path = dialplan ? "[config.VOIP.dialplan_profiles.dialplan_profile3]\n"
                                        : "[config.VOIP.profile.profile_2.codecs]\n";
            parse(*image, std::string(path) + r.line + "\n");
            EXPECT_EQ(r.field.read(target), r.expected) << r.line << (dialplan ? " (dial-plan)" : "");
            EXPECT_NE(dialplan ? image->dialplan_profiles_updated[3] : image->profiles_updated[2], 0u);
            EXPECT_TRUE(support::lock_is_free());
        }
    }
}

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
