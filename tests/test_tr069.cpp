// TR-069 management client: 32-bit numbers and the writer's value forms.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

template <std::size_t N>
void put(char (&field)[N], const char *text)
{
    std::memset(field, 0, N);
    std::memcpy(field, text, std::min(std::strlen(text), N - 1));
}

TEST(Tr069, NumbersAreCutToTheirLow32Bits)
{
    // Numbers read as 64 bits and cut to their low 32 bits, for the unsigned
    // interval and the signed periods alike (the rules of each kind of key are
    // checked over every table in test_key_tables).
    struct row { std::string param; void (*expect)(tr069_cfg_t &); } rows[] = {
        {"PeriodicInformInterval = -1", [](tr069_cfg_t &r) { r.periodic_inform_interval = 4294967295u; }},
        {"PeriodicInformInterval = 4294967296", [](tr069_cfg_t &r) { r.periodic_inform_interval = 30; }},
        {"STUNMaximumKeepAlivePeriod = 2147483648", [](tr069_cfg_t &r) { r.stun_maximum_keepalive_period = 60; }},
        {"STUNMaximumKeepAlivePeriod = 4294967295", [](tr069_cfg_t &r) { r.stun_maximum_keepalive_period = -1; }},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        tr069_cfg_t &t = image->tr069;
        t.enable = 1;
        t.periodic_inform_interval = 600;
        t.stun_maximum_keepalive_period = 77;
        put(t.nat_address, "old");
        tr069_cfg_t expected = image->tr069;
        r.expect(expected);
        parse(*image, "[config.Network.TR069]\n" + r.param + "\n");
        EXPECT_NE(image->tr069.updated, 0u) << r.param;
        expected.updated = image->tr069.updated;
        EXPECT_EQ(std::memcmp(&image->tr069, &expected, sizeof expected), 0) << r.param;
        EXPECT_TRUE(support::lock_is_free());
    }
}

// Value forms; the round trip of every row is checked in test_key_tables.
TEST(Tr069, WriterValueForms)
{
    auto image = fresh_image();
    tr069_cfg_t &t = image->tr069;
    t.periodic_inform_interval = 4294967295u;
    t.stun_maximum_keepalive_period = -1;
    const auto out = support::write([&](uint8_t **c) { return save_acs(c, &image->tr069); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.Network.TR069");
    EXPECT_EQ(support::value(out.node(), "PeriodicInformInterval"), "4294967295");
    EXPECT_EQ(support::value(out.node(), "STUNMaximumKeepAlivePeriod"), "-1");
    EXPECT_EQ(support::value(out.node(), "ConnectionRequestPassword"), "\"\"");
}

} // namespace
