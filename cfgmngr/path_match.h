// Matching of node paths with Perl-compatible patterns.
#pragma once

#include <pcre.h>

#include <cstdint>

namespace cfg::match {

// One match of an already compiled pattern, with the substring table built
// exactly as pcre_preg_match builds it (trimmed, empty substrings skipped).
// `studied` is what pcre_study gave for the pattern, or null.
int32_t run(const pcre *compiled, const pcre_extra *studied, const char *subject, int subject_length,
            char ***table) noexcept;

} // namespace cfg::match
