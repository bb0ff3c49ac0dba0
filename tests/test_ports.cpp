// Port settings: a malformed param (what the parser stores, and which record
// a path names: tests/cases/ports.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;

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
