// The round-trip property (fuzz/roundtrip.h) over every sample message, with
// the port counts the fuzz seeds use, and cut short: what the writers send
// of a parsed image, parsed again, is sent again byte for byte.
#include "roundtrip.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

TEST(RoundTrip, EverySampleAtSeveralPortCounts)
{
    const fs::path examples = fs::path(CFGPARSER_SOURCE_DIR) / "examples";
    int samples = 0;
    for (const fs::directory_entry &file : fs::directory_iterator(examples)) {
        if (file.path().extension() != ".msg")
            continue;
        ++samples;
        std::ifstream in(file.path(), std::ios::binary);
        std::vector<uint8_t> message{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        ASSERT_GT(message.size(), std::size_t{CFG_MSG_HEADER_SIZE}) << file.path();
        // Header word 0 picks max_ports: 72, 0, 8 and 100.
        for (const uint8_t word0 : {0, 1, 9, 101}) {
            message[0] = word0;
            EXPECT_EQ(roundtrip::check(message.data()), "") << file.path() << " word0 " << int{word0};
        }
        // Cut inside its last node: the parse ends as malformed, without
        // the recount of the lists (exception 1 of the property).
        message.resize(message.size() - 5);
        const auto body = static_cast<uint32_t>(message.size() - CFG_MSG_HEADER_SIZE);
        std::memcpy(message.data() + CFG_MSG_BODY_LENGTH_OFFSET, &body, sizeof body);
        EXPECT_EQ(roundtrip::check(message.data()), "") << file.path() << " cut";
    }
    EXPECT_GE(samples, 2);
}

// Messages that reach the exceptions param by param (fuzz findings): a
// registering profile sends its account block, whose zero fill no message
// set (exception 2); a rule field 6 holding a quote or an empty field 5
// (exception 3); fields of a VTU rule whose vid came empty or never
// (exception 4); a rule whose protocol names no kind over one that did,
// then a rule after it (exception 5).
TEST(RoundTrip, ExceptionsParamByParam)
{
    for (const char *text :
         {"[config.VOIP.profile.profile_6.sip]\n mode = 1\n",
          "[config.VOIP.profile.profile_2.dialplan]\n dialplan_0 = 2 4 0 sip d y\"x 0 0 0 + 0\n",
          "[config.VOIP.profile.profile_4.dialplan]\n dialplan_0 = 2XXX 4 0 sip\n",
          "[config.VOIP.profile.profile_3.dialplan]\n dialplan_1 = 8X 11 0 sip \"proxy\" \"8\" 1 0 0 + 0\n"
          " dialplan_1 = 9X 12 0 soxy \"8\" 1 0 0 + 0\n dialplan_2 = 7X 3 0 h323 x \"\" 0 0 0 + 0\n",
          "[config.Switch.vtu]\n vtu1.vid =\n vtu1.port0 = 2\n vtu4.sfp1 = 3\n"})
        EXPECT_EQ(roundtrip::check(cfgmsg::message_from_text(text).data()), "") << text;
}

} // namespace
