// Key matching of the handlers' key tables: a param name matches a key when
// it begins with it, compared as a C string (a NUL byte inside a name ends
// the name there).
#include "support.h"

#include "universalConfigParser/node_params.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using cfg::parse::next_param;
using cfg::parse::node;
using cfg::parse::param;

TEST(KeyMatching, NamePrefixedByKey)
{
    struct row {
        std::string name; // as sent, may hold a NUL byte
        const char *key;
        bool matches;
    } rows[] = {
        {"usealtnumber", "usealtnumber", true},
        {"usealtnumber_as_private", "usealtnumber", true},
        {"usealtnumber", "usealtnumber_as_private", false}, // name shorter than key
        {"aon_hide_date", "aon", true},
        {"bon", "aon", false},                              // first character differs
        {"aoo", "aon", false},                              // last character differs
        {"Phone", "phone", false},                          // case counts
        {std::string("ph\0one", 6), "phone", false},         // the name ends at the NUL
        {std::string("phone\0x", 7), "phone", true},
        {"", "phone", false},
        {"x", "", true},                                    // an empty key matches any name
    };
    for (const row &r : rows) {
        cfgmsg::message m;
        m.nodes.push_back({"config.test", {{r.name, std::string("1")}}});
        const std::vector<uint8_t> bytes = cfgmsg::encode(m);
        const uint8_t *cursor = bytes.data() + 13 + 2 + 11 + 2; // past the node head
        uint32_t remaining = static_cast<uint32_t>(bytes.size() - (13 + 2 + 11 + 2));
        node n;
        n.path = "config.test";
        n.param_count = 1;
        n.cursor = &cursor;
        n.remaining = &remaining;
        const param p = next_param(n);
        ASSERT_TRUE(static_cast<bool>(p)) << r.key;
        EXPECT_EQ(p.is(r.key), r.matches) << "name [" << p.name() << "] key [" << r.key << "]";
    }
}

} // namespace
