// SNMP settings and the SNMP user line: the trap version and the writers
// (what the parser stores: tests/cases/network.txt).
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

TEST(Snmp, TrapTypeAndWriter)
{
    const struct {
        const char *param;
        uint32_t stored;
        const char *written;
    } rows[] = {{"trap_type = v2", 2, "v2"},
                {"trap_type = V2", 1, "v1"},
                {"trap_type = v2c", 1, "v1"},
                {"trap_type =", 1, "v1"},
                {"trap_type = \"\"", 1, "v1"}};
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->snmp.trap_type = 7;
        parse(*image, std::string("[config.Network.snmp]\n") + r.param + "\n");
        EXPECT_EQ(image->snmp.trap_type, r.stored) << r.param;
        const auto out =
            support::write([&](uint8_t **c) { return snmp_save(c, &image->snmp, &image->network); });
        EXPECT_EQ(support::value(out.node(1), "trap_type"), r.written) << r.param;
    }
}

TEST(SnmpUsers, Writer)
{
    auto image = fresh_image();
    snmp_user_t &u = image->snmp.user;
    std::strcpy(u.word1, "admin");
    std::strcpy(u.word2, "secret123");
    std::strcpy(u.word3, "rw");
    const auto out = support::write([&](uint8_t **c) { return snmp_user_save(c, &image->snmp); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    support::expect_numbered(out.node(), "config.Network.snmp_users", "user_", {"admin secret123 rw"});

    // Any empty word sends the line with no value.
    image->snmp.user.word1[0] = '\0';
    const auto no1 = support::write([&](uint8_t **c) { return snmp_user_save(c, &image->snmp); });
    EXPECT_EQ(support::value(no1.node(), "user_0"), std::nullopt);
}

} // namespace
