// Ring cadences: the number in the path, the mask's text form, clearing by
// an empty node, all 32 cadences written (what the parser stores:
// tests/cases/voip.txt).
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

// The number is read after the last "_"; paths that name no cadence 0..31
// store nothing, not even a clear or the time-stamp. Either way the rest of
// the message is parsed.
TEST(Cadences, NumberFromThePath)
{
    const struct { const char *tail; int index; } rows[] = { // index -1: no cadence
        {"cadence_0", 0}, {"cadence_31", 31}, {"cadence_07", 7}, {"cadence_x_9", 9}, {"cadence", -1}, {"cadence_", -1},
        {"cadence_x", -1}, {"cadence_3a", -1}, {"cadence_-1", -1}, {"cadence_32", -1}, {"cadence_99999999999", -1},
        {"cadences", -1},
    };
    for (const auto &r : rows) {
        for (const char *params : {"", " ring = 5\n mask = 1\n"}) {
            auto image = fresh_image();
            for (cadence_cfg_t &c : image->cadences)
                c = cadence_cfg_t{11, 12, "r", 3};
            auto expected = fresh_image();
            std::memcpy(expected->cadences, image->cadences, sizeof image->cadences);
            if (r.index >= 0) {
                cadence_cfg_t &e = expected->cadences[r.index];
                // A node without params clears the cadence.
                e = *params == '\0' ? cadence_cfg_t{} : cadence_cfg_t{5, 12, "r", 2};
            }
            parse(*image, std::string("[config.VOIP.cadences.") + r.tail + "]\n" + params +
                              "[config.VOIP.dvo]\n dnd = *1\n");
            EXPECT_EQ(std::memcmp(expected->cadences, image->cadences, sizeof image->cadences), 0)
                << r.tail << " / " << params;
            EXPECT_EQ(image->cadences_updated != 0, r.index >= 0) << r.tail;
            EXPECT_STREQ(image->dvo.dnd, "*1") << r.tail;
            EXPECT_TRUE(support::lock_is_free());
        }
    }
}

TEST(Cadences, WriterWritesAll32AndRoundTrips)
{
    auto image = fresh_image();
    for (uint32_t c = 0; c < CFG_CADENCES; ++c) {
        image->cadences[c].ring = 100 + c;
        image->cadences[c].pause = 2000 + c;
        image->cadences[c].mask = c * 7 % 256;
        std::snprintf(image->cadences[c].rule, sizeof image->cadences[c].rule, "rule%u", c);
    }
    image->cadences[30].mask = 0x105; // bits above 7 are not flags
    image->cadences[31] = cadence_cfg_t{};

    const auto out = support::write([&](uint8_t **cur) { return cadence_config_save(cur, image.get()); });
    ASSERT_EQ(out.message.nodes.size(), 32u);
    EXPECT_EQ(support::value(out.node(3), "mask"), "0,2,4");  // 21
    EXPECT_EQ(support::value(out.node(30), "mask"), "0,2");
    EXPECT_EQ(out.node(31).params, (std::vector<cfgmsg::param>{
                                       {"rule", "\"\""}, {"ring", "0"}, {"pause", "0"}, {"mask", "\"\""}}));

    auto back = fresh_image();
    support::parse_back(*back, out);
    image->cadences[30].mask = 0x05;
    EXPECT_EQ(std::memcmp(back->cadences, image->cadences, sizeof image->cadences), 0);
}

} // namespace
