// Switch VTU rules: the two single-rule writers (what the parser stores:
// tests/cases/switch.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::write;

// Every field of every rule 7 (valid 1), so that stores and drops show.
void prefill(switch_cfg_t &sw)
{
    for (auto &r : sw.vtu)
        r = vtu_rule_t{1, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7};
}

// The nine params of a rule, in the writers' order, with `values`.
std::vector<cfgmsg::param> rule_params(int rule, const support::values_t &values)
{
    std::vector<cfgmsg::param> out;
    for (const char *f : {"vid", "override", "priority", "port0", "port1", "port2", "cpu", "sfp0", "sfp1"})
        out.push_back({"vtu" + std::to_string(rule) + "." + f, values.at(out.size())});
    return out;
}
const support::values_t blanks(9);

TEST(SwitchVtu, DeleteWritesNineBlankParamsAndInvalidatesTheRule)
{
    const auto out = write([](uint8_t **c) { return del_rule_from_vtu(c, 3); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.Switch.vtu");
    EXPECT_EQ(out.node().params, rule_params(3, blanks));

    auto image = fresh_image();
    prefill(image->switch_cfg);
    support::parse_back(*image, out);
    const vtu_rule_t &r = image->switch_cfg.vtu[3];
    const vtu_rule_t blank{0, 0, 0, 0, 0, 0, 0, 7, 0, 0, 0}; // app_reserved kept
    EXPECT_EQ(std::memcmp(&r, &blank, sizeof r), 0);
    EXPECT_EQ(image->switch_cfg.vtu[2].vid, 7);

    // The number is not checked; any rule number makes its names.
    const auto far = write([](uint8_t **c) { return del_rule_from_vtu(c, -2147483647 - 1); });
    EXPECT_EQ(far.node().params, rule_params(-2147483647 - 1, blanks));
}

TEST(SwitchVtu, InsertWritesTheRuleUnsignedAndParsesBack)
{
    const vtu_rule_t rule{0, 1, 2, 3, 4, 5, 6, 99, -1, 2147483647, 100};
    const auto out = write([&](uint8_t **c) { return ins_rule_in_vtu(c, 12, &rule); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().params,
              rule_params(12, {"100", "2147483647", "4294967295", "1", "2", "3", "4", "5", "6"}));

    auto image = fresh_image();
    support::parse_back(*image, out);
    vtu_rule_t expected = rule;
    expected.valid = 1;
    expected.app_reserved = 0; // never sent
    EXPECT_EQ(std::memcmp(&image->switch_cfg.vtu[12], &expected, sizeof expected), 0);
}

} // namespace
