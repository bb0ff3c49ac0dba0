#include "writer_families.h"

namespace bench {
namespace {

using image_t = cfg_image_t;

// An image used only for the addresses of its members.
const image_t &layout()
{
    static const image_t image{};
    return image;
}

template <class Member>
image_part part(const Member &member)
{
    return {static_cast<std::size_t>(reinterpret_cast<const char *>(&member) -
                                     reinterpret_cast<const char *>(&layout())),
            sizeof member};
}

std::vector<writer_family> make_families()
{
    std::vector<writer_family> f;
    const image_t &L = layout();

    f.push_back({"voip_globals",
                 {
                     {[](uint8_t **c, const image_t &im) { return h323_save(c, &im.h323); },
                      true,
                      "h323_save",
                      {part(L.h323)}},
                     {[](uint8_t **c, const image_t &im) { return RANGE_save(c, &im.h323); },
                      true,
                      "RANGE_save",
                      {part(L.h323)}},
                     {[](uint8_t **c, const image_t &im) { return common_sip_save(c, &im.sip); },
                      true,
                      "common_sip_save",
                      {part(L.sip)}},
                     {[](uint8_t **c, const image_t &im) { return general_save(c, &im.general); },
                      true,
                      "general_save",
                      {part(L.general)}},
                     {[](uint8_t **c, const image_t &im) { return tones_save(c, &im.tones); },
                      true,
                      "tones_save",
                      {part(L.tones)}},
                     {[](uint8_t **c, const image_t &im) { return syslog_save(c, &im.trace); },
                      true,
                      "syslog_save",
                      {part(L.trace)}},
                     {[](uint8_t **c, const image_t &im) { return dvo_config_save(c, &im.dvo); },
                      true,
                      "dvo_config_save",
                      {part(L.dvo)}},
                     {[](uint8_t **c, const image_t &im) { return cadence_config_save(c, &im); },
                      true,
                      "cadence_config_save",
                      {part(L.cadences)}},
                 }});

    writer_family ports{"ports", {}};
    for (uint32_t p = 0; p < CFG_MAX_PORTS; ++p)
        ports.calls.push_back(
            {[p](uint8_t **c, const image_t &im) { return one_port_to_file(c, p, &im.ports[p]); },
             true,
             "one_port_to_file",
             {part(L.ports[p])}});
    for (uint32_t d = 0; d < CFG_PORT_PROFILES; ++d)
        ports.calls.push_back({[d](uint8_t **c, const image_t &im) {
                                   return profile_def_port_to_file(c, d, &im.port_defaults[d]);
                               },
                               true,
                               "profile_def_port_to_file",
                               {part(L.port_defaults[d])}});
    ports.calls.push_back({[](uint8_t **c, const image_t &im) { return all_ports_to_file(c, &im); },
                           false,
                           "all_ports_to_file",
                           {part(L.ports), part(L.max_ports)}});
    ports.calls.push_back({[](uint8_t **c, const image_t &im) { return all_ports_pickup_to_file(c, &im); },
                           false,
                           "all_ports_pickup_to_file",
                           {part(L.ports), part(L.max_ports)}});
    f.push_back(std::move(ports));

    writer_family profiles{"profiles", {}};
    for (int p = 0; p < CFG_PROFILES; ++p) {
        profiles.calls.push_back(
            {[p](uint8_t **c, const image_t &im) { return profile_codecs_save(c, p, &im.profiles[p]); },
             true,
             "profile_codecs_save",
             {part(L.profiles[p])}});
        profiles.calls.push_back(
            {[p](uint8_t **c, const image_t &im) { return profile_sip_save(c, p, &im.profiles[p]); },
             true,
             "profile_sip_save",
             {part(L.profiles[p])}});
        profiles.calls.push_back(
            {[p](uint8_t **c, const image_t &im) { return profile_alert_info_save(c, p, &im.profiles[p]); },
             true,
             "profile_alert_info_save",
             {part(L.profiles[p])}});
    }
    for (int d = 0; d < CFG_DIALPLAN_PROFILES; ++d)
        profiles.calls.push_back({[d](uint8_t **c, const image_t &im) {
                                      return dialplan_profile_save(c, d, &im.dialplan_profiles[d]);
                                  },
                                  true,
                                  "dialplan_profile_save",
                                  {part(L.dialplan_profiles[d])}});
    f.push_back(std::move(profiles));

    writer_family lists{"voip_lists", {}};
    for (int p = 0; p < CFG_PROFILES; ++p) {
        lists.calls.push_back({[p](uint8_t **c, const image_t &im) {
                                   return profile_dialplan_to_file(c, p, &im.dialplans[p], im.max_ports);
                               },
                               true,
                               "profile_dialplan_to_file",
                               {part(L.dialplans[p]), part(L.max_ports)}});
        lists.calls.push_back({[p](uint8_t **c, const image_t &im) {
                                   return profile_dialplan_regular_to_file(c, p, &im.dialplans[p]);
                               },
                               true,
                               "profile_dialplan_regular_to_file",
                               {part(L.dialplans[p])}});
    }
    lists.calls.push_back(
        {[](uint8_t **c, const image_t &im) { return groups_to_file(c, im.groups.entries, 0); },
         true,
         "groups_to_file",
         {part(L.groups.entries)}});
    lists.calls.push_back(
        {[](uint8_t **c, const image_t &im) { return groups_to_file(c, im.fxo_groups.entries, 1); },
         true,
         "groups_to_file",
         {part(L.fxo_groups.entries)}});
    lists.calls.push_back({[](uint8_t **c, const image_t &im) { return save_limits(c, &im.limits); },
                           true,
                           "save_limits",
                           {part(L.limits)}});
    for (int m = 0; m < CFG_MODIFIERS; ++m)
        lists.calls.push_back(
            {[m](uint8_t **c, const image_t &im) { return modifier_to_file(c, m, &im.modifiers[m]); },
             true,
             "modifier_to_file",
             {part(L.modifiers[m])}});
    f.push_back(std::move(lists));

    f.push_back({"network",
                 {
                     {[](uint8_t **c, const image_t &im) { return save_network(c, &im.network, &im.lldp); },
                      true,
                      "save_network",
                      {part(L.network), part(L.lldp)}},
                     {[](uint8_t **c, const image_t &im) { return save_autoupdate(c, &im.network); },
                      true,
                      "save_autoupdate",
                      {part(L.network)}},
                     {[](uint8_t **c, const image_t &im) { return save_ntp(c, &im.network); },
                      true,
                      "save_ntp",
                      {part(L.network)}},
                     {[](uint8_t **c, const image_t &im) { return save_radius(c, &im.network); },
                      true,
                      "save_radius",
                      {part(L.network)}},
                     {[](uint8_t **c, const image_t &im) { return language_save(c, &im.network); },
                      true,
                      "language_save",
                      {part(L.network)}},
                     {[](uint8_t **c, const image_t &im) { return snmp_save(c, &im.snmp, &im.network); },
                      true,
                      "snmp_save",
                      {part(L.snmp), part(L.network)}},
                     {[](uint8_t **c, const image_t &im) { return snmp_user_save(c, &im.snmp); },
                      true,
                      "snmp_user_save",
                      {part(L.snmp)}},
                     {[](uint8_t **c, const image_t &im) { return ipsec_save(c, &im.ipsec, &im.network); },
                      true,
                      "ipsec_save",
                      {part(L.ipsec), part(L.network)}},
                     {[](uint8_t **c, const image_t &im) { return save_acs(c, &im.tr069); },
                      true,
                      "save_acs",
                      {part(L.tr069)}},
                 }});

    f.push_back({"network_lists",
                 {
                     {[](uint8_t **c, const image_t &im) { return sendHostsToCfgMngr(c, &im.hosts); },
                      true,
                      "sendHostsToCfgMngr",
                      {part(L.hosts)}},
                     {[](uint8_t **c, const image_t &im) { return sendMacsToCfgMngr(c, &im.mac_filter); },
                      true,
                      "sendMacsToCfgMngr",
                      {part(L.mac_filter)}},
                     {[](uint8_t **c, const image_t &im) { return sendRoutesToCfgMngr(c, &im.routes); },
                      true,
                      "sendRoutesToCfgMngr",
                      {part(L.routes)}},
                     {[](uint8_t **c, const image_t &im) { return all_firewall_to_file(c, &im.firewall); },
                      true,
                      "all_firewall_to_file",
                      {part(L.firewall)}},
                 }});

    writer_family sw{"switch", {}};
    sw.calls.push_back({[](uint8_t **c, const image_t &im) { return vlan_config_save(c, &im.switch_cfg); },
                        true,
                        "vlan_config_save",
                        {part(L.switch_cfg)}});
    sw.calls.push_back({[](uint8_t **c, const image_t &im) { return qos_save(c, &im.switch_cfg); },
                        true,
                        "qos_save",
                        {part(L.switch_cfg)}});
    sw.calls.push_back({[](uint8_t **c, const image_t &im) { return switch_config_save(c, &im.switch_cfg); },
                        true,
                        "switch_config_save",
                        {part(L.switch_cfg)}});
    // Each rule again on its own: switch_config_save already sends them all,
    // blanking the rules not in use, while ins_rule_in_vtu sends whatever it
    // is given as a rule in use.
    for (int32_t r = 0; r < CFG_VTU_RULES; ++r)
        sw.calls.push_back(
            {[r](uint8_t **c, const image_t &im) { return ins_rule_in_vtu(c, r, &im.switch_cfg.vtu[r]); },
             false,
             "ins_rule_in_vtu",
             {part(L.switch_cfg.vtu[r])}});
    f.push_back(std::move(sw));
    return f;
}

} // namespace

const std::vector<writer_family> &writer_families()
{
    static const std::vector<writer_family> families = make_families();
    return families;
}

} // namespace bench
