// The full configuration the benchmarks run on, and the bare walk of a
// message (the cheapest pass the format allows: every length read, every
// byte touched, nothing stored).
#pragma once

#include <cfgparser.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct full_config {
    std::vector<uint8_t> message; // header and body, as all_parser takes it
    std::string source;           // where it came from, for the report
    std::size_t nodes = 0;
    std::size_t params = 0;
};

// The file named by CFGPARSER_BENCH_MESSAGE when set; else
// examples/full-config.msg of the source tree when it is there; otherwise a
// message generated from the text form with every section that has a writer.
// Loaded once.
const full_config &the_full_config();

// A zero-filled image for 72 ports, as an application allocates it.
cfg_image_t *new_image();

// Every node path of a message, in message order.
std::vector<std::string> node_paths(const std::vector<uint8_t> &message);

struct walk_result {
    std::size_t nodes = 0;
    std::size_t params = 0;
    uint32_t checksum = 0; // depends on every byte, so no byte can be skipped
};

// Walks the message as all_parser does (same length checks, same stop
// rules) without copying or storing anything.
walk_result bare_walk(const uint8_t *message) noexcept;

} // namespace bench
