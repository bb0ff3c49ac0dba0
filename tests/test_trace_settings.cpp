// Trace settings: the writer sends the trace output as "syslog_server"
// whatever was stored (what the parser stores: tests/cases/voip.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using support::fresh_image;
using support::parse;

TEST(TraceSettings, WriterSendsTheSyslogServerAsOutput)
{
    auto image = fresh_image();
    parse(*image, "[config.VOIP.trace]\n trace_out = console\n sip_level = -1\n");
    EXPECT_STREQ(image->trace.trace_out, "console");
    const auto out = support::write([&](uint8_t **c) { return syslog_save(c, &image->trace); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(support::value(out.node(), "trace_out"), "syslog_server");
    EXPECT_EQ(support::value(out.node(), "sip_level"), "-1");
}

} // namespace
