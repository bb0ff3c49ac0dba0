// Other threads during a parse: how long a reader waits for RWlockCfg while
// the full configuration is parsed in a loop, and how soon threads waiting
// for a list return after the message that clears its marker (woken by the
// recount, against a wait that polls every 10 ms).
#include "full_config.h"

#include <benchmark/benchmark.h>
#include <cfgparser.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>
#include <vector>

namespace bench {
namespace {

using clock_type = std::chrono::steady_clock;

double micros(clock_type::duration d)
{
    return std::chrono::duration<double, std::micro>(d).count();
}

// p50, p99 and maximum of the samples (microseconds) as counters.
void report_percentiles(benchmark::State &state, std::vector<double> samples)
{
    if (samples.empty())
        return;
    std::sort(samples.begin(), samples.end());
    auto at = [&samples](double q) {
        const auto i = static_cast<std::size_t>(q * static_cast<double>(samples.size() - 1));
        return samples[i];
    };
    state.counters["p50_us"] = at(0.50);
    state.counters["p99_us"] = at(0.99);
    state.counters["max_us"] = samples.back();
}

// One iteration: one reader taking and releasing the lock (the wait is the
// iteration time), then a pause of about 20 us so that the samples fall at
// every point of the parses running meanwhile. With argument 0 nothing
// parses: the same loop then shows what the machine itself adds (the
// reader being scheduled out between the two clock readings).
void BM_LockWait(benchmark::State &state)
{
    const bool parsing = state.range(0) != 0;
    const full_config &c = the_full_config();
    cfg_image_t *image = new_image();
    std::atomic<bool> stop{false};
    std::atomic<long> parses{0};
    std::thread parser([&] {
        while (parsing && !stop.load(std::memory_order_relaxed)) {
            all_parser(image, c.message.data());
            parses.fetch_add(1, std::memory_order_relaxed);
        }
    });
    while (parsing && parses.load() == 0)
        std::this_thread::yield(); // the samples start once parsing runs

    std::vector<double> waits;
    waits.reserve(static_cast<std::size_t>(state.max_iterations));
    uint32_t seen = 0;
    for (auto _ : state) {
        const auto t0 = clock_type::now();
        pthread_mutex_lock(&RWlockCfg);
        const auto t1 = clock_type::now();
        seen += image->ports[7].flashtime;
        pthread_mutex_unlock(&RWlockCfg);
        waits.push_back(micros(t1 - t0));
        state.SetIterationTime(std::chrono::duration<double>(t1 - t0).count());
        std::this_thread::sleep_for(std::chrono::microseconds(20));
    }
    stop = true;
    parser.join();
    benchmark::DoNotOptimize(seen);
    report_percentiles(state, std::move(waits));
    state.counters["parses"] = static_cast<double>(parses.load());
    std::free(image);
}
BENCHMARK(BM_LockWait)
    ->Name("BM_LockWait_DuringParse")
    ->Arg(1)
    ->Iterations(20000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LockWait)
    ->Name("BM_LockWait_NoParse")
    ->Arg(0)
    ->Iterations(20000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

// The wait as it was before a recount woke the waiting threads: the marker
// tested every 10 ms, with cfg_pause in between. The reference for the
// figures of the wait of the library.
int32_t polling_host_wait(cfg_image_t *image)
{
    for (int tries = 0;; ++tries) {
        pthread_mutex_lock(&RWlockCfg);
        const bool settled = image->hosts.start != CFG_LIST_UPDATING;
        pthread_mutex_unlock(&RWlockCfg);
        if (settled)
            return 0;
        if (tries >= 500) {
            recalculate_start_and_current_after_timeout(image);
            return 1;
        }
        cfg_pause(0, 10);
    }
}

// One iteration: mark the host list as being updated, start `waiters`
// threads in the wait, parse the full configuration at a random moment of a
// 10 ms poll, and time the return of each wait from the return of
// all_parser (whose closing recount clears the marker). Every waiter gives
// one sample; the iteration time is the last waiter's.
void list_wait_latency(benchmark::State &state, int32_t (*wait)(cfg_image_t *))
{
    const auto waiters = static_cast<std::size_t>(state.range(0));
    const full_config &c = the_full_config();
    cfg_image_t *image = new_image();
    std::mt19937 random(11);
    std::uniform_int_distribution<int> phase_us(0, 10000);
    std::vector<double> latencies;
    int early = 0;
    int timed_out = 0;
    for (auto _ : state) {
        pthread_mutex_lock(&RWlockCfg);
        image->hosts.start = CFG_LIST_UPDATING;
        pthread_mutex_unlock(&RWlockCfg);

        std::vector<std::atomic<clock_type::rep>> returned(waiters);
        std::vector<int32_t> results(waiters, -1);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < waiters; ++i)
            threads.emplace_back([&, i] {
                results[i] = wait(image);
                returned[i] = clock_type::now().time_since_epoch().count();
            });
        std::this_thread::sleep_for(std::chrono::microseconds(phase_us(random)));
        all_parser(image, c.message.data());
        const auto parsed = clock_type::now();
        double last_us = 0;
        for (std::size_t i = 0; i < waiters; ++i) {
            threads[i].join();
            timed_out += results[i] != 0 ? 1 : 0;
            const auto latency = clock_type::time_point(clock_type::duration(returned[i].load())) - parsed;
            // A waiter may see the cleared marker between the recount and
            // the return of all_parser: counted as no wait.
            if (latency.count() < 0)
                ++early;
            const double us = std::max(0.0, micros(latency));
            latencies.push_back(us);
            last_us = std::max(last_us, us);
        }
        state.SetIterationTime(std::max(1e-9, last_us / 1e6));
    }
    report_percentiles(state, std::move(latencies));
    state.counters["early"] = early;
    state.counters["timed_out"] = timed_out;
    std::free(image);
}

void BM_ListWait_Latency(benchmark::State &state)
{
    list_wait_latency(state, update_host_conf);
}
BENCHMARK(BM_ListWait_Latency)
    ->Arg(1)
    ->Arg(4)
    ->Iterations(200)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void BM_ListWait_Polling(benchmark::State &state)
{
    list_wait_latency(state, polling_host_wait);
}
BENCHMARK(BM_ListWait_Polling)->Arg(1)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace bench
