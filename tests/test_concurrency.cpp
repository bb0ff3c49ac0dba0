// Several threads on one image: a parser in a loop, waiters and readers.
// Run under ThreadSanitizer in CI (CFGPARSER_SANITIZE=thread).
#include "support.h"
#include "universalConfigParser/list_wake.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

// Waiters on four lists, two readers and a parser that ends a message of 600
// nodes about every millisecond: every wait is released by a recount (0),
// none runs into its 5 s bound, the readers see only values that were
// stored, and the last message's values stay.
TEST(Concurrency, EveryWaiterReleasedByTheParser)
{
    std::string text;
    for (int i = 0; i < 200; ++i)
        text += "[config.VOIP.h323]\n timetolive = " + std::to_string(i) + "\n password = p" +
                std::to_string(i) + "\n[config.VOIP.range]\n tcpportmin = " + std::to_string(2000 + i) +
                "\n[config.VOIP.unknown]\n a = 1\n";
    const std::vector<uint8_t> message = cfgmsg::message_from_text(text);
    auto image = support::fresh_image();
    cfg_image_t *im = image.get();
    struct list {
        uint32_t *start;
        int32_t (*wait)(cfg_image_t *);
    };
    const list lists[] = {{&im->hosts.start, update_host_conf},
                          {&im->routes.start, update_route_conf},
                          {&im->limits.start, update_limits_conf},
                          {&im->firewall.start, update_firewall_conf}};
    std::atomic<int> waiting{static_cast<int>(std::size(lists))};
    std::atomic<int> not_settled{0};
    std::atomic<int> bad_reads{0};
    std::vector<std::thread> threads;
    for (const list &l : lists)
        threads.emplace_back([&, l] {
            for (int round = 0; round < 25; ++round) {
                pthread_mutex_lock(&RWlockCfg);
                *l.start = CFG_LIST_UPDATING;
                pthread_mutex_unlock(&RWlockCfg);
                not_settled += l.wait(im) != 0 ? 1 : 0;
            }
            --waiting;
        });
    for (int i = 0; i < 2; ++i)
        threads.emplace_back([&] {
            while (waiting > 0) {
                pthread_mutex_lock(&RWlockCfg);
                const int32_t ttl = im->h323.timetolive, port = im->h323.tcpportmin;
                pthread_mutex_unlock(&RWlockCfg);
                bad_reads += (ttl < 0 || ttl > 199 || (port != 0 && (port < 2000 || port > 2199))) ? 1 : 0;
            }
        });
    threads.emplace_back([&] {
        while (waiting > 0) {
            all_parser(im, message.data());
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    for (std::thread &t : threads)
        t.join();
    EXPECT_EQ(not_settled.load(), 0);
    EXPECT_EQ(bad_reads.load(), 0);
    EXPECT_EQ(im->h323.timetolive, 199);
    EXPECT_STREQ(im->h323.password, "p199");
    EXPECT_TRUE(support::lock_is_free());
}

// A recount ends the pause of every paused thread (or of one that has yet
// to pause on the generation it saw) at once, not at its time-out: a pause
// of almost a second ends within half of one after the recount.
TEST(Waits, RecountWakesEveryPausedThread)
{
    auto image = support::fresh_image();
    const uint32_t seen = cfg::wake::generation();
    std::atomic<int> woken{0};
    std::vector<std::thread> paused;
    for (int i = 0; i < 4; ++i)
        paused.emplace_back([&] { woken += cfg::wake::pause(seen, 999'000'000) ? 1 : 0; });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const auto t0 = std::chrono::steady_clock::now();
    recalculate_start_and_current_after_timeout(image.get());
    for (std::thread &t : paused)
        t.join();
    EXPECT_EQ(woken.load(), 4);
    EXPECT_LT(std::chrono::steady_clock::now() - t0, std::chrono::milliseconds(500))
        << "released by the time-out";
}

} // namespace
