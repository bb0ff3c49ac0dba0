// Whether the library would store a param value as given: used by
// 'cfgmsg set' to warn about (or with --strict refuse) a value that the
// section's key table would clamp, cut, replace by a default or drop.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cfgmsg {

// nullopt when the value of `param` in node `path` is stored as given (or
// nothing is known about that node); otherwise one line saying what the
// library would do with it instead, e.g. "stored as "10": out of range
// 0..255: default 10 used". The param is judged alone, over a zero-filled
// record, with the library's key tables (in check.cpp).
std::optional<std::string> value_warning(std::string_view path, std::string_view param,
                                         std::string_view value);

} // namespace cfgmsg
