// The parser driver: classification, the ways a parse ends, and the first
// sections that run end to end (H.323 settings and port ranges).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

// Runs a parse and reports whether the recount ran: a list marker set
// beforehand is cleared only by a recount.
bool parse_recounts(cfg_image_t &image, const std::vector<uint8_t> &message)
{
    image.routes.start = CFG_LIST_UPDATING;
    all_parser(&image, message.data());
    EXPECT_TRUE(support::lock_is_free());
    return image.routes.start != CFG_LIST_UPDATING;
}

TEST(AllParser, ClassificationByPrefixAndPattern)
{
    struct row {
        const char *path;
        bool h323_stamped;
    } rows[] = {
        {"config.VOIP.h323", true},
        {"config.VOIP.h323.extra", true},   // a path that begins with the prefix
        {"config.VOIP.h32", false},
        {"config.VOIP.profile.profile_3.sipx", false},
        {"config.VOIP.profile.profile_.sip", false},
        {"config.voip.h323", false},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        parse(*image, std::string("[") + r.path + "]\n timetolive = 42\n");
        EXPECT_EQ(image->h323.timetolive == 42, r.h323_stamped) << r.path;
        EXPECT_EQ(image->h323.updated != 0, r.h323_stamped) << r.path;
        EXPECT_TRUE(support::lock_is_free());
    }
}

TEST(AllParser, UnknownPathsLeaveTheImageUntouched)
{
    auto image = fresh_image();
    auto before = fresh_image();
    parse(*image, "[config.VOIP.nothing]\n a = 1\n b = 2\n c =\n"
                  "[config.VOIP.profile.profile_3.sipx]\n timetolive = 5\n");
    image->limits.recalculated = 0; // the recount stamps this; nothing else may change
    EXPECT_EQ(std::memcmp(image.get(), before.get(), sizeof(cfg_image_t)), 0);

    // The node after an unknown one is parsed normally.
    parse(*image, "[config.VOIP.unknown]\n x = 1\n y = 2\n[config.VOIP.h323]\n keepalivetime = 9\n");
    EXPECT_EQ(image->h323.keepalivetime, 9);
}

TEST(AllParser, WaysAParseEnds)
{
    const std::vector<uint8_t> good = cfgmsg::message_from_text(
        "[config.VOIP.h323]\n timetolive = 1\n[config.VOIP.range]\n sip_dscp = 5\n");

    struct row {
        const char *what;
        std::vector<uint8_t> message;
        bool recounts;
        int32_t timetolive;
        int32_t sip_dscp;
    };
    std::vector<row> rows;
    rows.push_back({"normal", good, true, 1, 5});

    // Body length 0 or 1: no node at all, the parse still ends normally.
    for (uint32_t body : {0u, 1u, 2u}) {
        std::vector<uint8_t> m(12 + 2, 0);
        m[4] = static_cast<uint8_t>(body);
        m[12] = 2;
        rows.push_back({"tiny body", m, true, 0, 0});
    }
    // Cutting the message inside the second node's param: malformed, the
    // first node's store stays, no recount.
    std::vector<uint8_t> cut = good;
    cut[4] = static_cast<uint8_t>(cut[4] - 3);
    rows.push_back({"value past the end", cut, false, 1, 0});
    // A node head that does not fit.
    std::vector<uint8_t> head = good;
    head[4] = 1 + 5;
    rows.push_back({"node head past the end", head, false, 0, 0});
    // A param count larger than the params present.
    std::vector<uint8_t> count = cfgmsg::message_from_text("[config.VOIP.h323]\n timetolive = 3\n");
    count[12 + 1 + 2 + std::strlen("config.VOIP.h323")] = 2;
    rows.push_back({"missing param", count, false, 3, 0});

    for (const row &r : rows) {
        auto image = fresh_image();
        image->h323.sip_dscp = 0;
        testing::internal::CaptureStdout();
        const bool recounted = parse_recounts(*image, r.message);
        const std::string printed = testing::internal::GetCapturedStdout();
        EXPECT_EQ(recounted, r.recounts) << r.what;
        EXPECT_EQ(image->h323.timetolive, r.timetolive) << r.what;
        EXPECT_EQ(image->h323.sip_dscp, r.sip_dscp) << r.what;
        EXPECT_EQ(printed.find("Incorrect format of message") != std::string::npos, !r.recounts)
            << r.what << ": " << printed;
    }
}

TEST(AllParser, NodeWithoutParamsStampsItsSection)
{
    auto image = fresh_image();
    parse(*image, "[config.VOIP.range]\n");
    EXPECT_NE(image->h323.updated, 0u);
    EXPECT_EQ(image->h323.tcpportmin, 0);
}

TEST(H323, KeysAndRules)
{
    struct row {
        const char *text;
        int32_t h323_cfg_t::*field;
        int32_t before;
        int32_t expected;
    } rows[] = {
        {"enableh323 = 1", &h323_cfg_t::enableh323, 7, 1},
        {"enableh323 =", &h323_cfg_t::enableh323, 7, 0},
        {"enableh323 = \"\"", &h323_cfg_t::enableh323, 7, 0},
        {"enableh323 = x", &h323_cfg_t::enableh323, 7, 7},     // no number: unchanged
        {"enableh323 =  -12z", &h323_cfg_t::enableh323, 7, -12},
        {"h235extra = 3", &h323_cfg_t::h235, 0, 3},            // prefix match
        {"timetolive = -1", &h323_cfg_t::timetolive, 0, -1},
        {"keepalivetime = 60", &h323_cfg_t::keepalivetime, 0, 60},
        {"ignore_gcf = 1", &h323_cfg_t::ignore_gcf, 0, 1},
        {"disabletunneling = 1", &h323_cfg_t::disabletunneling, 0, 1},
        {"disablefaststart = 1", &h323_cfg_t::disablefaststart, 0, 1},
        {"usegatekeeper = 1", &h323_cfg_t::usegatekeeper, 0, 1},
        {"isgateway = 1", &h323_cfg_t::isgateway, 0, 1},
        {"dtmftransfer = 2", &h323_cfg_t::dtmftransfer, 0, 2},
        {"bearercapability = 4", &h323_cfg_t::bearercapability, 0, 4},
        {"tcpportmin = 2000", &h323_cfg_t::tcpportmin, 5, 5},  // a range key, not H.323
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        image->h323.*r.field = r.before;
        parse(*image, std::string("[config.VOIP.h323]\n") + r.text + "\n");
        EXPECT_EQ(image->h323.*r.field, r.expected) << r.text;
    }

    auto image = fresh_image();
    std::strcpy(image->h323.gatekeeperip, "old");
    parse(*image, "[config.VOIP.h323]\n password = abcdefghijklmnopqrstuvwxy\n gatekeeperip =\n"
                  " h323aliase = gw\n");
    EXPECT_STREQ(image->h323.password, "abcdefghijklmnopqrs"); // 19 of 25
    EXPECT_STREQ(image->h323.gatekeeperip, "");
    EXPECT_STREQ(image->h323.h323aliase, "gw");
}

TEST(Range, BoundsAndDefaults)
{
    struct row {
        const char *key;
        const char *value; // nullptr: no value
        int32_t h323_cfg_t::*field;
        int32_t expected;
    } rows[] = {
        {"tcpportmin", "1023", &h323_cfg_t::tcpportmin, 10000},
        {"tcpportmin", "1024", &h323_cfg_t::tcpportmin, 1024},
        {"tcpportmin", "65500", &h323_cfg_t::tcpportmin, 65500},
        {"tcpportmin", "65501", &h323_cfg_t::tcpportmin, 10000},
        {"tcpportmin", "abc", &h323_cfg_t::tcpportmin, 10000},
        {"tcpportmax", nullptr, &h323_cfg_t::tcpportmax, 11920},
        {"udpportmin", nullptr, &h323_cfg_t::udpportmin, 12000},
        {"udpportmax", nullptr, &h323_cfg_t::udpportmax, 13920},
        {"rtph323min", nullptr, &h323_cfg_t::rtph323min, 33000},
        {"rtph323max", nullptr, &h323_cfg_t::rtph323max, 35000},
        {"rtpsipmin", nullptr, &h323_cfg_t::rtpsipmin, 16384},
        {"rtpsipmax", nullptr, &h323_cfg_t::rtpsipmax, 32767},
        {"intrcpmin", nullptr, &h323_cfg_t::intrcpmin, 50000},
        {"intrcpmax", "2000", &h323_cfg_t::intrcpmax, 2000},
        {"intrcpmax", nullptr, &h323_cfg_t::intrcpmax, 50100},
        {"sip_dscp", "64", &h323_cfg_t::sip_dscp, 26},
        {"sip_dscp", "0", &h323_cfg_t::sip_dscp, 0},
        {"sip_dscp", nullptr, &h323_cfg_t::sip_dscp, 26},
        {"verify_remote_media", "y", &h323_cfg_t::verify_remote_media, 1},
        {"verify_remote_media", "0", &h323_cfg_t::verify_remote_media, 0},
        {"verify_remote_media", nullptr, &h323_cfg_t::verify_remote_media, 0},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        image->h323.*r.field = -7;
        const std::string line = r.value ? std::string(r.key) + " = " + r.value : std::string(r.key) + " =";
        parse(*image, "[config.VOIP.range]\n" + line + "\n");
        EXPECT_EQ(image->h323.*r.field, r.expected) << line;
    }
}

TEST(H323, WritersTablesAndRoundTrip)
{
    auto image = fresh_image();
    h323_cfg_t &h = image->h323;
    h.enableh323 = 1;
    h.timetolive = -1;
    h.keepalivetime = 30;
    h.dtmftransfer = 2;
    std::strcpy(h.h323aliase, "gateway");
    h.tcpportmin = 1100;
    h.tcpportmax = 1200;
    h.udpportmin = 1300;
    h.udpportmax = 1400;
    h.rtph323min = 1500;
    h.rtph323max = 1600;
    h.rtpsipmin = 1700;
    h.rtpsipmax = 1800;
    h.intrcpmin = 1900;
    h.intrcpmax = 2000;
    h.sip_dscp = 46;
    h.verify_remote_media = 1;

    const auto h323 = support::write([&](uint8_t **c) { return h323_save(c, &h); });
    ASSERT_EQ(h323.message.nodes.size(), 1u);
    EXPECT_EQ(h323.node().path, "config.VOIP.h323");
    EXPECT_EQ(support::names(h323.node()),
              (std::vector<std::string>{"enableh323", "ignore_gcf", "disablefaststart", "disabletunneling",
                                        "h235", "password", "usegatekeeper", "gatekeeperip", "h323aliase",
                                        "isgateway", "dtmftransfer", "timetolive", "keepalivetime",
                                        "bearercapability"}));
    EXPECT_EQ(support::value(h323.node(), "password"), "\"\"");
    EXPECT_EQ(support::value(h323.node(), "timetolive"), "4294967295");

    const auto range = support::write([&](uint8_t **c) { return RANGE_save(c, &h); });
    EXPECT_EQ(range.node().path, "config.VOIP.range");
    EXPECT_EQ(support::names(range.node()),
              (std::vector<std::string>{"tcpportmin", "tcpportmax", "udpportmin", "udpportmax", "rtph323min",
                                        "rtph323max", "rtpsipmin", "rtpsipmax", "intrcpmax", "intrcpmin",
                                        "sip_dscp", "verify_remote_media"}));

    auto back = fresh_image();
    all_parser(back.get(), h323.as_message().data());
    all_parser(back.get(), range.as_message().data());
    back->h323.updated = h.updated;
    EXPECT_EQ(std::memcmp(&back->h323, &h, sizeof h), 0);
}

} // namespace
