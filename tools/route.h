// Which record of the image a node path reaches, found as all_parser finds
// it: the library's patterns, route table and path-number reading.
#pragma once

#include "cfgmngr/routes.h"

#include <cstdint>
#include <string>

namespace cfgmsg {

struct routed {
    const cfg::routes::route *route = nullptr; // nullptr: no handler knows the path
    enum { stored, skipped, stops_message } fate = skipped;
    unsigned numbers[2] = {};  // the record's numbers, counted from each part's first
    std::string stored_path;   // the path of that record as the writers send it
    std::size_t record = 0;    // offset of the record in the image
    bool beyond_max_ports = false; // stored, but no writer sends it with this max_ports
};

routed route_path(const std::string &path, uint32_t max_ports);

// The path of a route's record: its shown path with the numbers put in.
std::string path_of_record(const cfg::routes::route &r, const unsigned numbers[2]);

}  // namespace cfgmsg
