#include "cfgmngr/msg_writer.h"

#include "cfgmngr/wire.h"

namespace cfg::dump {

bool refused(const char *writer, uint8_t **cursor, std::initializer_list<const void *> records, int line) noexcept
{
    bool missing = cursor == nullptr || *cursor == nullptr;
    for (const void *record : records)
        missing = missing || record == nullptr;
    if (missing)
        cfg_trace(CFG_TRACE_ERROR, "%s: no cursor or no record, nothing written (%d)", writer, line);
    return missing;
}

bool refused(const char *writer, uint8_t **cursor, std::initializer_list<const void *> records, int64_t number,
             int64_t count, int line) noexcept
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
    cfg_trace(4, "%s %d\n", writer_, line);
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

void msg_writer::empty(const char *name) noexcept
{
    running_ = setEmptyStringValueInMsg(cursor_, name, running_);
    param_written();
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
    cfg_trace(4, "%s %d\n", writer_ != nullptr ? writer_ : "", line);
    return static_cast<int>(running_);
}

} // namespace cfg::dump
