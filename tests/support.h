// Shared helpers of the unit tests: a fresh image, messages from the text
// form, running a writer and reading back what it wrote.
#pragma once

#include "msgtext.h"
#include "sweeps/sweep_support.h"

#include <cfgparser.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

using sweep::fresh_image;
using sweep::image_ptr;
using sweep::lock_is_free;

// Parses a message given in the text form (see tools/msgtext.h).
inline void parse(cfg_image_t &image, std::string_view text)
{
    const std::vector<uint8_t> message = cfgmsg::message_from_text(text);
    all_parser(&image, message.data());
}

// What one writer call produced.
struct written {
    int returned = 0;          // the writer's result
    std::vector<uint8_t> body; // operation byte .. terminating byte
    cfgmsg::message message;   // the body decoded

    const cfgmsg::node &node(std::size_t i = 0) const { return message.nodes.at(i); }

    // The whole message (header and body), ready for all_parser.
    std::vector<uint8_t> as_message() const
    {
        // Sized once and filled: an insert after the 12 header bytes trips a
        // false -Warray-bounds in g++ 12 when inlined into some tests.
        std::vector<uint8_t> m(12 + body.size(), 0);
        sweep::set_body_length_at(m.data(), static_cast<uint32_t>(body.size()));
        std::copy(body.begin(), body.end(), m.begin() + 12);
        return m;
    }
};

// Runs `write(&cursor)` on a large buffer and checks the frame: the result
// equals the bytes from the operation byte through the terminating 0 byte,
// which is written but not stepped over.
template <typename Writer>
written write(Writer &&writer, std::size_t room = 1u << 20)
{
    std::vector<uint8_t> buffer(room, 0xAA);
    uint8_t *cursor = buffer.data();
    written out;
    out.returned = static_cast<int>(writer(&cursor));
    const auto stepped = static_cast<std::size_t>(cursor - buffer.data());
    EXPECT_EQ(static_cast<std::size_t>(out.returned), stepped + 1) << "cursor and count disagree";
    EXPECT_EQ(buffer.at(stepped), 0) << "missing terminating byte";
    out.body.assign(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(stepped + 1));
    cfgmsg::wire_error error;
    EXPECT_TRUE(cfgmsg::decode_body(out.body, 12, out.message, error))
        << "offset " << error.offset << ": " << error.reason;
    return out;
}

inline std::vector<std::string> names(const cfgmsg::node &node)
{
    std::vector<std::string> out;
    for (const auto &p : node.params)
        out.push_back(p.name);
    return out;
}

// The value of the first param with this name; std::nullopt for no value.
// Fails the test when the name is missing.
inline std::optional<std::string> value(const cfgmsg::node &node, std::string_view name)
{
    for (const auto &p : node.params)
        if (p.name == name)
            return p.value;
    ADD_FAILURE() << "no param " << name << " in " << node.path;
    return std::nullopt;
}

// What `run` printed on standard output.
template <typename Run>
std::string stdout_of(Run &&run)
{
    testing::internal::CaptureStdout();
    run();
    return testing::internal::GetCapturedStdout();
}

using values_t = std::vector<std::optional<std::string>>;

// `values` followed by no-value params up to `n` in all.
inline values_t padded(values_t values, std::size_t n)
{
    values.resize(n);
    return values;
}

// `node` is `path` with the params prefix0, prefix1, ... holding `values`.
inline void expect_numbered(const cfgmsg::node &node, std::string_view path, const std::string &prefix,
                            const values_t &values)
{
    EXPECT_EQ(node.path, path);
    ASSERT_EQ(node.params.size(), values.size()) << path;
    for (std::size_t j = 0; j < values.size(); ++j) {
        EXPECT_EQ(node.params[j].name, prefix + std::to_string(j));
        EXPECT_EQ(node.params[j].value, values[j]) << prefix << j;
    }
}

// Parses what a writer wrote into `image`.
inline void parse_back(cfg_image_t &image, const written &out)
{
    all_parser(&image, cfgmsg::encode(out.message).data());
}

} // namespace support
