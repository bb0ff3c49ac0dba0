// Switch VTU rules: "vtu<rule>.<field>" names, the valid flag, and the two
// single-rule writers.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

// Parses what a writer wrote into `image`.
void parse_back(cfg_image_t &image, const support::written &out)
{
    const std::vector<uint8_t> message = out.as_message();
    all_parser(&image, message.data());
}

using support::fresh_image;
using support::names;
using support::write;

// Every field of every rule 7 (valid 1), so that stores and drops show.
void prefill(switch_cfg_t &sw)
{
    for (auto &r : sw.vtu)
        r = vtu_rule_t{1, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7};
}

int32_t field(const vtu_rule_t &r, std::string_view name)
{
    if (name == "valid") return static_cast<int32_t>(r.valid);
    if (name == "port0") return r.port0;
    if (name == "port1") return r.port1;
    if (name == "port2") return r.port2;
    if (name == "cpu") return r.cpu;
    if (name == "sfp0") return r.sfp0;
    if (name == "sfp1") return r.sfp1;
    if (name == "priority") return r.priority;
    if (name == "override") return r.override;
    if (name == "vid") return r.vid;
    ADD_FAILURE() << name;
    return 0;
}

TEST(SwitchVtu, HandlerStoresByRuleAndFieldWord)
{
    const struct {
        const char *param;
        int rule;
        // changed fields; every other field of every rule keeps 7 (valid 1)
        std::vector<std::pair<const char *, int32_t>> changed;
    } rows[] = {
        {"vtu15.vid = 100", 15, {{"vid", 100}}},
        {"vtu2.vid =", 2, {{"vid", 0}, {"valid", 0}}},
        {"vtu2.vid = \"\"", 2, {{"vid", 0}, {"valid", 0}}},
        {"vtu2.vid = abc", 2, {}}, // vid kept, rule stays valid
        {"vtu2.port1 = x5", 2, {}},
        {"vtu2.port1 =", 2, {{"port1", 0}}},
        {"vtu2.port1 = -3", 2, {{"port1", -3}}},
        {"vtu2.cpuX = 4", 2, {{"cpu", 4}}},
        {"vtu0.priority = -1", 0, {{"priority", -1}}},
        {"vtu1.override = 12abc", 1, {{"override", 12}}},
        {"vtu4.sfp0 = 1", 4, {{"sfp0", 1}}},
        {"vtu4.sfp1 = 2", 4, {{"sfp1", 2}}},
        {"vtu4.port0 = 3", 4, {{"port0", 3}}},
        {"vtu4.port2 = 5", 4, {{"port2", 5}}},
        {"vtu9.vidAAAAAAAAAAAA = 8", 9, {{"vid", 8}}}, // field word of 15 characters
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        prefill(image->switch_cfg);
        support::parse(*image, std::string("[config.Switch.vtu]\n") + r.param);
        for (int i = 0; i < CFG_VTU_RULES; ++i)
            for (const char *f : {"valid", "port0", "port1", "port2", "cpu", "sfp0", "sfp1", "priority",
                                  "override", "vid"}) {
                int32_t expected = std::string_view(f) == "valid" ? 1 : 7;
                if (i == r.rule)
                    for (const auto &[name, v] : r.changed)
                        if (std::string_view(name) == f)
                            expected = v;
                EXPECT_EQ(field(image->switch_cfg.vtu[i], f), expected) << r.param << " rule " << i << ' ' << f;
            }
        EXPECT_EQ(image->switch_cfg.vtu[r.rule].app_reserved, 7u);
    }
}

TEST(SwitchVtu, HandlerDropsMalformedNames)
{
    const char *const dropped[] = {
        "vtu16.vid = 1", "vtu-1.vid = 1", "vtu4294967296.vid = 1", "vtu2.lan = 1", "vtu2 = 1",
        "vtu2vid = 1", "vtu.vid = 1", "vtux.vid = 1", "vtu2. = 1", "tvu2.vid = 1",
        "vtu9.vidAAAAAAAAAAAAA = 1", // field word of 16 characters
        "vtu2.VID = 1",
    };
    for (const char *param : dropped) {
        auto image = fresh_image();
        prefill(image->switch_cfg);
        const switch_cfg_t before = image->switch_cfg;
        support::parse(*image, std::string("[config.Switch.vtu]\n") + param);
        EXPECT_EQ(std::memcmp(&before, &image->switch_cfg, sizeof before), 0) << param;
        EXPECT_NE(image->vtu_updated, 0u) << param;
    }
    EXPECT_TRUE(support::lock_is_free());
}

TEST(SwitchVtu, OnlyVidMakesARuleValid)
{
    auto image = fresh_image();
    support::parse(*image, "[config.Switch.vtu]\nvtu5.port0 = 3\n vtu5.override = 1\n");
    EXPECT_EQ(image->switch_cfg.vtu[5].valid, 0u);
    EXPECT_EQ(image->switch_cfg.vtu[5].port0, 3);
    support::parse(*image, "[config.Switch.vtu]\nvtu5.vid = 0\n");
    EXPECT_EQ(image->switch_cfg.vtu[5].valid, 1u);
    support::parse(*image, "[config.Switch.vtu]\nvtu5.vid =\n");
    EXPECT_EQ(image->switch_cfg.vtu[5].valid, 0u);
    EXPECT_EQ(image->switch_cfg.vtu[5].override, 1); // the other fields stay
}

std::vector<std::string> rule_names(int rule)
{
    std::vector<std::string> out;
    for (const char *f : {"vid", "override", "priority", "port0", "port1", "port2", "cpu", "sfp0", "sfp1"})
        out.push_back("vtu" + std::to_string(rule) + "." + f);
    return out;
}

TEST(SwitchVtu, DeleteWritesNineBlankParamsAndInvalidatesTheRule)
{
    const auto out = write([](uint8_t **c) { return del_rule_from_vtu(c, 3); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.Switch.vtu");
    EXPECT_EQ(names(out.node()), rule_names(3));
    for (const auto &p : out.node().params)
        EXPECT_FALSE(p.value.has_value()) << p.name;

    auto image = fresh_image();
    prefill(image->switch_cfg);
    parse_back(*image, out);
    const vtu_rule_t &r = image->switch_cfg.vtu[3];
    EXPECT_EQ(r.valid, 0u);
    for (int32_t f : {r.port0, r.port1, r.port2, r.cpu, r.sfp0, r.sfp1, r.priority, r.override, r.vid})
        EXPECT_EQ(f, 0);
    EXPECT_EQ(r.app_reserved, 7u);
    EXPECT_EQ(image->switch_cfg.vtu[2].vid, 7);

    // The number is not checked; any rule number makes its names.
    const auto far = write([](uint8_t **c) { return del_rule_from_vtu(c, -2147483647 - 1); });
    EXPECT_EQ(names(far.node()), rule_names(-2147483647 - 1));
}

TEST(SwitchVtu, InsertWritesTheRuleUnsignedAndParsesBack)
{
    const vtu_rule_t rule{0, 1, 2, 3, 4, 5, 6, 99, -1, 2147483647, 100};
    const auto out = write([&](uint8_t **c) { return ins_rule_in_vtu(c, 12, &rule); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(names(out.node()), rule_names(12));
    const std::vector<std::string> values = {"100", "2147483647", "4294967295", "1", "2", "3", "4", "5", "6"};
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(out.node().params.at(i).value, values[i]) << i;

    auto image = fresh_image();
    parse_back(*image, out);
    vtu_rule_t expected = rule;
    expected.valid = 1;
    expected.app_reserved = 0; // never sent
    EXPECT_EQ(std::memcmp(&image->switch_cfg.vtu[12], &expected, sizeof expected), 0);
}

} // namespace
