// Parsing the full configuration against the bare walk of the same bytes,
// and the cost of classifying a node path with the profile patterns.
#include "full_config.h"

#include "cfgmngr/path_match.h"
#include "cfgmngr/routes.h"
#include "cfgmngr/wire.h"
#include "universalConfigParser/msg_reader.h"

#include <benchmark/benchmark.h>
#include <cfgparser.h>

#include <cstdlib>
#include <ctime>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace bench {
namespace {

void set_rates(benchmark::State &state, const full_config &c)
{
    const auto runs = static_cast<double>(state.iterations());
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(c.message.size()));
    state.counters["params/s"] =
        benchmark::Counter(runs * static_cast<double>(c.params), benchmark::Counter::kIsRate);
    state.counters["nodes"] = static_cast<double>(c.nodes);
    state.counters["params"] = static_cast<double>(c.params);
}

void BM_AllParser_FullConfig(benchmark::State &state)
{
    const full_config &c = the_full_config();
    cfg_image_t *image = new_image();
    for (auto _ : state) {
        all_parser(image, c.message.data());
        benchmark::ClobberMemory();
    }
    set_rates(state, c);
    state.SetLabel(c.source);
    std::free(image);
}
BENCHMARK(BM_AllParser_FullConfig)->Unit(benchmark::kMicrosecond);

void BM_BareWalk_FullConfig(benchmark::State &state)
{
    const full_config &c = the_full_config();
    for (auto _ : state) {
        const walk_result w = bare_walk(c.message.data());
        benchmark::DoNotOptimize(w.checksum);
    }
    set_rates(state, c);
}
BENCHMARK(BM_BareWalk_FullConfig)->Unit(benchmark::kMicrosecond);

// The walk with the copies every reader of this format makes: each path
// through GetToken and each param through find_params, freed at once. What
// all_parser adds on top of it is classification, key matching and stores.
//
// With Duties, also the work that the parse must do besides finding and
// storing each param's key, kept as the parse keeps it: the six patterns
// matched per node with their substring tables (the path copy kept until
// the node ends), RWlockCfg taken and released once per param and once per
// node for its time-stamp. What the full parse adds on top of that is the
// key lookup, the conversion and the store of each param, and the handlers'
// own rules.
template <bool Duties>
void walk_with_copies(const uint8_t *message) noexcept
{
    uint32_t remaining = cfg::wire::get_u32(message + 4);
    remaining = remaining == 0 ? 0 : remaining - 1;
    const uint8_t *cursor = message + cfg::wire::nodes_offset;
    while (remaining >= 2) {
        const uint16_t path_length = cfg::wire::get_u16(cursor);
        if (static_cast<uint32_t>(path_length) + 4 > remaining)
            return;
        char *path = cfg::GetToken(cursor + 2, path_length);
        cursor += 2 + path_length;
        const uint16_t count = cfg::wire::get_u16(cursor);
        cursor += 2;
        remaining -= static_cast<uint32_t>(path_length) + 4;
        int32_t matches[cfg::routes::pattern_count] = {};
        char **tables[cfg::routes::pattern_count] = {};
        if constexpr (Duties) {
            cfg::routes::match_patterns(path, matches, tables);
            benchmark::DoNotOptimize(cfg::routes::route_of(path, matches));
        } else {
            std::free(path);
            path = nullptr;
        }
        bool malformed = false;
        for (uint16_t i = 0; i < count && !malformed; ++i) {
            char *name = nullptr;
            char *value = nullptr;
            const int result = find_params(&cursor, &remaining, &name, &value, 1);
            if (Duties && result == 0) {
                pthread_mutex_lock(&RWlockCfg);
                benchmark::DoNotOptimize(name);
                pthread_mutex_unlock(&RWlockCfg);
            }
            free_params(&name, &value);
            malformed = result < 0;
        }
        if constexpr (Duties) {
            if (!malformed) {
                pthread_mutex_lock(&RWlockCfg);
                uint32_t stamp = cfgpars_get_monotonic_now_time();
                benchmark::DoNotOptimize(stamp);
                pthread_mutex_unlock(&RWlockCfg);
            }
            cfg::routes::free_matches(matches, tables);
            std::free(path);
        }
        if (malformed)
            return;
    }
}

void BM_ReaderWalk_FullConfig(benchmark::State &state)
{
    const full_config &c = the_full_config();
    for (auto _ : state) {
        walk_with_copies<false>(c.message.data());
        benchmark::ClobberMemory();
    }
    set_rates(state, c);
}
BENCHMARK(BM_ReaderWalk_FullConfig)->Unit(benchmark::kMicrosecond);

void BM_DutiesWalk_FullConfig(benchmark::State &state)
{
    const full_config &c = the_full_config();
    cfg_image_t *image = new_image();
    for (auto _ : state) {
        walk_with_copies<true>(c.message.data());
        recalculate_start_and_current_after_timeout(image);
        benchmark::ClobberMemory();
    }
    set_rates(state, c);
    std::free(image);
}
BENCHMARK(BM_DutiesWalk_FullConfig)->Unit(benchmark::kMicrosecond);

double thread_cpu_seconds()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

// The parse and the walk alternated in one loop, each timed on this
// thread's CPU clock, so that both see the same machine load: the ratio is
// the sum of parse times over the sum of walk times.
void BM_ParseOverWalk_Paired(benchmark::State &state)
{
    const full_config &c = the_full_config();
    cfg_image_t *image = new_image();
    double parse_seconds = 0;
    double walk_seconds = 0;
    for (auto _ : state) {
        const double t0 = thread_cpu_seconds();
        all_parser(image, c.message.data());
        benchmark::ClobberMemory();
        const double t1 = thread_cpu_seconds();
        const walk_result w = bare_walk(c.message.data());
        benchmark::DoNotOptimize(w.checksum);
        const double t2 = thread_cpu_seconds();
        parse_seconds += t1 - t0;
        walk_seconds += t2 - t1;
    }
    state.counters["parse/walk"] = walk_seconds > 0 ? parse_seconds / walk_seconds : 0;
    std::free(image);
}
BENCHMARK(BM_ParseOverWalk_Paired)->Unit(benchmark::kMicrosecond);

// The six profile patterns as all_parser evaluates them.
using cfg::routes::pattern_count;
using cfg::routes::pattern_text;

// Compiled once, as all_parser keeps them, and studied with the JIT as
// all_parser does (the unstudied variant measures compiling once alone).
struct compiled {
    pcre *re[pattern_count] = {};
    pcre_extra *studied[pattern_count] = {};
    compiled()
    {
        for (int i = 0; i < pattern_count; ++i) {
            const char *error = nullptr;
            int offset = 0;
            re[i] = pcre_compile(pattern_text[i], 0, &error, &offset, nullptr);
            if (re[i] == nullptr)
                throw std::runtime_error(error);
            studied[i] = pcre_study(re[i], PCRE_STUDY_JIT_COMPILE, &error);
        }
    }
    ~compiled()
    {
        for (pcre_extra *s : studied)
            pcre_free_study(s);
        for (pcre *r : re)
            pcre_free(r);
    }
};

const compiled &patterns()
{
    static const compiled c;
    return c;
}

// Which paths a classification benchmark runs over.
enum path_set { all_paths = 0, profile_paths = 1 };

bool is_profile_path(std::string_view path)
{
    return path.starts_with("config.VOIP.profile.profile_") ||
           path.starts_with("config.VOIP.dialplan_profiles.dialplan_profile");
}

std::vector<std::string> paths_of(path_set which)
{
    std::vector<std::string> out;
    for (std::string &p : node_paths(the_full_config().message))
        if (which == all_paths || is_profile_path(p))
            out.push_back(std::move(p));
    return out;
}

// Returns the number of substrings found, so every variant can be checked
// to classify alike.
int classify_compiling(const std::string &path)
{
    int found = 0;
    for (const char *pattern : pattern_text) {
        char **table = nullptr;
        const int32_t n = pcre_preg_match(pattern, path.c_str(), static_cast<int>(path.size()), &table);
        free_table(table, n);
        found += n;
    }
    return found;
}

template <bool Studied>
int classify_cached(const std::string &path)
{
    int found = 0;
    for (int i = 0; i < pattern_count; ++i) {
        char **table = nullptr;
        const int32_t n = cfg::match::run(patterns().re[i], Studied ? patterns().studied[i] : nullptr,
                                          path.c_str(), static_cast<int>(path.size()), &table);
        free_table(table, n);
        found += n;
    }
    return found;
}

// What all_parser does: the cached, studied patterns, only for paths that
// can match.
int classify_as_all_parser(const std::string &path)
{
    return is_profile_path(path) ? classify_cached<true>(path) : 0;
}

// What all_parser does, to the route: the patterns as above, then the
// route table's tests in classification order.
int classify_to_route(const std::string &path)
{
    int32_t matches[pattern_count] = {};
    char **tables[pattern_count] = {};
    cfg::routes::match_patterns(path.c_str(), matches, tables);
    benchmark::DoNotOptimize(cfg::routes::route_of(path, matches));
    int found = 0;
    for (int32_t n : matches)
        found += n;
    cfg::routes::free_matches(matches, tables);
    return found;
}

template <int (*Classify)(const std::string &)>
void BM_Classify(benchmark::State &state)
{
    const std::vector<std::string> paths = paths_of(static_cast<path_set>(state.range(0)));
    int expected = 0;
    for (const std::string &p : paths)
        expected += classify_compiling(p);
    int found = 0;
    for (auto _ : state) {
        found = 0;
        for (const std::string &p : paths)
            found += Classify(p);
        benchmark::DoNotOptimize(found);
    }
    if (found != expected)
        state.SkipWithError("classification differs from compiling per call");
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(paths.size()));
    state.counters["paths"] = static_cast<double>(paths.size());
}
BENCHMARK(BM_Classify<classify_compiling>)
    ->Name("BM_Classify_CompilePerCall")
    ->Arg(all_paths)
    ->Arg(profile_paths)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Classify<classify_cached<false>>)
    ->Name("BM_Classify_Cached")
    ->Arg(all_paths)
    ->Arg(profile_paths)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Classify<classify_cached<true>>)
    ->Name("BM_Classify_CachedStudied")
    ->Arg(all_paths)
    ->Arg(profile_paths)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Classify<classify_to_route>)
    ->Name("BM_Classify_ToRoute")
    ->Arg(all_paths)
    ->Arg(profile_paths)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Classify<classify_as_all_parser>)
    ->Name("BM_Classify_AsAllParser")
    ->Arg(all_paths)
    ->Arg(profile_paths)
    ->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace bench
