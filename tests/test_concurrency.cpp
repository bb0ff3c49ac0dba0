// Several threads on one image: a parser in a loop, waiters and readers.
// Run under ThreadSanitizer in CI (CFGPARSER_SANITIZE=thread).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <atomic>
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

} // namespace
