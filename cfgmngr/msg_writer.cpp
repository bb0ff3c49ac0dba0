#include "cfgmngr/msg_writer.h"

#include "cfgmngr/wire.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace cfg::dump {

bool refused(const char *writer, uint8_t **cursor, std::initializer_list<const void *> records,
             int line) noexcept
{
    bool missing = cursor == nullptr || *cursor == nullptr;
    for (const void *record : records)
        missing = missing || record == nullptr;
    if (missing)
        cfg_trace(CFG_TRACE_ERROR, "%s: no cursor or no record, nothing written (%d)", writer, line);
    return missing;
}

bool refused(const char *writer, uint8_t **cursor, std::initializer_list<const void *> records,
             int64_t number, int64_t count, int line) noexcept
{
    if (refused(writer, cursor, records, line))
        return true;
    if (number >= 0 && number < count)
        return false;
    cfg_trace(CFG_TRACE_ERROR, "%s: number %lld not in 0..%lld, nothing written (%d)", writer,
              static_cast<long long>(number), static_cast<long long>(count - 1), line);
    return true;
}

msg_writer::msg_writer(uint8_t **cursor, const char *writer, int line) noexcept
    : cursor_(cursor), writer_(writer)
{
    cfg_trace(CFG_TRACE_DEBUG, "%s %d\n", writer_, line);
    **cursor_ = wire::operation_write;
    ++*cursor_;
    running_ = 1;
}

void msg_writer::close_node() noexcept
{
    if (count_at_ != nullptr)
        wire::put_u16(count_at_, params_);
    count_at_ = nullptr;
    params_ = 0;
}

void msg_writer::node(const char *path) noexcept
{
    close_node();
    running_ = setUInt16ValueInMsg(cursor_, path, 0, running_);
    count_at_ = *cursor_ - 2;
}

void msg_writer::uint(const char *name, uint32_t value) noexcept
{
    running_ = setUIntValueInMsg(cursor_, name, value, running_);
    param_written();
}

void msg_writer::sint(const char *name, int32_t value) noexcept
{
    running_ = setIntValueInMsg(cursor_, name, value, running_);
    param_written();
}

void msg_writer::hex(const char *name, uint32_t value) noexcept
{
    running_ = setXValueInMsg(cursor_, name, value, running_);
    param_written();
}

void msg_writer::text(const char *name, const char *value) noexcept
{
    running_ = setStringValueInMsg(cursor_, name, value, running_);
    param_written();
}

void msg_writer::text_field(const char *name, const char *field, std::size_t size) noexcept
{
    running_ = build::string_param(cursor_, name, field, strnlen(field, size), running_);
    param_written();
}

void msg_writer::empty(const char *name) noexcept
{
    running_ = setEmptyStringValueInMsg(cursor_, name, running_);
    param_written();
}

void build_pickup_text(uint32_t groups, pickup_text &out) noexcept
{
    out[0] = '\0';
    std::size_t used = 0;
    for (int g = 0; g < 32; ++g) {
        if ((groups & (1u << g)) == 0)
            continue;
        const int n = std::snprintf(out + used, sizeof out - used, used == 0 ? "%d" : ",%d", g);
        if (n > 0)
            used = std::min(used + static_cast<std::size_t>(n), sizeof out - 1);
    }
}

void msg_writer::field(const keys::key &k, const void *record, unsigned entry) noexcept
{
    const char *name = k.wire_name().data(); // every row's names are literals
    char numbered[48];
    if (k.count != 0) { // the entry number follows the key ("prio3")
        std::snprintf(numbered, sizeof numbered, "%.*s%u", static_cast<int>(k.wire_name().size()), name,
                      entry);
        name = numbered;
    }
    switch (k.out) {
    case keys::sent::none:
    case keys::sent::own_format:
        return;
    case keys::sent::uint:
        return uint(name, static_cast<uint32_t>(keys::read_number(k, record, entry)));
    case keys::sent::sint:
        return sint(name, static_cast<int32_t>(keys::read_number(k, record, entry)));
    case keys::sent::hex:
        return hex(name, static_cast<uint32_t>(keys::read_number(k, record, entry)));
    case keys::sent::text:
        return text_field(name, keys::field_bytes(k, record, entry), k.at.size);
    case keys::sent::pickup_groups: {
        pickup_text groups;
        build_pickup_text(static_cast<uint32_t>(keys::read_number(k, record, entry)), groups);
        return text(name, groups);
    }
    }
}

uint32_t msg_writer::running() noexcept
{
    close_node();
    return running_;
}

int msg_writer::finish(int line) noexcept
{
    close_node();
    **cursor_ = 0;
    ++running_;
    cfg_trace(CFG_TRACE_DEBUG, "%s %d\n", writer_ != nullptr ? writer_ : "", line);
    return static_cast<int>(running_);
}

} // namespace cfg::dump
