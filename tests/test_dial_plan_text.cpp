// The dial-plan text converters: rule lines into dial_plan_t, port-mask
// texts into masks and masks back into text.
#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace {

struct mask3 { uint32_t w[3]; bool operator==(const mask3 &) const = default; };

constexpr uint32_t all = 0xFFFFFFFFu;

// An entry filled with recognisable content, to see what a call changed.
dial_plan_t sentinel_entry()
{
    dial_plan_t e{};
    std::strcpy(e.field1, "old");
    std::strcpy(e.destination, "olddest");
    std::strcpy(e.protocol, "sip");
    std::strcpy(e.field6, "oldf6");
    std::tie(e.field2, e.field3, e.type, e.port_mask[0], e.field7, e.field8, e.field9, e.field11) =
        std::make_tuple(11, 12, 4u, 0x5u, 17, uint8_t{18}, 19, 111);
    return e;
}

// "+0,0,...,0,": 255 characters, the longest mask text taken.
std::string longest_mask()
{
    std::string text = "+";
    while (text.size() < 255)
        text += "0,";
    return text.substr(0, 255);
}

TEST(DialPlanText, RuleTextsTakenAndRefused)
{
    const std::string long_mask = longest_mask();

    // The entry, written out as type|field1|field2|field3|protocol|destination|
    // field6|field7|field8|field9|mask words|field11.
    auto describe = [](const dial_plan_t &e) {
        char out[512];
        std::snprintf(out, sizeof out, "%u|%s|%d|%d|%s|%s|%s|%d|%u|%d|%x,%x,%x|%d", e.type, e.field1, e.field2,
                      e.field3, e.protocol, e.destination, e.field6, e.field7, unsigned{e.field8}, e.field9,
                      e.port_mask[0], e.port_mask[1], e.port_mask[2], e.field11);
        return std::string(out);
    };
    struct row { std::string text; uint32_t max_ports; std::string entry; };
    const std::vector<row> rows = {
        {R"(55 4 0 sip "proxy" "" 0 0 0 +0-3 0)", 16, R"(2|55|4|0|sip|"proxy"||0|0|0|f,0,0|0)"},
        {R"(55 0 0 pickup "proxy" "" 0 0 0 +0-3 0)", 16, R"(6|55|0|0|pickup|"proxy"||0|0|0|f,0,0|0)"},
        {R"(9 1 2 h323 "gatekeeper" "ab" 3 300 5 -1 -7)", 8, R"(1|9|1|2|h323|"gatekeeper"|ab|3|44|5|fffffffd,ffffffff,ffffffff|-7)"},
        {R"(9 1 2 h323 gatekeeper "ab" 3 -1 5 + 6)", 8, "3|9|1|2|h323|gatekeeper|ab|3|255|5|0,0,0|6"},
        {R"(9 1 -2 sip 1234 "x" 0 256 0 +7 0)", 8, "4|9|1|-2|sip|1234|x|0|0|0|80,0,0|0"},
        {R"(9 1 2 sip-t "proxy" "x" 0 0 0 - 0)", 8, R"(5|9|1|2|sip-t|"proxy"|x|0|0|0|ffffffff,ffffffff,ffffffff|0)"},
        // field 6: the text up to the closing quote, at most 8 characters
        {R"(1 1 1 sip d "abcdefghi" 0 0 0 + 0)", 8, "4|1|1|1|sip|d|abcdefgh|0|0|0|0,0,0|0"},
        {R"(1 1 1 sip d "ab"c" 0 0 0 + 0)", 8, "4|1|1|1|sip|d|ab|0|0|0|0,0,0|0"},
        {R"(1 1 1 sip d "abc 0 0 0 + 0)", 8, "4|1|1|1|sip|d|abc|0|0|0|0,0,0|0"},
        // field 6 without quotes is kept whole
        {R"(1 1 1 sip d abc 0 0 0 + 0)", 8, "4|1|1|1|sip|d|abc|0|0|0|0,0,0|0"},
        // fields missing at the end: 0 and empty; an empty mask text clears the mask
        {"7 1 2 sip dest", 8, "4|7|1|2|sip|dest||0|0|0|0,0,0|0"}, {"7 1 2 sip", 8, "4|7|1|2|sip|||0|0|0|0,0,0|0"},
        // texts cut to their members
        {"  " + std::string(64, 'a') + " 1 2 sip " + std::string(64, 'd') + " \"\" 0 0 0 + 0", 8,
         "4|" + std::string(20, 'a') + "|1|2|sip|" + std::string(40, 'd') + "||0|0|0|0,0,0|0"},
        // an unknown protocol is stored cut to 9 and keeps the kind the entry had
        {"1 1 1 verylongprotocol d \"\" 0 0 0 + 0", 8, "4|1|1|1|verylongp|d||0|0|0|0,0,0|0"},
        // a refused mask text keeps the old mask; the rest of the rule is taken
        {"1 1 1 sip d \"\" 0 0 0 +8 0", 8, "4|1|1|1|sip|d||0|0|0|5,0,0|0"},
        {"1 1 1 sip d \"\" 0 0 0 " + long_mask + " 0", 8, "4|1|1|1|sip|d||0|0|0|1,0,0|0"},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(r.text);
        dial_plan_t e = sentinel_entry();
        ASSERT_EQ(cfgpars_dial_plan_string_to_t(&e, r.text.c_str(), r.max_ports), &e);
        EXPECT_EQ(describe(e), r.entry);
    }
}

// A refused text returns no entry and leaves the entry as it was.
TEST(DialPlanText, RuleTextsRefused)
{
    const std::string valid_mask = longest_mask();
    const std::vector<std::string> texts = {
        R"(55 0 0 sip "proxy" "" 0 0 0 +0-3 0)", // field 2 is 0 and the rule is no pickup
        "",                                      // no protocol
        "55",
        "55 x 0 sip d",                          // field 2 is no number: the reading ends there
        // fields longer than the reader accepts
        std::string(65, 'a') + " 1 2 sip d \"\" 0 0 0 + 0",
        "1 1 1 " + std::string(65, 's') + " d \"\" 0 0 0 + 0",
        "1 1 1 sip " + std::string(65, 'd') + " \"\" 0 0 0 + 0",
        "1 1 1 sip d \"abcdefghij\" 0 0 0 + 0",     // 12 characters with the quotes
        "1 1 1 sip d \"" + std::string(5000, 'q') + "\" 0 0 0 + 0",
        "1 1 1 sip d \"\" 0 0 0 " + valid_mask + "0 0", // 256 characters
        "1 1 1 sip d \"\" 0 0 0 +" + std::string(5000, '1') + " 0",
    };
    for (const std::string &text : texts) {
        dial_plan_t e = sentinel_entry();
        const dial_plan_t before = e;
        EXPECT_EQ(cfgpars_dial_plan_string_to_t(&e, text.c_str(), 8), nullptr) << text;
        EXPECT_EQ(std::memcmp(&e, &before, sizeof e), 0) << "a refused text changed the entry: " << text;
    }
    dial_plan_t e = sentinel_entry();
    EXPECT_EQ(cfgpars_dial_plan_string_to_t(&e, nullptr, 8), nullptr);
    EXPECT_EQ(cfgpars_dial_plan_string_to_t(nullptr, "1 1 1 sip d", 8), nullptr);
}

TEST(DialPlanText, MaskTexts)
{
    const mask3 untouched{{0x12345678, 0x9abcdef0, 0x0f0f0f0f}};
    struct row { const char *text; uint32_t max_ports; int result; mask3 mask; }; // mask: expected (untouched when refused)
    const std::vector<row> rows = {
        {"+", 8, 0, {{0, 0, 0}}}, {"-", 8, 0, {{all, all, all}}}, {"+1,3,", 8, 0, {{0xA, 0, 0}}},
        {"+0-3,7", 8, 0, {{0x8F, 0, 0}}}, {"-2", 8, 0, {{~4u, all, all}}},
        {"+ 1, 2", 8, 0, {{0x6, 0, 0}}}, // strtol skips white space
        {"+2-2", 8, 0, {{0x4, 0, 0}}}, {"+64-71,95", 96, 0, {{0, 0, 0x800000FF}}},
        {"+95", 200, 0, {{0, 0, 0x80000000}}},
        {"3", 8, 0, {{0, 0, 0}}}, /* no sign: cleared */ {"", 8, 0, {{0, 0, 0}}}, {"+3-1", 8, -1, untouched},
        {"+8", 8, -1, untouched}, {"+1-8", 8, -1, untouched},
        {"+96", 200, -1, untouched}, {"+0-96", 200, -1, untouched}, // never past the 96 positions
        {"+-1", 8, -1, untouched}, {"+1,,2", 8, -1, untouched}, {"+1 2", 8, -1, untouched}, {"+1-", 8, -1, untouched},
        {"+x", 8, -1, untouched}, {"+1;2", 8, -1, untouched}, {"+99999999999999999999", 8, -1, untouched},
        {"+0", 0, -1, untouched}, // no ports: no position is valid
    };
    for (const row &r : rows) {
        SCOPED_TRACE(r.text);
        mask3 m = untouched;
        EXPECT_EQ(cfgpars_string_from0_to_mask(r.text, m.w, r.max_ports), r.result);
        EXPECT_TRUE(m == r.mask) << std::hex << m.w[0] << "," << m.w[1] << "," << m.w[2];
    }
}

TEST(DialPlanText, MaskToText)
{
    struct row { mask3 mask; uint32_t type; uint32_t max_ports; const char *text; };
    const std::vector<row> rows = {
        {{{0xFF, 0, 0}}, 4, 8, "-"}, {{{0, 0, 0}}, 4, 8, "+"}, {{{0x21, 0, 0}}, 4, 8, "+0,5"},
        {{{0xBF, 0, 0}}, 4, 8, "-6"},
        {{{0x0F, 0, 0}}, 4, 8, "-4,5,6,7"}, // as many set as clear: the clear ones
        {{{0x0F, 0, 0}}, 4, 16, "+0,1,2,3"}, {{{0x0F, 0, 0}}, 4, 0, "-"}, // no positions
        {{{0xFFFFFF00, all, all}}, 4, 8, "+"}, // positions past max_ports are not read
        // pickup rules read 32 positions whatever max_ports is
        {{{0xFF, 0, 0}}, 6, 8, "+0,1,2,3,4,5,6,7"}, {{{all, 0, 0}}, 6, 72, "-"}, {{{0x7FFFFFFF, 0, 0}}, 6, 4, "-31"},
        // never more than 96 positions
        {{{all, all, all}}, 4, 200, "-"}, {{{0, 0, 0x80000000}}, 4, 96, "+95"},
    };
    for (const row &r : rows) {
        char out[CFG_MASK_TEXT_SIZE];
        std::memset(out, 'x', sizeof out);
        EXPECT_EQ(cfg_mask_to_string(r.mask.w, out, r.type, r.max_ports), out);
        EXPECT_STREQ(out, r.text) << "type " << r.type << " max_ports " << r.max_ports;
        EXPECT_EQ(out[CFG_MASK_TEXT_SIZE - 1], '\0');
    }

    // The longest text: every other position of 96.
    const mask3 alternate{{0x55555555, 0x55555555, 0x55555555}};
    char out[CFG_MASK_TEXT_SIZE];
    cfg_mask_to_string(alternate.w, out, 4, 96);
    // "-1,3,5,7,9" then ",11" to ",95": 10 + 43 * 3 characters.
    EXPECT_EQ(std::strlen(out), 139u);
    EXPECT_EQ(std::string(out).substr(0, 13), "-1,3,5,7,9,11");
}

// Mask -> text -> mask keeps every position below the port count.
TEST(DialPlanText, MaskRoundTrip)
{
    std::mt19937 engine(7);
    auto random = [&engine] { return static_cast<uint32_t>(engine()); };
    for (const uint32_t max_ports : {1u, 8u, 16u, 31u, 72u, 96u}) {
        for (int i = 0; i < 200; ++i) {
            mask3 m{{random(), random(), random()}};
            if (i % 3 == 0) { // sparse masks take the "+" form
                m.w[0] &= random() & random();
                m.w[1] = 0;
                m.w[2] &= random() & random();
            }
            char text[CFG_MASK_TEXT_SIZE];
            cfg_mask_to_string(m.w, text, 4, max_ports);
            mask3 back{{0, 0, 0}};
            ASSERT_EQ(cfgpars_string_from0_to_mask(text, back.w, max_ports), 0) << text;
            for (uint32_t k = 0; k < max_ports; ++k)
                ASSERT_EQ((m.w[k / 32] >> (k % 32)) & 1u, (back.w[k / 32] >> (k % 32)) & 1u)
                    << "position " << k << " of " << text;
        }
    }
}

} // namespace
