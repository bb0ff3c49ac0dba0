// Network settings and LLDP: what the key table properties do not cover
// (scanned intervals, the language marker, empty nodes, the writers' value
// forms).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

std::string network_msg(const std::string &params) { return "[config.Network.network]\n" + params + "\n"; }

// A negative interval is sent unsigned.
TEST(NetworkWriters, IntervalSentUnsigned)
{
    network_cfg_t n{};
    n.cfg_interval = -5;
    const support::written au = support::write([&](uint8_t **c) { return save_autoupdate(c, &n); });
    EXPECT_EQ(support::value(au.node(0), "CFG_INTERVAL"), "4294967291");
}

} // namespace
