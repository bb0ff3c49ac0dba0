// The param loop shared by every section handler.
//
// A section with a key table reads like this:
//
//     node_end h323(cfg_image_t &image, node &n)
//     {
//         return keyed_node(n, keys::h323, &image.h323, image.h323.updated);
//     }
//
// and a section with a loop of its own (entry numbers, list lines) like this:
//
//     while (param p = next_param(n)) {
//         const keys::key *k = keys::find(keys::hosts, p.name_view());
//         ...
//         const image_lock lock;
//         keys::store(*k, &image.hosts, p.value(), entry);
//     }
//     return finish_node(n, image.hosts.updated);
//
// next_param reads the next param of the node (skipping params whose copy
// failed), the lock is held only for the store, the param's strings are
// freed when `p` goes out of scope after the lock is released, and
// finish_node stamps the section's time-stamp, or tells the walk to stop the
// whole message when a param did not fit in it.
#pragma once

#include "cfgmngr/key_table.h"
#include "cfgmngr/routes.h"

#include <cfgparser.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace cfg::parse {

// How a handler leaves its node.
enum class node_end {
    next, // go on with the next node
    stop, // end the whole message now, without recalculation
};

using routes::pattern_count;

// The node being parsed: its path, the pattern results, the route it took
// and the read position inside the message.
struct node {
    const char *path = nullptr;
    uint16_t param_count = 0;
    const uint8_t **cursor = nullptr;
    uint32_t *remaining = nullptr;
    int32_t matches[pattern_count] = {};   // substrings found per pattern
    char **substrings[pattern_count] = {}; // their table (index 0: whole path)
    uint16_t params_read = 0;
    bool malformed = false;               // a length ran past the message
    const routes::route *route = nullptr; // the kind of node it is (nullptr: unknown)

    // Number `part` of the path, as the route reads it.
    routes::path_number number(unsigned part = 0) const noexcept
    {
        const int which = route->matched;
        return routes::number_of(*route, path, which < 0 ? 0 : matches[which],
                                 which < 0 ? nullptr : substrings[which], part);
    }
};

// One param read from the message; owns its name and value and frees them
// with free_params when it goes out of scope.
class param {
public:
    param() noexcept = default;
    param(param &&other) noexcept : name_(other.name_), value_(other.value_), name_length_(other.name_length_)
    {
        other.name_ = other.value_ = nullptr;
        other.name_length_ = 0;
    }
    param(const param &) = delete;
    param &operator=(const param &) = delete;
    param &operator=(param &&) = delete;
    ~param() { free_params(&name_, &value_); }

    explicit operator bool() const noexcept { return name_ != nullptr; }

    // Keys are matched against name_view() by keys::find (cfgmngr/key_table.h).
    const char *name() const noexcept { return name_; }
    std::string_view name_view() const noexcept { return {name_, name_length_}; }
    const char *value() const noexcept { return value_; } // null: no value

private:
    friend param next_param(node &n, bool quotes_mean_empty) noexcept;
    char *name_ = nullptr;
    char *value_ = nullptr;
    std::size_t name_length_ = 0; // strlen(name_)
};

// Reads the node's next param. An empty (false) param ends the loop: either
// every param was read or the message is malformed (n.malformed is set).
// Params whose strings could not be copied are skipped.
param next_param(node &n, bool quotes_mean_empty = true) noexcept;

// Holds RWlockCfg for its lifetime.
class image_lock {
public:
    image_lock() noexcept { pthread_mutex_lock(&RWlockCfg); }
    ~image_lock() { pthread_mutex_unlock(&RWlockCfg); }
    image_lock(const image_lock &) = delete;
    image_lock &operator=(const image_lock &) = delete;
};

// Ends a node: a malformed node stops the message and keeps its stamp;
// otherwise the stamp gets the current seconds under the lock.
node_end finish_node(const node &n, uint32_t &updated) noexcept;

// The param loop of a section with a key table: each param's row is found
// before the lock is taken, stored into `record` under it, and the param freed
// after it is released; then the node ends as finish_node ends it.
node_end keyed_node(node &n, const keys::table &keys, void *record, uint32_t &updated) noexcept;

// Reads and drops the params of a node that no handler knows.
node_end skip_unknown(node &n) noexcept;

} // namespace cfg::parse
