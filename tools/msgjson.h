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
//   valid UTF-8 is written with U+FFFD in its place, so this form is for
//   reading; the text form is the one that round-trips every byte.
#pragma once

#include "msgtext.h"

#include <string>

namespace cfgmsg {

std::string to_json(const message &msg);

}  // namespace cfgmsg
