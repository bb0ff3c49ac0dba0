// Call limits: save_limits (what the parser stores: tests/cases/lists.txt).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

struct limit_entry {
    int index;
    const char *target;
    int32_t value;
    int32_t not_proxy;
};

limit_cfg_t limits_of(const std::vector<limit_entry> &entries, uint32_t start, uint32_t current,
                      uint32_t ceiling)
{
    limit_cfg_t l{};
    for (const limit_entry &e : entries) {
        std::strcpy(l.target[e.index], e.target);
        l.value[e.index] = e.value;
        l.not_proxy[e.index] = e.not_proxy;
    }
    l.start = start;
    l.current = current;
    l.ceiling = ceiling;
    return l;
}

TEST(LimitsWriter, CompactionCeilingAndPadding)
{
    const std::vector<limit_entry> three = {{1, "gw1", 5, 1}, {4, "[proxy]tail", 3, 0}, {9, "gw9", 7, 1}};
    struct row {
        const char *what;
        limit_cfg_t limits;
        support::values_t values;
    }; // values: limit_0, limit_1, ... in order
    const std::vector<row> rows = {
        {"all below ceiling", limits_of(three, 3, 3, 100), {"gw1 5", "[proxy] 3", "gw9 7"}},
        {"ceiling 0 writes no entry", limits_of(three, 3, 3, 0), {std::nullopt, std::nullopt, std::nullopt}},
        {"value equal to ceiling is skipped",
         limits_of(three, 3, 3, 7),
         {"gw1 5", "[proxy] 3", std::nullopt}},
        {"start 4 current 2",
         limits_of(three, 4, 2, 100),
         {"gw1 5", "[proxy] 3", std::nullopt, std::nullopt}},
        {"proxy entry without target", limits_of({{0, "", 2, 0}}, 1, 1, 100), {"[proxy] 2"}},
        {"empty entry", limits_of({{0, "", 2, 1}, {3, "x", 2, 1}}, 1, 1, 100), {"x 2"}},
        {"marker in start", limits_of(three, CFG_LIST_UPDATING, 3, 100),
         support::padded({"gw1 5", "[proxy] 3", "gw9 7"}, CFG_LIMITS)},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(r.what);
        const auto out = support::write([&](uint8_t **c) { return save_limits(c, &r.limits); });
        ASSERT_EQ(out.message.nodes.size(), 1u);
        support::expect_numbered(out.node(), "config.VOIP.limits", "limit_", r.values);
    }
}

} // namespace
