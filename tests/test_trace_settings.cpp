// Trace settings: levels, flag bits one at a time, the writer's fixed texts.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

TEST(TraceSettings, NumberKeys)
{
    using T = trace_cfg_t;
    const struct {
        const char *text;
        int32_t T::*field;
        int32_t before, expected;
    } rows[] = {
        {"sip_level = -1", &T::sip_level, 0, -1},       {"sip_level = -2", &T::sip_level, 5, 0},
        {"sip_level = 10", &T::sip_level, 5, 0},        {"sip_level = 9", &T::sip_level, 0, 9},
        {"h323_level = 6", &T::h323_level, 0, 6},       {"h323_level = 7", &T::h323_level, 3, 0},
        {"vapi_level = 65", &T::vapi_level, 0, 65},     {"vapi_level = 66", &T::vapi_level, 3, 0},
        {"syslog_port =", &T::syslog_port, 0, 514},     {"syslog_port = 70000", &T::syslog_port, 0, 514},
        {"syslog_port = 0", &T::syslog_port, 514, 0},   {"syslog_port = 65535", &T::syslog_port, 0, 65535},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->trace.*r.field = r.before;
        parse(*image, std::string("[config.VOIP.trace]\n") + r.text + "\n");
        EXPECT_EQ(image->trace.*r.field, r.expected) << r.text;
    }
}

TEST(TraceSettings, FlagParamsSetOrClearOneBit)
{
    const struct {
        const char *text;
        uint8_t before, expected;
    } rows[] = {
        {"app_alarm = 1", 0x00, 0x01}, {"app_err = 1", 0x00, 0x02}, {"app_err = 0", 0xFF, 0xFD},
        {"app_warn = y", 0x00, 0x04}, {"app_info = 1", 0x00, 0x08}, {"app_dbg = 1", 0x00, 0x10},
        {"app_dbg = off", 0xFF, 0xEF}, {"vapi_enabled = 1", 0x00, 0x20}, {"run_syslog = 1", 0x00, 0x40},
        {"syslog_to_file = 1", 0x00, 0x80}, {"syslog_to_file =", 0xFF, 0x7F}, {"app_err = 1\n app_err = 0", 0x05, 0x05},
    };
    for (const auto &r : rows) {
        auto image = fresh_image();
        image->trace.flags = r.before;
        parse(*image, std::string("[config.VOIP.trace]\n") + r.text + "\n");
        EXPECT_EQ(image->trace.flags, r.expected) << r.text;
    }
    EXPECT_TRUE(support::lock_is_free());
}

TEST(TraceSettings, TextsAreCut)
{
    auto image = fresh_image();
    parse(*image, "[config.VOIP.trace]\n syslog_addr = " + std::string(45, 'a') +
                      "\n trace_out = " + std::string(25, 'o') + "\n");
    EXPECT_EQ(std::string(image->trace.syslog_addr), std::string(39, 'a'));
    EXPECT_EQ(std::string(image->trace.trace_out), std::string(19, 'o'));
    EXPECT_NE(image->trace.updated, 0u);
}

TEST(TraceSettings, WriterOrderAndRoundTrip)
{
    auto image = fresh_image();
    parse(*image, "[config.VOIP.trace]\n sip_level = -1\n h323_level = 4\n vapi_level = 20\n"
                  " app_alarm = 1\n app_warn = 1\n app_dbg = 1\n run_syslog = 1\n"
                  " trace_out = console\n syslog_addr = 10.1.1.1\n syslog_port = 1514\n");
    const trace_cfg_t &t = image->trace;
    const auto out = support::write([&](uint8_t **c) { return syslog_save(c, &t); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.VOIP.trace");
    // The output always goes to "syslog_server".
    EXPECT_EQ(out.node().params, (std::vector<cfgmsg::param>{
        {"sip_level", "-1"}, {"h323_level", "4"}, {"vapi_level", "20"}, {"vapi_enabled", "0"},
        {"app_alarm", "1"}, {"app_err", "0"}, {"app_warn", "1"}, {"app_info", "0"},
        {"app_dbg", "1"}, {"trace_out", "syslog_server"}, {"syslog_addr", "10.1.1.1"},
        {"syslog_port", "1514"}, {"run_syslog", "1"}, {"syslog_to_file", "0"}}));

    // Parsed back, the record writes the same bytes again.
    auto back = fresh_image();
    all_parser(back.get(), out.as_message().data());
    const auto again = support::write([&](uint8_t **c) { return syslog_save(c, &back->trace); });
    EXPECT_EQ(again.body, out.body);
    EXPECT_STREQ(back->trace.trace_out, "syslog_server");
}

} // namespace
