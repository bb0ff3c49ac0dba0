// cfgmsg: shows, builds and edits configuration messages, and shows what the
// library makes of them.
//
//   cfgmsg decode [--json] [--redact] FILE     binary message -> text (or JSON)
//   cfgmsg encode [--json] FILE                text or JSON -> binary message
//   cfgmsg apply [--ports N] [--json] [--redact] FILE...
//                                              what the library stores, as its
//                                              section writers send it
//   cfgmsg diff [--ports N] [--redact] A B     params that differ after applying A and B
//   cfgmsg get [--redact] FILE [PATH [PARAM]]  a node, or one param's value
//   cfgmsg set FILE (-o OUT | -i) [--format F] [--strict] PATH.PARAM=VALUE...
//              [--unset PATH.PARAM] [--delete-node PATH]
//
// Every command reads binary, text or JSON messages (msgload.h); decode
// takes binary ones only and encode text or JSON. Each command is one row of
// `commands` below and one run_ function.
//
// Exit status, as grep's (cli.h): 0 yes, 1 no (finding, difference,
// absent node or param), 2 trouble (usage, unreadable or malformed input,
// a failed write).
// The wire reader is the one of msgtext, not the library's parser, so that a
// malformed message is reported with its byte offset before the library
// sees it.
#include "apply.h"
#include "check.h"
#include "cli.h"
#include "msgedit.h"
#include "msgjson.h"
#include "msgload.h"
#include "msgtext.h"
#include "safe_write.h"
#include "schema.h"
#include "route.h"
#include "select.h"
#include "stream.h"
#include "textedit.h"
#include "traced_apply.h"
#include "value_check.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <getopt.h>
#include <sys/stat.h>
#include <unistd.h>

#ifndef CFGMSG_VERSION
#define CFGMSG_VERSION "unknown"
#endif

namespace {

using namespace cfgmsg::cli;
using cfgmsg::message;
using cfgmsg::msg_format;

constexpr const char *main_intro = "usage: cfgmsg COMMAND [OPTIONS] FILE...\n"
                                   "\n"
                                   "Shows, builds and edits the configuration messages exchanged with the\n"
                                   "configuration manager, and shows what libcfgparser stores from them.\n"
                                   "\n"
                                   "commands:\n";

constexpr const char *main_outro =
    "\n"
    "FILE may be '-' for standard input, and holds a binary message, its text\n"
    "form or its JSON form (recognised by content; decode reads binary messages\n"
    "only, encode text or JSON). 'cfgmsg COMMAND --help' describes a command;\n"
    "'cfgmsg --version' prints the version.\n"
    "\n"
    "Exit status of every command, as grep's:\n"
    "  0  yes: done; check found nothing, diff no difference\n"
    "  1  no: check found a param not stored as sent, diff a difference, get\n"
    "     or set a node or param that FILE lacks, set --strict a value refused\n"
    "  2  trouble: a usage error, an unreadable or malformed FILE, a failed\n"
    "     write; the reason goes to standard error\n"
    "\n"
    "examples:\n"
    "  cfgmsg decode config.msg                    the message as text\n"
    "  cfgmsg get config.msg config.VOIP.sip enablesip\n"
    "                                              one value\n"
    "  cfgmsg set -i config.msg config.VOIP.sip.enablesip=1\n"
    "                                              edit in place\n"
    "  cfgmsg set config.msg -o new.msg --unset config.VOIP.h323.password\n"
    "                                              a param removed, in a new file\n"
    "  cfgmsg check config.msg                     what the library would not\n"
    "                                              store as sent\n"
    "  cfgmsg diff config.msg new.msg              what changed, as stored\n"
    "  cfgmsg decode --redact config.msg           to share: secrets as ***\n";

constexpr const char *decode_help =
    "usage: cfgmsg decode [--json] [--redact] FILE\n"
    "\n"
    "Prints the binary configuration message in FILE ('-' for standard input)\n"
    "as text: the header fields, then every node as '[path]' followed by its\n"
    "params as 'name = value'. 'name =' is a param without a value; values\n"
    "are shown as sent, so an empty text sent as \"\" shows as \"\".\n"
    "The output is what 'cfgmsg encode' reads, and encodes to the same bytes.\n"
    "The input is read up to the body length that its header declares; a\n"
    "malformed message, one that ends early or goes on after its body, is\n"
    "reported with the byte offset of the fault (exit 2).\n"
    "\n"
    "options:\n"
    "  --json    print a JSON document instead: header fields and \"nodes\", each\n"
    "            with \"path\" and \"params\" ({\"name\", \"value\"}, in order); a\n"
    "            param without a value has \"value\": null. 'cfgmsg encode' reads\n"
    "            it back. Bytes that are not UTF-8 show as U+FFFD (with a warning,\n"
    "            as such JSON does not encode to the same bytes); the text form\n"
    "            keeps every byte.\n"
    "  --redact  show the values of passwords, keys, secrets and SNMP communities\n"
    "            (and the password word of an SNMP user) as ***\n"
    "  --help    this text\n";

constexpr const char *encode_help =
    "usage: cfgmsg encode [--json] FILE > MESSAGE\n"
    "\n"
    "Reads a configuration message in text form or in the JSON form of\n"
    "'cfgmsg decode --json' from FILE ('-' for standard input) and writes the\n"
    "binary message to standard output, which must not be a terminal; the body\n"
    "length is computed. Text errors are reported as FILE:LINE: reason, JSON\n"
    "errors as FILE: bad JSON at POSITION: reason (exit 2).\n"
    "\n"
    "text form:\n"
    "  header0 = 0x0        optional header fields before the first node\n"
    "  operation = 2        (also header2, terminator = none | BYTE)\n"
    "  [config.VOIP.sip]    a node\n"
    "  enablesip = 1        a param; 'name =' has no value; \"\" is kept as is\n"
    "  # comment            escapes: \\\\ \\n \\r \\t \\xNN\n"
    "\n"
    "options:\n"
    "  --json    read FILE as JSON whatever it starts with\n"
    "  --help    this text\n";

constexpr const char *apply_help =
    "usage: cfgmsg apply [--ports N] [--json] [--redact] FILE...\n"
    "\n"
    "Parses the configuration messages in the FILEs, in order, into one\n"
    "zero-filled configuration image (call-limit ceiling at its largest, so\n"
    "that every limit shows), as an application would with all_parser,\n"
    "then runs every section writer of the library over it (global VoIP\n"
    "settings, every port and port profile, the profiles and their dial plans,\n"
    "the lists, the network and switch settings) and prints their nodes as one\n"
    "message in the text form of 'cfgmsg decode'. Nodes that several writers\n"
    "send under one path are shown as one node. The output is what the library\n"
    "stored, in the configuration manager's own words; 'cfgmsg encode' turns it\n"
    "into a message that applies to the same output again, once every section\n"
    "has been sent (a section that no message carried shows the zero-filled\n"
    "image, whose out-of-range values the parser replaces by their defaults).\n"
    "\n"
    "Each FILE (binary, text or JSON) is checked first; a malformed one is\n"
    "reported with the place of the fault and nothing is printed (exit 2).\n"
    "Error lines of the library's trace go to standard error.\n"
    "\n"
    "options:\n"
    "  --ports N   number of analog ports of the device, 1 to 72 (default 72)\n"
    "  --json      print the JSON form of 'cfgmsg decode --json'\n"
    "  --redact    show the values of passwords, keys, secrets and SNMP\n"
    "              communities (and the password word of an SNMP user) as ***\n"
    "  --help      this text\n";

constexpr const char *diff_help =
    "usage: cfgmsg diff [--ports N] [--redact] [--json | -q] A B\n"
    "\n"
    "Applies the message A and the message B (binary, text or JSON) each to a\n"
    "fresh image (as 'cfgmsg apply' does) and prints the params whose stored\n"
    "value differs, by node path and param name:\n"
    "\n"
    "  [config.VOIP.h323]\n"
    "  -    password = old      value after A ('-' line missing: only in B)\n"
    "  +    password = new      value after B ('+' line missing: only in A)\n"
    "\n"
    "Exit status, as diff(1): 0 no difference, 1 differences, 2 bad or\n"
    "unreadable input or usage error.\n"
    "\n"
    "options:\n"
    "  --ports N   number of analog ports of the device, 1 to 72 (default 72)\n"
    "  --redact    show secrets as *** (a changed password shows as a *** pair)\n"
    "  --json      print a JSON array instead, one {\"path\", \"name\", \"a\", \"b\"}\n"
    "              per param: \"a\" the value after A, \"b\" after B (null: no\n"
    "              value; left out: no such param on that side)\n"
    "  -q, --quiet print nothing; the exit status alone says whether they differ\n"
    "  --help      this text\n";

constexpr const char *get_help =
    "usage: cfgmsg get [--redact] [--flat | --json] FILE [PATH [PARAM]]\n"
    "\n"
    "Reads the message in FILE (binary, text or JSON; '-' for standard input).\n"
    "With PATH, prints every node of that path in the text form of 'cfgmsg\n"
    "decode'; with PARAM too, prints the value of that param, as it is, on a\n"
    "line of its own (an empty line for a param without a value; one line per\n"
    "occurrence). Without PATH, prints the node paths of FILE, one per line.\n"
    "A node or param that FILE does not have is reported (exit 1).\n"
    "PATH and PARAM take the escapes that get prints (\\xNN, \\t, \\\\ ...).\n"
    "\n"
    "PATH and PARAM may be patterns: '*' any run of characters (dots too), '?'\n"
    "one character, '{0..7}' a number from 0 to 7, '{a,b}' either word; \\* \\?\n"
    "\\{ \\} \\, \\. \\= are the plain characters, and the escapes of the text\n"
    "form (\\\\ \\n \\r \\t \\xNN) their bytes. 'config.VOIP.ports.port_{0..7}'\n"
    "selects the nodes of those ports, 'gain*' the params whose name begins\n"
    "with gain. A pattern that selects nothing is reported (exit 1).\n"
    "\n"
    "options:\n"
    "  --flat    print the selected params (every param without PATH) as\n"
    "            PATH.PARAM=VALUE lines, the edits that 'cfgmsg set -f' reads:\n"
    "            control bytes, bytes from 0x80, '\\' and blanks at either end\n"
    "            escaped as \\\\ \\n \\r \\t \\xNN, '=' and pattern characters of\n"
    "            PATH and PARAM as \\xNN, a '.' in PARAM as \\.; 'PATH.PARAM='\n"
    "            is a param without a value\n"
    "  --json    print the selected params (every param without PATH) as a JSON\n"
    "            array of {\"path\", \"name\", \"value\"} (null: no value)\n"
    "  --redact  show the values of passwords, keys, secrets and SNMP communities\n"
    "            (and the password word of an SNMP user) as ***\n"
    "  --help    this text\n";

constexpr const char *set_help =
    "usage: cfgmsg set FILE (-o OUT | -i) [--format F] [--strict] [-q] [PATH.PARAM=VALUE...]\n"
    "                  [--unset PATH.PARAM]... [--delete-node PATH]... [-f EDITS]\n"
    "\n"
    "Reads the message in FILE (binary, text or JSON) and writes it to OUT\n"
    "with these edits, in this order: every node of each --delete-node PATH is\n"
    "removed; every occurrence of each --unset PATH.PARAM is removed; each\n"
    "PATH.PARAM=VALUE gives every occurrence of PARAM in the nodes of PATH the\n"
    "VALUE, or, where there is none, adds PARAM at the end of the last node of\n"
    "PATH, or in a new node at the end of the message. PARAM is the part after\n"
    "the last '.'; 'PATH.PARAM=' sets no value; VALUE is taken as it is and is\n"
    "one line. PATH and PARAM take the escapes that get prints (\\xNN ...).\n"
    "The body length is computed anew. In a text FILE written as text only\n"
    "the edited lines change: comments, order and blank lines stay.\n"
    "\n"
    "OUT is written in the form of FILE unless --format says otherwise; '-'\n"
    "is standard output. A symbolic link OUT is followed to its file. A\n"
    "regular file is written whole to a temporary file beside it, flushed and\n"
    "renamed over it with the owner, group and mode of the old file, so OUT\n"
    "may name FILE (-i), and a failed or interrupted run (SIGINT, SIGTERM)\n"
    "leaves OUT as it was and no temporary file. A device, FIFO or socket is\n"
    "written through, never replaced. A node or param to delete that FILE\n"
    "does not have is reported (exit 1) and nothing is written.\n"
    "\n"
    "Each VALUE is checked against what the library stores for that param;\n"
    "a value it would not store as given draws a warning on standard error\n"
    "(the value of a secret param is never shown there).\n"
    "\n"
    "PATH and PARAM may be patterns, as in 'cfgmsg get' ('*', '?', '{0..7}',\n"
    "'{a,b}'): the edit is made on every node (and param) that FILE has and\n"
    "the pattern matches; one that matches nothing is reported (exit 1) and\n"
    "nothing is written. With a pattern, or with -f, the edits are made one at\n"
    "a time, in the order above and then in the order of the lines of EDITS,\n"
    "each on the message the edits before it left; PATH.PARAM is then split\n"
    "at the last '.' that is not escaped ('\\.') or inside braces.\n"
    "\n"
    "options:\n"
    "  -o OUT                 where to write the new message\n"
    "  -i                     edit FILE in place (the same as -o FILE)\n"
    "  --format F             binary, text or json (default: the form of FILE)\n"
    "  --strict               a value the library would not store as given is\n"
    "                         refused (exit 1, nothing written)\n"
    "  --unset PATH.PARAM     remove a param\n"
    "  --delete-node PATH     remove a node\n"
    "  -f EDITS               also make the edits of the file EDITS ('-': standard\n"
    "                         input), one a line: PATH.PARAM=VALUE (as\n"
    "                         'cfgmsg get --flat' prints it, VALUE with the\n"
    "                         escapes of the text form), --unset PATH.PARAM or\n"
    "                         --delete-node PATH; blank lines and lines starting\n"
    "                         with '#' are skipped. All or nothing: a line that is\n"
    "                         no edit is reported with its number (exit 2)\n"
    "  -q, --quiet            no warnings about values\n"
    "  --help                 this text\n"
    "\n"
    "example: cfgmsg get --flat A 'config.VOIP.ports.port_*' phone \\\n"
    "           | sed 's/=555/=556/' | cfgmsg set B -o C -f -\n"
    "\n"
    "Exit status: 0 written, 1 a node or param to remove (or a pattern) matches\n"
    "nothing or a value refused by --strict (nothing written), 2 usage error,\n"
    "unreadable or malformed FILE or EDITS, or OUT could not be written.\n";

// ----------------------------------------------------------- helpers ---

// Prints `msg` as JSON, warning when a string is not UTF-8 (the JSON then
// does not encode to the same bytes).
void warn_non_utf8(const message &msg, const std::string &source)
{
    if (auto where = cfgmsg::first_non_utf8(msg))
        std::fprintf(stderr,
                     "cfgmsg: warning: %s: %s is not UTF-8 and shows as U+FFFD; this JSON does not encode "
                     "back to the same bytes (the text form does)\n",
                     source.c_str(), where->c_str());
}

int write_json(const message &msg, const std::string &source)
{
    warn_non_utf8(msg, source);
    return write_stdout(cfgmsg::to_json(msg));
}

// While it lives, standard output goes to standard error: the library prints
// the error lines of its trace on standard output, which carries the
// configuration.
struct trace_to_stderr {
    int saved = -1;
    trace_to_stderr()
    {
        std::fflush(stdout);
        saved = dup(STDOUT_FILENO);
        if (saved >= 0)
            dup2(STDERR_FILENO, STDOUT_FILENO);
    }
    ~trace_to_stderr()
    {
        std::fflush(stdout);
        if (saved >= 0) {
            dup2(saved, STDOUT_FILENO);
            close(saved);
        }
    }
    trace_to_stderr(const trace_to_stderr &) = delete;
    trace_to_stderr &operator=(const trace_to_stderr &) = delete;
};

// Applies the files in order to a fresh image and gathers the writers'
// output. Reports and returns nullopt on bad input or a writer fault.
std::optional<message> configuration_after(const std::vector<std::string> &files, const options &opt,
                                           bool redact)
{
    std::vector<std::string> messages;
    for (const std::string &file : files) {
        auto m = cfgmsg::wire_bytes(file);
        if (!m)
            return std::nullopt;
        messages.push_back(std::move(*m));
    }
    const cfgmsg::image_ptr image = cfgmsg::fresh_image(opt.ports);
    for (std::size_t i = 0; i < files.size(); ++i)
        cfgmsg::apply_traced(*image,
                             {reinterpret_cast<const std::uint8_t *>(messages[i].data()), messages[i].size()},
                             files[i]);
    message out;
    std::string error;
    bool written;
    {
        const trace_to_stderr quiet;
        written = cfgmsg::configuration_of(*image, out, error);
    }
    if (!written) {
        fail(exit_trouble, "internal error: " + error);
        return std::nullopt;
    }
    if (redact)
        cfgmsg::redact(out);
    return out;
}

// A path or param name given on the command line, with the escapes that
// get prints undone (a word that holds no valid escape is taken as it is).
std::string field_arg(std::string_view word)
{
    std::string reason;
    auto raw =
        word.find('\\') == std::string_view::npos ? std::nullopt : cfgmsg::unescape_field(word, reason);
    return raw ? *raw : std::string(word);
}

// Writes `data` to `out` (safe_write.h); '-' is standard output.
int write_file(const std::string &out, const std::string &data)
{
    if (out == "-")
        return write_stdout(data);
    std::string error;
    return cfgmsg::safe_write(out, data, error) ? exit_ok : fail(exit_trouble, error);
}

// ---------------------------------------------------------- commands ---

// Node by node, in about the memory of the input (stream.h).
int run_decode(const options &opt)
{
    return cfgmsg::run_decode_streamed(opt);
}
int run_encode(const options &opt)
{
    return cfgmsg::run_encode_streamed(opt);
}

int run_apply(const options &opt)
{
    auto msg = configuration_after(opt.args, opt, opt.redact);
    if (!msg)
        return exit_trouble;
    if (opt.json)
        return write_json(*msg, "apply");
    return write_stdout("# stored by libcfgparser from " + std::to_string(opt.args.size()) + " message" +
                        (opt.args.size() == 1 ? "" : "s") + ", max_ports " + std::to_string(opt.ports) +
                        ", as its section writers send it\n" + cfgmsg::to_text(*msg));
}

std::string param_line(char side, const std::string &name, const std::optional<std::string> &value)
{
    std::string line = std::string(1, side) + "    " + cfgmsg::escape(name, cfgmsg::field_kind::name) + " =";
    if (value && !value->empty())
        line += " " + cfgmsg::escape(*value, cfgmsg::field_kind::value);
    return line + '\n';
}

int run_diff(const options &opt)
{
    // Compared as stored, redacted when shown: a changed secret shows as a
    // pair of *** lines.
    auto a = configuration_after({opt.args[0]}, opt, false);
    if (!a)
        return exit_trouble;
    auto b = configuration_after({opt.args[1]}, opt, false);
    if (!b)
        return exit_trouble;
    const std::vector<cfgmsg::param_change> changes = cfgmsg::differences(*a, *b);
    if (opt.quiet)
        return changes.empty() ? exit_ok : exit_no;
    if (opt.json)
        return write_stdout(cfgmsg::changes_json(changes, opt.redact)) != exit_ok ? exit_trouble
               : changes.empty()                                                  ? exit_ok
                                                                                  : exit_no;
    if (changes.empty())
        return exit_ok;
    std::string out = "--- " + opt.args[0] + "\n+++ " + opt.args[1] + "\n";
    const std::string *path = nullptr;
    for (const cfgmsg::param_change &c : changes) {
        if (path == nullptr || *path != c.path)
            out += "[" + cfgmsg::escape(c.path, cfgmsg::field_kind::path) + "]\n";
        path = &c.path;
        const auto shown = [&](const std::optional<std::string> &v) {
            return opt.redact ? cfgmsg::redacted(c.path, c.name, v) : v;
        };
        if (c.in_a)
            out += param_line('-', c.name, shown(c.a));
        if (c.in_b)
            out += param_line('+', c.name, shown(c.b));
    }
    return write_stdout(out) == exit_ok ? exit_no : exit_trouble;
}

int run_get(const options &opt)
{
    const std::string &file = opt.args[0];
    auto m = load(file);
    if (!m)
        return exit_trouble;
    if (opt.redact)
        cfgmsg::redact(m->msg);
    // --flat, --json, a pattern or an escape: through the patterns (select.h).
    if (opt.flat || opt.json || std::any_of(opt.args.begin() + 1, opt.args.end(), [](const std::string &w) {
            return cfgmsg::is_glob(w) || w.find('\\') != std::string::npos;
        }))
        return cfgmsg::print_selection(opt, m->msg);
    std::string out;
    if (opt.args.size() == 1) {
        std::set<std::string_view> seen;
        for (const cfgmsg::node &nd : m->msg.nodes)
            if (seen.insert(nd.path).second)
                out += cfgmsg::escape(nd.path, cfgmsg::field_kind::path) + '\n';
        return write_stdout(out);
    }
    const std::string path = field_arg(opt.args[1]);
    const std::string name = opt.args.size() == 3 ? field_arg(opt.args[2]) : "";
    bool node_found = false, param_found = false;
    for (const cfgmsg::node &nd : m->msg.nodes) {
        if (nd.path != path)
            continue;
        node_found = true;
        if (opt.args.size() == 2)
            out += cfgmsg::node_text(nd);
        else
            for (const cfgmsg::param &p : nd.params)
                if (p.name == name)
                    param_found = true, out += p.value.value_or("") + '\n';
    }
    const std::string shown = "[" + cfgmsg::escape(path, cfgmsg::field_kind::path) + "]";
    if (!node_found)
        return fail(exit_no, file + ": no node " + shown);
    if (opt.args.size() == 3 && !param_found)
        return fail(exit_no,
                    file + ": no param '" + cfgmsg::escape(name, cfgmsg::field_kind::name) + "' in " + shown);
    return write_stdout(out);
}

// A path, name or value given on the command line: one line, and short
// enough for its 16-bit length. The reason, or nullopt when it is fine.
std::optional<std::string> bad_field(std::string_view what, std::string_view text)
{
    const std::size_t br = text.find_first_of("\n\r");
    if (br != std::string_view::npos)
        return std::string(what) + " holds a line break (at character " + std::to_string(br + 1) +
               "); it must be one line";
    if (text.size() > cfgmsg::max_field)
        return std::string(what) + " is longer than 65535 bytes (" + std::to_string(text.size()) + ")";
    return std::nullopt;
}

// Writes the edited message to OUT (-o OUT, or FILE with -i) in its form or
// that of --format.
int write_edited(const options &opt, const std::string &out, const cfgmsg::loaded_message &m)
{
    const msg_format f = opt.format.value_or(m.format);
    if (f == msg_format::json)
        warn_non_utf8(m.msg, opt.args[0]);
    if (f == msg_format::binary && out == "-" && isatty(STDOUT_FILENO))
        return fail(exit_usage, "refusing to write a binary message to a terminal; redirect standard output");
    return write_file(out, cfgmsg::render(m.msg, f));
}

int run_set(const options &opt)
{
    const std::string &file = opt.args[0];
    if (opt.in_place && (opt.output || file == "-"))
        return fail(exit_usage, std::string("set: -i edits FILE in place: ") +
                                    (opt.output ? "give -o OUT or -i, not both" : "FILE must not be '-'"));
    const std::string out = opt.in_place ? file : opt.output.value_or("");
    if (!opt.in_place && !opt.output)
        return fail(exit_usage, "set: -o OUT or -i is required (cfgmsg writes over no file unless told)\n"
                                "try 'cfgmsg set --help'");
    if (out.empty())
        return fail(exit_usage, "set: -o '': the output file name is empty");
    if (opt.args.size() == 1 && opt.unsets.empty() && opt.delete_nodes.empty() && !opt.edits_file)
        return fail(exit_usage, "set: nothing to change: give PATH.PARAM=VALUE, --unset or --delete-node\n"
                                "try 'cfgmsg set --help'");
    if (cfgmsg::edits_in_sequence(opt)) { // -f, or a pattern (select.h)
        auto m = load(file);
        if (!m)
            return exit_trouble;
        if (const int status = cfgmsg::apply_edits_in_sequence(opt, m->msg, file))
            return status;
        return write_edited(opt, out, *m);
    }
    cfgmsg::message_edits edits;
    auto bad = [&](const std::string &arg, const std::string &why) {
        return fail(exit_usage, "set: '" + cfgmsg::escape(arg, cfgmsg::field_kind::value) + "': " + why);
    };
    for (const std::string &path : opt.delete_nodes) {
        if (auto why = bad_field("the path", path))
            return bad(path, *why);
        edits.delete_nodes.push_back(field_arg(path));
    }
    for (const std::string &ref : opt.unsets) {
        cfgmsg::param_ref r;
        if (auto why = bad_field("PATH.PARAM", ref))
            return bad(ref, *why);
        if (!cfgmsg::split_by_route(ref, r.path, r.name))
            return fail(exit_usage, "set: --unset wants PATH.PARAM, not '" + ref + "'");
        r.path = field_arg(r.path);
        r.name = field_arg(r.name);
        edits.unsets.push_back(std::move(r));
    }
    bool refused = false;
    for (std::size_t i = 1; i < opt.args.size(); ++i) {
        const std::string &arg = opt.args[i];
        const std::size_t eq = arg.find('=');
        cfgmsg::param_set s;
        if (eq == std::string::npos ||
            !cfgmsg::split_by_route(std::string_view(arg).substr(0, eq), s.path, s.name))
            return fail(exit_usage, "set: '" + arg + "' is not PATH.PARAM=VALUE\ntry 'cfgmsg set --help'");
        s.path = field_arg(s.path);
        s.name = field_arg(s.name);
        const std::string_view value = std::string_view(arg).substr(eq + 1);
        if (!value.empty())
            s.value = value;
        for (auto [what, text] : {std::pair{"the path", std::string_view(s.path)},
                                  {"the param name", s.name},
                                  {"the value", value}})
            if (auto why = bad_field(what, text))
                return bad(cfgmsg::is_secret(s.path, s.name) ? s.path + "." + s.name + "=***" : arg, *why);
        if (auto warning = cfgmsg::value_warning(s.path, s.name, value);
            warning && (opt.strict || !opt.quiet)) {
            // What is stored of a secret is the start of it: not shown.
            if (cfgmsg::is_secret(s.path, s.name) && warning->starts_with("stored as"))
                warning =
                    "the library would not store this value as given (a secret: not shown; 'cfgmsg schema " +
                    cfgmsg::escape(s.path, cfgmsg::field_kind::path) + "' gives the rule)";
            std::fprintf(stderr, "cfgmsg: %s%s.%s: %s\n", opt.strict ? "" : "warning: ",
                         cfgmsg::escape(s.path, cfgmsg::field_kind::path).c_str(),
                         cfgmsg::escape(s.name, cfgmsg::field_kind::name).c_str(), warning->c_str());
            refused = refused || opt.strict;
        }
        edits.sets.push_back(std::move(s));
    }
    if (refused)
        return exit_no;
    auto m = load(file);
    if (!m)
        return exit_trouble;
    std::string error;
    const msg_format f = opt.format.value_or(m->format);
    const bool keep_layout = f == msg_format::text && m->format == msg_format::text;
    const cfgmsg::message before = keep_layout ? m->msg : cfgmsg::message{};
    if (!cfgmsg::apply_edits(m->msg, edits, error))
        return fail(exit_no, file + ": " + error);
    if (!keep_layout)
        return write_edited(opt, out, *m);
    // The text as it was but for the edited lines, its byte-order mark included.
    return write_file(out, (m->byte_order_mark ? "\xEF\xBB\xBF" : "") +
                               cfgmsg::edit_text(m->text, before, edits, m->msg));
}

// ------------------------------------------------------------- table ---

// Every command: one row. A command in a file of its own declares its run
// function in a header of that file and adds its row here.
const command commands[] = {
    {"decode", "  decode FILE      print a binary message as text (--json: as JSON)\n", decode_help,
     opt_json | opt_redact, 1, 1, "expects one FILE", true, exit_usage, run_decode},
    {"encode", "  encode FILE      turn text or JSON into a binary message on standard output\n", encode_help,
     opt_json, 1, 1, "expects one FILE", true, exit_usage, run_encode},
    {"apply",
     "  apply FILE...    parse messages into one configuration and print it as the\n"
     "                   library's section writers send it (--json, --ports N)\n",
     apply_help, opt_json | opt_ports | opt_redact, 1, SIZE_MAX, "missing FILE", true, exit_usage, run_apply},
    {"diff", "  diff A B         apply A and B and print the params that differ (--ports N)\n", diff_help,
     opt_ports | opt_redact | opt_json | opt_quiet, 2, 2, "expects two FILEs, A and B", true, exit_trouble,
     run_diff},
    {"get",
     "  get FILE [PATH [PARAM]]\n"
     "                   print a node, one param's value, or the node paths\n",
     get_help, opt_redact | opt_flat | opt_json, 1, 3, "expects FILE [PATH [PARAM]]", false, exit_usage,
     run_get},
    {"set",
     "  set FILE -o OUT PATH.PARAM=VALUE...\n"
     "                   write FILE with params set, unset or nodes deleted to OUT\n",
     set_help,
     opt_output | opt_in_place | opt_format | opt_strict | opt_unset | opt_delete_node | opt_edits |
         opt_quiet,
     1, SIZE_MAX, "missing FILE", false, exit_usage, run_set},
    {"check",
     "  check FILE...    report the params that the library does not store as sent,\n"
     "                   and why (--json, --ports N, --redact, -q)\n",
     cfgmsg::check_help, opt_json | opt_ports | opt_redact | opt_quiet, 1, SIZE_MAX, "missing FILE", true,
     exit_usage, cfgmsg::run_check},
    {"schema",
     "  schema [PATH]    print the parameter reference: every node path and param with\n"
     "                   its kind, bounds, default and length (--json, --markdown)\n",
     cfgmsg::schema_help, opt_json | opt_markdown, 0, 1, "expects at most one PATH", false, exit_usage,
     cfgmsg::run_schema},
};

int usage_error(const command &cmd, const std::string &text)
{
    std::fprintf(stderr, "cfgmsg: %.*s: %s\ntry 'cfgmsg %.*s --help'\n", static_cast<int>(cmd.name.size()),
                 cmd.name.data(), text.c_str(), static_cast<int>(cmd.name.size()), cmd.name.data());
    return cmd.trouble;
}

// Options of one command with getopt_long. Returns nullopt to go on, or the
// exit status (help shown, or a usage error reported).
std::optional<int> parse_options(int argc, char **argv, const command &cmd, options &opt)
{
    enum { o_json = 1000, o_ports, o_redact, o_format, o_strict, o_unset, o_delete, o_markdown, o_flat };
    static const option longs[] = {{"help", no_argument, nullptr, 'h'},
                                   {"json", no_argument, nullptr, o_json},
                                   {"ports", required_argument, nullptr, o_ports},
                                   {"redact", no_argument, nullptr, o_redact},
                                   {"format", required_argument, nullptr, o_format},
                                   {"strict", no_argument, nullptr, o_strict},
                                   {"unset", required_argument, nullptr, o_unset},
                                   {"delete-node", required_argument, nullptr, o_delete},
                                   {"markdown", no_argument, nullptr, o_markdown},
                                   {"flat", no_argument, nullptr, o_flat},
                                   {"quiet", no_argument, nullptr, 'q'},
                                   {nullptr, 0, nullptr, 0}};
    auto allowed = [&](unsigned bit) { return (cmd.accepts & bit) != 0; };
    opterr = 0; // messages of our own
    optind = 1;
    int c;
    int long_index = -1;
    while ((c = getopt_long(argc, argv, ":hio:qf:", longs, &long_index)) != -1) {
        const std::string arg = argv[optind - 1];
        const char *value = optarg;
        bool taken = true;
        switch (c) {
        case 'h':
            std::fputs(cmd.help, stdout);
            return exit_ok;
        case 'o':
            if ((taken = allowed(opt_output))) {
                if (opt.output)
                    return usage_error(cmd, "-o given twice");
                opt.output = value;
            }
            break;
        case 'i':
            opt.in_place = taken = allowed(opt_in_place);
            break;
        case o_json:
            opt.json = taken = allowed(opt_json);
            break;
        case o_redact:
            opt.redact = taken = allowed(opt_redact);
            break;
        case o_strict:
            opt.strict = taken = allowed(opt_strict);
            break;
        case o_markdown:
            opt.markdown = taken = allowed(opt_markdown);
            break;
        case o_flat:
            opt.flat = taken = allowed(opt_flat);
            break;
        case 'q':
            opt.quiet = taken = allowed(opt_quiet);
            break;
        case 'f':
            if ((taken = allowed(opt_edits))) {
                if (opt.edits_file)
                    return usage_error(cmd, "-f given twice");
                opt.edits_file = value;
            }
            break;
        case o_unset:
            if ((taken = allowed(opt_unset)))
                opt.unsets.emplace_back(value);
            break;
        case o_delete:
            if ((taken = allowed(opt_delete_node)))
                opt.delete_nodes.emplace_back(value);
            break;
        case o_format:
            if ((taken = allowed(opt_format)) && !(opt.format = cfgmsg::format_from_name(value)))
                return usage_error(cmd,
                                   "--format wants binary, text or json, not '" + std::string(value) + "'");
            break;
        case o_ports: {
            if (!(taken = allowed(opt_ports)))
                break;
            char *end = nullptr;
            errno = 0;
            const unsigned long n = std::strtoul(value, &end, 10);
            if (*value < '0' || *value > '9' || *end != '\0' || errno != 0 || n == 0 || n > CFG_MAX_PORTS)
                return usage_error(cmd,
                                   "--ports wants a number from 1 to 72, not '" + std::string(value) + "'");
            opt.ports = static_cast<std::uint32_t>(n);
            break;
        }
        case ':':
            return usage_error(
                cmd,
                "option '" +
                    (optopt == 'o' || optopt == 'f' ? "-" + std::string(1, static_cast<char>(optopt)) : arg) +
                    "' needs a value");
        default:
            taken = false;
        }
        if (taken)
            continue;
        // A known option this command does not take (its value may have
        // been consumed, so name it from the table), a long option given a
        // value it does not take (optopt holds its code), an unknown long
        // option, or an unknown short letter (in optopt).
        const bool is_long = arg.starts_with("--");
        if (c == '?' && is_long && optopt != 0)
            return usage_error(cmd, "option '" + arg.substr(0, arg.find('=')) + "' takes no value");
        const std::string shown = c == 'o' || c == 'i' || c == 'f' || (c == 'q' && arg == "-q")
                                      ? std::string("-") + static_cast<char>(c)
                                  : c != '?'               ? std::string("--") + longs[long_index].name
                                  : is_long || optopt == 0 ? arg
                                                           : std::string("-") + static_cast<char>(optopt);
        return usage_error(cmd, "unknown option '" + shown + "'");
    }
    for (int i = optind; i < argc; ++i)
        opt.args.emplace_back(argv[i]);
    if (opt.args.size() < cmd.min_args || opt.args.size() > cmd.max_args)
        return usage_error(cmd, opt.args.empty() ? "missing FILE" : cmd.arity);
    if (cmd.all_files && std::count(opt.args.begin(), opt.args.end(), "-") > 1)
        return usage_error(cmd, "'-' (standard input) given twice; it can be read only once");
    return std::nullopt;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2)
        return fail(exit_usage, "missing command\ntry 'cfgmsg --help'");
    const std::string_view name = argv[1];
    if ((name == "--version" || name == "--help" || name == "-h" || name == "help") && argc > 2)
        return fail(exit_usage, std::string(name) + " takes nothing after it, not '" + argv[2] + "'");
    if (name == "--help" || name == "-h" || name == "help") {
        std::string help = main_intro;
        for (const command &cmd : commands)
            help += cmd.summary;
        return write_stdout(help + main_outro);
    }
    if (name == "--version")
        return write_stdout("cfgmsg " CFGMSG_VERSION " (libcfgparser " CFGMSG_VERSION ")\n");
    const command *cmd = nullptr;
    for (const command &c : commands)
        if (c.name == name)
            cmd = &c;
    if (cmd == nullptr)
        return fail(exit_usage, "unknown command '" + std::string(name) + "'\ntry 'cfgmsg --help'");

    options opt;
    // getopt_long sees the command as its program name.
    if (auto done = parse_options(argc - 1, argv + 1, *cmd, opt))
        return *done;
    try {
        return cmd->run(opt);
    } catch (const std::exception &e) { // out of memory, or a length a reader let through
        return fail(exit_trouble, e.what());
    }
}
