// TR-069 management client: the writer's value forms (what the parser
// stores: tests/cases/network.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;

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
