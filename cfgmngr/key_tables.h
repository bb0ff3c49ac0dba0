// The key tables of every keyed section with their lookup index, for the
// section handlers and the tool, and the nodes that use each table. The rows
// themselves are in keys_*.h.
#pragma once

#include "cfgmngr/key_table.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace cfg::keys {

// ---- VoIP sections
extern const table ports;
extern const table codecs;
extern const table sip_profile;
extern const table h323;
extern const table range_ports;
extern const table sip;
extern const table general;
extern const table tones;
extern const table trace;
extern const table dvo;
extern const table sip_cadence;
extern const table cadences;
extern const table regexprd;
extern const table dialplan;
extern const table groups;
extern const table limits;
extern const table modifiers;

// ---- Network and switch sections
extern const table network;
extern const table lldp;
extern const table snmp;
extern const table snmp_users;
extern const table ipsec;
extern const table tr069;
extern const table switch_vlan;
extern const table switch_qos;
extern const table switch_vtu;
extern const table hosts;
extern const table mac_filter;
extern const table routes;
extern const table firewall;

// How a node's params are stored.
enum class node_rules : uint8_t {
    keyed, // each param by its row, as the row's kind says
    group, // hunt groups: a param without a value leaves the group alone, any
           // other marks the group valid ("" empties a field)
};

// A kind of node the parser stores with a key table: its path, where a
// numbered part ("port_{0..71}") stands as `{first..last}`, and where its
// record lies in the image (entry n at image_offset + n * stride; stride is
// the record's size also where the node is not numbered). A second numbered
// part ("sip_cadence_{0..15}" of a profile) steps by inner_stride.
struct node_kind {
    std::string_view path;
    const table *keys;
    const key *rows; // the same rows, for code that needs them without the index
    uint32_t image_offset;
    uint32_t stride;
    uint16_t first; // numbered part: first..last (both 0: not numbered)
    uint16_t last;
    std::string_view writer; // the writer that sends the node, empty: none
    uint32_t inner_stride = 0;
    uint16_t inner_last = 0;
    node_rules rules = node_rules::keyed;

    std::size_t record_offset(unsigned outer, unsigned inner = 0) const noexcept
    {
        return image_offset + std::size_t{outer} * stride + std::size_t{inner} * inner_stride;
    }
};

// Every keyed node kind, in the order of the parser's classification.
std::span<const node_kind> node_kinds() noexcept;

} // namespace cfg::keys
