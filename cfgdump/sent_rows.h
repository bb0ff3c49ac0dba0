// The rows a writer sends, as the route table lists them for it
// (cfgmngr/writer_rows.h): the table says which rows and in what order, the
// writer only how a row of its own format goes out.
#pragma once

#include "cfgmngr/msg_writer.h"
#include "cfgmngr/writer_rows.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace cfg::dump {

// The members of `record` whose rows `order` lists, in that order; a row
// sent in a format of its own goes to `own(row)` instead.
template <typename Own>
void send_rows(msg_writer &w, std::span<const keys::key> rows, std::span<const uint16_t> order,
               const void *record, Own &&own) noexcept
{
    for (const uint16_t i : order) {
        if (rows[i].out == keys::sent::own_format)
            own(rows[i]);
        else
            w.field(rows[i], record);
    }
}

// The one row a list writer sends: its list line, named after the row.
template <std::size_t N, std::size_t M>
consteval const keys::key &only_row(const keys::key (&rows)[N], const std::array<uint16_t, M> &order)
{
    static_assert(M == 1, "a list writer sends one row");
    return rows[order[0]];
}

// The place of a row in a writer's list, at compile time.
template <std::size_t N, std::size_t M>
consteval std::size_t place_of(const keys::key (&rows)[N], const std::array<uint16_t, M> &order,
                               std::string_view name)
{
    for (std::size_t j = 0; j < M; ++j)
        if (rows[order[j]].name == name)
            return j;
    keys::no_such_key();
    return 0;
}

} // namespace cfg::dump
