/* Linked into the shared library only, which carries no C++ runtime.
 *
 * The library is built without exceptions, yet the standard library's inline
 * bounds check of std::string_view::substr still names the helper that would
 * throw out_of_range. No call in the library can reach it (every position it
 * passes lies within its view), and a throw out of a noexcept function ended
 * the process anyway: this local definition does just that, so that the
 * helper need not come from libstdc++. */
#include <stdlib.h>

__attribute__((visibility("hidden"), noreturn, used)) void
_ZSt24__throw_out_of_range_fmtPKcz(const char *format, ...)
{
    (void)format;
    abort();
}
