// Secrets hidden from output that is to be shared: what --redact does in
// every command and form, and what 'set' keeps out of its messages.
//
// A secret param is one whose name holds "pass", "secret", "key",
// "communit" or "psk" (in any case: passwords, keys, the RADIUS secret,
// SNMP communities, the IPSec pre-shared key), and every param of an SNMP
// user node, whose value is the line "USER PASSWORD LEVEL".
#pragma once

#include "msgtext.h"

#include <optional>
#include <string>
#include <string_view>

namespace cfgmsg {

// Whether param `name` of node `path` holds a secret.
bool is_secret(std::string_view path, std::string_view name);

// The value to show for param `name` of node `path`: a secret as "***", the
// password word of an SNMP user line as "***" (the user name and level
// stay). No value, and the empty text "" , are shown as they are.
std::optional<std::string> redacted(std::string_view path, std::string_view name,
                                    const std::optional<std::string> &value);

// Every value of `msg` as `redacted` shows it.
void redact(message &msg);

} // namespace cfgmsg
