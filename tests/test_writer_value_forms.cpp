// The forms in which section writers send values (what the parser stores:
// tests/cases/): signed members signed, the unsigned and unbounded ones as
// unsigned words, empty texts as "", and the trace output always as
// "syslog_server", whatever was stored; an SNMP user line with an empty
// word goes with no value.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>

namespace {

TEST(WriterValueForms, SignedUnsignedEmptyAndFixed)
{
    auto image = support::fresh_image();
    cfg_image_t &im = *image;
    im.ports[0].modifier = -1;
    im.ports[0].gaint = -170;
    im.ports[0].dt_detect_time = -2;
    im.network.cfg_interval = -5;
    im.tr069.periodic_inform_interval = 4294967295u;
    im.tr069.stun_maximum_keepalive_period = -1;
    std::strcpy(im.trace.trace_out, "console");
    im.trace.sip_level = -1;
    std::strcpy(im.snmp.user.word1, "admin");
    std::strcpy(im.snmp.user.word2, "secret123"); // word3 empty

    using writer = int (*)(uint8_t **, const cfg_image_t &);
    const writer port = [](uint8_t **c, const cfg_image_t &i) { return one_port_to_file(c, 0, &i.ports[0]); };
    const writer autoupdate = [](uint8_t **c, const cfg_image_t &i) {
        return save_autoupdate(c, &i.network);
    };
    const writer acs = [](uint8_t **c, const cfg_image_t &i) { return save_acs(c, &i.tr069); };
    const writer trace = [](uint8_t **c, const cfg_image_t &i) { return syslog_save(c, &i.trace); };
    const writer user = [](uint8_t **c, const cfg_image_t &i) { return snmp_user_save(c, &i.snmp); };
    const struct {
        writer write;
        const char *path, *param, *text;
    } rows[] = {
        {port, "config.VOIP.ports.port_0", "modifier", "-1"},
        {port, "config.VOIP.ports.port_0", "gaint", "-170"},
        {port, "config.VOIP.ports.port_0", "dt_detect_time", "4294967294"},
        {port, "config.VOIP.ports.port_0", "phone", "\"\""},
        {autoupdate, "config.Network.network", "CFG_INTERVAL", "4294967291"},
        {acs, "config.Network.TR069", "PeriodicInformInterval", "4294967295"},
        {acs, "config.Network.TR069", "STUNMaximumKeepAlivePeriod", "-1"},
        {trace, "config.VOIP.trace", "trace_out", "syslog_server"},
        {trace, "config.VOIP.trace", "sip_level", "-1"},
        {user, "config.Network.snmp_users", "user_0", nullptr},
    };
    for (const auto &r : rows) {
        SCOPED_TRACE(r.param);
        const auto out = support::write([&](uint8_t **c) { return r.write(c, im); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        EXPECT_EQ(out.node().path, r.path);
        EXPECT_EQ(support::value(out.node(), r.param),
                  r.text != nullptr ? std::optional<std::string>(r.text) : std::nullopt);
    }
}

} // namespace
