// Every writer family on the image of the full configuration.
#include "full_config.h"
#include "writer_families.h"

#include <benchmark/benchmark.h>
#include <cfgparser.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace bench {
namespace {

void BM_Writers(benchmark::State &state, const writer_family &family)
{
    cfg_image_t *image = new_image();
    all_parser(image, the_full_config().message.data());
    std::vector<uint8_t> buffer(writer_buffer_size);
    int64_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (const writer_call &call : family.calls) {
            uint8_t *cursor = buffer.data();
            bytes += call.write(&cursor, *image);
        }
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["bytes"] = static_cast<double>(bytes);
    state.counters["writers"] = static_cast<double>(family.calls.size());
    std::free(image);
}

} // namespace

// One benchmark per family, named after it.
void register_writer_benchmarks()
{
    for (const writer_family &family : writer_families())
        benchmark::RegisterBenchmark((std::string("BM_Writers/") + family.name).c_str(), BM_Writers,
                                     std::cref(family))
            ->Unit(benchmark::kMicrosecond);
}

} // namespace bench
