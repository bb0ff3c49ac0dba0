// The section writers grouped by family, each call writing one message body
// (operation byte .. terminating byte) for a whole image: what an
// application sends back when it saves everything.
#pragma once

#include <cfgparser.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace bench {

// Enough for the largest single writer output of a full image.
inline constexpr std::size_t writer_buffer_size = 1u << 20;

// A part of the image (offset and size in bytes).
struct image_part {
    std::size_t offset;
    std::size_t size;
};

struct writer_call {
    std::function<int(uint8_t **, const cfg_image_t &)> write;
    // Part of the full configuration the generated message is made of
    // (summaries that repeat other nodes are not). The round-trip property
    // (fuzz/roundtrip.h) parses only these calls and compares all of them.
    bool in_full_config = true;
    const char *name = ""; // the writer's function
    // The parts of the image the call hands to its writer: its output
    // depends on nothing else, so an image equal to another in these parts
    // gets the same output (the round-trip target runs only the calls
    // whose parts a message changed).
    std::vector<image_part> reads;
};

struct writer_family {
    const char *name;
    std::vector<writer_call> calls;
};

const std::vector<writer_family> &writer_families();

} // namespace bench
