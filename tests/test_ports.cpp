// Port settings: the keys with rules of their own and the choice of the
// record from the path. The rules of each kind of key are checked over every
// table in test_key_tables.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

// Parses one param into ports[5] of `image` and returns that record.
const port_cfg_t &store_one(cfg_image_t &image, const std::string &name, const std::string &value)
{
    parse(image, "[config.VOIP.ports.port_5]\n" + name + " = " + value + "\n");
    EXPECT_TRUE(support::lock_is_free());
    return image.ports[5];
}

// No value, or an empty one, is tone dialling.
TEST(PortSettings, DialingDefaultsToTone)
{
    for (const char *value : {"", "\"\""}) {
        auto image = fresh_image();
        std::strcpy(image->ports[5].dialing, "pulse");
        EXPECT_STREQ(store_one(*image, "dialing", value).dialing, "DTMF") << value;
    }
}

TEST(PortSettings, PickupGroupLists)
{
    const struct { std::string value; uint32_t groups; } rows[] = {
        {"1,5;31,40,-2", (1u << 1) | (1u << 5) | (1u << 31)}, {"0,3;;17", (1u << 0) | (1u << 3) | (1u << 17)},
        {"x,4", (1u << 0) | (1u << 4)}, // a piece without a number reads as 0
        {"2 ,  9", (1u << 2) | (1u << 9)}, {"32,100", 0}, {",;", 0}, {"", 0},
        // Only the first 255 characters are read: the 4 starts at character 256.
        {std::string(254, ',') + "3,4", 1u << 3},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->ports[5].pickupgroup = 1u << 30; // replaced as a whole
        EXPECT_EQ(store_one(*image, "pickup", r.value).pickupgroup, r.groups) << r.value;
    }
}

TEST(PortSettings, PortDefaultNodes)
{
    auto image = fresh_image();
    parse(*image, "[config.VOIP.ports.port_def_7]\n phone = 5\n gainr = -100\n"
                  "[config.VOIP.ports.port_def_0]\n gaint = -170\n");
    EXPECT_STREQ(image->port_defaults[7].phone, "5"); // stored, though never written back
    EXPECT_EQ(image->port_defaults[7].gainr, -100);
    EXPECT_EQ(image->port_defaults[0].gaint, -170);
    EXPECT_NE(image->port_defaults_updated, 0u);
    EXPECT_EQ(std::count(std::begin(image->ports_updated), std::end(image->ports_updated), 0u), CFG_MAX_PORTS);
    EXPECT_EQ(image->ports[7].gainr, 0);
    EXPECT_EQ(image->ports[0].gaint, 0);
}

// A port-profile number outside 0..7 ends the whole message. A port number
// outside 0..71, or a path without a number, names no record: the node is
// reported and skipped, and the message goes on.
TEST(PortSettings, UnusablePathNumbers)
{
    struct row { std::string tail, report; bool message_goes_on; }; // report: a piece of the level-1 line
    std::vector<row> rows;
    for (const char *n : {"8", "-1", "100"})
        rows.push_back({std::string("def_") + n, std::string("Incorrect number of port's profile [") + n + "]", false});
    for (const char *tail : {"72", "-1", "4294967299", "x", "", "def", "def_", "def_x", "def5"})
        rows.push_back({tail, "Incorrect", true});

    for (const row &r : rows) {
        auto image = fresh_image();
        image->routes.start = CFG_LIST_UPDATING;
        const std::string printed = support::stdout_of([&] {
            parse(*image, "[config.VOIP.ports.port_2]\n phone = 22\n[config.VOIP.ports.port_" + r.tail +
                              "]\n phone = 9\n gainr = 5\n[config.VOIP.ports.port_4]\n phone = 44\n");
        });
        EXPECT_TRUE(support::lock_is_free());
        EXPECT_EQ(image->routes.start != CFG_LIST_UPDATING, r.message_goes_on) << r.tail; // the recount
        EXPECT_NE(printed.find(r.report), std::string::npos) << r.tail << ": " << printed;

        // Nothing but ports 2 and (when the message goes on) 4 changed.
        auto expected = fresh_image();
        std::strcpy(expected->ports[2].phone, "22");
        if (r.message_goes_on)
            std::strcpy(expected->ports[4].phone, "44");
        std::memcpy(expected->ports_updated, image->ports_updated, sizeof image->ports_updated);
        expected->limits = image->limits;
        expected->routes = image->routes;
        EXPECT_EQ(std::memcmp(image.get(), expected.get(), sizeof(cfg_image_t)), 0) << r.tail;
        EXPECT_EQ(image->ports_updated[4] != 0, r.message_goes_on) << r.tail;
    }
}

TEST(PortSettings, MalformedParamKeepsTheStamp)
{
    std::vector<uint8_t> message =
        cfgmsg::message_from_text("[config.VOIP.ports.port_1]\n phone = 11\n category = 20\n");
    message[4] = static_cast<uint8_t>(message[4] - 3); // cut inside the last value
    auto image = fresh_image();
    support::stdout_of([&] { all_parser(image.get(), message.data()); });
    EXPECT_STREQ(image->ports[1].phone, "11");
    EXPECT_EQ(image->ports[1].category, 0u);
    EXPECT_EQ(image->ports_updated[1], 0u);
    EXPECT_TRUE(support::lock_is_free());
}

} // namespace
