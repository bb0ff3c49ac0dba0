// The round-trip property of the parser and the section writers, shared by
// the fuzz target fuzz/roundtrip.cpp and the unit test over the samples:
//
//   1. parse a message into a fresh zero-filled image A (max_ports from
//      header word 0 as every message fuzz target picks it: 0 gives 72, n
//      gives n - 1);
//   2. run every section writer over A (the one list of writers,
//      bench/writer_families.cpp);
//   3. parse what they wrote into a second fresh image B (as one message);
//   4. run every writer over B: each writer's output equals its output for A
//      byte for byte, and the list counts of B equal those of A.
//
// Why bytes and not members: every writer renders each member it sends
// without loss (numbers in decimal or hex, texts up to their NUL, each bit
// field on its own), so equal outputs mean equal members as far as any
// writer sends them, while a member-by-member compare would need a list of
// everything no writer sends (time-stamps, `valid` flags, application
// areas, text bytes after the NUL). The one member compare kept is cheap
// and sees what the bytes cannot: the list counts (`current`), which drop
// when a writer leaves out a filled entry that A holds (the output of A and
// of B would then both lack it, and agree).
//
// Both images start with the call-limit `ceiling` at its largest, as the
// cfgmsg tool sets it: only an application sets it, and save_limits leaves
// out every limit at or above it (all of them in a zero-filled image).
//
// The exceptions, what the library deliberately does not give back as
// written, are all listed at `excused` below with their reasons.
#pragma once

#include "check.h"
#include "msgtext.h"
#include "writer_families.h"

#include <cfgparser.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace roundtrip {

using bytes = std::vector<uint8_t>;

// Images (over 600 KB each) are kept for reuse once released: a new block
// of that size, paged in afresh, costs more than filling a used one with
// zeros, and a check makes several.
inline std::vector<cfg_image_t *> &spare_images()
{
    static auto *spare = new std::vector<cfg_image_t *>; // never destroyed: its images stay reachable
    return *spare;
}

struct image_free {
    void operator()(cfg_image_t *image) const noexcept
    {
        try {
            spare_images().push_back(image);
        } catch (...) {
            std::free(image);
        }
    }
};
using image_ptr = std::unique_ptr<cfg_image_t, image_free>;

// A released image, or a new block (its bytes are not yet set).
inline image_ptr unset_image()
{
    if (spare_images().empty()) {
        image_ptr image(static_cast<cfg_image_t *>(std::malloc(sizeof(cfg_image_t))));
        if (!image)
            throw std::bad_alloc();
        return image;
    }
    image_ptr image(spare_images().back());
    spare_images().pop_back();
    return image;
}

inline image_ptr image_copy(const cfg_image_t &base)
{
    image_ptr image = unset_image();
    std::memcpy(image.get(), &base, sizeof base);
    return image;
}

inline image_ptr fresh_image(uint32_t max_ports)
{
    image_ptr image = unset_image();
    std::memset(image.get(), 0, sizeof(cfg_image_t));
    image->max_ports = max_ports;
    image->limits.ceiling = UINT32_MAX;
    return image;
}

// The writer calls of the list, in its order.
inline const std::vector<const bench::writer_call *> &calls()
{
    static const std::vector<const bench::writer_call *> all = [] {
        std::vector<const bench::writer_call *> v;
        for (const bench::writer_family &family : bench::writer_families())
            for (const bench::writer_call &call : family.calls)
                v.push_back(&call);
        return v;
    }();
    return all;
}

// Output of writer call `call` for `image`.
inline bytes write_one(const cfg_image_t &image, std::size_t call)
{
    static bytes buffer(bench::writer_buffer_size);
    uint8_t *cursor = buffer.data();
    const int n = calls()[call]->write(&cursor, image);
    return bytes(buffer.begin(), buffer.begin() + (n > 0 ? n : 0));
}

// Every writer's output for `image`, in the order of the list; with
// `only`, just the calls it marks (the others stay empty).
inline std::vector<bytes> write_all(const cfg_image_t &image, const std::vector<bool> *only = nullptr)
{
    std::vector<bytes> out(calls().size());
    for (std::size_t call = 0; call < out.size(); ++call)
        if (!only || (*only)[call])
            out[call] = write_one(image, call);
    return out;
}

// Whether `x` and `y` differ in any part of the image that writer call
// `call` reads.
inline bool parts_differ(const cfg_image_t &x, const cfg_image_t &y, std::size_t call)
{
    const auto *px = reinterpret_cast<const unsigned char *>(&x);
    const auto *py = reinterpret_cast<const unsigned char *>(&y);
    for (const bench::image_part &part : calls()[call]->reads)
        if (std::memcmp(px + part.offset, py + part.offset, part.size) != 0)
            return true;
    return false;
}

// Parses the outputs that make up the configuration (not the summaries
// that repeat other writers' nodes, see writer_call::in_full_config) as one
// message, their nodes in the order of the list, as the configuration
// manager sends a whole configuration (one recount at its end).
inline void parse_all(cfg_image_t &image, const std::vector<bytes> &outputs)
{
    bytes message(CFG_MSG_HEADER_SIZE, 0);
    message.push_back(CFG_MSG_OP_CONFIG);
    std::size_t i = 0;
    for (const bench::writer_family &family : bench::writer_families())
        for (const bench::writer_call &call : family.calls) {
            const bytes &body = outputs[i++];
            // Nodes only: without the operation byte and the closing byte.
            if (call.in_full_config && body.size() > 2)
                message.insert(message.end(), body.begin() + 1, body.end() - 1);
        }
    message.push_back(0);
    const auto length = static_cast<uint32_t>(message.size() - CFG_MSG_HEADER_SIZE);
    for (int k = 0; k < 4; ++k)
        message[CFG_MSG_BODY_LENGTH_OFFSET + k] = static_cast<uint8_t>(length >> (8 * k));
    all_parser(&image, message.data());
}

// Param of one writer's output: path, name and occurrence of the name in
// its node.
using param_key = std::tuple<std::string, std::string, std::size_t>;
using param_values = std::map<param_key, std::optional<std::string>>;

inline bool decode_params(const bytes &body, param_values &out, std::vector<param_key> &order)
{
    cfgmsg::message m;
    cfgmsg::wire_error err;
    if (!cfgmsg::decode_body(body, 0, m, err))
        return false;
    for (const cfgmsg::node &nd : m.nodes) {
        std::map<std::string, std::size_t> seen;
        for (const cfgmsg::param &p : nd.params) {
            param_key key{nd.path, p.name, seen[p.name]++};
            order.push_back(key);
            out.emplace(std::move(key), p.value);
        }
    }
    return true;
}

// What the writers send for a zero-filled image, and for the image that the
// parser makes of that output (the defaults), per max_ports.
struct zero_outputs {
    std::vector<bytes> zero;
    std::vector<bytes> defaults;
};

inline const zero_outputs &zero_outputs_for(uint32_t max_ports)
{
    static std::map<uint32_t, zero_outputs> cache;
    auto it = cache.find(max_ports);
    if (it == cache.end()) {
        const image_ptr zero = fresh_image(max_ports);
        zero_outputs z{write_all(*zero), {}};
        const image_ptr defaults = fresh_image(max_ports);
        parse_all(*defaults, z.zero);
        z.defaults = write_all(*defaults);
        it = cache.emplace(max_ports, std::move(z)).first;
    }
    return it->second;
}

// How writer call `call` sends the param `key` after the parser has stored
// `value` for it into a copy of `base` (a node holding just that param).
inline std::optional<std::string> sent_after_storing(const cfg_image_t &base, std::size_t call,
                                                     const param_key &key,
                                                     const std::optional<std::string> &value)
{
    const image_ptr copy = image_copy(base);
    cfgmsg::message m;
    m.nodes.push_back(cfgmsg::node{std::get<0>(key), {cfgmsg::param{std::get<1>(key), value}}});
    const bytes message = cfgmsg::encode(m);
    all_parser(copy.get(), message.data());
    param_values values;
    std::vector<param_key> order;
    decode_params(write_one(*copy, call), values, order);
    const auto it = values.find(key);
    return it == values.end() ? std::optional<std::string>("(not sent)") : it->second;
}

// How writer call `call` sends a list entry `name_0` after the parser has
// stored `value` for it alone into a fresh image (list writers number the
// filled entries from 0, so the entry's own number says nothing of where it
// came from).
inline std::optional<std::string> sent_alone(uint32_t max_ports, std::size_t call, const std::string &path,
                                             const std::string &name_0,
                                             const std::optional<std::string> &value)
{
    const image_ptr fresh = fresh_image(max_ports);
    return sent_after_storing(*fresh, call, param_key{path, name_0, 0}, value);
}

// Field n (from 1) of a dial-plan rule line as the writer puts it, one
// blank between fields (no stored text field holds a blank), or nothing
// when the line has fewer fields.
inline std::optional<std::string_view> written_field(std::string_view rule, int n)
{
    for (; n > 1; --n) {
        const std::size_t blank = rule.find(' ');
        if (blank == std::string_view::npos)
            return std::nullopt;
        rule.remove_prefix(blank + 1);
    }
    return rule.substr(0, rule.find(' '));
}

// Whether field 6 holds a double quote between its enclosing ones.
inline bool quote_inside_field6(const std::string &rule)
{
    const auto f = written_field(rule, 6);
    return f && f->size() > 2 && f->substr(1, f->size() - 2).find('"') != std::string_view::npos;
}

// Whether field 5, the destination, is empty.
inline bool empty_field5(const std::string &rule)
{
    const auto f = written_field(rule, 5);
    return f && f->empty();
}

// Whether the VTU rule that param `name` ("vtu<rule>.<field>") belongs to
// is out of use in `image`.
inline bool vtu_rule_unused(const cfg_image_t &image, const std::string &name)
{
    if (!name.starts_with("vtu"))
        return false;
    char *end = nullptr;
    const unsigned long rule = std::strtoul(name.c_str() + 3, &end, 10);
    return end != name.c_str() + 3 && *end == '.' && rule < CFG_VTU_RULES &&
           image.switch_cfg.vtu[rule].valid == 0;
}

// Takes the dial-plan rules whose protocol names no rule kind out of the
// image (kind 0: an empty entry).
inline void forget_rules_without_protocol(cfg_image_t &image)
{
    for (profile_dialplan_cfg_t &plan : image.dialplans)
        for (dial_plan_t &rule : plan.entries) {
            const std::string_view protocol(rule.protocol, strnlen(rule.protocol, sizeof rule.protocol));
            if (protocol != "h323" && protocol != "sip" && protocol != "sip-t" && protocol != "pickup")
                rule.type = 0;
        }
}

// THE EXCEPTIONS: what the library deliberately does not give back as
// written, each with its reason. Everything else that differs is a fault.
//
//  1. A message that turns out malformed (a length running past the body)
//     ends the parse at once without the recount of the lists: what came
//     before it stays stored, but `current` still counts the lists as they
//     were, and the list writers send only `current` entries. Image A is
//     therefore recounted after its parse (as a waiting thread does after
//     its timeout) before the writers run; a parse that ended normally has
//     recounted already, and the recount changes nothing.
//  2. A member that no message set still holds the zero fill of the
//     application's image, which is no value the parser would store for
//     many params (a range starting above 0, "1 or else 2", a text with a
//     default); the first parse of it stores the param's default instead.
//     Recognised by A sending a zero (0, 0x0, an empty text) and B sending
//     exactly what the parser stores for that zero, so a stored value that
//     does not come back, or comes back as anything else, is still caught.
//     A writer section that no message touched at all is recognised whole:
//     A sends what a zero-filled image sends, B what the parser makes of it.
//  3. A dial-plan rule that the rule text cannot carry, since the text has
//     no escape and the reader splits it at blanks: a field 6 that holds a
//     double quote (taken as given when the text did not open it with one),
//     which the writer puts in double quotes, so the reader ends it at its
//     first inner quote; or an empty field 5 (a rule text that ended after
//     its protocol), which the writer leaves between two blanks, so the
//     reader takes the quoted field 6 for field 5 and every later field one
//     place early. Recognised by the quote inside field 6 or the empty field
//     5 of A's rule and B sending exactly what the parser stores for that
//     rule.
//  4. The fields of a VTU rule not in use (`valid` 0: its "vid" never came,
//     came empty, or under a name the handler cannot read): the whole-switch
//     writer blanks every field of such a rule, so none of them comes back,
//     while ins_rule_in_vtu sends any rule it is given, in use or not.
//     Recognised by A's rule being out of use and B sending exactly what
//     the parser stores for the field's empty value.
//  5. A dial-plan rule whose protocol (field 4) is none of the four protocol
//     words: such a rule text leaves the kind of the entry as it was, so
//     the entry keeps the kind of a rule stored under its number before
//     (in the same message or earlier) and counts as filled, while a fresh
//     parse of what the writer sends stores no kind for it, so the rule does
//     not come back and the rules after it move up a number. Such rules are
//     taken out of image A (kind 0, the lists recounted) before its writers
//     run, like exception 1.
//
// excused() applies exceptions 2 to 4 to a param of writer call `call`
// written as `a` for image A and as `b` for image B: the reason, or nullptr
// for a fault.
inline const char *excused(const cfg_image_t &image_a, std::size_t call, const param_key &key,
                           const std::optional<std::string> &a, const std::optional<std::string> &b)
{
    const bool zero = !a || a->empty() || *a == "0" || *a == "0x0" || *a == "\"\"";
    // Stored into a copy of A, not B: a param the parser dropped would
    // leave A's value and not pass for B's.
    if (zero && sent_after_storing(image_a, call, key, a) == b)
        return "zero fill of a member no message set, replaced by the parser's default";
    if (a && std::get<0>(key).ends_with(".dialplan") && std::get<1>(key).starts_with("dialplan_") &&
        (quote_inside_field6(*a) || empty_field5(*a)) &&
        sent_alone(image_a.max_ports, call, std::get<0>(key), "dialplan_0", a) == b)
        return "double quote inside field 6 or empty field 5 of a dial-plan rule, which the rule text cannot "
               "carry";
    if (std::get<0>(key) == "config.Switch.vtu" && vtu_rule_unused(image_a, std::get<1>(key)) &&
        sent_after_storing(image_a, call, key, std::nullopt) == b)
        return "field of a VTU rule not in use, which the whole-switch writer blanks";
    return nullptr;
}

// The list counts of an image, named.
inline std::vector<std::pair<std::string, uint32_t>> list_counts(const cfg_image_t &im)
{
    std::vector<std::pair<std::string, uint32_t>> out{
        {"groups", im.groups.current}, {"fxo_groups", im.fxo_groups.current},
        {"hosts", im.hosts.current},   {"mac_filter", im.mac_filter.current},
        {"routes", im.routes.current}, {"firewall", im.firewall.current},
        {"limits", im.limits.current}};
    for (int p = 0; p < CFG_PROFILES; ++p)
        out.emplace_back("dialplans[" + std::to_string(p) + "]", im.dialplans[p].current);
    for (int m = 0; m < CFG_MODIFIERS; ++m)
        out.emplace_back("modifiers[" + std::to_string(m) + "]", im.modifiers[m].count);
    return out;
}

// Checks the property for one whole message (its body length field must
// match its size). Returns an empty string when it holds, otherwise the
// first fault found.
//
// `focused` runs only the writer calls whose parts of the image (see
// writer_call::reads) the message changed in image A, or the parse of
// their outputs changed in image B, and parses only those outputs into B:
// every other call reads parts that hold the zero-filled image's bytes in
// both images and so writes the same bytes for both. What it leaves out is
// the parse, in B, of the outputs of the untouched sections, which is the
// same for every message and is checked by every whole check. The fuzz
// target focuses on all but its largest inputs; a message that touches
// every section costs as much either way.
inline std::string check(const uint8_t *message, bool focused = false)
{
    const uint32_t max_ports = fuzz::max_ports_of(message);
    const image_ptr a = fresh_image(max_ports);
    all_parser(a.get(), message);
    forget_rules_without_protocol(*a);                    // exception 5
    recalculate_start_and_current_after_timeout(a.get()); // exception 1
    std::vector<bool> runs(calls().size(), true);
    const image_ptr zero = focused ? fresh_image(max_ports) : nullptr;
    if (focused)
        for (std::size_t call = 0; call < runs.size(); ++call)
            runs[call] = parts_differ(*a, *zero, call);
    std::vector<bytes> out_a = write_all(*a, &runs);

    const image_ptr b = fresh_image(max_ports);
    parse_all(*b, out_a);
    if (focused)
        for (std::size_t call = 0; call < runs.size(); ++call)
            if (!runs[call] && parts_differ(*b, *zero, call)) {
                runs[call] = true;
                out_a[call] = write_one(*a, call);
            }
    const std::vector<bytes> out_b = write_all(*b, &runs);

    const zero_outputs *z = focused ? nullptr : &zero_outputs_for(max_ports);
    for (std::size_t call = 0; call < out_a.size(); ++call) {
        // Equal, or a writer's section that no message touched (the first
        // exception below for all its params at once).
        if (out_a[call] == out_b[call] ||
            (z && out_a[call] == z->zero[call] && out_b[call] == z->defaults[call]))
            continue;
        const std::string where = "writer call " + std::to_string(call) + ": ";
        param_values va, vb;
        std::vector<param_key> order_a, order_b;
        if (!decode_params(out_a[call], va, order_a) || !decode_params(out_b[call], vb, order_b))
            return where + "a malformed body";
        if (order_a != order_b) {
            const auto [at_a, at_b] =
                std::mismatch(order_a.begin(), order_a.end(), order_b.begin(), order_b.end());
            const auto shown = [](const auto &at, const std::vector<param_key> &order) {
                return at == order.end() ? std::string("(none)") : std::get<0>(*at) + " " + std::get<1>(*at);
            };
            return where + "the first output carries " + shown(at_a, order_a) + " where the second carries " +
                   shown(at_b, order_b);
        }
        for (const param_key &key : order_a) {
            const auto &x = va[key];
            const auto &y = vb[key];
            if (x == y || excused(*a, call, key, x, y) != nullptr)
                continue;
            return where + std::get<0>(key) + " " + std::get<1>(key) + ": '" + x.value_or("(none)") +
                   "' came back as '" + y.value_or("(none)") + "'";
        }
    }
    const auto counts_a = list_counts(*a);
    const auto counts_b = list_counts(*b);
    for (std::size_t i = 0; i < counts_a.size(); ++i)
        if (counts_a[i] != counts_b[i])
            return "list count of " + counts_a[i].first + ": " + std::to_string(counts_a[i].second) +
                   " in the first image, " + std::to_string(counts_b[i].second) + " in the second";
    return {};
}

} // namespace roundtrip
