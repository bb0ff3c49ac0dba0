// Store rules shared by the section handlers' key tables. Each takes the
// destination field first and the param's value (null: no value) second, so
// that a store function reads as one line per key:
//
//     if (p.is("tcpportmin")) return store::digit(r.tcpportmin, p.value(), 1024, 65500, 10000);
#pragma once

#include "universalConfigParser/text_numbers.h"

#include <cfgparser.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace cfg::store {

// Text field of N bytes: at most N - 1 characters; no value zero-fills it.
template <std::size_t N>
void text(char (&field)[N], const char *value) noexcept
{
    get_string(field, N, value);
}

// Flag: 1 for a non-zero number or a value starting with 'y', else 0.
template <typename Field>
void checkbox(Field &field, const char *value) noexcept
{
    field = static_cast<Field>(get_checkbox(value));
}

// Number in min..max, else (and for no value) the default.
template <typename Field>
void digit(Field &field, const char *value, int32_t min, int32_t max, int32_t def) noexcept
{
    field = static_cast<Field>(get_digit_from_min_to_max_or_set_default(value, min, max, def));
}

// Unsigned number in min..max, else (and for no value) the default.
template <typename Field>
void long_number(Field &field, const char *value, uint32_t min, uint32_t max, uint32_t def) noexcept
{
    field = static_cast<Field>(get_long_from_min_to_max_or_set_default(value, min, max, def));
}

// "%d" scan: no value stores 0; a value without a number keeps the field.
template <typename Field>
void number(Field &field, const char *value) noexcept
{
    if (numbers::absent(value)) {
        field = 0;
        return;
    }
    int32_t n = 0;
    if (numbers::scan_int(value, n))
        field = static_cast<Field>(n);
}

// One bit of a bit set, set or cleared by a checkbox value.
template <typename Bits>
void bit(Bits &bits, unsigned k, const char *value) noexcept
{
    const auto mask = static_cast<Bits>(1u << k);
    if (get_checkbox(value) != 0)
        bits = static_cast<Bits>(bits | mask);
    else
        bits = static_cast<Bits>(bits & static_cast<Bits>(~mask));
}

} // namespace cfg::store
