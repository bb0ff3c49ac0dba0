// Dial-plan rules of a profile: profile_dialplan_to_file (what the
// "config.VOIP.profile.profile_N.dialplan" node stores: tests/cases/lists.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using support::fresh_image;

constexpr const char *rule_55 = R"(55 4 0 sip "proxy" "" 0 0 0 +0-3 0)";
const std::string written_55 =
    R"(55 4 0 sip "proxy" "" 0 0 0 +0,1,2,3 0)"; // as the writer sends it with 16 ports

dial_plan_t rule(const char *text, uint32_t max_ports = 16)
{
    dial_plan_t e{};
    EXPECT_NE(cfgpars_dial_plan_string_to_t(&e, text, max_ports), nullptr) << text;
    return e;
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
                                              R"(200 -1 -2 h323 "gatekeeper" "abcdefgh" -3 255 -5 +0,15 -6)"},
                                             5));

    // With 8 ports the first rule's four set positions are written as the clear ones.
    const auto eight = support::write([&](uint8_t **c) { return profile_dialplan_to_file(c, 2, &plan, 8); });
    EXPECT_EQ(support::value(eight.node(), "dialplan_0"), R"(55 4 0 sip "proxy" "" 0 0 0 -4,5,6,7 0)");
}

TEST(DialPlan, WriterCounts)
{
    // Three rules are filled (entries 1, 2 and 3). params: what the node announces and holds.
    // start below current: no padding; padding never past rule 299; the last row has fewer rules filled than
    // counted.
    const struct {
        uint32_t start, current;
        std::size_t params;
    } rows[] = {
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
        const auto out =
            support::write([&](uint8_t **c) { return profile_dialplan_to_file(c, 0, &plan, 16); });
        // Rules first, with a value; then the empty params.
        const support::values_t rules(std::min<std::size_t>(3, r.current), written_55);
        support::expect_numbered(out.node(), "config.VOIP.profile.profile_0.dialplan", "dialplan_",
                                 support::padded(rules, r.params));
    }
}

} // namespace
