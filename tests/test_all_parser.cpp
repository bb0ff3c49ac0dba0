// The parser driver: the ways a parse ends (classification and unknown
// paths: tests/cases/voip.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
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
        bool recounted = false;
        const std::string printed =
            support::stdout_of([&] { recounted = parse_recounts(*image, r.message); });
        EXPECT_EQ(std::tie(recounted, image->h323.timetolive, image->h323.sip_dscp),
                  std::tie(r.recounts, r.timetolive, r.sip_dscp))
            << r.what;
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

} // namespace
