// Port writers: the port count bound, the pickup text, value forms and round
// trips through the port handler. The param lists and their order are those
// of the samples' reference output (SchemaCheck.SamplesApplyToTheirReference).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::value;
using support::write;

// Every key of the port table with a value inside its rules, so that parsing
// it back stores the same value.
const char *const full_port =
    "[config.VOIP.ports.port_9]\n"
    "phone = 1009\n user_name = user9\n auth_name = auth9\n auth_pass = secret\n custom = 1\n"
    "port_profile_id = 3\n profile_id = 6\n taxophone = 2\n min_flashtime = 90\n flashtime = 600\n"
    "gainr = -100\n gaint = 60\n category = 7\n cpc_rus = 9\n calltransfer = 4\n callwaiting = 1\n"
    "mwi_dialtone = 1\n hotline = 1\n no_offhook_at_ringing = 2\n tdmhotline = 1\n hottimeout = -1\n"
    "tdmhottimeout = 300\n ct_busy = 1\n ct_noanswer = 0\n ct_timeout = 45\n clir = 1\n disabled = 0\n"
    "aon_hide_date = 1\n aon_hide_name = 0\n aon = 4\n hotnumber = 555\n tdmhotnumber = 666\n"
    "ct_unconditional = 1\n ct_outofservice = 1\n cfu_number = 101\n cfb_number = 102\n"
    "cfnr_number = 103\n cfoos_number = 104\n dnd = 1\n stop_dial = 1\n altnumber = 4242\n"
    "usealtnumber_as_private = 1\n usealtnumber = 1\n pickupgroup = 0,7,31\n sip_port = 5062\n"
    "cfb_pri_over_cw = 1\n dvo_callwaiting_en = 1\n dvo_ct_attended_en = 0\n dvo_ct_unattended_en = 1\n"
    "dvo_cf_unconditional_en = 1\n dvo_cf_busy_en = 0\n dvo_cf_noanswer_en = 1\n"
    "dvo_cf_outofservice_en = 1\n dvo_dnd_en = 1\n playmoh = 1\n dialing = pulse\n fxoflashtime = 700\n"
    "fxo_dtmfpause = 2500\n fxoringtdm = 10\n pstn_numberprefix = +7\n pstn_nameprefix = pstn\n"
    "usepstncid = 1\n dont_transmit_prefix = 1\n transmit_number = 0\n enable_cpc = 1\n cpc_time = 250\n"
    "dscp = 63\n dont_detect_DT = 1\n fxo_delay_dialing = 3\n dial_tone_detect = 425/300\n"
    "rb_tone_detect = rb\n busy_tone_detect = busy\n disconnect_tone_detect = disc\n"
    "min_level_detect = 20\n dt_detect_time = 12\n decade_pulse_time = 120\n decade_pause_time = 30\n"
    "fxo_dtmftime = 65\n fxo_call_busy = 1\n pstn_200_at_answer = 4\n pstn_rb_detect_timeout = 60\n"
    "fxo_detect_line_presence = 1\n fxo_block_line_presence = 0\n modifier = 15\n agc_spk_enable = 1\n"
    "agc_spk_level = -1\n agc_mic_enable = 1\n agc_mic_level = -7\n";

// Each param a writer wrote from a record parsed out of `full_port` carries
// the text given in `full_port`: every key stored into its own member and
// every member written under its own name. hottimeout, read with "%d", is
// written as an unsigned word.
void expect_full_port_values(const cfgmsg::node &written)
{
    cfgmsg::message input;
    cfgmsg::text_error error;
    ASSERT_TRUE(cfgmsg::parse_text(full_port, input, error));
    for (const cfgmsg::param &p : written.params)
        EXPECT_EQ(p.value, p.name == "hottimeout" ? "4294967295" : value(input.nodes.at(0), p.name)) << p.name;
}

// Parses what a writer wrote into a fresh image.
support::image_ptr parse_back(const support::written &out)
{
    auto image = fresh_image();
    const std::vector<uint8_t> message = out.as_message();
    all_parser(image.get(), message.data());
    return image;
}

TEST(PortWriters, AllPortsWritersFollowMaxPorts)
{
    for (uint32_t max_ports : {0u, 3u, 71u, 72u, 100u, 0xFFFFFFFFu}) {
        auto image = fresh_image(max_ports);
        const std::size_t expected = std::min<uint32_t>(max_ports, CFG_MAX_PORTS);
        for (int i = 0; i < CFG_MAX_PORTS; ++i)
            std::snprintf(image->ports[i].phone, sizeof image->ports[i].phone, "%d", 100 + i);

        const auto summary = write([&](uint8_t **c) { return all_ports_to_file(c, image.get()); });
        const auto pickup = write([&](uint8_t **c) { return all_ports_pickup_to_file(c, image.get()); });
        ASSERT_EQ(summary.message.nodes.size(), expected) << max_ports;
        ASSERT_EQ(pickup.message.nodes.size(), expected) << max_ports;
        if (expected == 0) {
            EXPECT_EQ(summary.returned, 2);
            EXPECT_EQ(pickup.returned, 2);
        }
        for (std::size_t i = 0; i < expected; ++i) {
            const std::string path = "config.VOIP.ports.port_" + std::to_string(i);
            EXPECT_EQ(summary.node(i).path, path);
            EXPECT_EQ(value(summary.node(i), "phone"), std::to_string(100 + i));
            EXPECT_EQ(pickup.node(i).path, path);
            EXPECT_EQ(support::names(pickup.node(i)), std::vector<std::string>{"pickupgroup"});
        }
    }
}

TEST(PortWriters, PickupTextIsTheSameInBothWriters)
{
    std::string all_groups;
    for (int g = 0; g < 32; ++g)
        all_groups += (g == 0 ? "" : ",") + std::to_string(g);
    ASSERT_EQ(all_groups.size(), 85u);

    const struct {
        uint32_t groups;
        std::string text;
    } rows[] = {
        {0, "\"\""}, {1u | (1u << 31), "0,31"}, {(1u << 1) | (1u << 5) | (1u << 31), "1,5,31"},
        {0xFFFFFFFFu, all_groups},
    };
    for (const auto &r : rows) {
        auto image = fresh_image(1);
        image->ports[0].pickupgroup = r.groups;
        const auto all = write([&](uint8_t **c) { return all_ports_pickup_to_file(c, image.get()); });
        const auto one = write([&](uint8_t **c) { return one_port_to_file(c, 0, &image->ports[0]); });
        EXPECT_EQ(value(all.node(), "pickupgroup"), r.text) << r.groups;
        EXPECT_EQ(value(one.node(), "pickupgroup"), r.text) << r.groups;

        // Read back, the text gives the same groups.
        EXPECT_EQ(parse_back(one)->ports[0].pickupgroup, r.groups) << r.text;
    }
}

// Signed members are written signed, the unbounded members as unsigned
// words, empty texts as "" (the round trip below covers hottimeout).
TEST(PortWriters, OnePortListAndValueForms)
{
    auto image = fresh_image();
    port_cfg_t &port = image->ports[0];
    port.modifier = -1;
    port.gaint = -170;
    port.dt_detect_time = -2;
    const auto out = write([&](uint8_t **c) { return one_port_to_file(c, 0, &port); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.VOIP.ports.port_0");
    const struct {
        const char *name, *text;
    } values[] = {
        {"modifier", "-1"}, {"gaint", "-170"}, {"dt_detect_time", "4294967294"}, {"phone", "\"\""},
        {"disconnect_tone_detect", "\"\""},
    };
    for (const auto &v : values)
        EXPECT_EQ(value(out.node(), v.name), v.text) << v.name;
}

TEST(PortWriters, PortDefaultsWriteTheirOwnList)
{
    auto image = fresh_image();
    support::parse(*image, std::string(full_port).replace(0, std::strlen("[config.VOIP.ports.port_9]"),
                                                          "[config.VOIP.ports.port_def_4]"));
    ASSERT_STREQ(image->port_defaults[4].phone, "1009"); // held, but not written
    const auto out =
        write([&](uint8_t **c) { return profile_def_port_to_file(c, 4, &image->port_defaults[4]); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.VOIP.ports.port_def_4");
    expect_full_port_values(out.node());

    // Round trip: the written members come back, the others stay empty.
    auto back = parse_back(out);
    EXPECT_NE(back->port_defaults_updated, 0u);
    const auto again = write([&](uint8_t **c) { return profile_def_port_to_file(c, 4, &back->port_defaults[4]); });
    EXPECT_EQ(again.body, out.body);
    EXPECT_STREQ(back->port_defaults[4].phone, "");
}

TEST(PortWriters, OnePortAndSummaryRoundTrips)
{
    auto image = fresh_image(10);
    support::parse(*image, full_port);
    const auto out = write([&](uint8_t **c) { return one_port_to_file(c, 9, &image->ports[9]); });
    expect_full_port_values(out.node());
    auto back = parse_back(out);

    // Every member comes back except ct_number, which is not written.
    port_cfg_t expected = image->ports[9];
    std::memset(expected.ct_number, 0, sizeof expected.ct_number);
    EXPECT_EQ(std::memcmp(&back->ports[9], &expected, sizeof expected), 0);
    EXPECT_NE(back->ports_updated[9], 0u);

    // The summary of the same port reads back into the same members: written
    // again, it gives the same bytes (the sample's values are all distinct).
    const auto summary = write([&](uint8_t **c) { return all_ports_to_file(c, image.get()); });
    auto summary_back = parse_back(summary);
    summary_back->max_ports = 10;
    const auto again = write([&](uint8_t **c) { return all_ports_to_file(c, summary_back.get()); });
    EXPECT_EQ(again.body, summary.body);
    EXPECT_STREQ(summary_back->ports[9].phone, "1009");
}

} // namespace
