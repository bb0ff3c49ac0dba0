// Common SIP settings: keys, bounds, the transport rule, the writer's order.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

TEST(CommonSip, NumberKeys)
{
    using S = sip_cfg_t;
    const struct {
        const char *text;
        int32_t S::*field;
        int32_t before, expected;
    } rows[] = {
        {"transport = 2", &S::transport, 0, 2}, {"transport = 4", &S::transport, 2, 0},
        {"transport = 0", &S::transport, 2, 0}, {"transport = x", &S::transport, 2, 0},
        {"transport =", &S::transport, 2, 0}, {"transport = \"\"", &S::transport, 2, 0},
        {"sip_mtu = 1500", &S::sip_mtu, 0, 1300}, {"sip_mtu = 1450", &S::sip_mtu, 0, 1450},
        {"stun_interval = 5", &S::stun_interval, 60, 0}, {"stun_interval = 10", &S::stun_interval, 0, 10},
        {"stun_interval = 1801", &S::stun_interval, 60, 0}, {"stun_interval =", &S::stun_interval, 60, 0},
        {"invite_total_t = 39000", &S::invite_total_t, 0, 39000},
        {"invite_total_t = 39001", &S::invite_total_t, 0, 32000},
        {"invite_init_t = 99", &S::invite_init_t, 0, 500}, {"invite_init_t = 100", &S::invite_init_t, 0, 100},
        {"invite_init_max_t = 32001", &S::invite_init_max_t, 0, 4000},
        {"invite_init_max_t = 2000", &S::invite_init_t, 7, 7}, // not the shorter key
        {"port_reg_delay_t = 5000", &S::port_reg_delay_t, 0, 5000},
        {"port_reg_delay_t = 5001", &S::port_reg_delay_t, 9, 0},
        {"enablesip = y", &S::enablesip, 0, 1}, {"enablesip_x = 1", &S::enablesip, 0, 1}, // prefix
        {"sip_unknown = 1400", &S::sip_mtu, 7, 7},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->sip.*r.field = r.before;
        parse(*image, std::string("[config.VOIP.sip]\n") + r.text + "\n");
        EXPECT_EQ(image->sip.*r.field, r.expected) << r.text;
        EXPECT_NE(image->sip.updated, 0u) << r.text;
    }
    EXPECT_TRUE(support::lock_is_free());
}

TEST(CommonSip, StunFlagAndTexts)
{
    auto image = fresh_image();
    std::strcpy(image->sip.publicip, "10.0.0.1");
    parse(*image, "[config.VOIP.sip]\n stun_enable = y\n stun_server = " + std::string(130, 's') +
                      "\n publicip = \"\"\n");
    EXPECT_EQ(image->sip.stun_enable, 1);
    EXPECT_EQ(std::string(image->sip.stun_server), std::string(127, 's'));
    EXPECT_EQ(image->sip.publicip[0], '\0');
}

TEST(CommonSip, WriterOrderAndRoundTrip)
{
    auto image = fresh_image();
    sip_cfg_t &s = image->sip;
    s = sip_cfg_t{1, 200, 30000, 2000, 1400, 1, 3, 250, 1, "stun.example.net", 600, "", 0};
    const auto out = support::write([&](uint8_t **c) { return common_sip_save(c, &s); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.VOIP.sip");
    EXPECT_EQ(out.node().params, (std::vector<cfgmsg::param>{
        {"enablesip", "1"}, {"shortmode", "1"}, {"transport", "3"}, {"sip_mtu", "1400"},
        {"invite_total_t", "30000"}, {"invite_init_t", "200"}, {"invite_init_max_t", "2000"},
        {"port_reg_delay_t", "250"}, {"stun_enable", "1"}, {"stun_server", "stun.example.net"},
        {"stun_interval", "600"}, {"publicip", "\"\""}}));

    // Parsed back, the record writes the same bytes again.
    auto back = fresh_image();
    all_parser(back.get(), out.as_message().data());
    const auto again = support::write([&](uint8_t **c) { return common_sip_save(c, &back->sip); });
    EXPECT_EQ(again.body, out.body);
}

} // namespace
