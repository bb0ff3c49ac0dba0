// The full sample configuration cut short, with the header's body length
// set to the cut: a parse never reads past the bytes it was given, always
// leaves the lock free, and keeps what the complete nodes before the cut
// stored. Built with AddressSanitizer, a read past the end stops the
// program; each cut sits in a heap buffer of exactly its own size.
//
// Every byte of the sample is a cut point: each node is cut at each of its
// bytes as a message of its own (what the reader checks depends only on the
// node it is in, and so the sweep costs the sum of the node sizes rather
// than the square of the sample's). The whole sample is cut after every
// node and at every 251st byte; CFGPARSER_SWEEP_ALL=1 cuts it at every byte.
#include "sweep_support.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

using sweep::full_sample;

bool sweep_all()
{
    const char *all = std::getenv("CFGPARSER_SWEEP_ALL");
    return all != nullptr && std::strcmp(all, "1") == 0;
}

// Parses header and operation byte followed by `length` bytes from `from`,
// as a message whose body ends there, in a buffer of exactly that size.
void parse_cut(cfg_image_t &image, const std::vector<uint8_t> &message, std::size_t from, std::size_t length)
{
    const std::size_t body = 1 + length;
    std::unique_ptr<uint8_t[]> cut(new uint8_t[12 + body]);
    std::memcpy(cut.get(), message.data(), 13);
    std::memcpy(cut.get() + 13, message.data() + from, length);
    sweep::set_body_length_at(cut.get(), static_cast<uint32_t>(body));
    all_parser(&image, cut.get());
}

// The first `nodes` nodes as a message of their own, terminating byte
// included: what a cut after them must have stored.
sweep::image_ptr parse_first_nodes(const std::vector<uint8_t> &message,
                                   const std::vector<std::size_t> &starts, std::size_t nodes)
{
    std::vector<uint8_t> whole(message.begin(), message.begin() + static_cast<std::ptrdiff_t>(starts[nodes]));
    whole.push_back(0);
    sweep::set_body_length(whole, static_cast<uint32_t>(whole.size() - 12));
    sweep::image_ptr image = sweep::fresh_image();
    all_parser(image.get(), whole.data());
    return image;
}

class Truncation : public ::testing::Test {
protected:
    void SetUp() override { sweep::freeze_clock(true); }
    void TearDown() override { sweep::freeze_clock(false); }
};

TEST_F(Truncation, EveryCutOfEveryNode)
{
    const std::vector<uint8_t> &message = full_sample();
    const std::vector<std::size_t> starts = sweep::node_starts(message);
    sweep::image_ptr image = sweep::fresh_image();
    std::size_t cuts = 0;
    for (std::size_t node = 0; node + 1 < starts.size(); ++node) {
        const std::size_t size = starts[node + 1] - starts[node];
        for (std::size_t length = 0; length < size; ++length, ++cuts) {
            parse_cut(*image, message, starts[node], length);
            ASSERT_TRUE(sweep::lock_is_free()) << "node " << node << " cut after " << length << " bytes";
        }
    }
    std::printf("truncation sweep: %zu cuts inside %zu nodes\n", cuts, starts.size() - 1);
    EXPECT_EQ(cuts + 13 + 1, message.size()) << "every byte of every node was a cut point";
}

TEST_F(Truncation, CutsOfTheWholeSample)
{
    const std::vector<uint8_t> &message = full_sample();
    const std::vector<std::size_t> starts = sweep::node_starts(message);
    ASSERT_GT(starts.size(), 300u) << "the full sample has every section";
    const std::size_t body = message.size() - 12;
    const bool all = sweep_all();

    // A body length of 0: not even the operation byte is there.
    std::unique_ptr<uint8_t[]> header(new uint8_t[12]);
    std::memcpy(header.get(), message.data(), 12);
    sweep::set_body_length_at(header.get(), 0);
    sweep::image_ptr untouched = sweep::fresh_image();
    all_parser(untouched.get(), header.get());
    ASSERT_TRUE(sweep::lock_is_free());

    std::size_t cuts = 1;
    std::size_t complete = 0; // nodes that end at or before the cut
    for (std::size_t b = 1; b < body; ++b) {
        const std::size_t end = 12 + b;
        while (complete + 1 < starts.size() && starts[complete + 1] <= end)
            ++complete;
        const bool at_boundary = starts[complete] == end && complete > 0;
        if (!all && !at_boundary && b % 251 != 0)
            continue;
        ++cuts;
        sweep::image_ptr image = sweep::fresh_image();
        parse_cut(*image, message, 13, b - 1);
        ASSERT_TRUE(sweep::lock_is_free()) << "cut at body length " << b;
        if (at_boundary) {
            sweep::image_ptr expected = parse_first_nodes(message, starts, complete);
            ASSERT_EQ(std::memcmp(image.get(), expected.get(), sizeof(cfg_image_t)), 0)
                << "a cut after node " << complete << " stores what those nodes store";
        }
    }
    std::printf("truncation sweep: %zu cuts of the whole sample of %zu (%s), %zu node boundaries\n", cuts,
                body, all ? "every cut" : "sampled", starts.size() - 1);
    EXPECT_GT(cuts, starts.size());
}

// The image comparisons above rely on the clock standing still for the
// library's time-stamps.
TEST_F(Truncation, TimeStampsUseTheFrozenClock)
{
    const std::vector<uint8_t> &message = full_sample();
    sweep::image_ptr image = sweep::fresh_image();
    all_parser(image.get(), message.data());
    EXPECT_EQ(image->h323.updated, 1'700'000'000u);
}

} // namespace
