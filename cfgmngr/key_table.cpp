// Key lookup and the reading of a row's member, shared by the parser, the
// writers and the tool.
#include "cfgmngr/key_table.h"
#include "cfgmngr/key_index.h"

#include <bit>
#include <cstring>

namespace cfg::keys {

static_assert(std::endian::native == std::endian::little, "the index reads names as little-endian words");

// A name that is no key as it stands: the longest key the name begins with
// is a prefix of the greatest key not above the name. Find that key, then
// step to shorter keys it begins with until one is a prefix of the name.
const key *find_by_prefix(const table &t, std::string_view name) noexcept
{
    std::size_t lo = 0, hi = t.rows.size(); // first key above the name
    while (lo < hi) {
        const std::size_t mid = (lo + hi) / 2;
        if (t.rows[t.sorted[mid]].name <= name)
            lo = mid + 1;
        else
            hi = mid;
    }
    if (lo == 0)
        return nullptr;
    int p = static_cast<int>(lo - 1);
    const std::string_view greatest = t.rows[t.sorted[p]].name;
    std::size_t common = 0;
    while (common < greatest.size() && common < name.size() && greatest[common] == name[common])
        ++common;
    while (p >= 0 && t.rows[t.sorted[p]].name.size() > common)
        p = t.parent[p];
    return p < 0 ? nullptr : &t.rows[t.entries[p].winner];
}

const key *find(const table &t, std::string_view name) noexcept
{
    return find_inline(t, name);
}

namespace {

const uint8_t *member(const key &k, const void *record, unsigned entry) noexcept
{
    return static_cast<const uint8_t *>(record) + k.at.offset + static_cast<std::size_t>(entry) * k.stride;
}

} // namespace

int64_t read_number(const key &k, const void *record, unsigned entry) noexcept
{
    const uint8_t *at = member(k, record, entry);
    uint64_t bits = 0;
    int64_t value = 0;
    switch (k.at.size) {
    case 1: {
        uint8_t v;
        std::memcpy(&v, at, 1);
        bits = v;
        value = k.at.is_signed ? int64_t{static_cast<int8_t>(v)} : int64_t{v};
        break;
    }
    case 2: {
        uint16_t v;
        std::memcpy(&v, at, 2);
        bits = v;
        value = k.at.is_signed ? int64_t{static_cast<int16_t>(v)} : int64_t{v};
        break;
    }
    default: {
        uint32_t v;
        std::memcpy(&v, at, 4);
        bits = v;
        value = k.at.is_signed ? int64_t{static_cast<int32_t>(v)} : int64_t{v};
        break;
    }
    }
    if (k.at.width == 0)
        return value;
    return static_cast<int64_t>((bits >> k.at.bit) & ((1u << k.at.width) - 1u));
}

const char *field_bytes(const key &k, const void *record, unsigned entry) noexcept
{
    return reinterpret_cast<const char *>(member(k, record, entry));
}

} // namespace cfg::keys
