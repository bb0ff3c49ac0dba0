// Hunt groups: the port-list text, the group handler and groups_to_file.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

namespace {

using support::fresh_image;

std::vector<uint32_t> ports_of(const group_cfg_t &g)
{
    return {g.port_list, g.port_list + g.port_count};
}

std::string numbers_text(int count, int port)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += std::to_string(port) + ",";
    return text;
}

TEST(GroupPortsText, AcceptedAndRefusedTexts)
{
    // ports for a refusal: the untouched 5,6; report: level-1 report, "" for none.
    struct row {
        std::string text;
        uint32_t max_ports;
        int result;
        std::vector<uint32_t> ports;
        const char *report;
    };
    const std::vector<row> rows = {
        {"0,3,7", 8, 0, {0, 3, 7}, ""},
        {"", 8, 0, {}, ""},
        {" 1,+2", 8, 0, {1, 2}, ""},
        {"0,8", 8, -1, {5, 6}, "ARG error!!! s = 8  max_ports = 8"},
        {"-1", 8, -1, {5, 6}, "ARG error!!! s = -1  max_ports = 8"},
        // Out-of-range numbers are reported held at the int limits, whatever
        // the width of long.
        {"4294967297", 8, -1, {5, 6}, "ARG error!!! s = 2147483647  max_ports = 8"},
        {"1,-4294967297", 8, -1, {5, 6}, "ARG error!!! s = -2147483648  max_ports = 8"},
        {"99999999999999999999", 8, -1, {5, 6}, "ARG error!!! s = 2147483647  max_ports = 8"},
        {"0;3", 8, -1, {5, 6}, "cfgpars_group_ports_string_to_t: Syntax error"},
        {"1,,2", 8, -1, {5, 6}, ""},
        {numbers_text(72, 71), 72, 0, std::vector<uint32_t>(72, 71), ""},
        {numbers_text(73, 1), 72, -1, {5, 6}, ""},
        // An application announcing more ports than the 72 records: the
        // bound stays at 72.
        {"0,71", 200, 0, {0, 71}, ""},
        {"72", 73, -1, {5, 6}, "ARG error!!! s = 72  max_ports = 73"},
    };
    for (const row &r : rows) {
        auto image = fresh_image(r.max_ports);
        group_cfg_t g{};
        std::tie(g.port_list[0], g.port_list[1], g.port_count) = std::tuple(5u, 6u, 2u);
        const std::string out = support::stdout_of([&] {
            EXPECT_EQ(cfgpars_group_ports_string_to_t(&g, r.text.c_str(), image.get()), r.result) << r.text;
        });
        EXPECT_EQ(ports_of(g), r.ports) << r.text;
        if (*r.report == '\0')
            EXPECT_EQ(out, "") << r.text;
        else
            EXPECT_NE(out.find(r.report), std::string::npos) << r.text << " printed " << out;
    }
}

TEST(GroupPortsText, ToText)
{
    struct row {
        std::vector<uint32_t> ports;
        uint32_t count;
        std::string text;
    };
    const std::vector<row> rows = {
        {{1, 2, 10}, 3, "1,2,10"},
        {{}, 0, ""},
        {{1, 2, 10}, 2, "1,2"},
        // A damaged record: 72 ten-digit numbers and a count past the list
        // end give a text cut after the last whole number that fits.
        {std::vector<uint32_t>(72, 4000000000u), 500, "-294967296"},
    };
    for (const row &r : rows) {
        group_cfg_t g{};
        std::copy(r.ports.begin(), r.ports.end(), g.port_list);
        g.port_count = r.count;
        char out[300];
        std::memset(out, 'z', sizeof out);
        EXPECT_EQ(cfg_port_to_string(&g, out), out);
        EXPECT_EQ(std::string(out).substr(0, r.text.size()), r.text);
        EXPECT_LT(std::strlen(out), 256u);
        if (r.count <= 72) {
            EXPECT_EQ(std::string(out), r.text);
        }
        EXPECT_EQ(out[256], 'z') << "wrote past the 256-byte buffer";
    }
}

group_cfg_t sample_group(const char *name, std::vector<uint32_t> ports)
{
    group_cfg_t g{};
    std::strcpy(g.name, name);
    std::copy(ports.begin(), ports.end(), g.port_list);
    g.port_count = static_cast<uint32_t>(ports.size());
    g.valid = 1;
    return g;
}

TEST(GroupsWriter, RenumbersAndPads)
{
    const std::vector<std::string> subscriber_names = {
        "phone", "name", "password", "ports", "type", "timeout", "busy", "enabled", "sip_port", "profile_id"};
    const std::vector<std::string> line_names = {"phone",           "name",          "password",
                                                 "ports",           "type",          "busy",
                                                 "enabled",         "sip_port",      "dont_transmit_prefix",
                                                 "transmit_number", "fxo_call_busy", "profile_id"};
    for (const bool fxo : {false, true}) {
        const std::string kind = fxo ? "config.VOIP.groups.fxo_group_" : "config.VOIP.groups.group_";
        groups_cfg_t list{};
        list.entries[2] = sample_group("two", {1, 2, 10});
        list.entries[9] = sample_group("nine", {});
        const auto out = support::write([&](uint8_t **c) { return groups_to_file(c, list.entries, fxo); });
        ASSERT_EQ(out.message.nodes.size(), 32u);
        for (std::size_t k = 0; k < 32; ++k) {
            EXPECT_EQ(out.node(k).path, kind + std::to_string(k));
            EXPECT_EQ(support::names(out.node(k)), k >= 2 ? std::vector<std::string>{}
                                                   : fxo  ? line_names
                                                          : subscriber_names);
        }
        EXPECT_EQ(support::value(out.node(0), "name"), "two");
        EXPECT_EQ(support::value(out.node(0), "ports"), "1,2,10");
        EXPECT_EQ(support::value(out.node(1), "ports"), "\"\"");
    }
}

} // namespace
