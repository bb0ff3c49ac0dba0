// Builders and the param reader.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>
#include <tuple>
#include <utility>

namespace {

using bytes = std::vector<uint8_t>;

bytes with_text(std::initializer_list<uint8_t> head, std::string_view text,
                std::initializer_list<uint8_t> tail = {})
{
    bytes out(head);
    out.insert(out.end(), text.begin(), text.end());
    out.insert(out.end(), tail);
    return out;
}

struct built {
    bytes data;
    uint32_t returned;
};

template <typename Build>
built run(Build build, uint32_t running = 0)
{
    bytes buf(256, 0xEE);
    uint8_t *cursor = buf.data();
    const uint32_t result = build(&cursor, running);
    buf.resize(static_cast<std::size_t>(cursor - buf.data()));
    return {buf, result};
}

// Runs one builder call on `c` with the running count `r`.
#define BUILD(call) run([](uint8_t **c, uint32_t r) { return call; })

TEST(Builders, WriteExactBytesAndCounts)
{
    struct row {
        const char *what;
        built got;
        bytes expected;
    };
    const row rows[] = {
        {"node head", BUILD(setUInt16ValueInMsg(c, "config.VOIP.h323", 14, r)),
         with_text({0x10, 0x00}, "config.VOIP.h323", {0x0E, 0x00})},
        {"param count keeps low 16 bits", BUILD(setUInt16ValueInMsg(c, "p", 0x10003, r)),
         with_text({0x01, 0x00}, "p", {0x03, 0x00})},
        {"hex 255", BUILD(setXValueInMsg(c, "m", 255, r)), with_text({0x01, 0x00, 'm', 0x04, 0x00}, "0xff")},
        {"hex 0", BUILD(setXValueInMsg(c, "m", 0, r)), with_text({0x01, 0x00, 'm', 0x03, 0x00}, "0x0")},
        {"signed -1", BUILD(setIntValueInMsg(c, "v", -1, r)), with_text({0x01, 0x00, 'v', 0x02, 0x00}, "-1")},
        {"unsigned max", BUILD(setUIntValueInMsg(c, "v", 4294967295u, r)),
         with_text({0x01, 0x00, 'v', 0x0A, 0x00}, "4294967295")},
        {"empty string is two quotes", BUILD(setStringValueInMsg(c, "s", "", r)),
         with_text({0x01, 0x00, 's', 0x02, 0x00}, "\"\"")},
        {"string", BUILD(setStringValueInMsg(c, "s", "abc", r)),
         with_text({0x01, 0x00, 's', 0x03, 0x00}, "abc")},
        {"empty builder writes length 0", BUILD(setEmptyStringValueInMsg(c, "s", r)),
         bytes{0x01, 0x00, 's', 0x00, 0x00}},
    };
    for (const row &r : rows) {
        EXPECT_EQ(r.got.data, r.expected) << r.what;
        EXPECT_EQ(r.got.returned, r.expected.size()) << r.what;
    }
    // The running count is chained from the caller's value.
    EXPECT_EQ(run([](uint8_t **c, uint32_t r) { return setUIntValueInMsg(c, "v", 7, r); }, 100).returned,
              106u);
}

struct read_result {
    int result;
    std::string name;
    bool has_value;
    std::string value;
    uint32_t remaining;
    std::ptrdiff_t consumed;
};

read_result read_one(const bytes &data, uint32_t remaining, int quotes_mean_empty)
{
    const uint8_t *cursor = data.data();
    char *name = nullptr;
    char *value = nullptr;
    read_result r{};
    r.result = find_params(&cursor, &remaining, &name, &value, quotes_mean_empty);
    r.name = name != nullptr ? name : "";
    r.has_value = value != nullptr;
    r.value = value != nullptr ? value : "";
    r.remaining = remaining;
    r.consumed = cursor - data.data();
    free_params(&name, &value);
    EXPECT_EQ(name, nullptr);
    EXPECT_EQ(value, nullptr);
    return r;
}

TEST(FindParams, ValuesAndQuotes)
{
    const bytes quotes = with_text({0x01, 0x00, 'a', 0x02, 0x00}, "\"\"");
    const bytes nothing = {0x01, 0x00, 'a', 0x00, 0x00};
    const bytes quoted_letter = with_text({0x01, 0x00, 'a', 0x03, 0x00}, "\"x\"");
    struct row {
        const bytes *data;
        int flag;
        bool has_value;
        std::string value;
    } rows[] = {{&quotes, 1, false, ""},
                {&quotes, 0, true, "\"\""},
                {&nothing, 1, false, ""},
                {&nothing, 0, false, ""},
                {&quoted_letter, 1, true, "\"x\""}};
    for (const row &r : rows) {
        const read_result got = read_one(*r.data, static_cast<uint32_t>(r.data->size()) + 5, r.flag);
        EXPECT_EQ(std::tie(got.result, got.name, got.has_value, got.value, got.remaining, got.consumed),
                  std::make_tuple(0, std::string("a"), r.has_value, r.value, 5u,
                                  static_cast<std::ptrdiff_t>(r.data->size())))
            << r.value;
    }
}

TEST(FindParams, LengthsMustFitInWhatRemains)
{
    const bytes param = with_text({0x02, 0x00, 'n', 'm', 0x03, 0x00}, "val");
    const auto size = static_cast<uint32_t>(param.size());
    // Exactly to the end: accepted, 0 left; one byte short in the value; the value
    // length field, the name and the name length do not fit: refused.
    for (const uint32_t remaining : {size, size - 1, 5u, 3u, 1u, 0u}) {
        read_result got;
        const std::string printed = support::stdout_of([&] { got = read_one(param, remaining, 1); });
        EXPECT_EQ(got.result, remaining == size ? 0 : -1) << "remaining " << remaining;
        if (remaining == size) {
            EXPECT_EQ(got.remaining, 0u);
            EXPECT_TRUE(printed.empty());
        } else {
            EXPECT_NE(printed.find("[CFGPARSE-ERR ]  Incorrect format of message, bytesToRead > "
                                   "currentLenOfMessage ("),
                      std::string::npos)
                << printed;
        }
    }
}

// A NUL byte inside a param name ends the name there: "phone\0x" is the
// key phone, "ph\0one" is no key.
TEST(FindParams, NulByteEndsTheName)
{
    for (const auto &[name, stored] :
         {std::pair{std::string("phone\0x", 7), "7"}, {std::string("ph\0one", 6), ""}}) {
        cfgmsg::message m;
        m.nodes.push_back({"config.VOIP.ports.port_1", {{name, std::string("7")}}});
        auto image = support::fresh_image();
        all_parser(image.get(), cfgmsg::encode(m).data());
        EXPECT_STREQ(image->ports[1].phone, stored) << name.size();
    }
}

} // namespace
