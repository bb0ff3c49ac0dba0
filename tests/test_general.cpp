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
    struct row {
        const char *text;
        int32_t general_cfg_t::*field;
        int32_t before, expected;
    };
    const std::vector<row> rows = {
        {"start_timer = 9", &general_cfg_t::start_timer, 0, 300},
        {"start_timer = 10", &general_cfg_t::start_timer, 0, 10},
        {"start_timer =", &general_cfg_t::start_timer, 50, 300},
        {"duration_timer = 301", &general_cfg_t::duration_timer, 0, 300},
        {"duration_timer = 10", &general_cfg_t::duration_timer, 0, 10},
        {"wait_answer_timer = 39", &general_cfg_t::wait_answer_timer, 0, 180},
        {"wait_answer_timer = 300", &general_cfg_t::wait_answer_timer, 0, 300},
        {"fans_threshold_temperature = 60", &general_cfg_t::fans_threshold_temperature, 0, 55},
        {"fans_threshold_temperature = 35", &general_cfg_t::fans_threshold_temperature, 0, 35},
        {"fans_threshold_temperature = abc", &general_cfg_t::fans_threshold_temperature, 40, 55},
        {"use_uni = y", &general_cfg_t::use_uni, 0, 1},
        {"fans_force_enable = 1", &general_cfg_t::fans_force_enable, 0, 1},
        {"power_mode = \"\"", &general_cfg_t::power_mode, 1, 0},
        {"power_mode_x = 1", &general_cfg_t::power_mode, 0, 1}, // prefix match
        {"timer = 20", &general_cfg_t::start_timer, 7, 7},     // no key
    };
    for (const row &r : rows) {
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
    EXPECT_EQ(support::names(out.node()),
              (std::vector<std::string>{"unit_prefix", "use_uni", "start_timer", "device_name",
                                        "duration_timer", "wait_answer_timer", "fans_force_enable",
                                        "fans_threshold_temperature", "power_mode"}));

    // Parsed back, the record writes the same bytes again.
    auto back = fresh_image();
    all_parser(back.get(), out.as_message().data());
    const auto again = support::write([&](uint8_t **c) { return general_save(c, &back->general); });
    EXPECT_EQ(again.body, out.body);
    EXPECT_STREQ(back->general.device_name, "gateway one");
    EXPECT_EQ(back->general.duration_timer, 30);
}

} // namespace
