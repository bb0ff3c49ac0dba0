// What the library makes of configuration messages: parse them into one
// image with all_parser, then write every section back with the library's
// own writers and gather their nodes into one message.
#pragma once

#include "msgtext.h"

#include <cfgparser.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace cfgmsg {

struct image_free {
    void operator()(cfg_image_t *image) const noexcept;
};
using image_ptr = std::unique_ptr<cfg_image_t, image_free>;

// A zero-filled image with `max_ports` set, as an application allocates it,
// and the limits ceiling at its largest so that every call limit is written.
image_ptr fresh_image(std::uint32_t max_ports);

// Parses one whole message (header included, as `decode` accepted it) into
// the image with all_parser.
void apply_message(cfg_image_t &image, std::span<const std::uint8_t> bytes);

// Runs every section writer over `image` (see run_writers in apply.cpp) and
// gathers their nodes into one message, operation 2. Nodes that several
// writers send under one path are merged into the first node of that path,
// in writing order; a param repeated there with the same name and value is
// kept once. Returns false with `error` set when a writer's output does not
// read back as a body (a fault of that writer).
bool configuration_of(const cfg_image_t &image, message &out, std::string &error);

// One param present on either side with a different value, or on one side
// only.
struct param_change {
    std::string path;
    std::string name;
    bool in_a = false;
    std::optional<std::string> a; // value on side A (nullopt: no value)
    bool in_b = false;
    std::optional<std::string> b;
};

// Params of `a` and `b` compared by node path and param name (the k-th
// occurrence of a name in a path with the k-th on the other side). Ordered
// as they first appear in `a`, then what only `b` has, in `b`'s order.
std::vector<param_change> differences(const message &a, const message &b);

} // namespace cfgmsg
