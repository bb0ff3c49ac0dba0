// Trace settings: a flag param clears its own bit only, and the writer sends
// the trace output as "syslog_server" whatever was stored.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using support::fresh_image;
using support::parse;

TEST(TraceSettings, FlagParamsClearOneBit)
{
    const struct { const char *text; uint8_t before, expected; } rows[] = {
        {"app_err = 0", 0xFF, 0xFD}, {"app_dbg = off", 0xFF, 0xEF}, {"syslog_to_file =", 0xFF, 0x7F},
        {"app_err = 1\n app_err = 0", 0x05, 0x05},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->trace.flags = r.before;
        parse(*image, std::string("[config.VOIP.trace]\n") + r.text + "\n");
        EXPECT_EQ(image->trace.flags, r.expected) << r.text;
    }
}

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
