// SIP settings of the VoIP profiles: the 44-row key table, the server and
// conference texts, the profile number of the path, and the writer.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

constexpr uint32_t untouched = 0x5A5A5A5Au;
using strings = std::vector<std::string>;

std::string sip_node(int profile, const std::string &params)
{
    return "[config.VOIP.profile.profile_" + std::to_string(profile) + ".sip]\n" + params + "\n";
}

// The keys with a rule of their own; the rules of each kind of key are
// checked over every table in test_key_tables.
TEST(SipProfile, NumberRules)
{
    using S = profile_sip_cfg_t;
    struct row { const char *line; uint32_t S::*field; uint32_t expected; };
    const std::vector<row> rows = {
        {"cw_ringback = 2", &S::cw_ringback, 0}, {"ringback = y", &S::ringback, 0},
        {"authentication = 1", &S::authentication, 1},
        {"authentication = 0", &S::authentication, 2}, {"authentication =", &S::authentication, 2},
        {"dtmfmime = dtmfr", &S::dtmfmime, 0}, {"dtmfmime = dtmf", &S::dtmfmime, 1},
        {"dtmfmime = dtmf-relay", &S::dtmfmime, 1}, {"dtmfmime = audio", &S::dtmfmime, 2},
        {"dtmfmime = info", &S::dtmfmime, 0}, {"dtmfmime =", &S::dtmfmime, 0}, {"hfmime = dtmf", &S::hfmime, 1},
        {"hfmime = hookflash", &S::hfmime, 0}, {"hfmime = sscc", &S::hfmime, 3}, {"hfmime = broadsoft", &S::hfmime, 2},
        {"hfmime = flash", &S::hfmime, 0}, {"hfmime =", &S::hfmime, 0}, {"no_replaces = 1", &S::replaces, 0},
        {"no_replaces = 0", &S::replaces, 1}, {"no_replaces =", &S::replaces, 1}, {"timer =", &S::timer, 1},
        {"timer = \"\"", &S::timer, 1}, {"timer = 0", &S::timer, 0}, {"timer = 7", &S::timer, 1},
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
    const struct { std::string params; const char *user, *host, *hotline, *proxy0, *proxy2, *regrar4; } rows[] = {
        {"conference_serv_name = conf@media.example", "conf", "media.example", "old", "old", "old", "old"},
        {"conference_serv_name = conf", "conf", "", "old", "old", "old", "old"},
        {"conference_serv_name =", "", "", "old", "old", "old", "old"},
        {"conference_serv_name = a@b@c", "a", "b@c", "old", "old", "old", "old"},
        {"conference_serv_name = " + long_name + "@h", "uuuuuuuuuuuuuuuuuuuuuuuuuuuuu", "h", "old", "old", "old", "old"},
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
        EXPECT_EQ((strings{sip.conference_user, sip.conference_host, sip.xcap_hotline_name, sip.servers[0].proxy,
                           sip.servers[2].proxy, sip.servers[4].regrar}),
                  (strings{r.user, r.host, r.hotline, r.proxy0, r.proxy2, r.regrar4})) << r.params;
    }

    auto image = fresh_image();
    parse(*image, sip_node(3, "xcap_conference_name =\n xcap_cw_name =\n xcap_callhold_name =\n"
                              " xcap_calltransfer_name = \"\"\n username = " + long_name));
    const profile_sip_cfg_t &sip = image->profiles[3].sip;
    EXPECT_EQ((strings{sip.xcap_conference_name, sip.xcap_cw_name, sip.xcap_callhold_name, sip.xcap_calltransfer_name}),
              (strings{"three-party-conference", "call-waiting", "call-hold", "explicit-call-transfer"}));
    EXPECT_EQ(std::string(sip.username), long_name.substr(0, 50));
}

TEST(SipProfile, ProfileNumberOutOfRangeEndsTheMessage)
{
    auto image = fresh_image();
    image->routes.start = CFG_LIST_UPDATING;
    const std::string printed = support::stdout_of(
        [&] { parse(*image, sip_node(2, "mode = 1") + sip_node(8, "mode = 1") + sip_node(3, "mode = 1")); });
    EXPECT_NE(printed.find("Incorrect number of profile [8]"), std::string::npos) << printed;
    EXPECT_EQ(image->profiles[2].sip.mode, 1u);
    EXPECT_EQ(image->profiles[3].sip.mode, 0u);
    EXPECT_EQ(image->profiles_updated[3], 0u);
    EXPECT_EQ(image->routes.start, CFG_LIST_UPDATING); // no recount
    EXPECT_TRUE(support::lock_is_free());
}

TEST(SipProfileWriter, ParamListsByMode)
{
    for (const uint32_t mode : {0u, 1u, 2u}) {
        profile_cfg_t profile{};
        profile.sip.mode = mode;
        const auto out = support::write([&](uint8_t **c) { return profile_sip_save(c, 6, &profile); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        EXPECT_EQ(out.node().path, "config.VOIP.profile.profile_6.sip");
        // The account and the five servers only when the profile registers.
        EXPECT_EQ(out.node().params.size(), mode > 0 ? 52u : 30u) << "mode " << mode;
        const auto names = support::names(out.node());
        EXPECT_EQ(std::count(names.begin(), names.end(), "regrar_4"), mode > 0 ? 1 : 0) << "mode " << mode;
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
    const struct { std::string input; const char *name, *written; } rows[] = {
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

} // namespace
