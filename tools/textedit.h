// 'cfgmsg set' on a message in the text form, written as text: only the
// lines of the params and nodes that the edits touch change; comments,
// blank lines, indentation and the order of the rest stay as they were.
#pragma once

#include "msgedit.h"

#include <string>
#include <string_view>

namespace cfgmsg {

// `original` is the text that parsed to `before`; `after` is `before` once
// apply_edits made `edits`. Returns `original` with those edits: a changed
// value rewrites the part of its line after '=', a removed param or node
// loses its lines, an added param comes after the last param of its node,
// a new node at the end; a first line "# body length ..." as to_text writes
// it is brought up to date. Falls back to to_text(after) should the result
// not read back as `after`.
std::string edit_text(std::string_view original, const message &before, const message_edits &edits,
                      const message &after);

} // namespace cfgmsg
