// Levelled trace. Only error lines (level 1) reach standard output; every
// other level is dropped.
#include "cfgdebuglog/trace_line.h"

#include <cfgparser.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <sys/time.h>

namespace cfg::trace {

const char *tag_for(int level) noexcept
{
    switch (level) {
    case 1:
        return "[CFGPARSE-ERR ]";
    case 3:
        return "[CFGPARSE-INFO]";
    case 4:
        return "[CFGPARSE-DEBG]";
    case -1:
        return "[CFGPARSE-    ]";
    default:
        return "[CFGPARSE-????]";
    }
}

void build_line(char *line, int level, int hour, int minute, int second, long usec, const char *format,
                va_list args) noexcept
{
    char time_text[time_text_size];
    std::snprintf(time_text, sizeof time_text, "% 2d:%02d:%02d.%03d", hour, minute, second,
                  static_cast<int>(usec / 1000));

    int used = std::snprintf(line, text_room + 1, "%s  %s  ", time_text, tag_for(level));
    std::size_t len = used < 0 ? 0 : std::min<std::size_t>(static_cast<std::size_t>(used), text_room);
    if (format != nullptr && len < text_room) {
        int more = std::vsnprintf(line + len, text_room + 1 - len, format, args);
        if (more > 0)
            len = std::min<std::size_t>(len + static_cast<std::size_t>(more), text_room);
    }
    line[len] = '\0';
    while (len > 0 && line[len - 1] == '\n')
        line[--len] = '\0';
    line[len++] = '\r';
    line[len++] = '\n';
    line[len] = '\0';
}

} // namespace cfg::trace

extern "C" void cfg_trace(int level, const char *format, ...) CFG_NOEXCEPT
{
    // Lines below the error level are never printed; building them would
    // have no visible effect, so the work is skipped.
    if (level != 1)
        return;

    timeval now{};
    gettimeofday(&now, nullptr);
    std::tm local{};
    time_t seconds = now.tv_sec;
    localtime_r(&seconds, &local);

    char line[cfg::trace::line_size];
    va_list args;
    va_start(args, format);
    cfg::trace::build_line(line, level, local.tm_hour, local.tm_min, local.tm_sec,
                           static_cast<long>(now.tv_usec), format, args);
    va_end(args);
    std::fputs(line, stdout);
}
