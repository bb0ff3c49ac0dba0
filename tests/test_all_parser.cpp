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
                  "[config.VOIP.profile.profile_3.sipx]\n timetolive = 5\n"
                  "[config.VOIP.profile.profile_.sip]\n expires = 77\n");
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
    // Plain stores of every field are covered by the round trip below.
    struct row {
        const char *text;
        int32_t h323_cfg_t::*field;
        int32_t expected; // 7 before the parse
    } rows[] = {
        {"enableh323 =", &h323_cfg_t::enableh323, 0},
        {"enableh323 = \"\"", &h323_cfg_t::enableh323, 0},
        {"enableh323 = x", &h323_cfg_t::enableh323, 7}, // no number: unchanged
        {"enableh323 =  -12z", &h323_cfg_t::enableh323, -12},
        {"h235extra = 3", &h323_cfg_t::h235, 3},        // prefix match
        {"tcpportmin = 2000", &h323_cfg_t::tcpportmin, 7}, // a range key, not H.323
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        image->h323.*r.field = 7;
        parse(*image, std::string("[config.VOIP.h323]\n") + r.text + "\n");
        EXPECT_EQ(image->h323.*r.field, r.expected) << r.text;
    }

    auto image = fresh_image();
    std::strcpy(image->h323.gatekeeperip, "old");
    parse(*image, "[config.VOIP.h323]\n password = abcdefghijklmnopqrstuvwxy\n gatekeeperip =\n");
    EXPECT_STREQ(image->h323.password, "abcdefghijklmnopqrs"); // 19 of 25
    EXPECT_STREQ(image->h323.gatekeeperip, "");
}

// A range key and its field, which share the name.
#define RANGE(name) #name, &h323_cfg_t::name

TEST(Range, BoundsAndDefaults)
{
    struct row {
        const char *key;
        int32_t h323_cfg_t::*field;
        const char *value; // nullptr: no value
        int32_t expected;
    } rows[] = {
        {RANGE(tcpportmin), "1023", 10000},      {RANGE(tcpportmin), "1024", 1024},
        {RANGE(tcpportmin), "65500", 65500},     {RANGE(tcpportmin), "65501", 10000},
        {RANGE(tcpportmin), "abc", 10000},       {RANGE(tcpportmax), nullptr, 11920},
        {RANGE(udpportmin), nullptr, 12000},     {RANGE(udpportmax), nullptr, 13920},
        {RANGE(rtph323min), nullptr, 33000},     {RANGE(rtph323max), nullptr, 35000},
        {RANGE(rtpsipmin), nullptr, 16384},      {RANGE(rtpsipmax), nullptr, 32767},
        {RANGE(intrcpmin), nullptr, 50000},      {RANGE(intrcpmax), "2000", 2000},
        {RANGE(intrcpmax), nullptr, 50100},      {RANGE(sip_dscp), "64", 26},
        {RANGE(sip_dscp), "0", 0},               {RANGE(sip_dscp), nullptr, 26},
        {RANGE(verify_remote_media), "y", 1},    {RANGE(verify_remote_media), "0", 0},
        {RANGE(verify_remote_media), nullptr, 0},
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
    h.h235 = 2;
    h.ignore_gcf = 3;
    h.disablefaststart = 4;
    h.disabletunneling = 5;
    h.timetolive = -1;
    h.keepalivetime = 30;
    h.usegatekeeper = 6;
    h.isgateway = 7;
    h.dtmftransfer = 2;
    h.bearercapability = 8;
    h.sip_dscp = 46;
    h.verify_remote_media = 1;
    std::strcpy(h.gatekeeperip, "10.0.0.9");
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
