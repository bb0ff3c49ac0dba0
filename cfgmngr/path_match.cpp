// Path pattern helper: one regular-expression match handing back the
// trimmed substrings, the release of such a table, and the white-space
// normaliser.
#include "cfgmngr/path_match.h"
#include "cfgmngr/text_class.h"

#include <cfgparser.h>

#include <cstdlib>
#include <cstring>

namespace cfg::match {
namespace {

// libpcre needs room for three integers per substring: the whole match and
// up to 12 capture groups.
constexpr int vector_size = 40;

// Appends a copy of text to the table, keeping room for one pointer more
// than the count. On exhausted memory the text is skipped.
void append(char ***table, int32_t &count, const char *text) noexcept
{
    auto *grown =
        static_cast<char **>(std::realloc(*table, sizeof(char *) * (static_cast<std::size_t>(count) + 2)));
    if (grown == nullptr)
        return;
    *table = grown;
    char *copy = strdup(text);
    if (copy == nullptr)
        return;
    grown[count++] = copy;
}

} // namespace

int32_t run(const pcre *compiled, const pcre_extra *studied, const char *subject, int subject_length,
            char ***table) noexcept
{
    int vector[vector_size];
    int found = pcre_exec(compiled, studied, subject, subject_length, 0, 0, vector, vector_size);
    int32_t count = 0;
    for (int i = 0; i < found; ++i) {
        const char *substring = nullptr;
        if (pcre_get_substring(subject, vector, found, i, &substring) < 0)
            continue;
        char *text = trim(const_cast<char *>(substring));
        if (text[0] != '\0')
            append(table, count, text);
        pcre_free_substring(substring);
    }
    if (count == 0 && *table != nullptr) {
        // Every copy failed: hand back no table rather than an empty one.
        std::free(*table);
        *table = nullptr;
    }
    return count;
}

} // namespace cfg::match

extern "C" {

int32_t pcre_preg_match(const char *pattern, const char *subject, int subject_length,
                        char ***table) CFG_NOEXCEPT
{
    if (pattern == nullptr || subject == nullptr)
        return 0;
    const char *error = nullptr;
    int error_offset = 0;
    pcre *compiled = pcre_compile(pattern, 0, &error, &error_offset, nullptr);
    if (compiled == nullptr)
        return 0; // a pattern that does not compile matches nothing
    int32_t count = cfg::match::run(compiled, nullptr, subject, subject_length, table);
    pcre_free(compiled);
    return count;
}

void free_table(char **table, int count) CFG_NOEXCEPT
{
    if (table == nullptr || count < 1)
        return;
    for (int i = 0; i < count; ++i)
        std::free(table[i]);
    std::free(table);
}

char *trim(char *text) CFG_NOEXCEPT
{
    using cfg::text::is_space;
    if (text == nullptr)
        return text;
    const char *from = text;
    while (*from != '\0' && is_space(*from))
        ++from;
    char *to = text;
    while (*from != '\0') {
        if (is_space(*from)) {
            *to++ = ' ';
            while (*from != '\0' && is_space(*from))
                ++from;
        } else {
            *to++ = *from++;
        }
    }
    *to = '\0';
    while (to > text && is_space(to[-1]))
        *--to = '\0';
    return text;
}

} // extern "C"
