// Path patterns, the white-space normaliser and the trace line layout.
#include "cfgdebuglog/trace_line.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::vector<std::string> match(const char *pattern, const char *subject)
{
    char **table = nullptr;
    const int32_t n = pcre_preg_match(pattern, subject, subject ? static_cast<int>(std::strlen(subject)) : 0, &table);
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
    struct row {
        const char *pattern;
        const char *subject;
        std::vector<std::string> expected;
    } rows[] = {
        {cadence, "config.VOIP.profile.profile_2.sip_cadences.sip_cadence_15",
         {"config.VOIP.profile.profile_2.sip_cadences.sip_cadence_15", "2", "15"}},
        {cadence, "config.VOIP.profile.profile_2.sip_cadences.sip_cadence_", {}},
        {sip, "config.VOIP.profile.profile_3.sip", {"config.VOIP.profile.profile_3.sip"}},
        // PCRE's "$" also matches before a final line feed; the whole match is trimmed.
        {sip, "config.VOIP.profile.profile_3.sip\n", {"config.VOIP.profile.profile_3.sip"}},
        // Substrings that trim to empty are skipped and the rest shift down.
        {"^( *)(a)$", "  a", {"a", "a"}},
        {"(", "anything", {}},    // does not compile: no match
        {nullptr, "x", {}},
        {"x", nullptr, {}},
    };
    for (const row &r : rows)
        EXPECT_EQ(match(r.pattern, r.subject), r.expected) << (r.subject ? r.subject : "(null)");
}

TEST(PathMatch, TrimAndFreeTable)
{
    struct row {
        const char *in;
        const char *out;
    } rows[] = {
        {" \ta  b\n", "a b"}, {" \t\n ", ""}, {"", ""}, {"a", "a"}, {"a\t\tb  c ", "a b c"},
    };
    for (const row &r : rows) {
        std::string buf = r.in;
        EXPECT_STREQ(trim(buf.data()), r.out) << '"' << r.in << '"';
    }
    EXPECT_EQ(trim(nullptr), nullptr);
    free_table(nullptr, 3); // nothing to free, must not fault
    char **table = static_cast<char **>(std::malloc(2 * sizeof(char *)));
    free_table(table, 0);   // count 0 frees nothing
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
    struct row {
        std::string got;
        std::string expected;
    } rows[] = {
        {line_at(1, 9, 5, 3, 42900, "x\n"), " 9:05:03.042  [CFGPARSE-ERR ]  x\r\n"},
        {line_at(3, 23, 59, 59, 999999, "a%d", 5), " 23:59:59.999  [CFGPARSE-INFO]  a5\r\n"},
        {line_at(4, 0, 0, 0, 0, "lf\n\n\n"), " 0:00:00.000  [CFGPARSE-DEBG]  lf\r\n"},
        {line_at(-1, 1, 2, 3, 4000, "m"), " 1:02:03.004  [CFGPARSE-    ]  m\r\n"},
        {line_at(2, 1, 2, 3, 4000, "m"), " 1:02:03.004  [CFGPARSE-????]  m\r\n"},
        {line_at(1, 1, 2, 3, 4000, "value [%s]", "100%"), " 1:02:03.004  [CFGPARSE-ERR ]  value [100%]\r\n"},
    };
    for (const row &r : rows)
        EXPECT_EQ(r.got, r.expected);

    const std::string long_text(3000, 'z');
    const std::string cut = line_at(1, 10, 0, 0, 0, "%s", long_text.c_str());
    EXPECT_EQ(cut.size(), cfg::trace::text_room + 2);
    EXPECT_EQ(cut.substr(cut.size() - 3), "z\r\n");
}

TEST(Trace, OnlyErrorsArePrinted)
{
    testing::internal::CaptureStdout();
    cfg_trace(4, "debug %d", 1);
    cfg_trace(3, "info");
    cfg_trace(0, "other");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");

    testing::internal::CaptureStdout();
    cfg_trace(1, "broken %s\n", "100%");
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_NE(out.find("  [CFGPARSE-ERR ]  broken 100%\r\n"), std::string::npos) << out;
    EXPECT_EQ(out.find('\n'), out.size() - 1);
}

TEST(Converters, Checkbox)
{
    struct row {
        const char *value;
        int32_t expected;
    } rows[] = {{nullptr, 0}, {"", 0},   {"0", 0},  {"n", 0},  {"Y", 0},    {"no", 0},
                {"off", 0},   {"true", 0}, {"1", 1}, {"5", 1}, {"-3", 1},   {"y", 1},
                {"yes", 1},   {"7abc", 1}, {" 2", 1}};
    for (const row &r : rows)
        EXPECT_EQ(get_checkbox(r.value), r.expected) << (r.value ? r.value : "(null)");
}

TEST(Converters, DigitAndLongRanges)
{
    struct digit_row {
        const char *value;
        int32_t min, max, def, expected;
    } digits[] = {
        {"65535", 0, 65535, 5, 65535}, {"65536", 0, 65535, 5, 5}, {"abc", 0, 10, 5, 0},
        {"abc", 1, 10, 5, 5},          {" 12", 0, 100, 5, 12},    {"12abc", 0, 100, 5, 12},
        {nullptr, 0, 10, 7, 7},        {"", 0, 10, 7, 7},         {"-5", -10, 10, 0, -5},
        {"-11", -10, 10, 3, 3},        {"+4", 0, 10, 1, 4},       {"1", 5, 10, 99, 99},
    };
    for (const digit_row &r : digits)
        EXPECT_EQ(get_digit_from_min_to_max_or_set_default(r.value, r.min, r.max, r.def), r.expected)
            << (r.value ? r.value : "(null)");

    struct long_row {
        const char *value;
        uint32_t min, max, def, expected;
    } longs[] = {
        {"4294967295", 0, 4294967295u, 9, 4294967295u},
        {"-1", 0, 4294967295u, 9, 4294967295u},
        {"4294967296", 0, 4294967295u, 9, 0},
        {"4294967296", 1, 4294967295u, 9, 9},
        {"0", 1, 4294967295u, 60, 60},
        {nullptr, 1, 10, 60, 60},
        {"3600", 1, 4294967295u, 60, 3600},
    };
    for (const long_row &r : longs)
        EXPECT_EQ(get_long_from_min_to_max_or_set_default(r.value, r.min, r.max, r.def), r.expected)
            << (r.value ? r.value : "(null)");
}

TEST(Converters, StringCutsAndClears)
{
    char field[51];
    std::memset(field, 'q', sizeof field);
    const std::string sixty(60, 'a');
    get_string(field, sizeof field, sixty.c_str());
    EXPECT_EQ(std::string(field), std::string(50, 'a'));

    get_string(field, sizeof field, "");
    for (char c : field)
        ASSERT_EQ(c, '\0');

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
