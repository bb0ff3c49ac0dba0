// Path patterns, the white-space normaliser and the trace line layout.
#include "cfgdebuglog/trace_line.h"
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstring>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> match(const char *pattern, const char *subject)
{
    char **table = nullptr;
    const int32_t n =
        pcre_preg_match(pattern, subject, subject ? static_cast<int>(std::strlen(subject)) : 0, &table);
    std::vector<std::string> out;
    for (int32_t i = 0; i < n; ++i)
        out.emplace_back(table[i]);
    if (n == 0) {
        EXPECT_EQ(table, nullptr);
    }
    free_table(table, n);
    return out;
}

TEST(PathMatch, CapturesAndMisses)
{
    const char *cadence = "^config\\.VOIP\\.profile\\.profile_(\\d+)\\.sip_cadences\\.sip_cadence_(\\d+)$";
    const char *sip = "^config\\.VOIP\\.profile\\.profile_\\d+\\.sip$";
    const std::tuple<const char *, const char *, std::vector<std::string>> rows[] = {
        {cadence,
         "config.VOIP.profile.profile_2.sip_cadences.sip_cadence_15",
         {"config.VOIP.profile.profile_2.sip_cadences.sip_cadence_15", "2", "15"}},
        {cadence, "config.VOIP.profile.profile_2.sip_cadences.sip_cadence_", {}},
        {sip, "config.VOIP.profile.profile_3.sip", {"config.VOIP.profile.profile_3.sip"}},
        // PCRE's "$" also matches before a final line feed; the whole match is trimmed.
        {sip, "config.VOIP.profile.profile_3.sip\n", {"config.VOIP.profile.profile_3.sip"}},
        // Substrings that trim to empty are skipped and the rest shift down.
        {"^( *)(a)$", "  a", {"a", "a"}},
        {"(", "anything", {}}, // does not compile: no match
        {nullptr, "x", {}},
        {"x", nullptr, {}},
    };
    for (const auto &[pattern, subject, expected] : rows)
        EXPECT_EQ(match(pattern, subject), expected) << (subject ? subject : "(null)");
}

TEST(PathMatch, TrimAndFreeTable)
{
    for (const auto &[in, out] : std::vector<std::pair<std::string, const char *>>{
             {" \ta  b\n", "a b"}, {" \t\n ", ""}, {"", ""}, {"a", "a"}, {"a\t\tb  c ", "a b c"}}) {
        std::string buf = in;
        EXPECT_STREQ(trim(buf.data()), out) << '"' << in << '"';
    }
    EXPECT_EQ(trim(nullptr), nullptr);
    free_table(nullptr, 3); // nothing to free, must not fault
    char **table = static_cast<char **>(std::malloc(2 * sizeof(char *)));
    free_table(table, 0); // count 0 frees nothing
    std::free(table);
}

std::string line_at(int level, int h, int m, int s, long usec, const char *format, ...)
{
    char line[cfg::trace::line_size];
    va_list args;
    va_start(args, format);
    cfg::trace::build_line(line, level, h, m, s, usec, format, args);
    va_end(args);
    return line;
}

TEST(Trace, LineLayout)
{
    const std::pair<std::string, std::string> rows[] = {
        {line_at(1, 9, 5, 3, 42900, "x\n"), " 9:05:03.042  [CFGPARSE-ERR ]  x\r\n"},
        {line_at(3, 23, 59, 59, 999999, "a%d", 5), " 23:59:59.999  [CFGPARSE-INFO]  a5\r\n"},
        {line_at(4, 0, 0, 0, 0, "lf\n\n\n"), " 0:00:00.000  [CFGPARSE-DEBG]  lf\r\n"},
        {line_at(-1, 1, 2, 3, 4000, "m"), " 1:02:03.004  [CFGPARSE-    ]  m\r\n"},
        {line_at(2, 1, 2, 3, 4000, "m"), " 1:02:03.004  [CFGPARSE-????]  m\r\n"},
        {line_at(1, 1, 2, 3, 4000, "value [%s]", "100%"), " 1:02:03.004  [CFGPARSE-ERR ]  value [100%]\r\n"},
    };
    for (const auto &[got, expected] : rows)
        EXPECT_EQ(got, expected);

    const std::string long_text(3000, 'z');
    const std::string cut = line_at(1, 10, 0, 0, 0, "%s", long_text.c_str());
    EXPECT_EQ(cut.size(), cfg::trace::text_room + 2);
    EXPECT_EQ(cut.substr(cut.size() - 3), "z\r\n");
}

TEST(Trace, OnlyErrorsArePrinted)
{
    EXPECT_EQ(support::stdout_of([] {
                  cfg_trace(4, "debug %d", 1);
                  cfg_trace(3, "info");
                  cfg_trace(0, "other");
              }),
              "");
    const std::string out = support::stdout_of([] { cfg_trace(1, "broken %s\n", "100%"); });
    EXPECT_NE(out.find("  [CFGPARSE-ERR ]  broken 100%\r\n"), std::string::npos) << out;
    EXPECT_EQ(out.find('\n'), out.size() - 1);
}

TEST(Converters, Checkbox)
{
    for (const auto &[value, expected] : std::vector<std::pair<const char *, int32_t>>{
             {nullptr, 0}, {"", 0}, {"0", 0}, {"n", 0}, {"1", 1}, {"5", 1}, {"-3", 1}, {"y", 1}})
        EXPECT_EQ(get_checkbox(value), expected) << (value ? value : "(null)");
}

TEST(Converters, StringKeepsTheBytesPastTheText)
{
    // Cuts and clearing are checked over every key table (test_key_tables).
    char field[51];
    // Only the text and its terminator are written; the rest keeps its bytes.
    std::memset(field, 'q', sizeof field);
    get_string(field, sizeof field, "ab");
    EXPECT_STREQ(field, "ab");
    EXPECT_EQ(field[3], 'q');
    EXPECT_EQ(field[50], '\0');

    get_string(field, sizeof field, nullptr);
    EXPECT_EQ(field[3], '\0');
}

} // namespace
