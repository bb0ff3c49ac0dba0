// Port settings: the choice of the record from the path (what the parser
// stores: tests/cases/ports.txt).
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
