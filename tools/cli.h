// What the commands of cfgmsg share: their options, the table row that
// declares a command, and reporting. A command is one row of the table in
// cfgmsg.cpp and one `run` function, which may live in a file of its own.
#pragma once

#include "msgload.h"

#include <cfgparser.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cfgmsg::cli {

// Exit status of every command, as grep's: 0 yes (done, same, no
// finding), 1 no (a finding, a difference, an absent node or param), 2
// trouble (usage error, unreadable or malformed input, a failed write).
inline constexpr int exit_ok = 0;
inline constexpr int exit_no = 1;
inline constexpr int exit_trouble = 2;
inline constexpr int exit_usage = exit_trouble;

// Options a command may accept (command::accepts is a set of these bits).
enum option_bit : unsigned {
    opt_json = 1u << 0,        // --json
    opt_ports = 1u << 1,       // --ports N
    opt_redact = 1u << 2,      // --redact
    opt_output = 1u << 3,      // -o OUT
    opt_format = 1u << 4,      // --format binary|text|json
    opt_strict = 1u << 5,      // --strict
    opt_unset = 1u << 6,       // --unset PATH.PARAM (repeatable)
    opt_delete_node = 1u << 7, // --delete-node PATH (repeatable)
    opt_markdown = 1u << 8,    // --markdown
    opt_in_place = 1u << 9,    // -i (set: OUT is FILE)
    opt_flat = 1u << 10,       // --flat
    opt_quiet = 1u << 11,      // -q, --quiet
    opt_edits = 1u << 12,      // -f EDITS
};

struct options {
    bool json = false;
    bool redact = false;
    bool strict = false;
    bool markdown = false;
    bool in_place = false;
    bool flat = false;
    bool quiet = false;
    std::uint32_t ports = CFG_MAX_PORTS;
    std::optional<std::string> output;
    std::optional<msg_format> format;
    std::optional<std::string> edits_file; // -f
    std::vector<std::string> unsets;
    std::vector<std::string> delete_nodes;
    std::vector<std::string> args; // the words that are not options, in order
};

struct command {
    std::string_view name;
    const char *summary; // its lines in the command list of 'cfgmsg --help'
    const char *help;    // 'cfgmsg NAME --help'
    unsigned accepts;    // option bits accepted
    std::size_t min_args;
    std::size_t max_args;
    const char *arity; // usage error when the word count is off ("expects one FILE")
    bool all_files;    // every word is a FILE, so '-' may come only once
    int trouble;       // exit status of a usage error (diff: 2)
    int (*run)(const options &);
};

// "cfgmsg: TEXT" on standard error; returns `status`.
int fail(int status, const std::string &text);

// load_message, reporting a failure on standard error.
std::optional<loaded_message> load(const std::string &file, std::optional<msg_format> want = std::nullopt,
                                   unsigned accepts = accept_any);

// Writes to standard output; reports a failed write and returns exit_trouble.
int write_stdout(std::string_view data);

} // namespace cfgmsg::cli
