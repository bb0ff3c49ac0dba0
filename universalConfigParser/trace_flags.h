// Bits of trace_cfg_t::flags, shared by the trace settings handler and its
// writer.
#pragma once

#include <cstdint>

namespace cfg::trace_flag {

constexpr unsigned app_alarm = 0;
constexpr unsigned app_err = 1;
constexpr unsigned app_warn = 2;
constexpr unsigned app_info = 3;
constexpr unsigned app_dbg = 4;
constexpr unsigned vapi_enabled = 5;
constexpr unsigned run_syslog = 6;
constexpr unsigned syslog_to_file = 7;

// One bit of the set as 0 or 1.
constexpr uint32_t get(uint8_t flags, unsigned bit) noexcept { return (flags >> bit) & 1u; }

} // namespace cfg::trace_flag
