// Every exported writer refuses a missing cursor, a cursor pointing nowhere,
// a missing record and an entry number outside its array: it writes
// nothing, leaves the cursor where it was, reports at the error level and
// returns 0 (codec_params_save: the running count it was given).
#include "support.h"

#include <functional>
#include <string>
#include <vector>

namespace {

TEST(WriterPreconditions, RefusedWithoutWriting)
{
    const support::image_ptr image = support::fresh_image();
    const cfg_image_t &im = *image;
    // A writer called with the cursor, its record (or null) and an entry
    // number; `count` is the size of the numbered array, 0 for a writer
    // without a number.
    using call = std::function<int(uint8_t **, bool, int64_t)>;
    struct row {
        const char *name;
        int64_t count;
        call write;
    };
#define REC(member) (null ? nullptr : &im.member)
#define WRITER(count, name, ...)                                                            \
    row                                                                                     \
    {                                                                                       \
#name, count,                                                                       \
            [&]([[maybe_unused]] uint8_t * *c, [[maybe_unused]] bool null,                  \
                [[maybe_unused]] int64_t n) { return static_cast<int>(name(__VA_ARGS__)); } \
    }
    const auto n32 = [](int64_t n) { return static_cast<uint32_t>(n); };
    const auto nint = [](int64_t n) { return static_cast<int>(n); };
    const std::vector<row> rows = {
        WRITER(0, h323_save, c, REC(h323)),
        WRITER(0, RANGE_save, c, REC(h323)),
        WRITER(0, common_sip_save, c, REC(sip)),
        WRITER(0, general_save, c, REC(general)),
        WRITER(0, tones_save, c, REC(tones)),
        WRITER(0, syslog_save, c, REC(trace)),
        WRITER(0, dvo_config_save, c, REC(dvo)),
        WRITER(0, cadence_config_save, c, null ? nullptr : &im),
        WRITER(0, all_ports_to_file, c, null ? nullptr : &im),
        WRITER(0, all_ports_pickup_to_file, c, null ? nullptr : &im),
        WRITER(CFG_MAX_PORTS, one_port_to_file, c, n32(n), REC(ports[0])),
        WRITER(CFG_PORT_PROFILES, profile_def_port_to_file, c, n32(n), REC(port_defaults[0])),
        WRITER(0, codec_params_save, c, REC(profiles[0].codecs), 0),
        WRITER(CFG_PROFILES, profile_codecs_save, c, nint(n), REC(profiles[0])),
        WRITER(CFG_DIALPLAN_PROFILES, dialplan_profile_save, c, nint(n), REC(dialplan_profiles[0])),
        WRITER(CFG_PROFILES, profile_sip_save, c, nint(n), REC(profiles[0])),
        WRITER(CFG_PROFILES, profile_alert_info_save, c, nint(n), REC(profiles[0])),
        WRITER(CFG_PROFILES, profile_dialplan_to_file, c, nint(n), REC(dialplans[0]), 72),
        WRITER(CFG_PROFILES, profile_dialplan_regular_to_file, c, nint(n), REC(dialplans[0])),
        WRITER(0, groups_to_file, c, null ? nullptr : im.groups.entries, 0),
        WRITER(0, save_limits, c, REC(limits)),
        WRITER(CFG_MODIFIERS, modifier_to_file, c, nint(n), REC(modifiers[0])),
        WRITER(0, save_network, c, &im.network, REC(lldp)),
        WRITER(0, save_autoupdate, c, REC(network)),
        WRITER(0, save_ntp, c, REC(network)),
        WRITER(0, save_radius, c, REC(network)),
        WRITER(0, language_save, c, REC(network)),
        WRITER(0, sendHostsToCfgMngr, c, REC(hosts)),
        WRITER(0, sendMacsToCfgMngr, c, REC(mac_filter)),
        WRITER(0, sendRoutesToCfgMngr, c, REC(routes)),
        WRITER(0, all_firewall_to_file, c, REC(firewall)),
        WRITER(0, firewall_to_file, c, 0, REC(firewall.rules[0])),
        WRITER(0, snmp_save, c, &im.snmp, REC(network)),
        WRITER(0, snmp_user_save, c, REC(snmp)),
        WRITER(0, ipsec_save, c, REC(ipsec), &im.network),
        WRITER(0, save_acs, c, REC(tr069)),
        WRITER(0, vlan_config_save, c, REC(switch_cfg)),
        WRITER(0, qos_save, c, REC(switch_cfg)),
        WRITER(0, switch_config_save, c, REC(switch_cfg)),
        WRITER(0, del_rule_from_vtu, c, 0),
        WRITER(0, ins_rule_in_vtu, c, 0, REC(switch_cfg.vtu[0])),
    };
#undef WRITER
#undef REC
    std::vector<uint8_t> buffer(1u << 20, 0xAA);
    for (const row &r : rows) {
        // Refused: no cursor, a cursor pointing nowhere, no record (for every
        // writer that takes one), and the numbers just outside the array
        // (-1 arrives as 0xFFFFFFFF where the number is unsigned).
        struct attempt {
            bool no_cursor, nowhere, null;
            int64_t number;
        };
        std::vector<attempt> refused = {{true, false, false, 0}, {false, true, false, 0}};
        if (std::string(r.name) != "del_rule_from_vtu")
            refused.push_back({false, false, true, 0});
        if (r.count > 0) {
            refused.push_back({false, false, false, -1});
            refused.push_back({false, false, false, r.count});
        }
        for (const attempt &a : refused) {
            uint8_t *cursor = a.nowhere ? nullptr : buffer.data();
            int returned = -1;
            const std::string out = support::stdout_of(
                [&] { returned = r.write(a.no_cursor ? nullptr : &cursor, a.null, a.number); });
            const std::string what = std::string(r.name) + " refusal " + std::to_string(&a - refused.data());
            EXPECT_EQ(returned, 0) << what;
            EXPECT_EQ(cursor, a.nowhere ? nullptr : buffer.data()) << what;
            EXPECT_EQ(buffer[0], 0xAA) << what;
            EXPECT_NE(out.find(std::string("[CFGPARSE-ERR ]  ") + r.name + ": "), std::string::npos)
                << what << ": " << out;
        }
        // The last number of the array is still written.
        uint8_t *cursor = buffer.data();
        EXPECT_GT(r.write(&cursor, false, r.count > 0 ? r.count - 1 : 0), 0) << r.name;
        buffer[0] = 0xAA;
    }
}

} // namespace
