// SIP settings of the VoIP profiles: the 44-row key table, the server and
// conference texts, the profile number of the path, and the writer.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

constexpr uint32_t untouched = 0x5A5A5A5Au;

std::string sip_node(int profile, const std::string &params)
{
    return "[config.VOIP.profile.profile_" + std::to_string(profile) + ".sip]\n" + params + "\n";
}

// Keys whose only rule is "store the number" or a plain checkbox are left to
// the round trip; these rows are the bounds, defaults and special rules.
TEST(SipProfile, NumberRules)
{
    using S = profile_sip_cfg_t;
    struct row {
        const char *line;
        uint32_t S::*field;
        uint32_t expected;
    };
    const std::vector<row> rows = {
        {"cw_ringback = 2", &S::cw_ringback, 0}, {"ringback = y", &S::ringback, 0},
        {"ringback_sdp = 4", &S::ringback_sdp, 0}, {"ringback_sdp = 2", &S::ringback, untouched},
        {"mode = 3", &S::mode, 0}, {"options = 3", &S::options, 0}, {"outbound = 3", &S::outbound, 0},
        {"100rel = 3", &S::rel100, 0}, {"uri_escape_hash = yes", &S::uri_escape_hash, 1},
        {"register_retry_interval = 9", &S::register_retry_interval, 30},
        {"register_retry_interval = 3600", &S::register_retry_interval, 3600},
        {"keepalivet =", &S::keepalivet, 60000}, {"keepalivet = 9999", &S::keepalivet, 60000},
        {"keepalivet = 3600000", &S::keepalivet, 3600000}, {"obtimeout = 0", &S::obtimeout, 0},
        {"obtimeout = 301", &S::obtimeout, 10}, {"expires = -1", &S::expires, 1800},
        {"expires = 2147483647", &S::expires, 2147483647}, {"authentication = 1", &S::authentication, 1},
        {"authentication = 0", &S::authentication, 2}, {"authentication =", &S::authentication, 2},
        {"registration = 31", &S::registration, 31}, {"registration = 32", &S::registration, 0},
        {"dtmfmime = dtmfr", &S::dtmfmime, 0}, {"dtmfmime = dtmf", &S::dtmfmime, 1},
        {"dtmfmime = dtmf-relay", &S::dtmfmime, 1}, {"dtmfmime = audio", &S::dtmfmime, 2},
        {"dtmfmime = info", &S::dtmfmime, 0}, {"dtmfmime =", &S::dtmfmime, 0}, {"hfmime = dtmf", &S::hfmime, 1},
        {"hfmime = hookflash", &S::hfmime, 0}, {"hfmime = sscc", &S::hfmime, 3}, {"hfmime = broadsoft", &S::hfmime, 2},
        {"hfmime = flash", &S::hfmime, 0}, {"hfmime =", &S::hfmime, 0}, {"no_replaces = 1", &S::replaces, 0},
        {"no_replaces = 0", &S::replaces, 1}, {"no_replaces =", &S::replaces, 1}, {"timer =", &S::timer, 1},
        {"timer = \"\"", &S::timer, 1}, {"timer = 0", &S::timer, 0}, {"timer = 7", &S::timer, 1},
        {"timers = 0", &S::timer, 0}, // prefix of the name
        {"min_se = 89", &S::min_se, 120}, {"min_se = 1800", &S::min_se, 1800},
        {"session_expires = 60", &S::session_expires, 0}, {"session_expires = 80000", &S::session_expires, 80000},
        {"keep_alive_interval = 29", &S::keep_alive_interval, 30},
        {"keep_alive_interval = 120", &S::keep_alive_interval, 120},
        {"keep_alive_mode = 4", &S::keep_alive_mode, 0}, {"keep_alive_mode = 3", &S::keep_alive_mode, 3},
        {"conference_type = 3", &S::conference_type, 0}, {"ims_notify_on = 3", &S::ims_notify_on, 0},
        {"changeover = 3", &S::changeover, 3}, {"changeover = 4", &S::changeover, 0},
        {"changeover_by_408 = 1", &S::changeover, untouched}, // the longer row comes first
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

TEST(SipProfile, TextRules)
{
    const std::string long_name(60, 'u');
    const struct {
        std::string params;
        const char *user, *host, *hotline, *proxy0, *proxy2, *regrar4;
    } rows[] = {
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
    for (const auto &r : rows) {
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
        for (auto [name, text] : {std::pair{"dtmfmime", "dtmfr"}, {"hfmime", "hookf"}, {"no_replaces", "1"},
                                  {"conference_serv_name", "\"\""}})
            EXPECT_EQ(support::value(out.node(), name), text) << name;
    }
}

// The words of codes 1 and 2 and the server text without a host; the round
// trip covers codes 2 (dtmfmime) and 3 (hfmime).
TEST(SipProfileWriter, ValuesWrittenBack)
{
    const struct {
        std::string input;
        const char *name, *written;
    } rows[] = {
        {"hfmime = broadsoft", "hfmime", "broadsoft"}, {"hfmime = dtmf", "hfmime", "dtmf"},
        {"dtmfmime = dtmf", "dtmfmime", "dtmf"}, {"conference_serv_name = conf", "conference_serv_name", "conf"},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        parse(*image, sip_node(4, r.input));
        const auto out = support::write([&](uint8_t **c) { return profile_sip_save(c, 4, &image->profiles[4]); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        EXPECT_EQ(support::value(out.node(), r.name), r.written) << r.input;
    }
}

// Every member set directly to a value its rule keeps, distinct where the
// type allows, so that a param landing in the wrong member shows up.
TEST(SipProfileWriter, RoundTrip)
{
    profile_cfg_t profile{};
    profile_sip_cfg_t &s = profile.sip;
    for (int i = 0; i < CFG_SIP_SERVERS; ++i) {
        std::snprintf(s.servers[i].proxy, sizeof s.servers[i].proxy, "proxy%d.example", i);
        std::snprintf(s.servers[i].regrar, sizeof s.servers[i].regrar, "reg%d.example", i);
    }
    for (auto [field, text] : {std::pair<char *, const char *>{s.domain, "example.org"}, {s.username, "user"},
             {s.password, "secret"}, {s.conference_user, "conf"}, {s.conference_host, "media.example"},
             {s.xcap_cw_name, "cw"}, {s.xcap_conference_name, "conference"}, {s.xcap_hotline_name, "hotline"},
             {s.xcap_callhold_name, "hold"}, {s.xcap_calltransfer_name, "transfer"}})
        std::strcpy(field, text);
    s.mode = 2;
    s.options = 2;
    s.keepalivet = 20000;
    s.outbound = 1;
    s.obtimeout = 25;
    s.registration = 7;
    s.expires = 3600;
    s.authentication = 1;
    s.keep_alive_mode = 2;
    s.keep_alive_interval = 60;
    s.dtmfmime = 2;
    s.hfmime = 3;
    s.rel100 = 2;
    s.register_retry_interval = 100;
    s.ringback_sdp = 3;
    s.min_se = 300;
    s.session_expires = 1000;
    s.conference_type = 2;
    s.changeover = 3;
    // The switches, all on.
    s.domain_to_reg = s.ringback = s.cw_ringback = s.user_phone = s.uri_escape_hash = s.replaces = 1;
    s.inbound_proxy = s.reduce_sdp_media_count = s.p_rtp_stat = s.timer = s.ims_notify_on = 1;
    s.use_alert_info = 1;
    s.ruri_full_compliance = s.changeover_by_408 = 1;

    const auto out = support::write([&](uint8_t **c) { return profile_sip_save(c, 7, &profile); });
    auto image = fresh_image();
    all_parser(image.get(), out.as_message().data());
    EXPECT_EQ(std::memcmp(&image->profiles[7].sip, &s, sizeof s), 0);
    EXPECT_NE(image->profiles_updated[7], 0u);
}

} // namespace
