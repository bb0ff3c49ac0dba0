// Matching of node paths with Perl-compatible patterns.
#pragma once

#include <pcre.h>

#include <cstdint>

namespace cfg::match {

// One match of an already compiled pattern, with the substring table built
// exactly as pcre_preg_match builds it (trimmed, empty substrings skipped).
int32_t run(const pcre *compiled, const char *subject, int subject_length, char ***table) noexcept;

} // namespace cfg::match
