// Building of one trace line; split from cfg_trace so the layout can be
// checked with a fixed clock.
#pragma once

#include <cstdarg>
#include <cstddef>

namespace cfg::trace {

inline constexpr std::size_t time_text_size = 100;
inline constexpr std::size_t line_size = 1024;
// Prefix and message together take at most this many characters; the rest
// of the line buffer keeps room for CR, LF and the terminating NUL.
inline constexpr std::size_t text_room = 1013;

const char *tag_for(int level) noexcept;

// Formats the whole line (time text, tag, message, CR LF) into line[line_size].
// hour/minute/second come from the local time, usec from the time of day.
void build_line(char *line, int level, int hour, int minute, int second, long usec, const char *format,
                va_list args) noexcept;

} // namespace cfg::trace
