// The decimal conversions against the C library they stand for: strtoll for
// the value, the end and errno; "%d" for whether a number is there at all.
// (The unsigned readers are compared in the fuzz target numbers.)
#include "c_library_reading.h"
#include "universalConfigParser/text_numbers.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace cfg::numbers;

void expect_as_c_library(const std::string &s)
{
    const char *text = s.c_str();
    const fuzz::c_reading c = fuzz::c_library_reading(text);
    errno = 0;
    EXPECT_EQ(parse_int64(text), c.value) << '"' << s << '"';
    EXPECT_EQ(errno, c.error) << '"' << s << '"';
    EXPECT_EQ(parse_int(text), static_cast<int32_t>(c.value)) << '"' << s << '"';
    int32_t i = -7;
    int64_t entry = -7;
    EXPECT_EQ(scan_int(text, i), c.number) << '"' << s << '"';
    errno = 0; // the entry reader leaves errno alone
    EXPECT_EQ(scan_entry(text, entry), c.number ? c.end : nullptr) << '"' << s << '"';
    EXPECT_EQ(errno, 0) << '"' << s << '"';
    EXPECT_EQ(i, c.number ? static_cast<int32_t>(c.value) : -7) << '"' << s << '"';
    EXPECT_EQ(entry, c.number ? c.value : -7) << '"' << s << '"';
}

TEST(NumberConversions, AgreeWithTheCLibrary)
{
    const std::vector<std::string> texts = {"0",
                                            "-0",
                                            "+7",
                                            "42",
                                            "-1",
                                            "007",
                                            "12abc",
                                            "0x1A",
                                            "5\n",
                                            "1 2",
                                            "-2147483648",
                                            "2147483648",
                                            "4294967295",
                                            "4294967296",
                                            "999999999999999999",
                                            "-999999999999999999",
                                            "1000000000000000000",
                                            "9223372036854775807",
                                            "9223372036854775808",
                                            "-9223372036854775809",
                                            "99999999999999999999999",
                                            "00000000000000000000001",
                                            " 12",
                                            "\t-3",
                                            "\v5",
                                            "\f+6",
                                            "+-5",
                                            "-+5",
                                            "--5",
                                            "-",
                                            "+",
                                            "",
                                            "abc",
                                            " ",
                                            "\xd9\xa3",
                                            "\xa0"
                                            "1",
                                            "1\xff"};
    for (const std::string &t : texts)
        expect_as_c_library(t);

    // Generated: texts of digits, signs, blanks and other bytes, and numbers
    // around the 18- and 19-digit edges.
    std::mt19937_64 random(24);
    const std::string alphabet = "0123456789000999+- \t\nx.,\xa0";
    for (int run = 0; run < 20000; ++run) {
        std::string t(random() % 24, ' ');
        for (char &c : t)
            c = alphabet[random() % alphabet.size()];
        expect_as_c_library(t);
        const auto n = static_cast<int64_t>(random() >> (random() % 64));
        expect_as_c_library(std::string(run % 2 ? "-" : "") + std::to_string(n) + (run % 3 ? "" : "7"));
    }
}

} // namespace
