// cfgmsg: shows and builds configuration messages, and shows what the
// library makes of them.
//
//   cfgmsg decode [--json] FILE           binary message -> text (or JSON)
//   cfgmsg encode FILE                    text -> binary message on standard output
//   cfgmsg apply [--ports N] [--json] FILE...
//                                         parse the messages into one image and
//                                         print it as the section writers send it
//   cfgmsg diff [--ports N] A B           params that differ after applying A and B
//
// Exit status: 0 success, 1 bad or unreadable input (or a failed write),
// 2 usage error; diff exits like diff(1): 0 same, 1 different, 2 trouble.
// The wire reader is the one of msgtext, not the library's parser, so that a
// malformed message is reported with its byte offset before the library
// sees it.
#include "apply.h"
#include "check.h"
#include "msgjson.h"
#include "msgtext.h"
#include "schema.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <getopt.h>
#include <unistd.h>

namespace {

constexpr int exit_ok = 0;
constexpr int exit_bad_input = 1;
constexpr int exit_usage = 2;
// diff(1): 0 same, 1 different, 2 trouble.
constexpr int diff_differ = 1;
constexpr int diff_trouble = 2;

constexpr std::uint32_t default_ports = CFG_MAX_PORTS;

constexpr const char *main_help =
    "usage: cfgmsg COMMAND [OPTIONS] FILE...\n"
    "\n"
    "Shows and builds the configuration messages exchanged with the\n"
    "configuration manager, and shows what libcfgparser stores from them.\n"
    "\n"
    "commands:\n"
    "  decode FILE      print a binary message as text (--json: as JSON)\n"
    "  encode FILE      turn text into a binary message on standard output\n"
    "  apply FILE...    parse binary messages into one configuration and print it\n"
    "                   as the library's section writers send it (--json, --ports N)\n"
    "  diff A B         apply A and B and print the params that differ (--ports N)\n"
    "  check FILE...    report the params that the library does not store as sent,\n"
    "                   and why (--json, --ports N)\n"
    "  schema [PATH]    print the parameter reference: every node path and param\n"
    "                   with its kind, bounds, default and length (--json, --markdown)\n"
    "\n"
    "FILE may be '-' for standard input. 'cfgmsg COMMAND --help' describes a\n"
    "command. Exit status: 0 success, 1 bad or unreadable input, 2 usage error;\n"
    "diff: 0 same, 1 different, 2 bad input or usage error.\n";

constexpr const char *decode_help =
    "usage: cfgmsg decode [--json] FILE\n"
    "\n"
    "Prints the binary configuration message in FILE ('-' for standard input)\n"
    "as text: the header fields, then every node as '[path]' followed by its\n"
    "params as 'name = value'. 'name =' is a param without a value; values\n"
    "are shown as sent, so an empty text sent as \"\" shows as \"\".\n"
    "The output is what 'cfgmsg encode' reads, and encodes to the same bytes.\n"
    "A malformed message is reported with the byte offset of the fault (exit 1).\n"
    "\n"
    "options:\n"
    "  --json    print a JSON document instead: header fields and \"nodes\", each\n"
    "            with \"path\" and \"params\" ({\"name\", \"value\"}, in order); a\n"
    "            param without a value has \"value\": null. Bytes that are not\n"
    "            UTF-8 show as U+FFFD; the text form keeps every byte.\n"
    "  --help    this text\n";

constexpr const char *encode_help =
    "usage: cfgmsg encode FILE > MESSAGE\n"
    "\n"
    "Reads a configuration message in text form from FILE ('-' for standard\n"
    "input) and writes the binary message to standard output, which must not\n"
    "be a terminal. Text errors are reported as FILE:LINE: reason (exit 1).\n"
    "\n"
    "text form:\n"
    "  header0 = 0x0        optional header fields before the first node\n"
    "  operation = 2        (also header2, terminator = none | BYTE)\n"
    "  [config.VOIP.sip]    a node\n"
    "  enablesip = 1        a param; 'name =' has no value; \"\" is kept as is\n"
    "  # comment            escapes: \\\\ \\n \\r \\t \\xNN\n";

constexpr const char *apply_help =
    "usage: cfgmsg apply [--ports N] [--json] FILE...\n"
    "\n"
    "Parses the binary configuration messages in the FILEs, in order, into one\n"
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
    "Each FILE is checked first; a malformed one is reported with the byte\n"
    "offset of the fault and nothing is printed (exit 1). Error lines of the\n"
    "library's trace go to standard error.\n"
    "\n"
    "options:\n"
    "  --ports N   number of analog ports of the device, 0 to 72 (default 72)\n"
    "  --json      print the JSON form of 'cfgmsg decode --json'\n"
    "  --help      this text\n";

constexpr const char *diff_help =
    "usage: cfgmsg diff [--ports N] A B\n"
    "\n"
    "Applies the binary message A and the binary message B each to a fresh\n"
    "image (as 'cfgmsg apply' does) and prints the params whose stored value\n"
    "differs, by node path and param name:\n"
    "\n"
    "  [config.VOIP.h323]\n"
    "  -    password = old      value after A ('-' line missing: only in B)\n"
    "  +    password = new      value after B ('+' line missing: only in A)\n"
    "\n"
    "Exit status, as diff(1): 0 no difference, 1 differences, 2 bad or\n"
    "unreadable input or usage error.\n"
    "\n"
    "options:\n"
    "  --ports N   number of analog ports of the device, 0 to 72 (default 72)\n"
    "  --help      this text\n";

enum class verb { decode, encode, apply, diff };

struct options {
    bool json = false;
    std::uint32_t ports = default_ports;
    std::vector<std::string> files;
};

int usage_error(const std::string &text, std::string_view verb_name = {}) {
    std::fprintf(stderr, "cfgmsg: %s\ntry 'cfgmsg%s%.*s --help'\n", text.c_str(), verb_name.empty() ? "" : " ",
                 static_cast<int>(verb_name.size()), verb_name.data());
    return exit_usage;
}

// Reads all of FILE ('-': standard input). Reports and returns nullopt on
// failure.
std::optional<std::string> read_input(const std::string &file) {
    FILE *f = file == "-" ? stdin : std::fopen(file.c_str(), "rb");
    if (f == nullptr) {
        std::fprintf(stderr, "cfgmsg: cannot open %s: %s\n", file.c_str(), std::strerror(errno));
        return std::nullopt;
    }
    std::string data;
    char buf[65536];
    std::size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) data.append(buf, n);
    const bool failed = std::ferror(f) != 0;
    const int saved = errno;
    if (f != stdin) std::fclose(f);
    if (failed) {
        std::fprintf(stderr, "cfgmsg: cannot read %s: %s\n", file.c_str(), std::strerror(saved));
        return std::nullopt;
    }
    return data;
}

int write_output(const void *data, std::size_t size) {
    if (std::fwrite(data, 1, size, stdout) != size || std::fflush(stdout) != 0) {
        std::fprintf(stderr, "cfgmsg: cannot write standard output: %s\n", std::strerror(errno));
        return exit_bad_input;
    }
    return exit_ok;
}

int write_text(const std::string &text) { return write_output(text.data(), text.size()); }

// A binary message read from a file and checked by the wire reader.
struct checked_message {
    std::vector<std::uint8_t> bytes;
    cfgmsg::message msg;
};

std::optional<checked_message> read_message(const std::string &file) {
    auto data = read_input(file);
    if (!data) return std::nullopt;
    checked_message out;
    out.bytes.assign(data->begin(), data->end());
    cfgmsg::wire_error err;
    if (!cfgmsg::decode(out.bytes, out.msg, err)) {
        std::fprintf(stderr, "cfgmsg: %s: malformed message at byte offset %zu (0x%zx): %s\n", file.c_str(),
                     err.offset, err.offset, err.reason.c_str());
        return std::nullopt;
    }
    return out;
}

// While it lives, standard output goes to standard error: the library prints
// the error lines of its trace on standard output, which carries the
// configuration.
struct trace_to_stderr {
    int saved = -1;
    trace_to_stderr() {
        std::fflush(stdout);
        saved = dup(STDOUT_FILENO);
        if (saved >= 0) dup2(STDERR_FILENO, STDOUT_FILENO);
    }
    ~trace_to_stderr() {
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
std::optional<cfgmsg::message> configuration_after(const std::vector<std::string> &files, std::uint32_t ports) {
    std::vector<checked_message> messages;
    for (const std::string &file : files) {
        auto m = read_message(file);
        if (!m) return std::nullopt;
        messages.push_back(std::move(*m));
    }
    const cfgmsg::image_ptr image = cfgmsg::fresh_image(ports);
    cfgmsg::message out;
    std::string error;
    bool written;
    {
        const trace_to_stderr quiet;
        for (const checked_message &m : messages) cfgmsg::apply_message(*image, m.bytes);
        written = cfgmsg::configuration_of(*image, out, error);
    }
    if (!written) {
        std::fprintf(stderr, "cfgmsg: internal error: %s\n", error.c_str());
        return std::nullopt;
    }
    return out;
}

int run_decode(const options &opt) {
    auto m = read_message(opt.files[0]);
    if (!m) return exit_bad_input;
    return write_text(opt.json ? cfgmsg::to_json(m->msg) : cfgmsg::to_text(m->msg));
}

int run_encode(const options &opt) {
    const std::string &file = opt.files[0];
    if (isatty(STDOUT_FILENO)) {
        std::fprintf(stderr, "cfgmsg: refusing to write a binary message to a terminal; "
                             "redirect standard output\n");
        return exit_usage;
    }
    auto text = read_input(file);
    if (!text) return exit_bad_input;
    cfgmsg::message msg;
    cfgmsg::text_error err;
    if (!cfgmsg::parse_text(*text, msg, err)) {
        std::fprintf(stderr, "cfgmsg: %s:%zu: %s\n", file.c_str(), err.line, err.reason.c_str());
        return exit_bad_input;
    }
    const std::vector<std::uint8_t> bytes = cfgmsg::encode(msg);
    return write_output(bytes.data(), bytes.size());
}

int run_apply(const options &opt) {
    auto msg = configuration_after(opt.files, opt.ports);
    if (!msg) return exit_bad_input;
    if (opt.json) return write_text(cfgmsg::to_json(*msg));
    return write_text("# stored by libcfgparser from " + std::to_string(opt.files.size()) + " message" +
                      (opt.files.size() == 1 ? "" : "s") + ", max_ports " + std::to_string(opt.ports) +
                      ", as its section writers send it\n" + cfgmsg::to_text(*msg));
}

std::string param_line(char side, const std::string &name, const std::optional<std::string> &value) {
    std::string line = std::string(1, side) + "    " + cfgmsg::escape(name, cfgmsg::field_kind::name) + " =";
    if (value && !value->empty()) line += " " + cfgmsg::escape(*value, cfgmsg::field_kind::value);
    return line + '\n';
}

int run_diff(const options &opt) {
    auto a = configuration_after({opt.files[0]}, opt.ports);
    if (!a) return diff_trouble;
    auto b = configuration_after({opt.files[1]}, opt.ports);
    if (!b) return diff_trouble;
    const std::vector<cfgmsg::param_change> changes = cfgmsg::differences(*a, *b);
    if (changes.empty()) return exit_ok;
    std::string out = "--- " + opt.files[0] + "\n+++ " + opt.files[1] + "\n";
    const std::string *path = nullptr;
    for (const cfgmsg::param_change &c : changes) {
        if (path == nullptr || *path != c.path) out += "[" + cfgmsg::escape(c.path, cfgmsg::field_kind::path) + "]\n";
        path = &c.path;
        if (c.in_a) out += param_line('-', c.name, c.a);
        if (c.in_b) out += param_line('+', c.name, c.b);
    }
    return write_text(out) == exit_ok ? diff_differ : diff_trouble;
}

// Options of one verb with getopt_long. Returns nullopt to go on, or the
// exit status (help shown, or a usage error reported).
std::optional<int> parse_options(int argc, char **argv, verb v, std::string_view name, const char *help,
                                 options &opt) {
    enum { opt_json = 1000, opt_ports };
    static const option longs[] = {{"help", no_argument, nullptr, 'h'},
                                   {"json", no_argument, nullptr, opt_json},
                                   {"ports", required_argument, nullptr, opt_ports},
                                   {nullptr, 0, nullptr, 0}};
    const int usage = v == verb::diff ? diff_trouble : exit_usage;
    opterr = 0;  // messages of our own
    optind = 1;
    int c;
    int long_index = -1;
    while ((c = getopt_long(argc, argv, ":h", longs, &long_index)) != -1) {
        const std::string arg = argv[optind - 1];
        switch (c) {
        case 'h':
            std::fputs(help, stdout);
            return exit_ok;
        case opt_json:
            if (v != verb::decode && v != verb::apply) break;
            opt.json = true;
            continue;
        case opt_ports: {
            if (v != verb::apply && v != verb::diff) break;
            char *end = nullptr;
            errno = 0;
            const unsigned long n = std::strtoul(optarg, &end, 10);
            if (*optarg < '0' || *optarg > '9' || *end != '\0' || errno != 0 || n > CFG_MAX_PORTS) {
                usage_error(std::string(name) + ": --ports wants a number from 0 to 72, not '" + optarg + "'", name);
                return usage;
            }
            opt.ports = static_cast<std::uint32_t>(n);
            continue;
        }
        case ':':
            usage_error(std::string(name) + ": option '" + arg + "' needs a value", name);
            return usage;
        default:
            break;
        }
        // A known option this verb does not take (its value may have been
        // consumed, so name it from the table), a long option given a value
        // it does not take (optopt holds its code), an unknown long option,
        // or an unknown short letter (in optopt).
        const bool is_long = arg.starts_with("--");
        if (c == '?' && is_long && optopt != 0) {
            usage_error(std::string(name) + ": option '" + arg.substr(0, arg.find('=')) + "' takes no value", name);
            return usage;
        }
        const std::string shown = c == opt_json || c == opt_ports ? std::string("--") + longs[long_index].name
                                  : is_long || optopt == 0        ? arg
                                                                  : std::string("-") + static_cast<char>(optopt);
        usage_error(std::string(name) + ": unknown option '" + shown + "'", name);
        return usage;
    }
    for (int i = optind; i < argc; ++i) opt.files.emplace_back(argv[i]);

    const std::size_t wanted_min = v == verb::diff ? 2 : 1;
    const std::size_t wanted_max = v == verb::diff ? 2 : v == verb::apply ? SIZE_MAX : 1;
    if (opt.files.size() < wanted_min || opt.files.size() > wanted_max) {
        const char *what = v == verb::diff ? ": expects two FILEs, A and B"
                           : opt.files.empty() ? ": missing FILE"
                                               : ": expects one FILE";
        usage_error(std::string(name) + what, name);
        return usage;
    }
    return std::nullopt;
}

}  // namespace

int main(int argc, char **argv) {
    if (argc < 2) return usage_error("missing command");
    const std::string_view name = argv[1];
    if (name == "--help" || name == "-h" || name == "help") {
        std::fputs(main_help, stdout);
        return exit_ok;
    }
    if (name == "schema") return cfgmsg::schema_main(argc - 1, argv + 1);
    if (name == "check") return cfgmsg::check_main(argc - 1, argv + 1);
    verb v;
    const char *help;
    if (name == "decode") v = verb::decode, help = decode_help;
    else if (name == "encode") v = verb::encode, help = encode_help;
    else if (name == "apply") v = verb::apply, help = apply_help;
    else if (name == "diff") v = verb::diff, help = diff_help;
    else return usage_error("unknown command '" + std::string(name) + "'");

    options opt;
    // getopt_long sees the verb as its program name.
    if (auto done = parse_options(argc - 1, argv + 1, v, name, help, opt)) return *done;

    try {
        switch (v) {
        case verb::decode: return run_decode(opt);
        case verb::encode: return run_encode(opt);
        case verb::apply: return run_apply(opt);
        case verb::diff: return run_diff(opt);
        }
    } catch (const std::exception &e) {  // out of memory, or a length the text parser let through
        std::fprintf(stderr, "cfgmsg: %s\n", e.what());
        return v == verb::diff ? diff_trouble : exit_bad_input;
    }
    return exit_bad_input;
}
