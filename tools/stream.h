// 'decode' and 'encode' printed node by node, so that a message of tens of
// megabytes takes about its own size in memory: the input is read whole
// (binary: framed by its header), checked whole before anything is printed,
// and then written one node at a time.
#pragma once

#include "cli.h"

namespace cfgmsg {

int run_decode_streamed(const cli::options &opt);
int run_encode_streamed(const cli::options &opt);

// The wire bytes of the message in FILE (binary, text or JSON), for
// all_parser; a binary input is checked without being decoded into nodes.
// Reports on standard error and returns nullopt on bad input.
std::optional<std::string> wire_bytes(const std::string &file);

} // namespace cfgmsg
