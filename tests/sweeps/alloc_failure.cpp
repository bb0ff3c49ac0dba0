// Exhausted memory during a parse: the k-th heap allocation made inside
// all_parser fails, for every k over a parse of the full sample
// configuration. Every such parse must return with the lock free and every
// allocation it made released; a failed param copy skips only that param
// and a failed path copy ends the parse normally; and nothing is damaged
// for later parses.
//
// The program replaces the C library's allocator with a counting one (so it
// is not built with the sanitizers, which bring their own).
#include "sweep_support.h"
#include "apply.h"
#include "msgtext.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

extern "C" {
void *__libc_malloc(std::size_t);
void *__libc_calloc(std::size_t, std::size_t);
void *__libc_realloc(void *, std::size_t);
void __libc_free(void *);
}

namespace {

// Counting while armed: calls made, live allocations, the call to refuse.
bool armed = false, refuse_from_then_on = false;
long calls = 0, live = 0, refuse_at = -1;

bool refuse_this_one()
{
    if (!armed)
        return false;
    ++calls;
    return calls == refuse_at || (refuse_from_then_on && calls > refuse_at);
}

// `p` as the allocator returns it; counted live when it is a new block.
void *counted(void *p, bool new_block)
{
    if (armed && p != nullptr && new_block)
        ++live;
    return p;
}

} // namespace

extern "C" void *malloc(std::size_t n)
{
    return refuse_this_one() ? nullptr : counted(__libc_malloc(n), true);
}
extern "C" void *calloc(std::size_t count, std::size_t n)
{
    return refuse_this_one() ? nullptr : counted(__libc_calloc(count, n), true);
}
extern "C" void *realloc(void *old, std::size_t n)
{
    return refuse_this_one() ? nullptr : counted(__libc_realloc(old, n), old == nullptr);
}

extern "C" void free(void *p)
{
    if (armed && p != nullptr)
        --live;
    __libc_free(p);
}

namespace {

struct parse_result {
    long calls = 0, leaked = 0;
}; // allocations asked for during the parse, still live after it

// One parse with allocation `refuse` (1-based; 0: none) refused, or with
// every allocation from that one on refused.
parse_result counted_parse(cfg_image_t &image, const uint8_t *message, long refuse,
                           bool and_all_after = false)
{
    calls = 0;
    live = 0;
    refuse_at = refuse;
    refuse_from_then_on = and_all_after;
    armed = true;
    all_parser(&image, message);
    armed = false;
    return {calls, live};
}

// Every k-th allocation when CFGPARSER_SWEEP_STRIDE=k, every one otherwise;
// CFGPARSER_SWEEP_SHARD=i/n takes the i-th of every n of those (ctest runs
// the shards side by side).
long env_number(const char *name, long otherwise)
{
    const char *text = std::getenv(name);
    return text != nullptr ? std::atol(text) : otherwise;
}

// What the library stored, as its writers send it back.
std::string configuration_text(const cfg_image_t &image)
{
    cfgmsg::message stored;
    std::string error;
    if (!cfgmsg::configuration_of(image, stored, error))
        return "writer fault: " + error;
    return cfgmsg::to_text(stored);
}

sweep::image_ptr parsed(const std::vector<uint8_t> &message)
{
    sweep::image_ptr image = sweep::fresh_image();
    all_parser(image.get(), message.data());
    return image;
}

class AllocFailure : public ::testing::Test {
protected:
    void SetUp() override
    {
        sweep::freeze_clock(true);
        // Error lines go to standard output with the local time: let stdio
        // allocate its buffer and the C library load the time zone now,
        // outside the counted parses (both are kept for the process).
        std::fputs("", stdout);
        std::fflush(stdout);
        const time_t now = 0;
        tm local{};
        localtime_r(&now, &local);
    }
    void TearDown() override { sweep::freeze_clock(false); }
};

// Must run first: the parser compiles its patterns at the first path that
// needs them. With no memory then, the node is not classified, and the
// patterns are compiled again later rather than never.
TEST_F(AllocFailure, PatternsCompiledWithoutMemory)
{
    const std::vector<uint8_t> message = cfgmsg::message_from_text(
        "[config.VOIP.profile.profile_3.sip_cadences.sip_cadence_5]\n    name = held\n");
    sweep::image_ptr image = sweep::fresh_image();
    const parse_result refused = counted_parse(*image, message.data(), 2, true); // after the path copy
    EXPECT_EQ(refused.leaked, 0);
    EXPECT_TRUE(sweep::lock_is_free());
    EXPECT_STREQ(image->profiles[3].sip.sip_cadences[5].name, "");

    all_parser(image.get(), message.data());
    EXPECT_STREQ(image->profiles[3].sip.sip_cadences[5].name, "held");
}

// Every allocation of a parse of the full sample refused in turn.
TEST_F(AllocFailure, EveryAllocationOfTheFullSample)
{
    const std::vector<uint8_t> &message = sweep::full_sample();
    sweep::image_ptr reference = parsed(message); // also compiles the patterns once
    sweep::image_ptr image = sweep::fresh_image();
    const parse_result plain = counted_parse(*image, message.data(), 0);
    ASSERT_EQ(plain.leaked, 0);
    ASSERT_GT(plain.calls, 1000) << "every param is copied";
    ASSERT_EQ(std::memcmp(image.get(), reference.get(), sizeof(cfg_image_t)), 0)
        << "counting changes nothing";

    const long every = std::max(env_number("CFGPARSER_SWEEP_STRIDE", 1), 1L);
    const char *shard_text = std::getenv("CFGPARSER_SWEEP_SHARD");
    const char *slash = shard_text != nullptr ? std::strchr(shard_text, '/') : nullptr;
    const long shards = slash != nullptr ? std::max(std::atol(slash + 1), 1L) : 1;
    const long shard = slash != nullptr ? std::atol(shard_text) % shards : 0;
    const long stride = every * shards;
    long refused = 0;
    for (long k = 1 + shard * every; k <= plain.calls; k += stride, ++refused) {
        std::memset(image.get(), 0, sizeof(cfg_image_t));
        image->max_ports = CFG_MAX_PORTS;
        const parse_result r = counted_parse(*image, message.data(), k);
        ASSERT_EQ(r.leaked, 0) << "allocation " << k << " refused";
        ASSERT_TRUE(sweep::lock_is_free()) << "allocation " << k << " refused";
        ASSERT_LE(r.calls, plain.calls) << "allocation " << k << " refused";
        // A second, unhindered parse over the same image gives the
        // reference image: nothing the failure left behind sticks.
        all_parser(image.get(), message.data());
        ASSERT_EQ(std::memcmp(image.get(), reference.get(), sizeof(cfg_image_t)), 0)
            << "allocation " << k << " refused";
    }
    std::printf("allocation-failure sweep: %ld allocations in a parse, %ld of them refused in turn\n",
                plain.calls, refused);
}

// Which param a refusal skips, on a node whose path no pattern reads: the
// path is copied first, then each param's name and then its value; a
// refused name is not followed by a copy of its value.
TEST_F(AllocFailure, RefusedCopySkipsOnlyItsParam)
{
    const std::string head = "[config.VOIP.h323]\n";
    const std::string p1 = "    enableh323 = 1\n";
    const std::string p2 = "    gatekeeperip = 10.20.0.5\n";
    const std::string p3 = "    password = gk-Secret7\n";
    const std::string nothing = "[config.VOIP.none]\n";
    struct row {
        long refuse;
        std::string stored;
    }; // stored: the message whose plain parse gives the same image
    const row rows[] = {
        {1, nothing},        // the path copy: the parse ends, nothing stored
        {2, head + p2 + p3}, // the first name
        {3, head + p2 + p3}, // the first value
        {4, head + p1 + p3}, {5, head + p1 + p3},      {6, head + p1 + p2},
        {7, head + p1 + p2}, {8, head + p1 + p2 + p3}, // past the last copy: nothing refused
    };
    const std::vector<uint8_t> message = cfgmsg::message_from_text(head + p1 + p2 + p3);
    for (const row &r : rows) {
        sweep::image_ptr image = sweep::fresh_image();
        SCOPED_TRACE(::testing::Message() << "refused " << r.refuse);
        EXPECT_EQ(counted_parse(*image, message.data(), r.refuse).leaked, 0);
        EXPECT_TRUE(sweep::lock_is_free());
        sweep::image_ptr expected = parsed(cfgmsg::message_from_text(r.stored));
        EXPECT_EQ(configuration_text(*image), configuration_text(*expected));
        EXPECT_EQ(std::memcmp(image.get(), expected.get(), sizeof(cfg_image_t)), 0);
    }
}

} // namespace
