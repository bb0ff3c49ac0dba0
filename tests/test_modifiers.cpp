// Number modifiers: the "mod_rule_N" handler and modifier_to_file.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

struct words { std::string w1, w2, w3; bool operator==(const words &) const = default; };

void PrintTo(const words &w, std::ostream *os)
{
    *os << '[' << w.w1 << "] [" << w.w2 << "] [" << w.w3 << ']';
}

words words_of(const mod_rule_t &r)
{
    return {r.word1, r.word2, r.word3};
}

void fill(mod_rule_t &r, const char *w1, const char *w2, const char *w3)
{
    std::strcpy(r.word1, w1);
    std::strcpy(r.word2, w2);
    std::strcpy(r.word3, w3);
}

TEST(ModifiersHandler, RuleLines)
{
    // rule3: rule 3 afterwards (starts as "o1 o2 o3"); report: level-1 report, "" for none.
    struct row { std::string param; words rule3; const char *report; };
    const std::string w60(60, 'a'), w40(40, 'b');
    // The line is read up to 254 characters: a third word starting at
    // character 254 is lost, one starting at 253 is kept.
    const std::string kept = "a " + std::string(250, 'b') + " c";
    const std::string lost = "a " + std::string(251, 'b') + " c";
    const std::vector<row> rows = {
        {"mod_rule_3 = x y z", {"x", "y", "z"}, ""}, {"mod_rule_3 = x y", {"", "", ""}, ""},
        {"mod_rule_3 = \"\"", {"", "", ""}, ""}, {"mod_rule_3 = x y z extra", {"x", "y", "z"}, ""},
        {"mod_rule_3 = \\t x \\t y  z ", {"x", "y", "z"}, ""},
        {"mod_rule_3 = " + w60 + " " + w40 + " " + w40, {w60.substr(0, 50), w40.substr(0, 29), w40.substr(0, 30)}, ""},
        {"mod_rule_3 = " + kept, {"a", std::string(29, 'b'), "c"}, ""}, {"mod_rule_3 = " + lost, {"", "", ""}, ""},
        {"mod_rule_32 = x y z\n mod_rule_3 = p q r", {"p", "q", "r"},
         "all_parser: invalid modifier rule number 32 (valid 0..31)"},
        {"mod_rule_x = x y z", {"o1", "o2", "o3"}, "invalid modifier rule number -1 (valid 0..31)"},
        {"mod_rule3 = x y z", {"o1", "o2", "o3"}, ""},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        fill(image->modifiers[5].rules[3], "o1", "o2", "o3");
        const std::string out =
            support::stdout_of([&] { parse(*image, "[config.VOIP.modifiers.modifier_5]\n " + r.param + "\n"); });
        EXPECT_EQ(words_of(image->modifiers[5].rules[3]), r.rule3) << r.param;
        EXPECT_EQ(image->modifiers[5].count, r.rule3.w1.empty() ? 0 : 1) << r.param;
        if (*r.report == '\0')
            EXPECT_EQ(out, "") << r.param;
        else
            EXPECT_NE(out.find(r.report), std::string::npos) << r.param << " printed " << out;
        EXPECT_TRUE(support::lock_is_free());
    }
}

// A bad modifier number abandons the message: nothing after it is stored and
// no recount runs.
TEST(ModifiersHandler, BadModifierNumberStopsTheMessage)
{
    const std::vector<std::pair<const char *, const char *>> rows = {
        {"modifier_16", "all_parser: invalid modifier entry number 16 (valid 0..15)"},
        {"modifier_1x", "invalid modifier entry number -1 (valid 0..15)"},
        {"modifier_4294967296", "invalid modifier entry number 2147483647 (valid 0..15)"},
    };
    for (const auto &[path, report] : rows) {
        SCOPED_TRACE(path);
        auto image = fresh_image();
        image->modifiers[0].count = CFG_LIST_UPDATING;
        const std::string out = support::stdout_of([&] {
            parse(*image, std::string("[config.VOIP.modifiers.") + path + "]\n mod_rule_0 = a b c\n"
                          "[config.VOIP.modifiers.modifier_0]\n mod_rule_0 = a b c\n[config.VOIP.h323]\n timetolive = 7\n");
        });
        EXPECT_NE(out.find(report), std::string::npos) << out;
        EXPECT_STREQ(image->modifiers[0].rules[0].word1, "");
        EXPECT_EQ(image->h323.timetolive, 0);
        EXPECT_EQ(image->modifiers[0].count, CFG_LIST_UPDATING);
        EXPECT_TRUE(support::lock_is_free());
    }
}

TEST(ModifiersWriter, CompactionAndPadding)
{
    modifier_cfg_t m{};
    fill(m.rules[1], "r1", "x", "y");
    fill(m.rules[5], "r5", "x", "y");
    const std::vector<std::pair<uint16_t, support::values_t>> rows = {
        {2, {"r1 x y", "r5 x y"}}, {4, {"r1 x y", "r5 x y", std::nullopt, std::nullopt}}, {0, {}},
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

TEST(ModifiersWriter, DamagedWordsStayInBoundsAndRoundTrip)
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

    auto image = fresh_image();
    support::parse_back(*image, out);
    const modifier_cfg_t &back = image->modifiers[3];
    EXPECT_EQ(words_of(back.rules[0]), (words{std::string(50, 'a'), std::string(29, 'b'), std::string(30, 'c')}));
    EXPECT_EQ(words_of(back.rules[1]), (words{"9", "+7", "-"}));
    EXPECT_EQ(back.count, 2);
}

} // namespace
