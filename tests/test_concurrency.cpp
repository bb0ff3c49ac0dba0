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

TEST(Concurrency, ParserWaitersAndReaders)
{
    std::string text;
    for (int i = 0; i < 200; ++i) {
        text += "[config.VOIP.h323]\n timetolive = " + std::to_string(i) + "\n password = p" +
                std::to_string(i) + "\n";
        text += "[config.VOIP.range]\n tcpportmin = " + std::to_string(2000 + i) + "\n";
        text += "[config.VOIP.unknown]\n a = 1\n";
    }
    const std::vector<uint8_t> message = cfgmsg::message_from_text(text);
    auto image = support::fresh_image();

    // The parser goes on until the waiter has been released a few times (a
    // busy machine may schedule the threads late), within a bounded number of
    // rounds.
    std::atomic<bool> done{false};
    std::atomic<int> waits_settled{0};
    std::thread parser([&] {
        for (int round = 0; round < 2000 && (round < 20 || waits_settled < 3); ++round)
            all_parser(image.get(), message.data());
        done = true;
    });

    std::thread waiter([&] {
        while (!done) {
            pthread_mutex_lock(&RWlockCfg);
            image->hosts.start = CFG_LIST_UPDATING;
            pthread_mutex_unlock(&RWlockCfg);
            if (update_host_conf(image.get()) == 0)
                ++waits_settled;
        }
    });

    std::atomic<int> bad_reads{0};
    std::thread reader([&] {
        while (!done) {
            pthread_mutex_lock(&RWlockCfg);
            const int32_t ttl = image->h323.timetolive;
            const int32_t port = image->h323.tcpportmin;
            pthread_mutex_unlock(&RWlockCfg);
            if (ttl < 0 || ttl > 199 || (port != 0 && (port < 2000 || port > 2199)))
                ++bad_reads;
        }
    });

    parser.join();
    waiter.join();
    reader.join();
    EXPECT_EQ(bad_reads.load(), 0);
    EXPECT_GT(waits_settled.load(), 0);
    EXPECT_EQ(image->h323.timetolive, 199);
    EXPECT_STREQ(image->h323.password, "p199");
    EXPECT_TRUE(support::lock_is_free());
}

// Waiters on four lists, two readers and a parser that ends a message about
// every millisecond: every wait is released by a recount (0), none runs into
// its 5 s bound, and the readers see only values that were stored.
TEST(Concurrency, EveryWaiterReleasedByTheParser)
{
    const std::vector<uint8_t> message = cfgmsg::message_from_text("[config.VOIP.h323]\n timetolive = 7\n");
    auto image = support::fresh_image();
    cfg_image_t *im = image.get();
    struct list { uint32_t *start; int32_t (*wait)(cfg_image_t *); };
    const list lists[] = {{&im->hosts.start, update_host_conf}, {&im->routes.start, update_route_conf},
                          {&im->limits.start, update_limits_conf}, {&im->firewall.start, update_firewall_conf}};
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
                const int32_t ttl = im->h323.timetolive;
                pthread_mutex_unlock(&RWlockCfg);
                bad_reads += (ttl != 0 && ttl != 7) ? 1 : 0;
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
    EXPECT_TRUE(support::lock_is_free());
}

// A recount ends the pause of every paused thread (or of one that has yet
// to pause on the generation it saw), long before its time-out.
TEST(Waits, RecountWakesEveryPausedThread)
{
    auto image = support::fresh_image();
    const uint32_t seen = cfg::wake::generation();
    std::atomic<int> woken{0};
    std::vector<std::thread> paused;
    for (int i = 0; i < 4; ++i)
        paused.emplace_back([&] { woken += cfg::wake::pause(seen, 999'000'000) ? 1 : 0; });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    recalculate_start_and_current_after_timeout(image.get());
    for (std::thread &t : paused)
        t.join();
    EXPECT_EQ(woken.load(), 4);
}

} // namespace
