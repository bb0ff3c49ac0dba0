// JSON form of a configuration message, for scripts:
//
//   {
//     "header0": 0, "header2": 0, "operation": 2, "terminator": 0,
//     "nodes": [
//       { "path": "config.VOIP.h323",
//         "params": [ { "name": "enableh323", "value": "1" },
//                     { "name": "h323aliase", "value": null },
//                     { "name": "password", "value": "\"\"" } ] }
//     ]
//   }
//
// - Nodes and params keep their order (a name may repeat); keys are always
//   written in the order above, with two-space indentation.
// - "value": null is a param without a value; the two quote characters sent
//   for an empty text stay the string "\"\"".
// - "terminator": null is a body without its closing byte.
// - Paths, names and values are JSON strings. A byte sequence that is not
//   valid UTF-8 is written with U+FFFD in its place, so only a message whose
//   strings are all UTF-8 comes back byte for byte from its JSON; the text
//   form round-trips every byte.
//
// Reading (`from_json`) takes the same document. Missing header fields take
// the defaults of the text form (0, 0, operation 2, terminator 0); a missing
// "params" is an empty list, a missing "value" no value, and "value": "" is
// no value too (both are length 0 on the wire). Unknown keys are errors, so
// that a misspelt key is not dropped silently.
#pragma once

#include "msgtext.h"

#include <optional>
#include <string>
#include <string_view>

namespace cfgmsg {

std::string to_json(const message &msg);
// Its parts, for printing a message node by node: to_json is json_head,
// then each json_node preceded by "\n" (the first) or ",\n" (the others),
// then json_tail of the node count.
std::string json_head(const message &msg);
std::string json_node(const node &nd);
std::string json_tail(std::size_t nodes);

// Where a JSON document was found wanting: "line L, column C" for a syntax
// error, a JSON pointer such as "/nodes/3/params/0/value" for a document of
// the wrong shape.
struct json_error {
    std::string where;
    std::string reason;
};

// Parses `text` as written by `to_json`. On failure fills `err` and returns
// false. A message that parses always encodes (every length is checked).
bool from_json(std::string_view text, message &out, json_error &err);

// The first path, name or value of `msg` that is not valid UTF-8, as
// "node N (path) param M name|value", or nullopt when every one is.
std::optional<std::string> first_non_utf8(const message &msg);
// The same for node `nd`, the node of number `index` (from 0) of its message.
std::optional<std::string> non_utf8_in(const node &nd, std::size_t index);

} // namespace cfgmsg
