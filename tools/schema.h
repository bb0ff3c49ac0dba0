// The parameter reference: every node path the parser stores and, for each of
// its params, how the value is read, its bounds, default and text length, and
// whether the section's writer sends it. Printed from the library's key
// tables, so it cannot drift from what the parser does.
#pragma once

#include "cfgmngr/key_tables.h"
#include "cli.h"
#include "route.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cfgmsg {

// Whether a node kind's path ("config.VOIP.ports.port_{0..71}") is selected
// by `filter`: a concrete path ("config.VOIP.ports.port_5"), a prefix of one
// ("config.VOIP.ports"), or empty (every node).
bool path_selected(std::string_view pattern, std::string_view filter);

// How a row reads its value, in words ("range", "text", "pickup groups", ...).
std::string kind_name(const cfg::keys::key &k);

// The row's rule in one line: bounds, default, text length.
std::string rule_text(const cfg::keys::key &k);

// A row's member as the writers would send it (for `check`).
std::string stored_text(const cfg::keys::key &k, const void *record, unsigned entry = 0);

// `cfgmsg schema [--json|--markdown] [PATH]`.
extern const char *const schema_help;
int run_schema(const cli::options &opt);

} // namespace cfgmsg
