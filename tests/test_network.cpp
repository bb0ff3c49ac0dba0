// Network settings and LLDP: what the key table properties do not cover
// (scanned intervals, the language marker, empty nodes, the writers' value
// forms).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

std::string network_msg(const std::string &params) { return "[config.Network.network]\n" + params + "\n"; }

// The record after a parse compared byte for byte with the expected one,
// time-stamp aside (taken over into `want`). Records are copied with memcpy
// (copy), so padding bytes compare equal too.
void expect_same(const network_cfg_t &got, network_cfg_t &want, const std::string &what)
{
    want.updated = got.updated;
    EXPECT_EQ(std::memcmp(&got, &want, sizeof want), 0) << what;
}

void copy(network_cfg_t &to, const network_cfg_t &from) { std::memcpy(&to, &from, sizeof to); }

// The whole record is compared, so a value that lands in a second field fails.
#define WANT(body) [](network_cfg_t &e) { body; }

struct record_row { const char *params; void (*expect)(network_cfg_t &); };

const record_row language_rows[] = {
    // Every stored "LANGUAGE", an empty one too, raises the marker the
    // application watches.
    {"LANGUAGE = deutsche", WANT(std::strcpy(e.language, "deutsch"); e.language_set = 1)},
    {"LANGUAGE =", WANT(e.language_set = 1)}, {"LANGUAGE = \"\"", WANT(e.language_set = 1)},
};

TEST(NetworkKeys, LanguageRaisesItsMarker)
{
    for (const record_row &row : language_rows) {
        auto image = fresh_image();
        network_cfg_t want;
        copy(want, image->network);
        row.expect(want);
        parse(*image, network_msg(row.params));
        expect_same(image->network, want, row.params);
        EXPECT_NE(image->network.updated, 0u) << row.params;
    }
}

TEST(NetworkKeys, IntervalsAreScannedAndKeptWithoutANumber)
{
    struct step { const char *param; int32_t want; } steps[] = { // param: the text after the key
        {" = 7", 7}, {" =", 7}, {" = \"\"", 7}, {" = -5", -5}, {" = abc", -5}, {" =  12x", 12},
    };
    for (const char *key : {"CFG_INTERVAL", "FW_INTERVAL"}) {
        auto image = fresh_image();
        for (const step &s : steps) {
            parse(*image, network_msg(key + std::string(s.param)));
            const int32_t got = std::string(key) == "CFG_INTERVAL" ? image->network.cfg_interval
                                                                  : image->network.fw_interval;
            EXPECT_EQ(got, s.want) << key << s.param;
        }
    }
}

TEST(NetworkKeys, EmptyNodesAreStampedAndTheLockIsFree)
{
    auto image = fresh_image();
    parse(*image, "[config.Network.network]\n[config.Network.LLDP]\n");
    EXPECT_NE(image->network.updated, 0u);
    EXPECT_NE(image->lldp.updated, 0u);
    EXPECT_TRUE(support::lock_is_free());
}

// A negative interval is sent unsigned.
TEST(NetworkWriters, IntervalSentUnsigned)
{
    network_cfg_t n{};
    n.cfg_interval = -5;
    const support::written au = support::write([&](uint8_t **c) { return save_autoupdate(c, &n); });
    EXPECT_EQ(support::value(au.node(0), "CFG_INTERVAL"), "4294967291");
}

} // namespace
