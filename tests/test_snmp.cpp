// SNMP settings and the SNMP user line: the trap version, the user line's
// words, the borrowed network node and the user line writer.
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
    const struct { const char *param; uint32_t stored; const char *written; } rows[] = {
        {"trap_type = v2", 2, "v2"}, {"trap_type = V2", 1, "v1"}, {"trap_type = v2c", 1, "v1"}, {"trap_type =", 1, "v1"},
        {"trap_type = \"\"", 1, "v1"}};
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->snmp.trap_type = 7;
        parse(*image, std::string("[config.Network.snmp]\n") + r.param + "\n");
        EXPECT_EQ(image->snmp.trap_type, r.stored) << r.param;
        const auto out = support::write([&](uint8_t **c) { return snmp_save(c, &image->snmp, &image->network); });
        EXPECT_EQ(support::value(out.node(1), "trap_type"), r.written) << r.param;
    }
}

TEST(SnmpUsers, UserLine)
{
    struct row { std::string param; const char *w1, *w2, *w3; } rows[] = {
        {"user_0 = alpha beta", "alpha", "beta", "old3"}, {"user_0 = solo", "solo", "old2", "old3"},
        {"user_0 =", "", "", ""}, {"user_0 = \"\"", "", "", ""}, {"user_0 = \\t  a\\tb  c", "a", "b", "c"},
        {"user_0 = " + std::string(45, 'x') + " " + std::string(45, 'y') + " " + std::string(20, 'z'),
         "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx", "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy", "zzzzzzzzzzzzzzz"},
        {"user_1 = p q r", "old1", "old2", "old3"},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        snmp_user_t &u = image->snmp.user;
        std::strcpy(u.word1, "old1");
        std::strcpy(u.word2, "old2");
        std::strcpy(u.word3, "old3");
        std::memset(image->snmp.user.app_reserved, 0x77, sizeof image->snmp.user.app_reserved);
        std::strcpy(image->snmp.sys_name, "name");
        parse(*image, "[config.Network.snmp_users]\n" + r.param + "\n sys_name = taken\n");
        EXPECT_EQ((std::vector<std::string>{u.word1, u.word2, u.word3}), (std::vector<std::string>{r.w1, r.w2, r.w3})) << r.param;
        for (uint8_t b : image->snmp.user.app_reserved)
            EXPECT_EQ(b, 0x77);
        // The users node never reaches the SNMP handler.
        EXPECT_STREQ(image->snmp.sys_name, "name");
        EXPECT_NE(image->snmp.updated, 0u);
        EXPECT_TRUE(support::lock_is_free());
    }
}

TEST(SnmpUsers, WriterAndRoundTrip)
{
    auto image = fresh_image();
    snmp_user_t &u = image->snmp.user;
    std::strcpy(u.word1, "admin");
    std::strcpy(u.word2, "secret123");
    std::strcpy(u.word3, "rw");
    const auto out = support::write([&](uint8_t **c) { return snmp_user_save(c, &image->snmp); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    support::expect_numbered(out.node(), "config.Network.snmp_users", "user_", {"admin secret123 rw"});

    auto back = fresh_image();
    support::parse_back(*back, out);
    EXPECT_STREQ(back->snmp.user.word2, "secret123");

    // Any empty word sends the line with no value, which clears it on return.
    image->snmp.user.word1[0] = '\0';
    const auto no1 = support::write([&](uint8_t **c) { return snmp_user_save(c, &image->snmp); });
    EXPECT_EQ(support::value(no1.node(), "user_0"), std::nullopt);
    support::parse_back(*back, no1);
    EXPECT_STREQ(back->snmp.user.word1, "");
    EXPECT_STREQ(back->snmp.user.word3, "");
}

} // namespace
