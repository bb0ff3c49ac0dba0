// The route table against the library's own behaviour: which writers send
// a node kind, and which of its rows, is found by running them over the full
// sample, not read from the table.
#include "cfgmngr/routes.h"
#include "check_agrees.h"
#include "support.h"
#include "writer_families.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using cfg::routes::route;

const route *route_of_path(const std::string &path)
{
    int32_t matches[cfg::routes::pattern_count] = {};
    char **tables[cfg::routes::pattern_count] = {};
    cfg::routes::match_patterns(path.c_str(), matches, tables);
    const route *r = cfg::routes::route_of(path, matches);
    cfg::routes::free_matches(matches, tables);
    return r;
}

std::vector<uint8_t> full_sample()
{
    std::ifstream in(std::filesystem::path(CFGPARSER_SOURCE_DIR) / "examples" / "full-config.msg",
                     std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Every writer runs over the parsed full sample. Each node it sends is one
// that a route takes and names the writer for, each param one that a row of
// that route reads back, and every row of the writer's list goes out (the
// list gives the order; a row of its own format is the writer's own code to
// send, a row sent as nothing or behind a condition the sample never meets
// shows up here).
TEST(RouteTable, EachRouteNamesTheWritersThatSendItAndEveryRowTheyList)
{
    auto image = support::fresh_image();
    image->limits.ceiling = UINT32_MAX; // every limit written
    const std::vector<uint8_t> message = full_sample();
    ASSERT_FALSE(message.empty());
    all_parser(image.get(), message.data());

    using rows_sent = std::set<std::string>;
    std::map<const route *, std::map<std::string, rows_sent>> seen;
    for (const auto &family : bench::writer_families())
        for (const auto &call : family.calls)
            for (const auto &node :
                 support::write([&](uint8_t **c) { return call.write(c, *image); }).message.nodes) {
                const route *r = route_of_path(node.path);
                ASSERT_NE(r, nullptr) << call.name << " sends " << node.path << ", which no route takes";
                rows_sent &rows = seen[r][call.name];
                for (const auto &p : node.params) {
                    int32_t entry = 0;
                    const cfg::keys::key *k = cfg::routes::row_of(*r, p.name.c_str(), entry);
                    ASSERT_NE(k, nullptr) << call.name << ": " << node.path << " " << p.name;
                    rows.emplace(k->name);
                }
            }
    for (const route &r : cfg::routes::all()) {
        std::map<std::string, rows_sent> listed;
        for (const auto &w : r.writers)
            for (uint16_t row : w.rows)
                listed[std::string(w.name)].emplace(r.kind.keys->rows[row].name);
        EXPECT_EQ(listed, seen[&r]) << r.kind.path;
    }
}

// What the reference says of a few rules of their own, driven through the
// library: a node with the param parsed into a fresh image, then the value
// the writer sends for it.
TEST(RouteTable, RulesOfTheirOwnAsTheReferenceStatesThem)
{
    struct row {
        const char *path, *param, *writer, *sent_path, *sent_name, *expected;
    };
    const char *const sip = "config.VOIP.profile.profile_0.sip";
    const char *const codecs = "config.VOIP.profile.profile_0.codecs";
    const char *const snmp = "config.Network.snmp";
    const char *const group = "config.VOIP.groups.group_0";
    for (const row &r : {
             // member ports: numbers separated by ','; a range empties the list
             row{group, "phone = 1\nports = 1,3", "groups_to_file", group, "ports", "1,3"},
             row{group, "phone = 1\nports = 1,3-5", "groups_to_file", group, "ports", "\"\""},
             // timer: no value 1, a value without a number 0
             row{sip, "timer =", "profile_sip_save", sip, "timer", "1"},
             row{sip, "timer = x", "profile_sip_save", sip, "timer", "0"},
             row{sip, "timer = 7", "profile_sip_save", sip, "timer", "1"},
             // trap type: "v2", anything else (no value too) v1
             row{snmp, "trap_type =", "snmp_save", snmp, "trap_type", "v1"},
             row{snmp, "trap_type = v3", "snmp_save", snmp, "trap_type", "v1"},
             row{snmp, "trap_type = v2", "snmp_save", snmp, "trap_type", "v2"},
             // T.38 datagram: 0, or 272..512, else 512
             row{codecs, "t38_datagram = 0", "profile_codecs_save", codecs, "t38_datagram", "0"},
             row{codecs, "t38_datagram = 271", "profile_codecs_save", codecs, "t38_datagram", "512"},
             row{codecs, "t38_datagram = 272", "profile_codecs_save", codecs, "t38_datagram", "272"},
             row{codecs, "t38_datagram = 513", "profile_codecs_save", codecs, "t38_datagram", "512"},
             // g729a: dropped, sent as 0
             row{codecs, "g729a = 1", "profile_codecs_save", codecs, "g729a", "0"},
         }) {
        SCOPED_TRACE(std::string(r.path) + " " + r.param);
        auto image = support::fresh_image();
        support::parse(*image, std::string("[") + r.path + "]\n" + r.param + "\n");
        std::optional<std::string> sent;
        for (const auto &family : bench::writer_families())
            for (const auto &call : family.calls)
                if (std::string(call.name) == r.writer)
                    for (const auto &node :
                         support::write([&](uint8_t **c) { return call.write(c, *image); }).message.nodes)
                        if (node.path == r.sent_path && !sent)
                            sent = support::value(node, r.sent_name);
        EXPECT_EQ(sent, std::optional<std::string>(r.expected));
    }
}

// check's judgement against the library: the samples, and inputs made to
// be stored otherwise than sent.
TEST(CheckAgrees, WithTheLibraryOnTheSamplesAndOnValuesStoredOtherwise)
{
    EXPECT_EQ(check_agrees::check(full_sample(), CFG_MAX_PORTS), "");
    EXPECT_EQ(check_agrees::check(full_sample(), 1), "");
    for (const char *text : {
             "[config.VOIP.ports.port_3x]\ncategory = 300\ngainr = loud\n[config.VOIP.ports.port_3]\ngaint = "
             "5\n",
             "[config.VOIP.h323]\ntimetolive = -1\nkeepalivetime = 7x\n[config.VOIP.no_such]\na = 1\n",
             "[config.VOIP.profile.profile_9.sip]\ntimer = 0\n[config.VOIP.h323]\ntimetolive = 5\n",
             "[config.VOIP.profile.profile_0.codecs]\nt38_datagram = 300\ng711pte = 25\n",
             "[config.VOIP.cadences.cadence_18]\nrule = 400,200,40\\x00400\n", // read up to the NUL
         }) {
        SCOPED_TRACE(text);
        EXPECT_EQ(check_agrees::check(cfgmsg::message_from_text(text), CFG_MAX_PORTS), "");
    }
}

} // namespace
