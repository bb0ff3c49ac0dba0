// The lookup index of every key table, built at compile time.
#include "cfgmngr/key_tables.h"

#include "cfgmngr/keys_network.h"
#include "cfgmngr/keys_ports.h"

namespace cfg::keys {
namespace {

constexpr auto ports_index = make_index(port_keys);
constexpr auto tr069_index = make_index(tr069_keys);

} // namespace

constinit const table ports = make_table(port_keys, ports_index);
constinit const table tr069 = make_table(tr069_keys, tr069_index);

} // namespace cfg::keys
