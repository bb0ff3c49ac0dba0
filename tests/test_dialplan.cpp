// Dial-plan rules of a profile: the "config.VOIP.profile.profile_N.dialplan"
// node through all_parser, and profile_dialplan_to_file.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

constexpr const char *rule_55 = R"(55 4 0 sip "proxy" "" 0 0 0 +0-3 0)";
const std::string written_55 = R"(55 4 0 sip "proxy" "" 0 0 0 +0,1,2,3 0)"; // as the writer sends it with 16 ports

dial_plan_t rule(const char *text, uint32_t max_ports = 16)
{
    dial_plan_t e{};
    EXPECT_NE(cfgpars_dial_plan_string_to_t(&e, text, max_ports), nullptr) << text;
    return e;
}

bool same(const dial_plan_t &a, const dial_plan_t &b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(DialPlan, HandlerStoresRulesByNumber)
{
    auto image = fresh_image(16);
    dial_plan_t &kept = image->dialplans[3].entries[2];
    kept = rule("1 1 1 h323 x \"k\" 0 0 0 + 0");
    const dial_plan_t kept_before = kept;
    image->dialplans[3].entries[4] = rule("4 4 4 sip y \"\" 0 0 0 + 0");
    image->dialplans[3].entries[6] = rule("6 6 6 sip z \"\" 0 0 0 + 0");

    parse(*image, std::string("[config.VOIP.profile.profile_3.dialplan]\n") +
                      " dialplan_0 = " + rule_55 + "\n"
                      " dialplan_299 = 7 0 0 pickup any \"p\" 1 2 3 -0 4\n"
                      " dialplan_2 = 9 0 0 sip d \"\" 0 0 0 + 0\n"   // refused: kept as it was
                      " dialplan_4 =\n"                              // no value: cleared
                      " dialplan_6 = \"\"\n"                         // "": cleared
                      " dialplan_300 = " + rule_55 + "\n"            // outside 0..299
                      " dialplan_99999999999 = " + rule_55 + "\n"
                      " dialplan_ = " + rule_55 + "\n"               // no number
                      " dialplan_x1 = " + rule_55 + "\n"
                      " dialplan1 = " + rule_55 + "\n"               // no '_'
                      " rule_1 = " + rule_55 + "\n");                // not a dial-plan name
    EXPECT_TRUE(support::lock_is_free());

    const profile_dialplan_cfg_t &plan = image->dialplans[3];
    EXPECT_TRUE(same(plan.entries[0], rule(rule_55)));
    EXPECT_EQ(plan.entries[0].type, 2u);
    EXPECT_EQ(plan.entries[299].type, 6u);
    EXPECT_EQ(plan.entries[299].port_mask[0], 0xFFFFFFFEu);
    EXPECT_TRUE(same(kept, kept_before));
    EXPECT_TRUE(same(plan.entries[4], dial_plan_t{}));
    EXPECT_TRUE(same(plan.entries[6], dial_plan_t{}));
    EXPECT_EQ(plan.entries[1].type, 0u); // dialplan1 and dialplan_x1 stored nothing
    for (int p = 0; p < CFG_PROFILES; ++p)
        EXPECT_EQ(image->dialplans_updated[p] != 0, p == 3) << p;

    // The recount at the end of the message counts the filled entries.
    EXPECT_EQ(plan.current, 3u); // entries 0, 2 and 299
    EXPECT_EQ(plan.start, 3u);
}

TEST(DialPlan, MaskBoundIsTheImagePortCount)
{
    auto image = fresh_image(8);
    parse(*image, "[config.VOIP.profile.profile_0.dialplan]\n"
                  " dialplan_0 = 1 1 1 sip d \"\" 0 0 0 +7 0\n"
                  " dialplan_1 = 1 1 1 sip d \"\" 0 0 0 +8 0\n");
    const auto &e = image->dialplans[0].entries;
    EXPECT_EQ(e[0].port_mask[0], 0x80u);
    EXPECT_EQ(e[1].port_mask[0], 0u); // refused mask, rule taken
    EXPECT_EQ(e[1].type, 4u);
}

// A node without params only stamps the profile; the marker and the recount
// are Waits.SettledMarkerReturnsAtOnceAndAnyNormalParseReleases and Recount.
TEST(DialPlan, NodeWithoutParamsStampsTheProfile)
{
    auto image = fresh_image();
    parse(*image, "[config.VOIP.profile.profile_1.dialplan]\n");
    EXPECT_NE(image->dialplans_updated[1], 0u);
    EXPECT_EQ(image->dialplans[1].current, 0u);
}

// start 5, current 3, rules at 0, 7 and 200: renumbered 0..2, then two
// empty params so that the configuration manager drops rules 3 and 4.
TEST(DialPlan, WriterRenumbersAndPads)
{
    auto image = fresh_image(16);
    profile_dialplan_cfg_t &plan = image->dialplans[2];
    plan.entries[0] = rule(rule_55);
    plan.entries[7] = rule("7 1 2 pickup any \"pk\" 3 300 5 -1 6");
    plan.entries[200] = rule("200 -1 -2 h323 \"gatekeeper\" \"abcdefgh\" -3 255 -5 +0,15 -6");
    plan.start = 5;
    plan.current = 3;

    const auto out = support::write([&](uint8_t **c) { return profile_dialplan_to_file(c, 2, &plan, 16); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    // pickup (dialplan_1): 32 positions whatever the port count; the padding has value length 0.
    support::expect_numbered(out.node(), "config.VOIP.profile.profile_2.dialplan", "dialplan_",
                             support::padded({written_55, R"(7 1 2 pickup any "pk" 3 44 5 -1 6)",
                                              R"(200 -1 -2 h323 "gatekeeper" "abcdefgh" -3 255 -5 +0,15 -6)"}, 5));

    // With 8 ports the first rule's four set positions are written as the clear ones.
    const auto eight = support::write([&](uint8_t **c) { return profile_dialplan_to_file(c, 2, &plan, 8); });
    EXPECT_EQ(support::value(eight.node(), "dialplan_0"), R"(55 4 0 sip "proxy" "" 0 0 0 -4,5,6,7 0)");

    // Parsed back into a fresh image the rules come back renumbered, and the
    // empty params leave entries 3 and 4 empty.
    auto back = fresh_image(16);
    support::parse_back(*back, out);
    EXPECT_TRUE(same(back->dialplans[2].entries[0], plan.entries[0]));
    EXPECT_TRUE(same(back->dialplans[2].entries[1], plan.entries[7]));
    EXPECT_TRUE(same(back->dialplans[2].entries[2], plan.entries[200]));
    EXPECT_EQ(back->dialplans[2].current, 3u);
}

TEST(DialPlan, WriterCounts)
{
    // Three rules are filled (entries 1, 2 and 3). params: what the node announces and holds.
    // start below current: no padding; padding never past rule 299; the last row has fewer rules filled than counted.
    const struct { uint32_t start, current; std::size_t params; } rows[] = {
        {3, 3, 3}, {2, 3, 3}, {0, 0, 0}, {10, 3, 10}, {CFG_LIST_UPDATING, 3, 300}, {3, 5, 3},
    };
    for (const auto &r : rows) {
        SCOPED_TRACE(::testing::Message() << "start " << r.start << " current " << r.current);
        auto image = fresh_image();
        profile_dialplan_cfg_t &plan = image->dialplans[0];
        for (int i : {1, 2, 3})
            plan.entries[i] = rule(rule_55);
        plan.start = r.start;
        plan.current = r.current;
        const auto out = support::write([&](uint8_t **c) { return profile_dialplan_to_file(c, 0, &plan, 16); });
        // Rules first, with a value; then the empty params.
        const support::values_t rules(std::min<std::size_t>(3, r.current), written_55);
        support::expect_numbered(out.node(), "config.VOIP.profile.profile_0.dialplan", "dialplan_", support::padded(rules, r.params));
    }
}

} // namespace
