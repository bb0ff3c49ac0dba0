// General settings: timer bounds, text cuts, the writer's order.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

TEST(General, NumberKeys)
{
    using G = general_cfg_t;
    const struct {
        const char *text;
        int32_t G::*field;
        int32_t before, expected;
    } rows[] = {
        {"start_timer = 9", &G::start_timer, 0, 300}, {"start_timer = 10", &G::start_timer, 0, 10},
        {"start_timer =", &G::start_timer, 50, 300}, {"duration_timer = 301", &G::duration_timer, 0, 300},
        {"duration_timer = 10", &G::duration_timer, 0, 10}, {"wait_answer_timer = 39", &G::wait_answer_timer, 0, 180},
        {"wait_answer_timer = 300", &G::wait_answer_timer, 0, 300},
        {"fans_threshold_temperature = 60", &G::fans_threshold_temperature, 0, 55},
        {"fans_threshold_temperature = 35", &G::fans_threshold_temperature, 0, 35},
        {"fans_threshold_temperature = abc", &G::fans_threshold_temperature, 40, 55},
        {"use_uni = y", &G::use_uni, 0, 1}, {"power_mode = \"\"", &G::power_mode, 1, 0},
        {"power_mode_x = 1", &G::power_mode, 0, 1}, /* prefix match */ {"timer = 20", &G::start_timer, 7, 7}, // no key
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->general.*r.field = r.before;
        parse(*image, std::string("[config.VOIP.general]\n") + r.text + "\n");
        EXPECT_EQ(image->general.*r.field, r.expected) << r.text;
    }
    EXPECT_TRUE(support::lock_is_free());
}

TEST(General, TextsAreCut)
{
    auto image = fresh_image();
    parse(*image, "[config.VOIP.general]\n unit_prefix = " + std::string(25, 'u') +
                      "\n device_name = " + std::string(300, 'd') + "\n");
    EXPECT_EQ(std::string(image->general.unit_prefix), std::string(20, 'u'));
    EXPECT_EQ(std::string(image->general.device_name), std::string(256, 'd'));
    EXPECT_NE(image->general.updated, 0u);
}

TEST(General, WriterOrderAndRoundTrip)
{
    auto image = fresh_image();
    general_cfg_t &g = image->general;
    g = general_cfg_t{"pfx", "gateway one", 1, 20, 30, 40, 1, 45, 1, 0};
    const auto out = support::write([&](uint8_t **c) { return general_save(c, &g); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.VOIP.general");
    EXPECT_EQ(out.node().params, (std::vector<cfgmsg::param>{
        {"unit_prefix", "pfx"}, {"use_uni", "1"}, {"start_timer", "20"},
        {"device_name", "gateway one"}, {"duration_timer", "30"}, {"wait_answer_timer", "40"},
        {"fans_force_enable", "1"}, {"fans_threshold_temperature", "45"}, {"power_mode", "1"}}));

    // Parsed back, the record writes the same bytes again.
    auto back = fresh_image();
    all_parser(back.get(), out.as_message().data());
    const auto again = support::write([&](uint8_t **c) { return general_save(c, &back->general); });
    EXPECT_EQ(again.body, out.body);
}

} // namespace
