// List recount, the waits for list updates, and the status parsers.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

namespace {

using support::fresh_image;
using clock_type = std::chrono::steady_clock;

TEST(Recount, CountsFilledEntriesAndClearsMarkers)
{
    auto image = fresh_image();
    cfg_image_t &im = *image;
    for (int i : {0, 5, 99}) {
        std::strcpy(im.routes.route[i].destination, "10.0.0.0");
        std::strcpy(im.routes.route[i].netmask, "255.0.0.0");
        std::strcpy(im.routes.route[i].gateway, "10.0.0.1");
    }
    std::strcpy(im.routes.route[7].destination, "10.1.0.0"); // no netmask: not counted
    im.groups.entries[3].valid = 1;
    im.fxo_groups.entries[0].valid = 1;
    im.fxo_groups.entries[31].valid = 9;
    std::strcpy(im.hosts.name[2], "pbx");
    std::strcpy(im.hosts.address[2], "10.0.0.2");
    std::strcpy(im.hosts.name[3], "half"); // no address
    std::strcpy(im.mac_filter.client[29], "00:11:22:33:44:55");
    std::strcpy(im.limits.target[0], "a");
    im.limits.value[0] = 1;
    std::strcpy(im.limits.target[1], "b"); // value 0: not counted
    std::strcpy(im.limits.target[2], "c");
    im.limits.value[2] = -4;
    im.dialplans[6].entries[299].type = 2;
    im.firewall.rules[1].valid = 1;
    std::strcpy(im.modifiers[2].rules[0].word1, "1");
    std::strcpy(im.modifiers[2].rules[1].word1, "2");

    im.routes.start = im.hosts.start = im.limits.start = im.groups.start = CFG_LIST_UPDATING;
    im.fxo_groups.start = im.firewall.start = im.dialplans[6].start = CFG_LIST_UPDATING;
    im.mac_filter.start = CFG_MAC_LIST_UPDATING;
    im.modifiers[2].count = CFG_LIST_UPDATING;
    im.modifiers[3].count = CFG_LIST_UPDATING;

    recalculate_start_and_current_after_timeout(&im);
    EXPECT_TRUE(support::lock_is_free());

    struct row {
        const char *list;
        uint32_t start, current, expected;
    } rows[] = {
        {"routes", im.routes.start, im.routes.current, 3},
        {"groups", im.groups.start, im.groups.current, 1},
        {"fxo groups", im.fxo_groups.start, im.fxo_groups.current, 2},
        {"hosts", im.hosts.start, im.hosts.current, 1},
        {"limits", im.limits.start, im.limits.current, 1},
        {"mac filter", im.mac_filter.start, im.mac_filter.current, 1},
        {"dial plan 6", im.dialplans[6].start, im.dialplans[6].current, 1},
        {"dial plan 0", im.dialplans[0].start, im.dialplans[0].current, 0},
        {"firewall", im.firewall.start, im.firewall.current, 1},
        {"modifier 2", im.modifiers[2].count, im.modifiers[2].count, 2},
        {"modifier 3", im.modifiers[3].count, im.modifiers[3].count, 0},
    };
    for (const row &r : rows) {
        EXPECT_EQ(r.current, r.expected) << r.list;
        EXPECT_EQ(r.start, r.expected) << r.list;
    }
    EXPECT_NE(im.limits.recalculated, 0u);
    recalculate_start_and_current_after_timeout(nullptr); // must not fault
    EXPECT_TRUE(support::lock_is_free());
}

// Each wait function with the marker that it watches.
struct wait_case {
    const char *name;
    int32_t (*wait)(cfg_image_t *);
    void (*mark)(cfg_image_t &, bool in_progress);
};

const wait_case wait_cases[] = {
    {"limits", update_limits_conf,
     [](cfg_image_t &im, bool on) { im.limits.start = on ? CFG_LIST_UPDATING : 0; }},
    {"dialplan 259 = profile 3", [](cfg_image_t *im) { return update_dialplan_conf(im, 259); },
     [](cfg_image_t &im, bool on) { im.dialplans[3].start = on ? CFG_LIST_UPDATING : 4; }},
    {"hosts", update_host_conf,
     [](cfg_image_t &im, bool on) { im.hosts.start = on ? CFG_LIST_UPDATING : 1; }},
    {"macs", update_mac_conf, [](cfg_image_t &im, bool on) { im.mac_filter.start = on ? 255 : 254; }},
    {"routes", update_route_conf,
     [](cfg_image_t &im, bool on) { im.routes.start = on ? CFG_LIST_UPDATING : 65534; }},
    {"groups", [](cfg_image_t *im) { return update_groups_config(im, 0); },
     [](cfg_image_t &im, bool on) { im.groups.start = on ? CFG_LIST_UPDATING : 0; }},
    {"fxo groups (selector 7)", [](cfg_image_t *im) { return update_groups_config(im, 7); },
     [](cfg_image_t &im, bool on) { im.fxo_groups.start = on ? CFG_LIST_UPDATING : 0; }},
    {"modifier 15", [](cfg_image_t *im) { return update_mod_rules_conf(im, 15); },
     [](cfg_image_t &im, bool on) { im.modifiers[15].count = on ? CFG_LIST_UPDATING : 3; }},
    {"firewall", update_firewall_conf,
     [](cfg_image_t &im, bool on) { im.firewall.start = on ? CFG_LIST_UPDATING : 0; }},
};

// A settled marker returns at once; a set one waits until any normal parse ends.
TEST(Waits, SettledMarkerReturnsAtOnceAndAnyNormalParseReleases)
{
    const std::vector<uint8_t> message = cfgmsg::message_from_text("[config.VOIP.unknown]\n a = 1\n");
    for (const wait_case &c : wait_cases) {
        auto image = fresh_image();
        c.mark(*image, false);
        // Timed on the second call: the first one also pays for lazy symbol
        // binding, and under an emulator for translating the code, which can
        // come near one 10 ms pause on a loaded machine.
        EXPECT_EQ(c.wait(image.get()), 0) << c.name;
        const auto t0 = clock_type::now();
        EXPECT_EQ(c.wait(image.get()), 0) << c.name;
        EXPECT_LT(clock_type::now() - t0, std::chrono::milliseconds(5)) << c.name;
        EXPECT_EQ(c.wait(nullptr), -1) << c.name;

        c.mark(*image, true);
        std::atomic<int32_t> result{99};
        std::thread waiter([&] { result = c.wait(image.get()); });
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        EXPECT_EQ(result.load(), 99) << c.name << ": returned while the marker was set";
        all_parser(image.get(), message.data());
        waiter.join();
        EXPECT_EQ(result.load(), 0) << c.name;
    }
    auto image = fresh_image();
    EXPECT_EQ(update_dialplan_conf(image.get(), 8), -1);
    EXPECT_EQ(update_mod_rules_conf(image.get(), 16), -1);
}

TEST(Waits, TimesOutAfterFiveSecondsAndRecounts)
{
    auto image = fresh_image();
    image->routes.start = CFG_LIST_UPDATING;
    image->hosts.start = CFG_LIST_UPDATING;
    std::strcpy(image->hosts.name[0], "h");
    std::strcpy(image->hosts.address[0], "10.0.0.1");
    const auto t0 = clock_type::now();
    EXPECT_EQ(update_route_conf(image.get()), 1);
    const auto waited = clock_type::now() - t0;
    EXPECT_GE(waited, std::chrono::milliseconds(4900));
    EXPECT_LT(waited, std::chrono::seconds(15));
    EXPECT_EQ(image->routes.start, image->routes.current);
    EXPECT_EQ(image->hosts.start, 1u); // every marker is cleared by the recount
    EXPECT_TRUE(support::lock_is_free());
}

// A status message: 12-byte header, then the payload at offset 13.
std::vector<uint8_t> status_message(std::size_t size)
{
    std::vector<uint8_t> m(size, 0);
    for (std::size_t i = 13; i < size; ++i)
        m[i] = static_cast<uint8_t>(i * 7);
    return m;
}

void put32(std::vector<uint8_t> &m, std::size_t at, uint32_t v)
{
    for (int i = 0; i < 4; ++i)
        m[at + i] = static_cast<uint8_t>(v >> (8 * i));
}

TEST(StatusParsers, SwitchStatusAndVersion)
{
    auto image = fresh_image();
    image->switch_status[4][1] = 0xBEEF;
    std::vector<uint8_t> m = status_message(64);
    switch_status_parser(image.get(), m.data());
    EXPECT_EQ(image->switch_status[0][0], m[13] | (m[14] << 8));
    EXPECT_EQ(image->switch_status[3][2], m[35] | (m[36] << 8));
    EXPECT_EQ(image->switch_status[4][1], 0xBEEF); // group 4 is not copied
    EXPECT_EQ(image->switch_status[6][2], m[53] | (m[54] << 8));

    cfg_version_parser(image.get(), m.data());
    EXPECT_EQ(image->version_received, 1u);
    EXPECT_EQ(std::memcmp(image->version, m.data() + 13, 20), 0);
    EXPECT_TRUE(support::lock_is_free());
}

TEST(StatusParsers, FxsStatisticsChecksThePort)
{
    // Port 1..72 lands in record port - 1; any other port stores nothing.
    for (const uint32_t port : {1u, 72u, 0u, 73u}) {
        auto image = fresh_image();
        std::vector<uint8_t> m = status_message(15 + 671);
        put32(m, 19, port);
        const std::string printed = support::stdout_of([&] { fxs_statistics_parser(image.get(), m.data()); });
        EXPECT_NE(printed.find("FXS STATISTICS " + std::to_string(static_cast<int>(port) - 1) + " PORT\r\n"),
                  std::string::npos)
            << printed;
        auto want = fresh_image();
        if (port >= 1 && port <= 72) {
            std::memcpy(want->fxs_statistics[port - 1], m.data() + 15, 671);
            want->fxs_statistics_fresh[port - 1] = 1;
        }
        EXPECT_EQ(std::memcmp(image.get(), want.get(), sizeof(cfg_image_t)), 0) << port;
    }
}

std::vector<uint8_t> monitoring(uint32_t kind, uint32_t number, std::size_t block)
{
    std::vector<uint8_t> m = status_message(23 + block + 8);
    put32(m, 15, kind);
    put32(m, 19, number);
    return m;
}

TEST(StatusParsers, MonitoringKindsAndRanges)
{
    struct row {
        uint32_t kind, number;
        std::size_t offset, size, image_offset;
    }; // image_offset 0: stored nowhere
    const std::size_t t4 = offsetof(cfg_image_t, mon_t4), t8 = offsetof(cfg_image_t, mon_t8);
    const std::size_t t10 = offsetof(cfg_image_t, mon_t10), t11 = offsetof(cfg_image_t, mon_t11);
    const std::size_t t6 = offsetof(cfg_image_t, mon_t6), t3 = offsetof(cfg_image_t, fxs_statistics);
    const row rows[] = {
        {4, 72, 19, 148, t4 + 71 * 148},
        {4, 1, 19, 148, t4},
        {4, 0, 19, 148, 0},
        {4, 73, 19, 148, 0},
        {10, 64, 19, 148, t10 + 63 * 148},
        {10, 0, 19, 148, 0},
        {10, 65, 19, 148, 0},
        {8, 2, 19, 56, t8 + 56},
        {11, 3, 19, 80, t11 + 2 * 80},
        {6, 999, 19, 112, t6},
        {3, 5, 23, 671, t3 + 4 * 671},
        {2, 1, 19, 0, 0},
        {12, 1, 19, 0, 0},
    };
    for (const row &r : rows) {
        auto image = fresh_image();
        const std::vector<uint8_t> m = monitoring(r.kind, r.number, 671);
        monitoring_parser(image.get(), m.data());
        const auto *got = reinterpret_cast<const uint8_t *>(image.get());
        auto empty = fresh_image();
        EXPECT_EQ(r.image_offset != 0 ? std::memcmp(got + r.image_offset, m.data() + r.offset, r.size)
                                      : std::memcmp(image.get(), empty.get(), sizeof(cfg_image_t)),
                  0)
            << "kind " << r.kind << " number " << r.number;
    }
    auto image = fresh_image();
    monitoring_parser(image.get(), monitoring(9, 0, 0).data());
    EXPECT_EQ(image->mon_t9_flag, 1u);
    EXPECT_TRUE(support::lock_is_free());
}

TEST(StatusParsers, MonitoringStateWords)
{
    auto image = fresh_image();
    // Kind 1: a state word of 0 keeps the previous one; event 12 stamps the time.
    std::vector<uint8_t> m = monitoring(1, 2, 92);
    put32(m, 19 + 84, 7);
    put32(m, 19 + 4, 3);
    monitoring_parser(image.get(), m.data());
    EXPECT_EQ(image->mon_t1[1][84], 7);
    EXPECT_EQ(image->mon_t1_time[1], 0u);
    put32(m, 19 + 84, 0);
    put32(m, 19 + 4, 12);
    monitoring_parser(image.get(), m.data());
    EXPECT_EQ(image->mon_t1[1][84], 7);
    EXPECT_NE(image->mon_t1_time[1], 0u);
    EXPECT_EQ(std::memcmp(image->mon_t1[1], m.data() + 19, 84), 0);

    // Kind 5: state 2, time and a copy of the application's reference.
    image->mon_t5_ref[9] = 1234;
    monitoring_parser(image.get(), monitoring(5, 10, 52).data());
    EXPECT_EQ(image->mon_t5_state[9], 2);
    EXPECT_EQ(image->mon_t5_ref_copy[9], 1234u);
    EXPECT_NE(image->mon_t5_time[9], 0u);
}

} // namespace
