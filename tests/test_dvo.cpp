// Service codes: 3-character cut, key order, empty codes, the writer.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

// Each key storing its own code is left to the round trip below.
TEST(ServiceCodes, Keys)
{
    using D = dvo_cfg_t;
    const struct {
        const char *text;
        char (D::*field)[4];
        const char *expected;
    } rows[] = {
        {"cf_busy = *9012", &D::cf_busy, "*90"}, {"cf_busy = *9", &D::cf_busy, "*9"},
        {"dnd_off = #78", &D::dnd, "#78"}, // any name beginning with "dnd"
        {"callwaiting =", &D::callwaiting, ""}, {"callwaiting = \"\"", &D::callwaiting, ""},
        {"cf = *99", &D::cf_busy, "old"}, // no key
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        std::strcpy(image->dvo.*r.field, "old");
        parse(*image, std::string("[config.VOIP.dvo]\n") + r.text + "\n");
        EXPECT_STREQ(image->dvo.*r.field, r.expected) << r.text;
        EXPECT_NE(image->dvo.updated, 0u);
    }
    EXPECT_TRUE(support::lock_is_free());
}

TEST(ServiceCodes, WriterOrderAndRoundTrip)
{
    auto image = fresh_image();
    parse(*image, "[config.VOIP.dvo]\n callwaiting = *43\n ct_attended = *2\n ct_unattended = *3\n"
                  " cf_unconditional = *21\n cf_busy = *22\n cf_noanswer = *61\n"
                  " cf_outofservice = *62\n dnd = *78\n callwaiting =\n");
    const auto out = support::write([&](uint8_t **c) { return dvo_config_save(c, &image->dvo); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.VOIP.dvo");
    // Names and codes exactly: each key stored its own code.
    EXPECT_EQ(out.node().params, (std::vector<cfgmsg::param>{
        {"callwaiting", "\"\""}, {"ct_attended", "*2"}, {"ct_unattended", "*3"},
        {"cf_unconditional", "*21"}, {"cf_busy", "*22"}, {"cf_noanswer", "*61"},
        {"cf_outofservice", "*62"}, {"dnd", "*78"}}));

    auto back = fresh_image();
    all_parser(back.get(), out.as_message().data());
    back->dvo.updated = image->dvo.updated;
    EXPECT_EQ(std::memcmp(&back->dvo, &image->dvo, sizeof image->dvo), 0);
}

} // namespace
