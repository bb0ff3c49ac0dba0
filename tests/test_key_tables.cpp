// Properties of every key table, checked through the library's entry points:
// each row is reached by its own name, a value lands in its own member (and
// nothing else), and every row a writer sends comes back to the same member
// when the writer's output is parsed again. What each key stores is stated
// in tests/cases/, independently of the rows.
#include "support.h"

#include "cfgmngr/key_tables.h"
#include "writer_families.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using cfg::keys::key;
using cfg::keys::kind;
using cfg::keys::node_kind;

using cfg::keys::entry_form;

// The path of record `n` (and `inner`) of a node kind ("port_{0..71}" ->
// "port_5").
std::string concrete_path(const node_kind &nk, unsigned n, unsigned inner = 0)
{
    std::string path(nk.path);
    for (const unsigned number : {n, inner}) {
        const auto open = path.find('{');
        if (open != std::string::npos)
            path.replace(open, path.find('}') - open + 1, std::to_string(number));
    }
    return path;
}

// A param name that selects the row (entry `entry` of a numbered key).
std::string param_name(const node_kind &, const key &k, unsigned entry)
{
    const std::string name(k.name), n = std::to_string(entry);
    if (k.count == 0)
        return name;
    switch (k.entry) {
    case entry_form::after_key:
    case entry_form::digits_after_last_underscore:
        return name + n; // "prio3", "mod_rule_3"
    case entry_form::rule_then_key:
        return "vtu" + n + "." + name;
    default:
        return name + "_" + n;
    }
}

// The row a param name selects.
const key *row_of(const node_kind &nk, const std::string &name)
{
    int32_t rule = 0;
    std::string_view field;
    if (cfg::keys::split_rule_name("vtu", name.c_str(), CFG_VTU_RULES, rule, field))
        return cfg::keys::find(*nk.keys, field);
    return cfg::keys::find(*nk.keys, name);
}

struct place {
    const node_kind *nk;
    unsigned node_entry; // which record of the node kind
    unsigned inner = 0;  // which record of its second numbered part
    unsigned key_entry;  // which entry of a numbered key
};

std::size_t record_size(const place &at)
{
    return at.nk->inner_stride != 0 ? at.nk->inner_stride : at.nk->stride;
}

const uint8_t *record_of(const cfg_image_t &image, const place &at)
{
    return reinterpret_cast<const uint8_t *>(&image) + at.nk->record_offset(at.node_entry, at.inner);
}

std::string node_text(const std::string &path, const std::string &params)
{
    return "[" + path + "]\n" + params;
}

std::string param_line(const std::string &name, const std::optional<std::string> &value)
{
    return name + " =" + (value ? " " + *value : std::string()) + "\n";
}

// Parses one param into a fresh image (after `before`, a param line set
// first) and returns the image.
support::image_ptr parse_one(const place &at, const key &k, const std::optional<std::string> &value,
                             const std::string &before = {})
{
    auto image = support::fresh_image();
    support::parse(*image, node_text(concrete_path(*at.nk, at.nk->first + at.node_entry, at.inner),
                                     before + param_line(param_name(*at.nk, k, at.key_entry), value)));
    return image;
}

int64_t stored_number(const cfg_image_t &image, const place &at, const key &k)
{
    return cfg::keys::read_number(k, record_of(image, at), at.key_entry);
}

std::string stored_text(const cfg_image_t &image, const place &at, const key &k)
{
    const char *bytes = cfg::keys::field_bytes(k, record_of(image, at), at.key_entry);
    return std::string(bytes, strnlen(bytes, k.at.size));
}

// Every row of every keyed node kind, at the last record of the node kind and
// the last entry of a numbered key. (Hunt groups follow rules of their own,
// which their tests check.)
template <typename Check>
void for_every_row(Check check)
{
    for (const node_kind &nk : cfg::keys::node_kinds()) {
        if (nk.rules != cfg::keys::node_rules::keyed)
            continue;
        const place at{&nk, static_cast<unsigned>(nk.last - nk.first), 0, nk.inner_last};
        for (const key &k : nk.keys->rows) {
            place p = at;
            p.key_entry = k.count == 0 ? 0 : k.count - 1u;
            SCOPED_TRACE(concrete_path(nk, nk.last, nk.inner_last) + " " + param_name(nk, k, p.key_entry));
            check(p, k);
        }
    }
}

TEST(KeyTables, EveryKeyIsReachedByItsOwnName)
{
    for (const node_kind &nk : cfg::keys::node_kinds())
        for (const key &k : nk.keys->rows)
            EXPECT_EQ(cfg::keys::find(*nk.keys, k.name), &k) << nk.path << " " << k.name;
}

// Names the way the configuration manager sends them: longer than a key
// (the first key in table order that the name begins with decides), or
// beginning with no key at all.
TEST(KeyTables, LongerNamesSelectTheFirstKeyTheyBeginWith)
{
    for (const node_kind &nk : cfg::keys::node_kinds()) {
        const auto rows = nk.keys->rows;
        for (const key &k : rows) {
            for (const std::string tail : {"x", "_1", "9z"}) {
                const std::string name = std::string(k.name) + tail;
                const key *first = nullptr;
                for (const key &candidate : rows)
                    if (std::string_view(name).starts_with(candidate.name)) {
                        first = &candidate;
                        break;
                    }
                EXPECT_EQ(cfg::keys::find(*nk.keys, name), first) << nk.path << " " << name;
            }
        }
        EXPECT_EQ(cfg::keys::find(*nk.keys, "\x7f-no-such-key"), nullptr);
        EXPECT_EQ(cfg::keys::find(*nk.keys, ""), nullptr);
    }
}

// The node's time-stamp, where the record holds it: a word that a parse sets
// to the current seconds.
bool is_stamp(const uint8_t *word)
{
    uint32_t v = 0;
    std::memcpy(&v, word, 4);
    const uint32_t now = cfgpars_get_monotonic_now_time();
    return v + 5 >= now && v <= now + 5;
}

// A stored value lands in its own member (its own bits) and nowhere else:
// the record differs from a fresh one only there (and in the node's stamp).
TEST(KeyTables, AValueChangesOnlyItsMember)
{
    for_every_row([](const place &at, const key &k) {
        if (k.how == kind::special)
            return;
        const char *value = k.how == kind::text ? "abc" : k.how == kind::hex ? "0xffffffff" : "1";
        const auto image = parse_one(at, k, value);
        const auto fresh = support::fresh_image();
        const uint8_t *got = record_of(*image, at);
        const uint8_t *was = record_of(*fresh, at);
        const std::size_t from = k.at.offset + at.key_entry * std::size_t{k.stride};
        const std::size_t own_mask = k.at.width == 0 ? 0 : ((std::size_t{1} << k.at.width) - 1) << k.at.bit;
        for (std::size_t i = 0; i < record_size(at); ++i) {
            const bool own = i >= from && i < from + k.at.size;
            const auto mine =
                static_cast<uint8_t>(own ? (k.at.width == 0 ? 0xff : own_mask >> (8 * (i - from))) : 0);
            if ((got[i] & ~mine & 0xff) == (was[i] & ~mine & 0xff))
                continue;
            if (i % 4 == 0 && i + 4 <= record_size(at) && is_stamp(got + i)) {
                i += 3;
                continue;
            }
            ADD_FAILURE() << "byte " << i << " of the record changed";
            break;
        }
    });
}

// ---------------------------------------------------------------------------
// Writers

// A value of the row that is not its default, so that a writer that dropped
// it would be seen.
std::optional<std::string> telling_value(const key &k, std::size_t row)
{
    switch (k.how) {
    case kind::text:
        return (std::string("t") + std::to_string(row)).substr(0, k.at.size - 1u);
    case kind::checkbox:
        return "1";
    case kind::range:
    case kind::urange:
        return std::to_string(k.max != k.def ? k.max : k.min);
    case kind::number:
    case kind::integer:
        return "42";
    case kind::hex:
        return "0x2a";
    case kind::special:
        return std::nullopt;
    }
    return std::nullopt;
}

// Every writer of the library (the one list, bench/writer_families.cpp) runs
// over an image holding one record of the node kind; each node it sends
// under the record's path is parsed again.
TEST(KeyTables, WritersSendTheirRowsBackToTheSameMembers)
{
    std::map<const cfg::keys::table *, std::set<std::string>> sent_by_any;
    for (const node_kind &nk : cfg::keys::node_kinds()) {
        if (nk.rules != cfg::keys::node_rules::keyed)
            continue;
        SCOPED_TRACE(nk.path);
        const unsigned n = nk.last - nk.first;
        const place at{&nk, n, 0, nk.inner_last};
        std::string params;
        for (std::size_t r = 0; r < nk.keys->rows.size(); ++r) {
            const key &k = nk.keys->rows[r];
            if (const auto v = telling_value(k, r); v && k.count == 0)
                params += param_line(std::string(k.name), v);
        }
        const std::string path = concrete_path(nk, nk.first + n, nk.inner_last);
        auto first = support::fresh_image();
        first->limits.ceiling = UINT32_MAX; // every limit written
        support::parse(*first, node_text(path, params));
        for (const auto &family : bench::writer_families())
            for (const auto &call : family.calls) {
                const auto out = support::write([&](uint8_t **c) { return call.write(c, *first); });
                std::set<std::string> names;
                for (const auto &node : out.message.nodes)
                    if (node.path == path)
                        for (const auto &p : node.params)
                            names.insert(p.name);
                if (names.empty())
                    continue;
                sent_by_any[nk.keys].insert(names.begin(), names.end());
                auto second = support::fresh_image();
                all_parser(second.get(), out.as_message().data());
                for (const key &k : nk.keys->rows) {
                    if (k.out == cfg::keys::sent::none || k.out == cfg::keys::sent::own_format ||
                        k.count != 0 || k.how == kind::special ||
                        names.count(std::string(k.wire_name())) == 0)
                        continue;
                    if (k.how == kind::text)
                        EXPECT_EQ(stored_text(*second, at, k), stored_text(*first, at, k)) << k.name;
                    else
                        EXPECT_EQ(stored_number(*second, at, k), stored_number(*first, at, k)) << k.name;
                }
            }
    }
    // The rows marked as sent are the names the writers send.
    for (const node_kind &nk : cfg::keys::node_kinds()) {
        if (nk.rules != cfg::keys::node_rules::keyed)
            continue;
        std::set<std::string> marked;
        for (const key &k : nk.keys->rows)
            if (k.out != cfg::keys::sent::none && k.count == 0)
                marked.insert(std::string(k.wire_name()));
        std::set<std::string> sent = sent_by_any[nk.keys];
        std::erase_if(sent, [&](const std::string &name) {
            const key *k = row_of(nk, name);
            return k != nullptr && k->count != 0;
        });
        EXPECT_EQ(sent, marked) << nk.path;
    }
}

} // namespace
