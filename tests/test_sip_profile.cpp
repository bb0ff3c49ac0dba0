// SIP settings of the VoIP profiles: the 44-row key table, the server and
// conference texts, the profile number of the path, and the writer.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

constexpr uint32_t untouched = 0x5A5A5A5Au;

std::string sip_node(int profile, const std::string &params)
{
    return "[config.VOIP.profile.profile_" + std::to_string(profile) + ".sip]\n" + params + "\n";
}

// Parses a writer's output into an image.
void parse_back(cfg_image_t &image, const support::written &out)
{
    const std::vector<uint8_t> message = out.as_message();
    all_parser(&image, message.data());
}

TEST(SipProfile, NumberRules)
{
    struct row {
        const char *line;
        uint32_t profile_sip_cfg_t::*field;
        uint32_t expected;
    };
    const std::vector<row> rows = {
        {"cw_ringback = 1", &profile_sip_cfg_t::cw_ringback, 1},
        {"cw_ringback = 2", &profile_sip_cfg_t::cw_ringback, 0},
        {"cw_ringback =", &profile_sip_cfg_t::cw_ringback, 0},
        {"ringback_sdp = 3", &profile_sip_cfg_t::ringback_sdp, 3},
        {"ringback_sdp = 4", &profile_sip_cfg_t::ringback_sdp, 0},
        {"ringback_sdp =", &profile_sip_cfg_t::ringback_sdp, 0},
        {"ringback = 1", &profile_sip_cfg_t::ringback, 1},
        {"ringback = y", &profile_sip_cfg_t::ringback, 0},
        {"mode = 2", &profile_sip_cfg_t::mode, 2},
        {"mode = 3", &profile_sip_cfg_t::mode, 0},
        {"options = 3", &profile_sip_cfg_t::options, 0},
        {"options = 1", &profile_sip_cfg_t::options, 1},
        {"outbound = 3", &profile_sip_cfg_t::outbound, 0},
        {"outbound = 2", &profile_sip_cfg_t::outbound, 2},
        {"100rel = 3", &profile_sip_cfg_t::rel100, 0},
        {"100rel = 2", &profile_sip_cfg_t::rel100, 2},
        {"uri_escape_hash = yes", &profile_sip_cfg_t::uri_escape_hash, 1},
        {"register_retry_interval = 9", &profile_sip_cfg_t::register_retry_interval, 30},
        {"register_retry_interval = 3600", &profile_sip_cfg_t::register_retry_interval, 3600},
        {"inbound_proxy = 1", &profile_sip_cfg_t::inbound_proxy, 1},
        {"domain_to_reg = 1", &profile_sip_cfg_t::domain_to_reg, 1},
        {"user_phone = 1", &profile_sip_cfg_t::user_phone, 1},
        {"keepalivet =", &profile_sip_cfg_t::keepalivet, 60000},
        {"keepalivet = 3600000", &profile_sip_cfg_t::keepalivet, 3600000},
        {"keepalivet = 9999", &profile_sip_cfg_t::keepalivet, 60000},
        {"obtimeout = 0", &profile_sip_cfg_t::obtimeout, 0},
        {"obtimeout = 301", &profile_sip_cfg_t::obtimeout, 10},
        {"expires = -1", &profile_sip_cfg_t::expires, 1800},
        {"expires = 2147483647", &profile_sip_cfg_t::expires, 2147483647},
        {"authentication = 1", &profile_sip_cfg_t::authentication, 1},
        {"authentication = 0", &profile_sip_cfg_t::authentication, 2},
        {"authentication = 2", &profile_sip_cfg_t::authentication, 2},
        {"authentication =", &profile_sip_cfg_t::authentication, 2},
        {"registration = 31", &profile_sip_cfg_t::registration, 31},
        {"registration = 32", &profile_sip_cfg_t::registration, 0},
        {"dtmfmime = dtmfr", &profile_sip_cfg_t::dtmfmime, 0},
        {"dtmfmime = dtmf", &profile_sip_cfg_t::dtmfmime, 1},
        {"dtmfmime = dtmf-relay", &profile_sip_cfg_t::dtmfmime, 1},
        {"dtmfmime = audio", &profile_sip_cfg_t::dtmfmime, 2},
        {"dtmfmime = info", &profile_sip_cfg_t::dtmfmime, 0},
        {"dtmfmime =", &profile_sip_cfg_t::dtmfmime, 0},
        {"hfmime = dtmf", &profile_sip_cfg_t::hfmime, 1},
        {"hfmime = hookflash", &profile_sip_cfg_t::hfmime, 0},
        {"hfmime = sscc", &profile_sip_cfg_t::hfmime, 3},
        {"hfmime = broadsoft", &profile_sip_cfg_t::hfmime, 2},
        {"hfmime = flash", &profile_sip_cfg_t::hfmime, 0},
        {"hfmime =", &profile_sip_cfg_t::hfmime, 0},
        {"reduce_sdp_media_count = 1", &profile_sip_cfg_t::reduce_sdp_media_count, 1},
        {"p_rtp_stat = 1", &profile_sip_cfg_t::p_rtp_stat, 1},
        {"no_replaces = 1", &profile_sip_cfg_t::replaces, 0},
        {"no_replaces = 0", &profile_sip_cfg_t::replaces, 1},
        {"no_replaces =", &profile_sip_cfg_t::replaces, 1},
        {"timer =", &profile_sip_cfg_t::timer, 1},
        {"timer = \"\"", &profile_sip_cfg_t::timer, 1},
        {"timer = 0", &profile_sip_cfg_t::timer, 0},
        {"timer = 7", &profile_sip_cfg_t::timer, 1},
        {"timers = 0", &profile_sip_cfg_t::timer, 0},           // prefix of the name
        {"min_se = 89", &profile_sip_cfg_t::min_se, 120},
        {"min_se = 1800", &profile_sip_cfg_t::min_se, 1800},
        {"session_expires = 60", &profile_sip_cfg_t::session_expires, 0},
        {"session_expires = 80000", &profile_sip_cfg_t::session_expires, 80000},
        {"keep_alive_interval = 29", &profile_sip_cfg_t::keep_alive_interval, 30},
        {"keep_alive_interval = 120", &profile_sip_cfg_t::keep_alive_interval, 120},
        {"keep_alive_mode = 4", &profile_sip_cfg_t::keep_alive_mode, 0},
        {"keep_alive_mode = 3", &profile_sip_cfg_t::keep_alive_mode, 3},
        {"conference_type = 2", &profile_sip_cfg_t::conference_type, 2},
        {"conference_type = 3", &profile_sip_cfg_t::conference_type, 0},
        {"ims_notify_on = 2", &profile_sip_cfg_t::ims_notify_on, 2},
        {"changeover_by_408 = 1", &profile_sip_cfg_t::changeover_by_408, 1},
        {"changeover = 3", &profile_sip_cfg_t::changeover, 3},
        {"changeover = 4", &profile_sip_cfg_t::changeover, 0},
        {"ruri_full_compliance = 1", &profile_sip_cfg_t::ruri_full_compliance, 1},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        profile_sip_cfg_t &sip = image->profiles[5].sip;
        sip.*r.field = untouched;
        parse(*image, sip_node(5, r.line));
        EXPECT_EQ(sip.*r.field, r.expected) << r.line;
        EXPECT_NE(image->profiles_updated[5], 0u) << r.line;
        EXPECT_TRUE(support::lock_is_free());
    }
}

// Rows whose name is a prefix of another row's name, and the byte-wide
// alert-info switch.
TEST(SipProfile, PrefixOrderAndAlertSwitch)
{
    auto image = fresh_image();
    parse(*image, sip_node(1, "ringback_sdp = 2\n domain_to_reg = 1\n domain = example.org\n"
                              " changeover_by_408 = 1\n use_alert_info = 1"));
    const profile_sip_cfg_t &sip = image->profiles[1].sip;
    EXPECT_EQ(sip.ringback_sdp, 2u);
    EXPECT_EQ(sip.ringback, 0u);
    EXPECT_EQ(sip.domain_to_reg, 1u);
    EXPECT_STREQ(sip.domain, "example.org");
    EXPECT_EQ(sip.changeover_by_408, 1u);
    EXPECT_EQ(sip.changeover, 0u);
    EXPECT_EQ(sip.use_alert_info, 1u);
}

TEST(SipProfile, TextRules)
{
    const std::string long_name(60, 'u');
    struct row {
        std::string params;
        const char *user;
        const char *host;
        const char *hotline;
        const char *proxy0;
        const char *proxy2;
        const char *regrar4;
    };
    const std::vector<row> rows = {
        {"conference_serv_name = conf@media.example", "conf", "media.example", "old", "old", "old", "old"},
        {"conference_serv_name = conf", "conf", "", "old", "old", "old", "old"},
        {"conference_serv_name =", "", "", "old", "old", "old", "old"},
        {"conference_serv_name = a@b@c", "a", "b@c", "old", "old", "old", "old"},
        {"conference_serv_name = " + long_name + "@h", "uuuuuuuuuuuuuuuuuuuuuuuuuuuuu", "h", "old", "old",
         "old", "old"},
        {"xcap_hotline_name =", "old", "old", "hot-line-service", "old", "old", "old"},
        {"xcap_hotline_name = hl", "old", "old", "hl", "old", "old", "old"},
        {"proxy = p.example", "old", "old", "old", "p.example", "old", "old"},
        {"proxy_2 = p2", "old", "old", "old", "old", "p2", "old"},
        {"proxy_5 = p5", "old", "old", "old", "old", "old", "old"},
        {"proxy_-1 = pm", "old", "old", "old", "old", "old", "old"},
        {"proxy_4294967296 = px", "old", "old", "old", "old", "old", "old"},
        {"proxy_2 =", "old", "old", "old", "old", "", "old"},
        {"regrar_4 = r4", "old", "old", "old", "old", "old", "r4"},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        profile_sip_cfg_t &sip = image->profiles[0].sip;
        for (char *field : {sip.conference_user, sip.conference_host, sip.xcap_hotline_name,
                            sip.servers[0].proxy, sip.servers[2].proxy, sip.servers[4].regrar})
            std::strcpy(field, "old");
        parse(*image, sip_node(0, r.params));
        EXPECT_STREQ(sip.conference_user, r.user) << r.params;
        EXPECT_STREQ(sip.conference_host, r.host) << r.params;
        EXPECT_STREQ(sip.xcap_hotline_name, r.hotline) << r.params;
        EXPECT_STREQ(sip.servers[0].proxy, r.proxy0) << r.params;
        EXPECT_STREQ(sip.servers[2].proxy, r.proxy2) << r.params;
        EXPECT_STREQ(sip.servers[4].regrar, r.regrar4) << r.params;
    }

    auto image = fresh_image();
    parse(*image, sip_node(3, "xcap_conference_name =\n xcap_cw_name =\n xcap_callhold_name =\n"
                              " xcap_calltransfer_name = \"\"\n username = " + long_name));
    const profile_sip_cfg_t &sip = image->profiles[3].sip;
    EXPECT_STREQ(sip.xcap_conference_name, "three-party-conference");
    EXPECT_STREQ(sip.xcap_cw_name, "call-waiting");
    EXPECT_STREQ(sip.xcap_callhold_name, "call-hold");
    EXPECT_STREQ(sip.xcap_calltransfer_name, "explicit-call-transfer");
    EXPECT_EQ(std::string(sip.username), long_name.substr(0, 50));
}

TEST(SipProfile, ProfileNumberOutOfRangeEndsTheMessage)
{
    auto image = fresh_image();
    image->routes.start = CFG_LIST_UPDATING;
    testing::internal::CaptureStdout();
    parse(*image, sip_node(2, "mode = 1") + sip_node(8, "mode = 1") + sip_node(3, "mode = 1"));
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_NE(printed.find("Incorrect number of profile [8]"), std::string::npos) << printed;
    EXPECT_EQ(image->profiles[2].sip.mode, 1u);
    EXPECT_EQ(image->profiles[3].sip.mode, 0u);
    EXPECT_EQ(image->profiles_updated[3], 0u);
    EXPECT_EQ(image->routes.start, CFG_LIST_UPDATING); // no recount
    EXPECT_TRUE(support::lock_is_free());
}

const std::vector<std::string> common_head = {"cw_ringback", "no_replaces", "100rel",
                                               "ringback_sdp", "ringback", "mode"};
const std::vector<std::string> account_block = {
    "register_retry_interval", "inbound_proxy", "domain_to_reg", "options", "keepalivet",
    "outbound", "expires", "authentication", "registration", "username", "password", "domain",
    "proxy_0", "regrar_0", "proxy_1", "regrar_1", "proxy_2", "regrar_2", "proxy_3", "regrar_3",
    "proxy_4", "regrar_4"};
const std::vector<std::string> common_tail = {
    "uri_escape_hash", "user_phone", "obtimeout", "dtmfmime", "hfmime", "reduce_sdp_media_count",
    "p_rtp_stat", "timer", "min_se", "session_expires", "keep_alive_interval", "keep_alive_mode",
    "conference_type", "conference_serv_name", "ims_notify_on", "xcap_conference_name",
    "xcap_hotline_name", "xcap_cw_name", "xcap_callhold_name", "xcap_calltransfer_name",
    "use_alert_info", "changeover", "ruri_full_compliance", "changeover_by_408"};

TEST(SipProfileWriter, ParamListsByMode)
{
    for (const uint32_t mode : {0u, 1u, 2u}) {
        profile_cfg_t profile{};
        profile.sip.mode = mode;
        const auto out = support::write([&](uint8_t **c) { return profile_sip_save(c, 6, &profile); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        EXPECT_EQ(out.node().path, "config.VOIP.profile.profile_6.sip");
        std::vector<std::string> expected = common_head;
        if (mode > 0)
            expected.insert(expected.end(), account_block.begin(), account_block.end());
        expected.insert(expected.end(), common_tail.begin(), common_tail.end());
        EXPECT_EQ(expected.size(), mode > 0 ? 52u : 30u);
        EXPECT_EQ(support::names(out.node()), expected) << "mode " << mode;
        // An all-zero record: the words of code 0, empty texts as "".
        EXPECT_EQ(support::value(out.node(), "dtmfmime"), "dtmfr");
        EXPECT_EQ(support::value(out.node(), "hfmime"), "hookf");
        EXPECT_EQ(support::value(out.node(), "no_replaces"), "1");
        EXPECT_EQ(support::value(out.node(), "conference_serv_name"), "\"\"");
    }
}

TEST(SipProfileWriter, ValuesWrittenBack)
{
    struct row {
        std::string input;
        const char *name;
        const char *written;
    };
    const std::vector<row> rows = {
        {"hfmime = broadsoft", "hfmime", "broadsoft"},
        {"hfmime = sscc", "hfmime", "sscc"},
        {"hfmime = dtmf", "hfmime", "dtmf"},
        {"hfmime = other", "hfmime", "hookf"},
        {"dtmfmime = audio", "dtmfmime", "audio"},
        {"dtmfmime = dtmf", "dtmfmime", "dtmf"},
        {"dtmfmime = dtmfr", "dtmfmime", "dtmfr"},
        {"no_replaces = 1", "no_replaces", "1"},
        {"no_replaces = 0", "no_replaces", "0"},
        {"timer =", "timer", "1"},
        {"conference_serv_name = conf@media.example", "conference_serv_name", "conf@media.example"},
        {"conference_serv_name = conf", "conference_serv_name", "conf"},
        {"xcap_hotline_name =", "xcap_hotline_name", "hot-line-service"},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        parse(*image, sip_node(4, r.input));
        const auto out = support::write([&](uint8_t **c) { return profile_sip_save(c, 4, &image->profiles[4]); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        EXPECT_EQ(support::value(out.node(), r.name), r.written) << r.input;
    }
}

TEST(SipProfileWriter, RoundTrip)
{
    profile_cfg_t profile{};
    profile_sip_cfg_t &s = profile.sip;
    s.mode = 2;
    for (int i = 0; i < CFG_SIP_SERVERS; ++i) {
        std::snprintf(s.servers[i].proxy, sizeof s.servers[i].proxy, "proxy%d.example", i);
        std::snprintf(s.servers[i].regrar, sizeof s.servers[i].regrar, "reg%d.example", i);
    }
    std::strcpy(s.domain, "example.org");
    s.domain_to_reg = 1;
    s.options = 2;
    s.keepalivet = 20000;
    s.outbound = 1;
    s.obtimeout = 25;
    s.registration = 7;
    s.expires = 3600;
    s.authentication = 1;
    std::strcpy(s.username, "user");
    std::strcpy(s.password, "secret");
    s.keep_alive_mode = 2;
    s.keep_alive_interval = 60;
    s.ringback = 1;
    s.cw_ringback = 1;
    s.user_phone = 1;
    s.uri_escape_hash = 1;
    s.dtmfmime = 2;
    s.hfmime = 3;
    s.rel100 = 2;
    s.replaces = 1;
    s.register_retry_interval = 100;
    s.inbound_proxy = 1;
    s.ringback_sdp = 3;
    s.reduce_sdp_media_count = 1;
    s.p_rtp_stat = 1;
    s.timer = 1;
    s.min_se = 300;
    s.session_expires = 1000;
    s.ims_notify_on = 1;
    s.conference_type = 2;
    std::strcpy(s.conference_user, "conf");
    std::strcpy(s.conference_host, "media.example");
    std::strcpy(s.xcap_cw_name, "cw");
    std::strcpy(s.xcap_conference_name, "conference");
    std::strcpy(s.xcap_hotline_name, "hotline");
    std::strcpy(s.xcap_callhold_name, "hold");
    std::strcpy(s.xcap_calltransfer_name, "transfer");
    s.use_alert_info = 1;
    s.changeover = 3;
    s.ruri_full_compliance = 1;
    s.changeover_by_408 = 1;

    const auto out = support::write([&](uint8_t **c) { return profile_sip_save(c, 7, &profile); });
    auto image = fresh_image();
    parse_back(*image, out);
    EXPECT_EQ(std::memcmp(&image->profiles[7].sip, &s, sizeof s), 0);
    EXPECT_NE(image->profiles_updated[7], 0u);
}

} // namespace
