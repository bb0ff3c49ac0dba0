#include "apply.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <span>
#include <utility>

namespace cfgmsg {

void image_free::operator()(cfg_image_t *image) const noexcept
{
    std::free(image);
}

image_ptr fresh_image(std::uint32_t max_ports)
{
    // calloc: the image is 600 kB of plain records, zero-filled like the
    // application's static one.
    image_ptr image(static_cast<cfg_image_t *>(std::calloc(1, sizeof(cfg_image_t))));
    if (!image)
        throw std::bad_alloc();
    image->max_ports = max_ports;
    // The limits writer leaves out limits at or above `ceiling`, which only
    // the application sets; the tool shows every limit.
    image->limits.ceiling = UINT32_MAX;
    return image;
}

void apply_message(cfg_image_t &image, std::span<const std::uint8_t> bytes)
{
    all_parser(&image, bytes.data());
}

namespace {

// Where the writers write. Every writer starts at the beginning of one large
// buffer; its body is read back and its nodes gathered before the next one
// runs. The writers do no bounds checks: 4 MiB is far above the largest
// single frame (a dial-plan list of 300 rules, a few hundred kB at most).
struct writer_output {
    std::vector<std::uint8_t> buffer = std::vector<std::uint8_t>(std::size_t{4} << 20);
    std::uint8_t *cursor = nullptr;
    message gathered;
    std::map<std::string, std::size_t, std::less<>> node_at; // path -> index in gathered.nodes
    std::vector<std::set<std::pair<std::string, std::optional<std::string>>>> seen; // per node
    std::string error;                                                              // first writer fault
};

// The cursor the next writer starts from: the start of the buffer.
std::uint8_t **start(writer_output &out)
{
    out.cursor = out.buffer.data();
    return &out.cursor;
}

void gather(writer_output &out, const message &body)
{
    for (const node &nd : body.nodes) {
        auto [it, added] = out.node_at.try_emplace(nd.path, out.gathered.nodes.size());
        if (added) {
            out.gathered.nodes.push_back(node{nd.path, {}});
            out.seen.emplace_back();
        }
        node &into = out.gathered.nodes[it->second];
        auto &seen = out.seen[it->second];
        for (const param &p : nd.params)
            if (seen.emplace(p.name, p.value).second)
                into.params.push_back(p);
    }
}

// Checks the frame of what one writer returned and gathers its nodes: the
// result counts the operation byte through the terminating 0 byte, which is
// written but not stepped over.
void take(writer_output &out, int returned, const char *writer)
{
    if (!out.error.empty())
        return;
    const auto stepped = static_cast<std::size_t>(out.cursor - out.buffer.data());
    char what[160];
    if (returned < 2 || static_cast<std::size_t>(returned) != stepped + 1) {
        std::snprintf(what, sizeof what, "%s returned %d but advanced the cursor by %zu bytes", writer,
                      returned, stepped);
        out.error = what;
        return;
    }
    message body;
    wire_error err;
    if (!decode_body(std::span(out.buffer.data(), stepped + 1), 0, body, err)) {
        out.error = std::string(writer) + " wrote a malformed body: at byte " + std::to_string(err.offset) +
                    ": " + err.reason;
        return;
    }
    if (body.operation != CFG_MSG_OP_CONFIG || body.terminator != std::optional<std::uint8_t>(0)) {
        out.error = std::string(writer) + " wrote a frame without operation 2 and closing 0 byte";
        return;
    }
    gather(out, body);
}

// Every section writer that the tool prints, in this order; the ONE list.
// A section whose writer arrives later is one more line here.
void run_writers(const cfg_image_t &im, writer_output &out)
{
    // VoIP globals.
    take(out, h323_save(start(out), &im.h323), "h323_save");
    take(out, RANGE_save(start(out), &im.h323), "RANGE_save");
    take(out, common_sip_save(start(out), &im.sip), "common_sip_save");
    take(out, general_save(start(out), &im.general), "general_save");
    take(out, tones_save(start(out), &im.tones), "tones_save");
    take(out, syslog_save(start(out), &im.trace), "syslog_save");
    take(out, dvo_config_save(start(out), &im.dvo), "dvo_config_save");
    take(out, cadence_config_save(start(out), &im), "cadence_config_save");

    // Ports (as many as the device has) and the port profiles.
    // all_ports_to_file and all_ports_pickup_to_file write subsets of the
    // nodes of one_port_to_file and are not run.
    const std::uint32_t ports = std::min<std::uint32_t>(im.max_ports, CFG_MAX_PORTS);
    for (std::uint32_t p = 0; p < ports; ++p)
        take(out, one_port_to_file(start(out), p, &im.ports[p]), "one_port_to_file");
    for (std::uint32_t d = 0; d < CFG_PORT_PROFILES; ++d)
        take(out, profile_def_port_to_file(start(out), d, &im.port_defaults[d]), "profile_def_port_to_file");

    // VoIP profiles and their dial plans, then the dial-plan profiles.
    for (int p = 0; p < CFG_PROFILES; ++p) {
        take(out, profile_codecs_save(start(out), p, &im.profiles[p]), "profile_codecs_save");
        take(out, profile_sip_save(start(out), p, &im.profiles[p]), "profile_sip_save");
        take(out, profile_alert_info_save(start(out), p, &im.profiles[p]), "profile_alert_info_save");
        take(out, profile_dialplan_to_file(start(out), p, &im.dialplans[p], im.max_ports),
             "profile_dialplan_to_file");
        take(out, profile_dialplan_regular_to_file(start(out), p, &im.dialplans[p]),
             "profile_dialplan_regular_to_file");
    }
    for (int d = 0; d < CFG_DIALPLAN_PROFILES; ++d)
        take(out, dialplan_profile_save(start(out), d, &im.dialplan_profiles[d]), "dialplan_profile_save");

    // VoIP lists.
    take(out, groups_to_file(start(out), im.groups.entries, 0), "groups_to_file");
    take(out, groups_to_file(start(out), im.fxo_groups.entries, 1), "groups_to_file");
    take(out, save_limits(start(out), &im.limits), "save_limits");
    for (int m = 0; m < CFG_MODIFIERS; ++m)
        take(out, modifier_to_file(start(out), m, &im.modifiers[m]), "modifier_to_file");

    // Network.
    take(out, save_network(start(out), &im.network, &im.lldp), "save_network");
    take(out, save_autoupdate(start(out), &im.network), "save_autoupdate");
    take(out, save_ntp(start(out), &im.network), "save_ntp");
    take(out, save_radius(start(out), &im.network), "save_radius");
    take(out, language_save(start(out), &im.network), "language_save");
    take(out, sendHostsToCfgMngr(start(out), &im.hosts), "sendHostsToCfgMngr");
    take(out, sendMacsToCfgMngr(start(out), &im.mac_filter), "sendMacsToCfgMngr");
    take(out, sendRoutesToCfgMngr(start(out), &im.routes), "sendRoutesToCfgMngr");
    take(out, all_firewall_to_file(start(out), &im.firewall), "all_firewall_to_file");
    take(out, snmp_save(start(out), &im.snmp, &im.network), "snmp_save");
    take(out, snmp_user_save(start(out), &im.snmp), "snmp_user_save");
    take(out, ipsec_save(start(out), &im.ipsec, &im.network), "ipsec_save");
    take(out, save_acs(start(out), &im.tr069), "save_acs");

    // Switch: VLANs, QoS and the VTU rules in one message (vlan_config_save
    // and qos_save write the same nodes).
    take(out, switch_config_save(start(out), &im.switch_cfg), "switch_config_save");
}

} // namespace

bool configuration_of(const cfg_image_t &image, message &out, std::string &error)
{
    writer_output w;
    run_writers(image, w);
    if (!w.error.empty()) {
        error = std::move(w.error);
        return false;
    }
    out = std::move(w.gathered);
    out.operation = CFG_MSG_OP_CONFIG;
    out.terminator = 0;
    return true;
}

namespace {

struct param_key {
    std::string path;
    std::string name;
    std::size_t occurrence;
    auto operator<=>(const param_key &) const = default;
};

// Every param of `msg` keyed by path, name and occurrence, in message order.
std::vector<std::pair<param_key, const std::optional<std::string> *>> keyed(const message &msg)
{
    std::vector<std::pair<param_key, const std::optional<std::string> *>> out;
    std::map<std::pair<std::string_view, std::string_view>, std::size_t> count;
    for (const node &nd : msg.nodes)
        for (const param &p : nd.params)
            out.push_back({param_key{nd.path, p.name, count[{nd.path, p.name}]++}, &p.value});
    return out;
}

} // namespace

std::vector<param_change> differences(const message &a, const message &b)
{
    const auto in_a = keyed(a);
    const auto in_b = keyed(b);
    std::map<param_key, const std::optional<std::string> *> b_values(in_b.begin(), in_b.end());
    std::set<param_key> a_keys;
    std::vector<param_change> out;
    for (const auto &[key, value] : in_a) {
        a_keys.insert(key);
        const auto other = b_values.find(key);
        if (other != b_values.end() && *other->second == *value)
            continue;
        param_change c{key.path, key.name, true, *value, other != b_values.end(), std::nullopt};
        if (c.in_b)
            c.b = *other->second;
        out.push_back(std::move(c));
    }
    for (const auto &[key, value] : in_b)
        if (!a_keys.contains(key))
            out.push_back(param_change{key.path, key.name, false, std::nullopt, true, *value});
    return out;
}

} // namespace cfgmsg
