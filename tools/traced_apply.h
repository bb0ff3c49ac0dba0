// Applying a message with the library's trace lines passed on in words
// that say where they come from.
#pragma once

#include <cfgparser.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace cfgmsg {

// apply_message (apply.h), with the error lines that the library prints on
// standard output passed on to standard error, each prefixed with
// "cfgmsg: FILE: [PATH]: " naming the node that drew it. The node is found
// by parsing the message again node by node over a copy of the image as it
// was; when that does not draw the same lines, they are prefixed with the
// file alone.
void apply_traced(cfg_image_t &image, std::span<const std::uint8_t> bytes, const std::string &file);

} // namespace cfgmsg
