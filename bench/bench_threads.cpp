// Other threads during a parse: how long a reader waits for RWlockCfg while
// the full configuration is parsed in a loop, and how soon a thread waiting
// for a list returns after the message that clears its marker.
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
BENCHMARK(BM_LockWait)->Name("BM_LockWait_DuringParse")->Arg(1)->Iterations(20000)->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LockWait)->Name("BM_LockWait_NoParse")->Arg(0)->Iterations(20000)->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

// One iteration: mark the host list as being updated, start a thread in
// update_host_conf, parse the full configuration at a random moment of the
// waiter's 10 ms poll, and time the return of the wait from the return of
// all_parser (whose closing recount clears the marker).
void BM_ListWait_Latency(benchmark::State &state)
{
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

        std::atomic<clock_type::rep> returned{0};
        int32_t result = -1;
        std::thread waiter([&] {
            result = update_host_conf(image);
            returned = clock_type::now().time_since_epoch().count();
        });
        std::this_thread::sleep_for(std::chrono::microseconds(phase_us(random)));
        all_parser(image, c.message.data());
        const auto parsed = clock_type::now();
        waiter.join();

        timed_out += result != 0 ? 1 : 0;
        const auto latency = clock_type::time_point(clock_type::duration(returned.load())) - parsed;
        // The waiter may see the cleared marker between the recount and the
        // return of all_parser: counted as no wait.
        if (latency.count() < 0)
            ++early;
        const double us = std::max(0.0, micros(latency));
        latencies.push_back(us);
        state.SetIterationTime(std::max(1e-9, us / 1e6));
    }
    report_percentiles(state, std::move(latencies));
    state.counters["early"] = early;
    state.counters["timed_out"] = timed_out;
    std::free(image);
}
BENCHMARK(BM_ListWait_Latency)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace bench
