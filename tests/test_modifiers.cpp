// Number modifiers: modifier_to_file (what the "mod_rule_N" handler stores:
// tests/cases/lists.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

void fill(mod_rule_t &r, const char *w1, const char *w2, const char *w3)
{
    std::strcpy(r.word1, w1);
    std::strcpy(r.word2, w2);
    std::strcpy(r.word3, w3);
}

TEST(ModifiersWriter, CompactionAndPadding)
{
    modifier_cfg_t m{};
    fill(m.rules[1], "r1", "x", "y");
    fill(m.rules[5], "r5", "x", "y");
    const std::vector<std::pair<uint16_t, support::values_t>> rows = {
        {2, {"r1 x y", "r5 x y"}},
        {4, {"r1 x y", "r5 x y", std::nullopt, std::nullopt}},
        {0, {}},
        {CFG_LIST_UPDATING, support::padded({"r1 x y", "r5 x y"}, CFG_MODIFIER_RULES)},
    };
    for (const auto &[count, values] : rows) {
        SCOPED_TRACE(count);
        m.count = count;
        const auto out = support::write([&](uint8_t **c) { return modifier_to_file(c, 7, &m); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        support::expect_numbered(out.node(), "config.VOIP.modifiers.modifier_7", "mod_rule_", values);
    }
}

TEST(ModifiersWriter, DamagedWordsStayInBounds)
{
    modifier_cfg_t m{};
    std::memset(m.rules[0].word1, 'a', sizeof m.rules[0].word1); // no terminating NUL
    std::memset(m.rules[0].word2, 'b', sizeof m.rules[0].word2);
    std::memset(m.rules[0].word3, 'c', sizeof m.rules[0].word3);
    fill(m.rules[9], "9", "+7", "-");
    m.count = 2;
    const auto out = support::write([&](uint8_t **c) { return modifier_to_file(c, 3, &m); });
    ASSERT_EQ(out.node(0).params.size(), 2u);
    EXPECT_EQ(support::value(out.node(0), "mod_rule_0"),
              std::string(51, 'a') + " " + std::string(30, 'b') + " " + std::string(31, 'c'));
    EXPECT_EQ(support::value(out.node(0), "mod_rule_1"), "9 +7 -");
}

} // namespace
