// The entry point for received configuration messages: walks the nodes,
// routes each path to its section handler (cfgmngr/routes.h); a message that
// ends normally is followed by the recount of every list.
#include "cfgmngr/routes.h"
#include "cfgmngr/wire.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/msg_reader.h"

#include <cfgparser.h>

#include <cstdlib>
#include <cstring>

namespace cfg::parse {
namespace {

void report_malformed(int line) noexcept
{
    cfg_trace(CFG_TRACE_ERROR, "Incorrect format of message, bytesToRead > currentLenOfMessage (%d)", line);
}

} // namespace
} // namespace cfg::parse

extern "C" void all_parser(cfg_image_t *image, const uint8_t *message) CFG_NOEXCEPT
{
    using namespace cfg::parse;
    namespace wire = cfg::wire;

    cfg_trace(CFG_TRACE_DEBUG, "%s: called", "all_parser");
    if (image == nullptr || message == nullptr)
        return;

    const uint32_t body_length = wire::get_u32(message + 4);
    // A body length of 0 leaves no room even for the operation byte: the
    // message holds no node and ends at once, as a body length of 1 does.
    uint32_t remaining = body_length == 0 ? 0 : body_length - 1;
    const uint8_t *cursor = message + wire::nodes_offset;
    cfg_trace(CFG_TRACE_INFO, "%s: started", "all_parser");
    cfg_trace(CFG_TRACE_INFO, "Current LEN msg %d", static_cast<int>(remaining));

    for (;;) {
        if (remaining < 2) {
            cfg_trace(CFG_TRACE_INFO, "%s: !buff || !buff[0] - it's end of msg", "all_parser");
            break;
        }
        const uint16_t path_length = wire::get_u16(cursor);
        if (static_cast<uint32_t>(path_length) + 4 > remaining) {
            report_malformed(__LINE__);
            return;
        }
        remaining -= static_cast<uint32_t>(path_length) + 2;
        cursor += 2;
        char *path = cfg::GetToken(cursor, path_length);
        cursor += path_length;
        const uint16_t param_count = wire::get_u16(cursor);
        remaining -= 2;
        cursor += 2;
        if (path == nullptr)
            break; // no memory for the path: the message ends here

        cfg_trace(CFG_TRACE_INFO, "%s: :-) :-)) :-))) nodePath = [%s] countParams = %d", "all_parser", path,
                  static_cast<int>(param_count));
        node n;
        n.path = path;
        n.param_count = param_count;
        n.cursor = &cursor;
        n.remaining = &remaining;
        cfg::routes::match_patterns(path, n.matches, n.substrings);
        n.route = cfg::routes::route_of(path, n.matches);
        const node_end end = n.route != nullptr ? n.route->handle(*image, n) : skip_unknown(n);
        cfg::routes::free_matches(n.matches, n.substrings);
        std::free(path);
        if (end == node_end::stop)
            return;
    }

    recalculate_start_and_current_after_timeout(image);
    cfg_trace(CFG_TRACE_DEBUG, "%s: END OF PARSING", "all_parser");
}
