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
    struct row {
        const char *text;
        int32_t sip_cfg_t::*field;
        int32_t before, expected;
    };
    const std::vector<row> rows = {
        {"transport = 2", &sip_cfg_t::transport, 0, 2},
        {"transport = 3", &sip_cfg_t::transport, 0, 3},
        {"transport = 4", &sip_cfg_t::transport, 2, 0},
        {"transport = 0", &sip_cfg_t::transport, 2, 0},
        {"transport = x", &sip_cfg_t::transport, 2, 0},
        {"transport =", &sip_cfg_t::transport, 2, 0},
        {"transport = \"\"", &sip_cfg_t::transport, 2, 0},
        {"sip_mtu = 1500", &sip_cfg_t::sip_mtu, 0, 1300},
        {"sip_mtu = 1450", &sip_cfg_t::sip_mtu, 0, 1450},
        {"stun_interval = 5", &sip_cfg_t::stun_interval, 60, 0},
        {"stun_interval = 10", &sip_cfg_t::stun_interval, 0, 10},
        {"stun_interval = 1801", &sip_cfg_t::stun_interval, 60, 0},
        {"stun_interval =", &sip_cfg_t::stun_interval, 60, 0},
        {"invite_total_t = 39000", &sip_cfg_t::invite_total_t, 0, 39000},
        {"invite_total_t = 39001", &sip_cfg_t::invite_total_t, 0, 32000},
        {"invite_init_t = 99", &sip_cfg_t::invite_init_t, 0, 500},
        {"invite_init_t = 100", &sip_cfg_t::invite_init_t, 0, 100},
        {"invite_init_max_t = 32001", &sip_cfg_t::invite_init_max_t, 0, 4000},
        {"invite_init_max_t = 2000", &sip_cfg_t::invite_init_max_t, 0, 2000},
        {"invite_init_max_t = 2000", &sip_cfg_t::invite_init_t, 7, 7}, // not the shorter key
        {"port_reg_delay_t = 5000", &sip_cfg_t::port_reg_delay_t, 0, 5000},
        {"port_reg_delay_t = 5001", &sip_cfg_t::port_reg_delay_t, 9, 0},
        {"enablesip = y", &sip_cfg_t::enablesip, 0, 1},
        {"enablesip = no", &sip_cfg_t::enablesip, 1, 0},
        {"enablesip_x = 1", &sip_cfg_t::enablesip, 0, 1}, // prefix match
        {"shortmode = 1", &sip_cfg_t::shortmode, 0, 1},
        {"sip_unknown = 1400", &sip_cfg_t::sip_mtu, 7, 7},
    };
    for (const row &r : rows) {
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
    EXPECT_EQ(support::names(out.node()),
              (std::vector<std::string>{"enablesip", "shortmode", "transport", "sip_mtu",
                                        "invite_total_t", "invite_init_t", "invite_init_max_t",
                                        "port_reg_delay_t", "stun_enable", "stun_server",
                                        "stun_interval", "publicip"}));
    EXPECT_EQ(support::value(out.node(), "invite_total_t"), "30000");
    EXPECT_EQ(support::value(out.node(), "publicip"), "\"\"");

    // Parsed back, the record writes the same bytes again.
    auto back = fresh_image();
    all_parser(back.get(), out.as_message().data());
    const auto again = support::write([&](uint8_t **c) { return common_sip_save(c, &back->sip); });
    EXPECT_EQ(again.body, out.body);
    EXPECT_EQ(back->sip.invite_init_t, 200);
    EXPECT_EQ(back->sip.invite_total_t, 30000);
    EXPECT_STREQ(back->sip.stun_server, "stun.example.net");
}

} // namespace
