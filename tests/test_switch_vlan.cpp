// Switch VLANs: the port flag string (what the handler stores:
// tests/cases/switch.txt; the writer's names, order and values are those of
// the samples' apply reference).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

TEST(SwitchVlan, PortFlagStrings)
{
    const struct {
        const char *text;
        uint32_t mask;
    } rows[] = {
        {"1 0 1 0 0 1", 0x25},  {"1,1,1,1,1,1", 0x3F},   {"1 10 0 0 0 0", 0x1},
        {"2 1 1 1 1 1", 0x3E},  {"1 1 1 1 1 1 1", 0x3F}, {"", 0},
        {"111111", 0},          // 111111, 1111, 11; positions 6 to 10 lie past the end
        {"-1 1 1 1 1 1", 0x3E}, // position 2 reads " 1"
        {"1 a 1 b 1 c", 0x15},  {"1 4294967297 1", 0x1}, // low 32 bits of the big number are 1: still not a
                                                         // flag
    };
    for (const auto &r : rows)
        EXPECT_EQ(eth_port_string_to_output(r.text), r.mask) << '"' << r.text << '"';
    EXPECT_EQ(eth_port_string_to_output(nullptr), 0u);
}

} // namespace
