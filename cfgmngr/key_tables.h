// The key tables of every keyed section with their lookup index, for the
// section handlers and the tool. The rows themselves are in keys_*.h.
#pragma once

#include "cfgmngr/key_table.h"

namespace cfg::keys {

extern const table ports;
extern const table tr069;

} // namespace cfg::keys
