// The benchmark runner: the usual console output, then a summary of the
// ratios and wait figures of this one run. With --benchmark_repetitions the
// summary takes the medians.
//
//   ./build/cfgparser_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include "full_config.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <unistd.h>

namespace bench {
void register_writer_benchmarks();

namespace {

struct figures {
    double cpu_seconds = 0; // per iteration
    benchmark::UserCounters counters;
    bool median = false;
};

// The console reporter, keeping each benchmark's figures (the median when
// there are repetitions) for the summary. Ratios are taken from CPU time:
// the machine is shared, and a single-threaded benchmark that is scheduled
// out meanwhile loses real time but no CPU time.
class summary_reporter : public benchmark::ConsoleReporter {
public:
    explicit summary_reporter(bool colour) : benchmark::ConsoleReporter(colour ? OO_ColorTabular : OO_Tabular)
    {
    }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        benchmark::ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            if (run.error_occurred)
                continue;
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (run.run_type == Run::RT_Aggregate && !median)
                continue;
            figures &f = results_[run.run_name.str()];
            if (f.median && !median)
                continue;
            f.median = median;
            f.cpu_seconds = run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
            f.counters = run.counters;
        }
    }

    void Finalize() override
    {
        benchmark::ConsoleReporter::Finalize();
        const full_config &c = the_full_config();
        std::printf("\nSummary (%s; %zu bytes, %zu nodes, %zu params)\n", c.source.c_str(), c.message.size(),
                    c.nodes, c.params);
        ratio("full parse / bare walk", "BM_AllParser_FullConfig", "BM_BareWalk_FullConfig");
        ratio("full parse / reader walk (copies only)", "BM_AllParser_FullConfig",
              "BM_ReaderWalk_FullConfig");
        ratio("reader walk (copies only) / bare walk", "BM_ReaderWalk_FullConfig", "BM_BareWalk_FullConfig");
        ratio("walk with fixed duties / reader walk (copies)", "BM_DutiesWalk_FullConfig",
              "BM_ReaderWalk_FullConfig");
        ratio("full parse / walk with fixed duties", "BM_AllParser_FullConfig", "BM_DutiesWalk_FullConfig");
        counter_line("full parse / bare walk, alternated in one loop", "BM_ParseOverWalk_Paired",
                     "parse/walk");
        ratio("classify, compile per call / cached, all paths", "BM_Classify_CompilePerCall/0",
              "BM_Classify_Cached/0");
        ratio("classify, compile per call / cached, profile paths", "BM_Classify_CompilePerCall/1",
              "BM_Classify_Cached/1");
        ratio("classify, compile per call / cached and studied, profile paths",
              "BM_Classify_CompilePerCall/1", "BM_Classify_CachedStudied/1");
        ratio("classify, compile per call / as all_parser, all paths", "BM_Classify_CompilePerCall/0",
              "BM_Classify_AsAllParser/0");
        waits("reader lock wait during parse", "BM_LockWait_DuringParse/1/iterations:20000/manual_time");
        waits("reader lock wait, nothing parsing", "BM_LockWait_NoParse/0/iterations:20000/manual_time");
        waits("list waiter after message end", "BM_ListWait_Latency/1/iterations:200/manual_time");
        waits("4 list waiters after message end", "BM_ListWait_Latency/4/iterations:200/manual_time");
        waits("list waiter polling every 10 ms (before the wake-up)",
              "BM_ListWait_Polling/1/iterations:200/manual_time");
        counter_ratio("list wait p50, polling / woken", "BM_ListWait_Polling/1/iterations:200/manual_time",
                      "BM_ListWait_Latency/1/iterations:200/manual_time", "p50_us");
        counter_ratio("list wait p99, polling / woken", "BM_ListWait_Polling/1/iterations:200/manual_time",
                      "BM_ListWait_Latency/1/iterations:200/manual_time", "p99_us");
    }

private:
    const figures *find(const std::string &name) const
    {
        const auto it = results_.find(name);
        return it == results_.end() ? nullptr : &it->second;
    }

    void ratio(const char *what, const std::string &slow, const std::string &fast) const
    {
        const figures *a = find(slow);
        const figures *b = find(fast);
        if (a == nullptr || b == nullptr || b->cpu_seconds <= 0)
            return;
        std::printf("  %-55s %8.2fx\n", what, a->cpu_seconds / b->cpu_seconds);
    }

    void counter_line(const char *what, const std::string &name, const char *key) const
    {
        const figures *f = find(name);
        if (f == nullptr)
            return;
        const auto it = f->counters.find(key);
        if (it != f->counters.end())
            std::printf("  %-55s %8.1fx\n", what, static_cast<double>(it->second));
    }

    // The ratio of one counter of two benchmarks.
    void counter_ratio(const char *what, const std::string &slow, const std::string &fast,
                       const char *key) const
    {
        const figures *a = find(slow);
        const figures *b = find(fast);
        if (a == nullptr || b == nullptr)
            return;
        const auto x = a->counters.find(key);
        const auto y = b->counters.find(key);
        if (x != a->counters.end() && y != b->counters.end() && static_cast<double>(y->second) > 0)
            std::printf("  %-55s %8.1fx\n", what,
                        static_cast<double>(x->second) / static_cast<double>(y->second));
    }

    void waits(const char *what, const std::string &name) const
    {
        const figures *f = find(name);
        if (f == nullptr)
            return;
        auto counter = [f](const char *key) {
            const auto it = f->counters.find(key);
            return it == f->counters.end() ? 0.0 : static_cast<double>(it->second);
        };
        std::printf("  %-55s p50 %.1f us, p99 %.1f us, max %.1f us\n", what, counter("p50_us"),
                    counter("p99_us"), counter("max_us"));
    }

    std::map<std::string, figures> results_;
};

} // namespace
} // namespace bench

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    bench::register_writer_benchmarks();
    bench::summary_reporter reporter(isatty(STDOUT_FILENO) != 0);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
