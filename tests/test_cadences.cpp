// Ring cadences: the mask's text form and all 32 cadences written (what the
// parser stores, and which cadence a path names: tests/cases/voip.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

namespace {

using support::fresh_image;

// The number is read after the last "_"; paths that name no cadence 0..31
// store nothing, not even a clear or the time-stamp. Either way the rest of
// the message is parsed.

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
    EXPECT_EQ(support::value(out.node(3), "mask"), "0,2,4"); // 21
    EXPECT_EQ(support::value(out.node(30), "mask"), "0,2");
    EXPECT_EQ(out.node(31).params, (std::vector<cfgmsg::param>{
                                       {"rule", "\"\""}, {"ring", "0"}, {"pause", "0"}, {"mask", "\"\""}}));

    auto back = fresh_image();
    support::parse_back(*back, out);
    image->cadences[30].mask = 0x05;
    EXPECT_EQ(std::memcmp(back->cadences, image->cadences, sizeof image->cadences), 0);
}

} // namespace
