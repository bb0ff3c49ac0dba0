// Tones: every text key, its cut length, clearing, the writer and a round trip.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using support::fresh_image;
using support::parse;

struct key {
    const char *name;
    std::size_t offset, size;
};

#define TONE_KEY(field) key{#field, offsetof(tones_cfg_t, field), sizeof(tones_cfg_t::field)}

// The params in the order the writer sends them.
const std::vector<key> keys = {
    TONE_KEY(country),           TONE_KEY(dialtone_freq),       TONE_KEY(dialtone_cadence),
    TONE_KEY(busytone_freq),     TONE_KEY(busytone_cadence),    TONE_KEY(disconnect_freq),
    TONE_KEY(disconnect_cadence), TONE_KEY(ringbacktone_freq),  TONE_KEY(ringbacktone_cadence),
    TONE_KEY(congestiontone_freq), TONE_KEY(congestiontone_cadence),
};

const char *field(const tones_cfg_t &t, const key &k)
{
    return reinterpret_cast<const char *>(&t) + k.offset;
}

TEST(Tones, EachKeyStoresItsFieldCutToSize)
{
    for (const key &k : keys) {
        auto image = fresh_image();
        const std::string long_value(k.size + 5, 'a');
        parse(*image, std::string("[config.VOIP.tones]\n") + k.name + " = " + long_value + "\n");
        EXPECT_EQ(std::string(field(image->tones, k)), std::string(k.size - 1, 'a')) << k.name;
        // No other field was touched.
        std::size_t filled = 0;
        for (const key &other : keys)
            filled += std::strlen(field(image->tones, other));
        EXPECT_EQ(filled, k.size - 1) << k.name;
        EXPECT_NE(image->tones.updated, 0u);

        // No value (or the two quote characters) clears the whole field.
        for (const char *empty : {" =\n", " = \"\"\n"}) {
            std::memset(reinterpret_cast<char *>(&image->tones) + k.offset, 'x', k.size);
            parse(*image, std::string("[config.VOIP.tones]\n") + k.name + empty);
            EXPECT_EQ(std::string(field(image->tones, k), k.size), std::string(k.size, '\0')) << k.name;
        }
    }
    EXPECT_TRUE(support::lock_is_free());
}

TEST(Tones, WriterOrderAndRoundTrip)
{
    auto image = fresh_image();
    std::string text = "[config.VOIP.tones]\n";
    std::vector<std::string> names;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        names.push_back(keys[i].name);
        if (i != 4) // busytone_cadence stays empty
            text += std::string(keys[i].name) + " = " + std::to_string(400 + i) + "\n";
    }
    parse(*image, text);
    const auto out = support::write([&](uint8_t **c) { return tones_save(c, &image->tones); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().path, "config.VOIP.tones");
    EXPECT_EQ(support::names(out.node()), names);
    EXPECT_EQ(support::value(out.node(), "ringbacktone_cadence"), "408");
    EXPECT_EQ(support::value(out.node(), "busytone_cadence"), "\"\"");

    auto back = fresh_image();
    all_parser(back.get(), out.as_message().data());
    back->tones.updated = image->tones.updated;
    EXPECT_EQ(std::memcmp(&back->tones, &image->tones, sizeof image->tones), 0);
}

} // namespace
