// Selecting nodes and params by pattern, and the edits and listings built
// on it: 'get --flat', 'get --json', 'diff --json', 'set -f' and the
// patterns that get, set, --unset, --delete-node and schema take.
//
// Pattern words (paths and param names):
//   *          any run of bytes, dots included ('config.VOIP.*')
//   ?          any one byte
//   {0..7}     a decimal number from 0 to 7, written without leading zeros
//   {a,b,3..5} one of the words or ranges listed
//   \\ \n \r \t \xNN   the escapes of the text form; \* \? \{ \} \, \. \=
//              stand for the character itself
// A word without an unescaped *, ? or {..} names itself.
//
// A flat line is 'PATH.PARAM=VALUE', as 'get --flat' prints it and
// 'set -f' reads it: PATH, PARAM and VALUE in the escapes of the text
// form, '=' and glob characters in PATH and PARAM escaped too, so that
// every byte comes back, and a '.' in PARAM written '\.'. 'PATH.PARAM=' is
// a param without a value. PATH.PARAM is split at the last '.' that is
// neither escaped nor inside braces.
#pragma once

#include "cli.h"
#include "msgedit.h"
#include "msgtext.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cfgmsg {

struct glob {
    struct choice {
        std::string word; // when not a range
        bool range = false;
        unsigned long first = 0, last = 0;
    };
    struct part {
        enum kind_t { literal, any, one, one_of } kind = literal;
        std::string text;            // literal bytes
        std::vector<choice> choices; // one_of
    };
    std::vector<part> parts;
    bool wild = false; // holds *, ? or {..}
};

// Compiles a pattern word. False with `error` set on a bad escape or an
// empty range.
bool compile_glob(std::string_view word, glob &out, std::string &error);
bool glob_matches(const glob &g, std::string_view text);
// Whether the word holds an unescaped *, ? or {..}, or is no pattern at
// all (a bad escape or range, which compile_glob then reports).
bool is_glob(std::string_view word);

// The node paths of `msg` that `g` matches, each once, in message order.
std::vector<std::string> matching_paths(const message &msg, const glob &g);

// 'PATH.PARAM=VALUE' for one param, escaped as described above.
std::string flat_line(const node &nd, const param &p);

// One line of an edit file, or one edit given on the command line.
struct edit {
    enum kind_t { set, unset, delete_node } kind = set;
    std::string ref;                  // PATH.PARAM, or PATH for delete_node (pattern words)
    std::optional<std::string> value; // set: nullopt for no value
    std::string origin;               // "FILE:LINE" or the argument, for reports
};

// Parses one line of an edit file: 'PATH.PARAM=VALUE' (VALUE escaped),
// '--unset PATH.PARAM' or '--delete-node PATH'. False with `error` set.
bool parse_edit_line(std::string_view line, edit &out, std::string &error);

// Whether 'set' must take its edits one at a time through the patterns:
// -f was given or an edit holds a pattern.
bool edits_in_sequence(const cli::options &opt);

// The edits of 'set' applied to `msg` in order: the --delete-node, --unset
// and PATH.PARAM=VALUE arguments as plain 'set' orders them, then each line
// of the -f file in turn, each against the message as the edits before it
// left it. All or nothing: returns exit_ok, or the exit status after
// reporting the first edit that cannot be made (msg must then be dropped).
int apply_edits_in_sequence(const cli::options &opt, message &msg, const std::string &file);

// 'get' with --flat, --json or a pattern: prints the selection of `msg`.
int print_selection(const cli::options &opt, const message &msg);

// 'diff --json': the changes as an array of {"path", "name", "a", "b"}.
struct param_change;
std::string changes_json(const std::vector<param_change> &changes, bool redact);

// 'schema' PATH with a pattern: whether a node kind's path (with its
// '{first..last}' parts) has a concrete path that `g` matches.
bool kind_selected(std::string_view kind_path, const glob &g);

} // namespace cfgmsg
