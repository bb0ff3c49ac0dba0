// Codec settings of the VoIP profiles and the dial-plan profiles: the shared
// key table, the profile numbers taken from the path, and the writers.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
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

support::image_ptr parse_back(const support::written &out)
{
    auto image = fresh_image();
    all_parser(image.get(), out.as_message().data());
    return image;
}

// Every row runs against a profile codecs node and a dial-plan profile node:
// both use the one table.
TEST(CodecBlock, KeyTableRules)
{
    struct row {
        const char *line;
        member field;
        int64_t expected;
    };
    // The keys with a rule of their own and the prefix matches; the rules of
    // each kind of key are checked over every table in test_key_tables.
    const std::vector<row> rows = {
        {"g711a = \"\"", CODEC(g711a), 0},
        {"g711alaw = 7", CODEC(g711a), 7}, // taken by the prefix "g711a"
        {"g729pte = 25", CODEC(g729pte), 20}, {"g729pte = 80", CODEC(g729pte), 80},
        {"g729pte = 90", CODEC(g729pte), 20}, {"g729pte =", CODEC(g729pte), 20},
        {"g723pte = 90", CODEC(g723pte), 90}, {"g723pte = 120", CODEC(g723pte), 30},
        {"g723pte = -30", CODEC(g723pte), -30}, // signed remainder
        {"g723pte = 0", CODEC(g723pte), 30},
        {"g723 = 4", CODEC(g723), 4}, // not taken by "g723pte"
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

TEST(CodecBlock, UnknownNamesAreDropped)
{
    auto image = fresh_image();
    auto before = fresh_image();
    parse(*image, "[config.VOIP.profile.profile_0.codecs]\n g729a = 1\n g711 = 2\n codec = 3\n");
    EXPECT_NE(image->profiles_updated[0], 0u);
    image->profiles_updated[0] = 0;
    image->limits.recalculated = 0; // stamped by the end-of-message recount
    EXPECT_EQ(std::memcmp(image.get(), before.get(), sizeof(cfg_image_t)), 0);
}

// Profile numbers come from the path; a number out of range ends the whole
// message, with the nodes before it kept.
TEST(CodecBlock, ProfileNumbers)
{
    struct row {
        const char *path;
        const char *report; // level-1 line expected on stdout, or nullptr
        bool later_nodes_parsed;
    };
    const std::vector<row> rows = {
        {"config.VOIP.profile.profile_7.codecs", nullptr, true},
        {"config.VOIP.profile.profile_8.codecs", "Incorrect number of profile [8]", false},
        {"config.VOIP.profile.profile_4294967299.codecs", "Incorrect number of profile [2147483647]", false},
        {"config.VOIP.dialplan_profiles.dialplan_profile0", nullptr, true},
        {"config.VOIP.dialplan_profiles.dialplan_profile4", "Incorrect number of dialplan profile [4]", false},
        {"config.VOIP.dialplan_profiles.dialplan_profile10", "Incorrect number of dialplan profile [10]", false},
        // Not a dial-plan profile path: an unknown node, skipped.
        {"config.VOIP.dialplan_profiles.dialplan_profile_2", nullptr, true},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        image->routes.start = CFG_LIST_UPDATING;
        testing::internal::CaptureStdout();
        parse(*image, std::string("[config.VOIP.h323]\n timetolive = 4\n[") + r.path +
                          "]\n g711u = 6\n[config.VOIP.range]\n sip_dscp = 9\n");
        const std::string printed = testing::internal::GetCapturedStdout();
        EXPECT_EQ(image->h323.timetolive, 4) << r.path; // stored before the profile node
        EXPECT_EQ(image->h323.sip_dscp == 9, r.later_nodes_parsed) << r.path;
        EXPECT_EQ(image->routes.start != CFG_LIST_UPDATING, r.later_nodes_parsed) << r.path;
        if (r.report != nullptr)
            EXPECT_NE(printed.find(r.report), std::string::npos) << r.path << ": " << printed;
        else
            EXPECT_EQ(printed, "") << r.path;
        EXPECT_TRUE(support::lock_is_free());
    }
    // The edge numbers store into their own records.
    auto image = fresh_image();
    parse(*image, "[config.VOIP.profile.profile_7.codecs]\n g711u = 6\n"
                  "[config.VOIP.dialplan_profiles.dialplan_profile0]\n g711u = 8\n");
    EXPECT_EQ(image->profiles[7].codecs.g711u, 6);
    EXPECT_EQ(image->dialplan_profiles[0].g711u, 8);
}

// A record whose every written member holds a distinct value that its rule
// keeps, so a round trip shows each param landing in its own member.
codecs_cfg_t sample_codecs()
{
    codecs_cfg_t c{};
    c.faxdirection = 1;
    c.faxtransfer = 2;
    c.slave_faxtransfer = 4;
    c.modemtransfer = 5;
    c.dtmftransfer = 6;
    c.flashtransfer = 7;
    c.payload = 101;
    c.nse_payload = 120;
    c.dispersion_time = 32;
    c.g711a = 8;
    c.g711u = 9;
    c.g729x = 10;
    c.g729b = 11;
    c.g723 = 12;
    c.g726_32 = 13;
    c.g711pte = 40;
    c.g729pte = 70;
    c.g723pte = 90;
    c.g726_32_pte = 30;
    c.g726_32_pt = 110;
    c.rtcp_period = 3;
    c.rtcp_timer = 6;
    c.jb_pt_delay = 14;
    c.jb_vo_adaptive = 15;
    c.jb_vo_delay_min = 16;
    c.jb_vo_delay_max = 17;
    c.jb_vo_del_threshold = 18;
    c.jb_vo_del_mode_soft = 19;
    c.t38_bitrate = 9600;
    c.t38_datagram = 300;
    c.silencedetector = c.echocanceller = c.ecan_nlp_disable = c.comfortnoise = c.rtcp_xr = c.rfc3264_pt_common = 1;
    return c;
}

TEST(CodecWriters, ProfileCodecsNode)
{
    profile_cfg_t profile{};
    profile.codecs = sample_codecs();
    profile.codecs.g711a = -1;
    profile.codecs.max_calls = 20; // dial-plan member: never written here
    const auto out = support::write([&](uint8_t **c) { return profile_codecs_save(c, 2, &profile); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.VOIP.profile.profile_2.codecs");
    EXPECT_EQ(support::value(out.node(), "g711a"), "4294967295");
    EXPECT_EQ(support::value(out.node(), "g729a"), "0");

    // Parsed back, every written member returns; the dial-plan members and
    // the application's areas are not part of the node.
    profile.codecs.g711a = 8;
    const auto again = support::write([&](uint8_t **c) { return profile_codecs_save(c, 2, &profile); });
    auto image = parse_back(again);
    codecs_cfg_t expected_record = profile.codecs;
    expected_record.max_calls = 0;
    EXPECT_EQ(std::memcmp(&image->profiles[2].codecs, &expected_record, sizeof(codecs_cfg_t)), 0);
}

TEST(CodecWriters, DialplanProfileNode)
{
    dialplan_profile_cfg_t profile = sample_codecs();
    profile.agc_spk_enable = profile.agc_mic_enable = 1;
    profile.agc_spk_level = -3;
    profile.agc_mic_level = -10;
    profile.max_calls = 143;
    const auto out = support::write([&](uint8_t **c) { return dialplan_profile_save(c, 1, &profile); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.VOIP.dialplan_profiles.dialplan_profile1");
    EXPECT_EQ(support::value(out.node(), "agc_mic_level"), "-10");

    auto image = parse_back(out);
    dialplan_profile_cfg_t expected_record = profile;
    // Only the profile codecs node carries these.
    codecs_cfg_t &e = expected_record;
    e.flashtransfer = e.rtcp_period = e.rtcp_timer = e.rtcp_xr = 0;
    EXPECT_EQ(std::memcmp(&image->dialplan_profiles[1], &expected_record, sizeof(codecs_cfg_t)), 0);
}

// codec_params_save continues inside a node opened by its caller and hands
// back the running count.
TEST(CodecWriters, SharedParamsContinueACallersNode)
{
    const codecs_cfg_t codecs = sample_codecs();
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
