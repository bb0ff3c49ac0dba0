// Which record of the image a node path reaches, found as all_parser finds
// it: the library's patterns, route table and path-number reading.
#pragma once

#include "cfgmngr/routes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cfgmsg {

struct routed {
    const cfg::routes::route *route = nullptr; // nullptr: no handler knows the path
    enum { stored, skipped, stops_message } fate = skipped;
    unsigned numbers[2] = {};      // the record's numbers, counted from each part's first
    std::string stored_path;       // the path of that record as the writers send it
    std::size_t record = 0;        // offset of the record in the image
    bool beyond_max_ports = false; // stored, but no writer sends it with this max_ports
};

routed route_path(const std::string &path, uint32_t max_ports);

// The path of a route's record: its shown path with the numbers put in.
std::string path_of_record(const cfg::routes::route &r, const unsigned numbers[2]);

} // namespace cfgmsg

namespace cfgmsg {

// "PATH.PARAM" split where the library would take it: the longest PATH
// that is a node path of its own (the path of the record it reaches) and
// whose route has a row for PARAM, so that a param whose name holds a dot
// is found ("config.Switch.vtu.vtu0.vid": node config.Switch.vtu, param
// vtu0.vid). Otherwise at the last dot. False when there is no dot to split at.
bool split_by_route(std::string_view ref, std::string &path, std::string &name);

// What the library does with a node path, in words: nullopt when it stores
// the node under this very path; else "unknown node: skipped", "stored as
// ...", and the like.
std::optional<std::string> path_warning(const std::string &path);

} // namespace cfgmsg
