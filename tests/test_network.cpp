// Network settings: the writers' value forms (what the parser stores:
// tests/cases/network.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

namespace {

// A negative interval is sent unsigned.
TEST(NetworkWriters, IntervalSentUnsigned)
{
    network_cfg_t n{};
    n.cfg_interval = -5;
    const support::written au = support::write([&](uint8_t **c) { return save_autoupdate(c, &n); });
    EXPECT_EQ(support::value(au.node(0), "CFG_INTERVAL"), "4294967291");
}

} // namespace
