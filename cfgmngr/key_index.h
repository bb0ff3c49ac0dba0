// The lookup index of a key table, built at compile time.
//
// A name that is a key as it stands (nearly every param) is found by its
// hash: the slot it lands in names a key, and the key's length and its
// first and last eight bytes, kept in the index, are compared with the
// name's. For names of up to 16 bytes that one comparison is the whole
// comparison of the two names; longer names compare their middle bytes too.
// Collisions go on to the next slot; each table takes the seed, of those
// tried, that leaves it the fewest.
//
// A name that only begins with a key ("prio3", "codec_0") is found in the
// keys sorted by name: the longest key the name begins with is a prefix of
// the greatest key not above the name.
#pragma once

#include "cfgmngr/key_table.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

namespace cfg::keys {

// A little-endian word of n <= 8 bytes.
constexpr uint64_t bytes_word(const char *bytes, std::size_t n) noexcept
{
    uint64_t w = 0;
    for (std::size_t i = 0; i < n; ++i)
        w |= uint64_t{static_cast<uint8_t>(bytes[i])} << (8 * i);
    return w;
}

constexpr uint64_t load_word(const char *bytes, std::size_t n) noexcept
{
    if (std::is_constant_evaluated())
        return bytes_word(bytes, n);
    uint64_t w = 0;
    __builtin_memcpy(&w, bytes, n); // little-endian targets: the same word
    return w;
}

// The first and last eight bytes of a name. Shorter names are read as two
// overlapping halves (or three single bytes), which, with the length, still
// hold every byte of the name.
struct name_words {
    uint64_t head = 0;
    uint64_t tail = 0;
};

constexpr name_words words_of(const char *name, std::size_t n) noexcept
{
    if (n >= 8)
        return {load_word(name, 8), load_word(name + n - 8, 8)};
    if (n >= 4)
        return {load_word(name, 4), load_word(name + n - 4, 4)};
    if (n == 0)
        return {};
    return {bytes_word(name, 1) | bytes_word(name + n / 2, 1) << 8 | bytes_word(name + n - 1, 1) << 16, 0};
}

constexpr uint32_t name_slot(const name_words &w, std::size_t n, uint32_t seed) noexcept
{
    const uint64_t h = (w.head + seed) * 0x9E3779B97F4A7C15ull ^ (w.tail + n) * 0xC2B2AE3D27D4EB4Full;
    return static_cast<uint32_t>(h >> 32) ^ static_cast<uint32_t>(h >> 17);
}

// A key as the exact-name lookup compares it, and the row a name equal to it
// selects.
struct name_entry {
    name_words words;
    uint16_t length = 0;
    uint16_t winner = 0;
};

// The middle bytes of two names of the same length n > 16 (the first and
// last eight are compared as words).
inline bool same_middle(const char *a, const char *b, std::size_t n) noexcept
{
    for (std::size_t i = 8; i < n - 8; i += 8)
        if (load_word(a + i, 8) != load_word(b + i, 8))
            return false;
    return true;
}

constexpr std::size_t hash_slots_for(std::size_t rows) noexcept
{
    std::size_t slots = 8;
    while (slots < rows * 2)
        slots *= 2;
    return slots;
}

// find() for a name that is no key as it stands (the sorted search).
const key *find_by_prefix(const table &t, std::string_view name) noexcept;

// find() as the parser's param loop inlines it.
inline const key *find_inline(const table &t, std::string_view name) noexcept
{
    if (t.rows.empty())
        return nullptr;
    // Most names are a key as it stands: the slot's key is compared with the
    // name by its length and words (and the bytes between them).
    const name_words words = words_of(name.data(), name.size());
    for (std::size_t slot = name_slot(words, name.size(), t.seed) & t.hash_mask; t.hashed[slot] != 0;
         slot = (slot + 1) & t.hash_mask) {
        const std::size_t p = t.hashed[slot] - 1u;
        const name_entry &e = t.entries[p];
        if (e.words.head == words.head && e.words.tail == words.tail && e.length == name.size() &&
            (name.size() <= 16 || same_middle(name.data(), t.rows[t.sorted[p]].name.data(), name.size())))
            return &t.rows[e.winner];
    }
    return find_by_prefix(t, name);
}

template <std::size_t N>
struct index_data {
    static constexpr std::size_t slots = hash_slots_for(N);
    std::array<uint16_t, N> sorted{};     // row numbers, names in ascending order
    std::array<int16_t, N> parent{};      // sorted position of the longest key that is a
                                          // proper prefix of this one (-1: none)
    std::array<name_entry, N> entries{};  // per sorted position
    std::array<uint16_t, slots> hashed{}; // sorted position + 1 of each key, open addressing
    uint32_t seed = 0;
};

// Slots the keys of a table take with a seed, and the probes past their
// first slot that they need (the cost of the seed).
template <std::size_t N>
constexpr std::size_t place_keys(const key (&rows)[N], index_data<N> &d, uint32_t seed) noexcept
{
    constexpr std::size_t mask = index_data<N>::slots - 1;
    d.hashed = {};
    std::size_t probes = 0;
    for (std::size_t p = 0; p < N; ++p) {
        const std::string_view name = rows[d.sorted[p]].name;
        std::size_t slot = name_slot(words_of(name.data(), name.size()), name.size(), seed) & mask;
        while (d.hashed[slot] != 0) {
            slot = (slot + 1) & mask;
            ++probes;
        }
        d.hashed[slot] = static_cast<uint16_t>(p + 1);
    }
    return probes;
}

template <std::size_t N>
constexpr index_data<N> make_index(const key (&rows)[N]) noexcept
{
    index_data<N> d;
    for (std::size_t i = 0; i < N; ++i)
        d.sorted[i] = static_cast<uint16_t>(i);
    // Insertion sort, stable: equal names keep their table order.
    for (std::size_t i = 1; i < N; ++i)
        for (std::size_t j = i; j > 0 && rows[d.sorted[j]].name < rows[d.sorted[j - 1]].name; --j)
            std::swap(d.sorted[j], d.sorted[j - 1]);
    for (std::size_t p = 0; p < N; ++p) {
        const std::string_view name = rows[d.sorted[p]].name;
        d.parent[p] = -1;
        std::size_t longest = 0;
        for (std::size_t q = 0; q < N; ++q) {
            const std::string_view other = rows[d.sorted[q]].name;
            if (other.size() < name.size() && name.starts_with(other) &&
                (d.parent[p] < 0 || other.size() >= longest)) {
                d.parent[p] = static_cast<int16_t>(q);
                longest = other.size();
            }
        }
        // The first row (in table order) whose key the name begins with.
        std::size_t first = N;
        for (std::size_t r = 0; r < N && first == N; ++r)
            if (name.starts_with(rows[r].name))
                first = r;
        d.entries[p] = {words_of(name.data(), name.size()), static_cast<uint16_t>(name.size()),
                        static_cast<uint16_t>(first)};
    }
    // A few seeds; the first without collisions, else the one with fewest.
    constexpr uint32_t seeds = 32;
    std::size_t best = place_keys(rows, d, 0);
    for (uint32_t seed = 1; seed < seeds && best != 0; ++seed) {
        const std::size_t probes = place_keys(rows, d, seed);
        if (probes < best) {
            best = probes;
            d.seed = seed;
        }
    }
    place_keys(rows, d, d.seed);
    return d;
}

template <std::size_t N>
constexpr table make_table(const key (&rows)[N], const index_data<N> &index) noexcept
{
    return table{rows,
                 index.sorted.data(),
                 index.parent.data(),
                 index.entries.data(),
                 index.hashed.data(),
                 index_data<N>::slots - 1,
                 index.seed};
}

} // namespace cfg::keys
