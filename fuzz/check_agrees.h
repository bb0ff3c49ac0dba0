// The property of `cfgmsg check`: its judgement agrees with the library.
// A message is judged by check and, apart, parsed by all_parser and written
// back by every section writer; every param that check does not name is
// sent by the writers, where its route says, with the value it was sent
// with. Used by the fuzz target check_agrees and the unit test
// CheckAgrees.*.
//
// What check does not judge, and so the property leaves out:
// - params after a node that ends the message, and all of a message that
//   does not decode (check names where it stopped);
// - rows that no writer of the node kind sends, and list entries with
//   formats of their own (check stores them but does not compare them);
// - a param that a later one of the message sets again;
// - hunt groups and VTU rules, whose writers send only the records in use
//   (a group is compacted to the front, a rule without its vid is blanked).
#pragma once

#include "tools/apply.h"
#include "tools/check.h"
#include "tools/route.h"
#include "tools/schema.h"

#include <cfgparser.h>

#include <algorithm>
#include <map>
#include <span>
#include <string>
#include <tuple>
#include <vector>

namespace check_agrees {

// Empty when the property holds; else the first param that disagrees.
inline std::string check(const std::vector<uint8_t> &bytes, uint32_t max_ports)
{
    cfgmsg::message msg;
    cfgmsg::wire_error err;
    if (!cfgmsg::decode(std::span<const uint8_t>(bytes), msg, err))
        return {};
    cfgmsg::image_ptr judged = cfgmsg::fresh_image(max_ports);
    std::vector<cfgmsg::finding> findings;
    cfgmsg::check_message("input", msg, *judged, findings);

    cfgmsg::image_ptr image = cfgmsg::fresh_image(max_ports);
    all_parser(image.get(), bytes.data());
    cfgmsg::message sent;
    std::string error;
    if (!cfgmsg::configuration_of(*image, sent, error))
        return "writers: " + error;

    // The last param of the message for each member it sets.
    struct at {
        std::string path;
        const cfg::keys::key *row;
        int32_t entry;
        bool operator<(const at &o) const
        {
            return std::tie(path, row, entry) < std::tie(o.path, o.row, o.entry);
        }
    };
    std::map<at, std::pair<const cfgmsg::node *, const cfgmsg::param *>> last;
    for (const cfgmsg::node &nd : msg.nodes) {
        const cfgmsg::routed where = cfgmsg::route_path(nd.path, max_ports);
        if (where.route != nullptr && where.fate == cfgmsg::routed::stops_message)
            break;
        if (where.route == nullptr || where.fate != cfgmsg::routed::stored || where.beyond_max_ports)
            continue;
        const cfg::routes::route &r = *where.route;
        if (r.kind.rules == cfg::keys::node_rules::group || r.kind.keys == &cfg::keys::switch_vtu)
            continue;
        for (const cfgmsg::param &p : nd.params) {
            int32_t entry = 0;
            const cfg::keys::key *k = cfg::routes::row_of(r, p.name.c_str(), entry);
            if (k != nullptr && entry >= 0)
                last[{where.stored_path, k, entry}] = {&nd, &p};
        }
    }
    for (const auto &[place, given] : last) {
        const cfgmsg::node *nd = given.first;
        const cfgmsg::param *p = given.second;
        const cfg::keys::key &k = *place.row;
        const bool compared =
            k.special == cfg::keys::rule::none || k.special == cfg::keys::rule::pickup_groups ||
            k.special == cfg::keys::rule::text_or_default || k.special == cfg::keys::rule::number_or_keep ||
            k.special == cfg::keys::rule::text_and_flag || k.special == cfg::keys::rule::packet_time ||
            k.special == cfg::keys::rule::g726_packet_time || k.special == cfg::keys::rule::t38_datagram;
        const cfg::routes::route &r = *cfgmsg::route_path(nd->path, max_ports).route;
        const auto row = static_cast<uint16_t>(&k - r.kind.keys->rows.data());
        bool by_a_writer = false;
        for (const cfg::routes::writer &w : r.writers)
            by_a_writer = by_a_writer || std::find(w.rows.begin(), w.rows.end(), row) != w.rows.end();
        if (!compared || !by_a_writer)
            continue;
        const bool named = std::any_of(findings.begin(), findings.end(), [&](const cfgmsg::finding &f) {
            return f.path == nd->path && (f.param == p->name || f.param.empty());
        });
        if (named)
            continue;
        const std::string name = k.count == 0 ? std::string(k.wire_name()) : p->name;
        std::optional<std::optional<std::string>> out;
        for (const cfgmsg::node &o : sent.nodes)
            if (o.path == place.path)
                for (const cfgmsg::param &q : o.params)
                    if (q.name == name && !out)
                        out = q.value;
        const std::string given_value = p->value.value_or("");
        if (!out)
            return place.path + " " + name + ": judged stored as sent, but not sent";
        const std::string sent_value = out->value_or("");
        const bool empty = given_value.empty() || given_value == "\"\"";
        if (sent_value == given_value ||
            (empty && (sent_value == "0" || sent_value == "\"\"" || sent_value.empty())))
            continue;
        return place.path + " " + name + ": judged stored as sent \"" + given_value + "\", sent \"" +
               sent_value + "\"";
    }
    return {};
}

} // namespace check_agrees
