// The route table against the library's own behaviour: what each writer
// sends is found by running it over the full sample, not read from the
// table; the path numbers the handlers read are checked by what they store.
#include "cfgmngr/routes.h"
#include "support.h"
#include "writer_families.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
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
    std::ifstream in(std::filesystem::path(__FILE__).parent_path().parent_path() / "examples" / "full-config.msg",
                    std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Every writer runs over the parsed full sample; the rows of each node kind
// it sends are listed in the order they first appear.
TEST(RouteTable, EachRouteNamesTheWritersThatSendItAndTheirRowsInOrder)
{
    auto image = support::fresh_image();
    image->limits.ceiling = UINT32_MAX; // every limit written
    const std::vector<uint8_t> message = full_sample();
    ASSERT_FALSE(message.empty());
    all_parser(image.get(), message.data());

    using rows_sent = std::vector<std::string>;
    std::map<const route *, std::map<std::string, rows_sent>> seen;
    for (const auto &family : bench::writer_families())
        for (const auto &call : family.calls) {
            const auto out = support::write([&](uint8_t **c) { return call.write(c, *image); });
            for (const auto &node : out.message.nodes) {
                const route *r = route_of_path(node.path);
                ASSERT_NE(r, nullptr) << call.name << " sends " << node.path << ", which no route takes";
                rows_sent &rows = seen[r][call.name];
                for (const auto &p : node.params) {
                    int32_t entry = 0;
                    const cfg::keys::key *k = cfg::routes::row_of(*r, p.name.c_str(), entry);
                    ASSERT_NE(k, nullptr) << call.name << ": " << node.path << " " << p.name;
                    if (std::find(rows.begin(), rows.end(), k->name) == rows.end())
                        rows.emplace_back(k->name);
                }
            }
        }
    for (const route &r : cfg::routes::all()) {
        std::map<std::string, rows_sent> listed;
        for (const auto &w : r.writers)
            for (uint16_t row : w.rows)
                listed[std::string(w.name)].emplace_back(r.kind.keys->rows[row].name);
        std::string observed;
        for (const auto &[writer, rows] : seen[&r]) {
            observed += "  " + writer + ":";
            for (const auto &name : rows)
                observed += " \"" + name + "\",";
            observed += "\n";
        }
        EXPECT_EQ(listed, seen[&r]) << r.kind.path << " as sent:\n" << observed;
    }
}

} // namespace
