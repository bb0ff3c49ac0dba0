// What the parser must store, stated in the case files of tests/cases/ by the
// record members as the header names them, never through the key tables:
//
//     == WEB_PORT: 1..65535, else 80       a case: messages, then what is stored
//     [config.Network.network]             a message in the text form
//     WEB_PORT = 0
//     --                                   the next message, into the same image
//     => network.web_port = 80             a member and its value: a number or "text"
//     => network.updated = stamped         a time-stamp: not 0
//     => printed = "text"                  the error lines printed hold "text" ("": none)
//     => nothing else                      the image holds nothing but the values
//                                          stated (and the zeros of a fresh one)
//
// `{x*N}` stands for N times the character x; `#` starts a comment line;
// `@ports N` gives the image N ports instead of 72.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>
#include <string>
#include <type_traits>
#include <vector>

namespace {

struct member_value {
    bool found = false;
    bool is_text = false;
    long long number = 0;
    std::string text;
};

template <typename T>
requires std::is_arithmetic_v<T> member_value get(T v)
{
    return {true, false, static_cast<long long>(v), {}};
}
template <std::size_t N>
member_value get(const char (&t)[N])
{
    return {true, true, 0, std::string(t, strnlen(t, N))};
}
template <std::size_t N>
void put(char (&t)[N], const member_value &v)
{
    std::memset(t, 0, N);
    std::memcpy(t, v.text.data(), std::min(v.text.size(), N - 1));
}
template <typename A>
bool in(const A &, unsigned i)
{
    return i < std::extent_v<A>;
}

struct member {
    const char *path; // "ports[].gainr"
    unsigned indexes;
    member_value (*access)(cfg_image_t &, const unsigned *, const member_value *set);
};

const member members[] = {
#include "case_members.inc"
};

// The member named "ports[5].gainr" in `image` (set to `set` first, if given).
member_value access(cfg_image_t &image, const std::string &name, const member_value *set = nullptr)
{
    std::string path;
    std::vector<unsigned> at;
    for (std::size_t i = 0; i < name.size(); ++i) {
        path += name[i];
        if (name[i] == '[') {
            const std::size_t close = name.find(']', i);
            at.push_back(static_cast<unsigned>(std::stoul(name.substr(i + 1, close - i - 1))));
            i = close - 1;
        }
    }
    for (const member &m : members)
        if (path == m.path && at.size() == m.indexes)
            return m.access(image, at.data(), set);
    return {};
}

std::string expand(const std::string &line)
{
    static const std::regex run(R"(\{(.)\*(\d+)\})");
    std::string out;
    auto from = line.cbegin();
    for (std::sregex_iterator it(line.begin(), line.end(), run), end; it != end; ++it) {
        out.append(from, (*it)[0].first);
        out.append(std::stoul((*it)[2]), (*it)[1].str()[0]);
        from = (*it)[0].second;
    }
    return out.append(from, line.cend());
}

struct test_case {
    std::string where, title;
    uint32_t ports = CFG_MAX_PORTS;
    std::vector<std::string> messages{""};
    std::vector<std::pair<std::string, std::string>> expected; // member, value as written
};

std::vector<test_case> read_cases(const std::filesystem::path &file)
{
    std::vector<test_case> cases;
    std::ifstream in(file);
    std::string line;
    for (int n = 1; std::getline(in, line); ++n) {
        line = expand(line);
        if (line.starts_with("==")) {
            cases.emplace_back();
            cases.back().where = file.filename().string() + ":" + std::to_string(n);
            cases.back().title = line.substr(2);
        } else if (line.starts_with("#") || cases.empty()) {
            continue;
        } else if (line.starts_with("@ports ")) {
            cases.back().ports = static_cast<uint32_t>(std::stoul(line.substr(7)));
        } else if (line == "--") {
            cases.back().messages.emplace_back();
        } else if (line.starts_with("=> ")) {
            const std::size_t eq = line.find(" = ");
            cases.back().expected.emplace_back(line.substr(3, eq - 3),
                                               eq == std::string::npos ? "" : line.substr(eq + 3));
        } else {
            cases.back().messages.back() += line + "\n";
        }
    }
    return cases;
}

TEST(Cases, EachCaseStoresWhatItStates)
{
    const std::filesystem::path dir = CFGPARSER_CASES_DIR;
    std::size_t files = 0, checked = 0;
    for (const auto &entry : std::filesystem::directory_iterator(dir)) {
        if (entry.path().extension() != ".txt")
            continue;
        ++files;
        for (const test_case &c : read_cases(entry.path())) {
            SCOPED_TRACE(c.where + ":" + c.title);
            auto image = support::fresh_image(c.ports);
            const std::string printed = support::stdout_of([&] {
                for (const std::string &message : c.messages)
                    support::parse(*image, message);
            });
            EXPECT_FALSE(c.expected.empty()) << "a case without expectations";
            auto stated = support::fresh_image(c.ports);
            bool nothing_else = false;
            for (const auto &[name, want] : c.expected) {
                if (name == "nothing else" || name == "printed") {
                    nothing_else = nothing_else || name == "nothing else";
                    if (name == "printed" && want == "\"\"") {
                        EXPECT_EQ(printed, "");
                    } else if (name == "printed") {
                        EXPECT_NE(printed.find(want.substr(1, want.size() - 2)), std::string::npos)
                            << printed;
                    }
                    continue;
                }
                const member_value got = access(*image, name);
                access(*stated, name, &got);
                if (!got.found) {
                    ADD_FAILURE() << "no member " << name;
                    continue;
                }
                if (got.is_text) {
                    EXPECT_TRUE(want.size() >= 2 && want.front() == '"' && want.back() == '"')
                        << name << " is text";
                    EXPECT_EQ('"' + got.text + '"', want) << name;
                } else if (want == "stamped") {
                    EXPECT_NE(got.number, 0) << name;
                } else {
                    EXPECT_EQ(got.number, std::strtoll(want.c_str(), nullptr, 0)) << name;
                }
                ++checked;
            }
            if (nothing_else) {
                stated->limits.recalculated = image->limits.recalculated; // every message's recount stamps it
                const auto *got = reinterpret_cast<const unsigned char *>(image.get());
                const auto *want = reinterpret_cast<const unsigned char *>(stated.get());
                const auto differ = std::mismatch(got, got + sizeof(cfg_image_t), want).first - got;
                EXPECT_EQ(differ, static_cast<std::ptrdiff_t>(sizeof(cfg_image_t)))
                    << "other members changed, first at byte " << differ;
            }
        }
    }
    EXPECT_GT(files, 0u);
    EXPECT_GT(checked, 0u);
}

} // namespace
