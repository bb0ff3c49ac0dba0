// The key tables of every keyed section with their lookup index, for the
// section handlers and the tool, and the nodes that use each table. The rows
// themselves are in keys_*.h.
#pragma once

#include "cfgmngr/key_table.h"

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

// A kind of node the parser stores with a key table: its path, where a
// numbered part ("port_{0..71}") stands as `{first..last}`, and where its
// record lies in the image (entry n at image_offset + n * stride; stride is
// the record's size also where the node is not numbered).
struct node_kind {
    std::string_view path;
    const table *keys;
    const key *rows; // the same rows, for code that needs them without the index
    uint32_t image_offset;
    uint32_t stride;
    uint16_t first; // numbered part: first..last (both 0: not numbered)
    uint16_t last;
    std::string_view writer; // the writer that sends the node, empty: none
};

// Every keyed node kind, in the order of the parser's classification.
std::span<const node_kind> node_kinds() noexcept;

} // namespace cfg::keys
