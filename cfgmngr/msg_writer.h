// The one helper every section writer uses: it writes the frame (operation
// byte, terminating 0 byte), node heads and typed params through the
// builders, keeps the running byte count and fills in each node's param
// count from the params actually written, so a node head can never announce
// more (or fewer) params than follow.
//
// A writer then reads like its table:
//
//     msg_writer w(cursor, "h323_save");
//     w.node("config.VOIP.h323");
//     w.uint("enableh323", h->enableh323);
//     w.text("password", h->password);
//     return w.finish();
#pragma once

#include "cfgmngr/key_table.h"

#include <cfgparser.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <span>

namespace cfg::build {

// setStringValueInMsg for a value of known length (which need not end in NUL).
uint32_t string_param(uint8_t **cursor, const char *name, const char *value, std::size_t length,
                      uint32_t running) noexcept;

} // namespace cfg::build

namespace cfg::dump {

// The pickup groups as text: the set bits 0..31 in ascending order,
// separated by single commas ("1,5,31"); no group gives an empty text. All
// 32 groups take 85 characters.
using pickup_text = char[86];
void build_pickup_text(uint32_t groups, pickup_text &out) noexcept;

// The check every exported writer makes before anything else: a cursor that
// points at a write position, every record it reads, and (for writers of
// one numbered entry) a number below `count`. When one is missing or out of
// range it reports at the error level, naming the writer and the caller's
// line, and returns true: the writer then writes nothing and returns 0 (a
// writer handing on a running count returns that count unchanged).
bool refused(const char *writer, uint8_t **cursor, std::initializer_list<const void *> records,
             int line = __builtin_LINE()) noexcept;
bool refused(const char *writer, uint8_t **cursor, std::initializer_list<const void *> records,
             int64_t number, int64_t count, int line = __builtin_LINE()) noexcept;

class msg_writer {
public:
    // Starts a frame: traces the writer's entry and writes the operation byte.
    // `line` is the caller's source line, for the trace (__builtin_LINE works
    // on every compiler we build with, std::source_location not yet).
    msg_writer(uint8_t **cursor, const char *writer, int line = __builtin_LINE()) noexcept;

    // Continues params inside a node that the caller has opened (for writers
    // that add params to another writer's node and return the running count).
    static msg_writer continuing(uint8_t **cursor, uint32_t running) noexcept
    {
        return msg_writer(cursor, running);
    }

    void node(const char *path) noexcept;
    void uint(const char *name, uint32_t value) noexcept;
    void sint(const char *name, int32_t value) noexcept;
    void hex(const char *name, uint32_t value) noexcept;
    void text(const char *name, const char *value) noexcept;
    void empty(const char *name) noexcept;

    // Text fields of the records: never read past the field, even when the
    // application left it without a terminating NUL (then all N bytes are
    // sent). One out-of-line body serves every field size.
    template <std::size_t N>
    void text(const char *name, const char (&field)[N]) noexcept
    {
        text_field(name, field, N);
    }
    void text_field(const char *name, const char *field, std::size_t size) noexcept;

    // A keyed member of `record`, sent under the row's name as the row says
    // (entry `entry` of a numbered key, sent as the key followed by the number).
    void field(const keys::key &k, const void *record, unsigned entry = 0) noexcept;

    // The members of `record` whose rows `order` lists, in that order.
    template <std::size_t N, std::size_t M>
    void fields(const keys::key (&rows)[N], const std::array<uint16_t, M> &order, const void *record) noexcept
    {
        for (const uint16_t i : order)
            field(rows[i], record);
    }

    // Ends the frame: terminating 0 byte (counted, cursor not stepped), exit
    // trace; returns the bytes written.
    int finish(int line = __builtin_LINE()) noexcept;

    // Closes the open node (fills in its count) and returns the running count,
    // for writers that hand the count on instead of ending a frame.
    uint32_t running() noexcept;

    uint32_t params_in_node() const noexcept { return params_; }

private:
    msg_writer(uint8_t **cursor, uint32_t running) noexcept : cursor_(cursor), running_(running) {}
    void close_node() noexcept;
    void param_written() noexcept { ++params_; }

    uint8_t **cursor_;
    const char *writer_ = nullptr;
    uint32_t running_ = 0;
    uint8_t *count_at_ = nullptr; // param count bytes of the open node
    uint32_t params_ = 0;
};

} // namespace cfg::dump
