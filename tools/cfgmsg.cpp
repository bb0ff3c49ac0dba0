// cfgmsg: shows and builds configuration messages.
//
//   cfgmsg decode FILE   binary message -> text on standard output
//   cfgmsg encode FILE   text -> binary message on standard output
//
// Exit status: 0 success, 1 bad or unreadable input (or a failed write),
// 2 usage error. The wire reader is the one of msgtext, not the library's
// parser, so that a malformed message is reported with its byte offset.
#include "msgtext.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace {

constexpr int exit_ok = 0;
constexpr int exit_bad_input = 1;
constexpr int exit_usage = 2;

constexpr const char *main_help =
    "usage: cfgmsg COMMAND [--help] FILE\n"
    "\n"
    "Shows and builds the configuration messages exchanged with the\n"
    "configuration manager.\n"
    "\n"
    "commands:\n"
    "  decode FILE   print a binary message as text\n"
    "  encode FILE   turn text into a binary message on standard output\n"
    "\n"
    "FILE may be '-' for standard input. 'cfgmsg COMMAND --help' describes a\n"
    "command. Exit status: 0 success, 1 bad or unreadable input, 2 usage error.\n";

constexpr const char *decode_help =
    "usage: cfgmsg decode FILE\n"
    "\n"
    "Prints the binary configuration message in FILE ('-' for standard input)\n"
    "as text: the header fields, then every node as '[path]' followed by its\n"
    "params as 'name = value'. 'name =' is a param without a value; values\n"
    "are shown as sent, so an empty text sent as \"\" shows as \"\".\n"
    "The output is what 'cfgmsg encode' reads, and encodes to the same bytes.\n"
    "A malformed message is reported with the byte offset of the fault (exit 1).\n";

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

int usage_error(const std::string &text, std::string_view verb = {}) {
    std::fprintf(stderr, "cfgmsg: %s\ntry 'cfgmsg%s%.*s --help'\n", text.c_str(), verb.empty() ? "" : " ",
                 static_cast<int>(verb.size()), verb.data());
    return exit_usage;
}

bool is_help(std::string_view arg) { return arg == "--help" || arg == "-h"; }

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

int run_decode(const std::string &file) {
    auto data = read_input(file);
    if (!data) return exit_bad_input;
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(data->data());
    cfgmsg::message msg;
    cfgmsg::wire_error err;
    if (!cfgmsg::decode({bytes, data->size()}, msg, err)) {
        std::fprintf(stderr, "cfgmsg: %s: malformed message at byte offset %zu (0x%zx): %s\n",
                     file.c_str(), err.offset, err.offset, err.reason.c_str());
        return exit_bad_input;
    }
    const std::string text = cfgmsg::to_text(msg);
    return write_output(text.data(), text.size());
}

int run_encode(const std::string &file) {
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

}  // namespace

int main(int argc, char **argv) {
    if (argc < 2) return usage_error("missing command");
    const std::string_view verb = argv[1];
    if (is_help(verb) || verb == "help") {
        std::fputs(main_help, stdout);
        return exit_ok;
    }
    const char *help = verb == "decode" ? decode_help : verb == "encode" ? encode_help : nullptr;
    if (help == nullptr) return usage_error("unknown command '" + std::string(verb) + "'");

    // Every verb takes one FILE; options come before "--" only.
    std::vector<std::string> files;
    bool options_done = false;
    for (int i = 2; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (!options_done && arg == "--") {
            options_done = true;
        } else if (!options_done && is_help(arg)) {
            std::fputs(help, stdout);
            return exit_ok;
        } else if (!options_done && arg.size() > 1 && arg[0] == '-') {
            return usage_error(std::string(verb) + ": unknown option '" + std::string(arg) + "'", verb);
        } else {
            files.emplace_back(arg);
        }
    }
    if (files.size() != 1)
        return usage_error(std::string(verb) + (files.empty() ? ": missing FILE" : ": expects one FILE"), verb);

    try {
        return verb == "decode" ? run_decode(files[0]) : run_encode(files[0]);
    } catch (const std::exception &e) {  // out of memory, or a length the text parser let through
        std::fprintf(stderr, "cfgmsg: %s: %s\n", files[0].c_str(), e.what());
        return exit_bad_input;
    }
}
