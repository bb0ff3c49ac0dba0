// The dial-plan text converters: port-mask texts into masks and masks back
// into text (rule lines: tests/cases/dial_plan_rules.txt).
#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

struct mask3 {
    uint32_t w[3];
    bool operator==(const mask3 &) const = default;
};

constexpr uint32_t all = 0xFFFFFFFFu;

TEST(DialPlanText, MaskTexts)
{
    const mask3 untouched{{0x12345678, 0x9abcdef0, 0x0f0f0f0f}};
    struct row {
        const char *text;
        uint32_t max_ports;
        int result;
        mask3 mask;
    }; // mask: expected (untouched when refused)
    const std::vector<row> rows = {
        {"+", 8, 0, {{0, 0, 0}}},
        {"-", 8, 0, {{all, all, all}}},
        {"+1,3,", 8, 0, {{0xA, 0, 0}}},
        {"+0-3,7", 8, 0, {{0x8F, 0, 0}}},
        {"-2", 8, 0, {{~4u, all, all}}},
        {"+ 1, 2", 8, 0, {{0x6, 0, 0}}}, // strtol skips white space
        {"+2-2", 8, 0, {{0x4, 0, 0}}},
        {"+64-71,95", 96, 0, {{0, 0, 0x800000FF}}},
        {"+95", 200, 0, {{0, 0, 0x80000000}}},
        {"3", 8, 0, {{0, 0, 0}}},
        /* no sign: cleared */ {"", 8, 0, {{0, 0, 0}}},
        {"+3-1", 8, -1, untouched},
        {"+8", 8, -1, untouched},
        {"+1-8", 8, -1, untouched},
        {"+96", 200, -1, untouched},
        {"+0-96", 200, -1, untouched}, // never past the 96 positions
        {"+-1", 8, -1, untouched},
        {"+1,,2", 8, -1, untouched},
        {"+1 2", 8, -1, untouched},
        {"+1-", 8, -1, untouched},
        {"+x", 8, -1, untouched},
        {"+99999999999999999999", 8, -1, untouched},
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
    struct row {
        mask3 mask;
        uint32_t type;
        uint32_t max_ports;
        const char *text;
    };
    const std::vector<row> rows = {
        {{{0xFF, 0, 0}}, 4, 8, "-"},
        {{{0, 0, 0}}, 4, 8, "+"},
        {{{0x21, 0, 0}}, 4, 8, "+0,5"},
        {{{0xBF, 0, 0}}, 4, 8, "-6"},
        {{{0x0F, 0, 0}}, 4, 8, "-4,5,6,7"}, // as many set as clear: the clear ones
        {{{0x0F, 0, 0}}, 4, 16, "+0,1,2,3"},
        {{{0x0F, 0, 0}}, 4, 0, "-"},           // no positions
        {{{0xFFFFFF00, all, all}}, 4, 8, "+"}, // positions past max_ports are not read
        // pickup rules read 32 positions whatever max_ports is
        {{{0xFF, 0, 0}}, 6, 8, "+0,1,2,3,4,5,6,7"},
        {{{all, 0, 0}}, 6, 72, "-"},
        {{{0x7FFFFFFF, 0, 0}}, 6, 4, "-31"},
        // never more than 96 positions
        {{{all, all, all}}, 4, 200, "-"},
        {{{0, 0, 0x80000000}}, 4, 96, "+95"},
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
