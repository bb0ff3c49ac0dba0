#include "stream.h"

#include "msgedit.h"
#include "msgjson.h"
#include "msgload.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <span>

#include <unistd.h>

namespace cfgmsg {

namespace {

std::span<const std::uint8_t> bytes_of(const std::string &data) {
    return {reinterpret_cast<const std::uint8_t *>(data.data()), data.size()};
}

// Standard output through stdio's buffer; the first failed write is
// reported once, at the end.
struct output {
    bool failed = false;
    void put(std::string_view s) {
        if (!failed && std::fwrite(s.data(), 1, s.size(), stdout) != s.size()) failed = true;
    }
    int finish() {
        if (std::fflush(stdout) != 0 || failed)
            return cli::fail(cli::exit_bad_input, std::string("cannot write standard output: ") + std::strerror(errno));
        return cli::exit_ok;
    }
};

}  // namespace

int run_decode_streamed(const cli::options &opt) {
    const std::string &file = opt.args[0];
    std::string error;
    const auto in = read_input(file, std::nullopt, error, accept_binary);
    if (!in) return cli::fail(cli::exit_bad_input, error);

    // The whole message is checked first: a malformed one prints nothing.
    message head;
    std::size_t nodes = 0, body = 0;  // the body length of what is printed (redacted or not)
    std::optional<std::string> non_utf8;
    wire_error err;
    const auto redact_node = [&](node &nd) {
        if (opt.redact)
            for (param &p : nd.params) p.value = redacted(nd.path, p.name, p.value);
    };
    const auto count = [&](node &&nd) {
        redact_node(nd);
        if (opt.json && !non_utf8) non_utf8 = non_utf8_in(nd, nodes);
        ++nodes;
        message one;
        one.terminator.reset();
        one.nodes.push_back(std::move(nd));
        body += body_length(one) - 1;  // less the operation byte
    };
    if (!decode(bytes_of(in->data), head, count, err)) return cli::fail(cli::exit_bad_input, wire_error_text(file, err));
    if (non_utf8)
        std::fprintf(stderr,
                     "cfgmsg: warning: %s: %s is not UTF-8 and shows as U+FFFD; this JSON does not encode "
                     "back to the same bytes (the text form does)\n",
                     file.c_str(), non_utf8->c_str());

    output out;
    out.put(opt.json ? json_head(head) : text_header(head, body + 1 + (head.terminator ? 1 : 0), nodes));
    std::size_t printed = 0;
    const auto print = [&](node &&nd) {
        redact_node(nd);
        if (opt.json) out.put((printed == 0 ? "\n" : ",\n") + json_node(nd));
        else out.put("\n" + node_text(nd));
        ++printed;
    };
    decode(bytes_of(in->data), head, print, err);
    if (opt.json) out.put(json_tail(nodes));
    return out.finish();
}

int run_encode_streamed(const cli::options &opt) {
    if (isatty(STDOUT_FILENO))
        return cli::fail(cli::exit_usage, "refusing to write a binary message to a terminal; redirect standard output");
    auto m = cli::load(opt.args[0], opt.json ? std::optional(msg_format::json) : std::nullopt,
                       accept_text | accept_json);
    if (!m) return cli::exit_bad_input;
    const std::size_t body = body_length(m->msg);
    if (body > 0xFFFFFFFFu) return cli::fail(cli::exit_bad_input, "message body longer than 4294967295 bytes");
    // The header and operation byte, then one node at a time.
    message head = std::move(m->msg);
    std::vector<node> nodes = std::move(head.nodes);
    head.nodes.clear();
    std::vector<std::uint8_t> bytes = encode(head);
    bytes.resize(header_size + 1);
    for (int i = 0; i < 4; ++i) bytes[4 + i] = static_cast<std::uint8_t>(body >> (8 * i));
    output out;
    const auto put = [&] {
        out.put(std::string_view(reinterpret_cast<const char *>(bytes.data()), bytes.size()));
        bytes.clear();
    };
    put();
    for (node &nd : nodes) {
        encode_node(bytes, nd);
        node().params.swap(nd.params);  // freed as it goes
        if (bytes.size() >= 65536) put();
    }
    if (head.terminator) bytes.push_back(*head.terminator);
    put();
    return out.finish();
}

std::optional<std::string> wire_bytes(const std::string &file) {
    std::string error;
    auto in = read_input(file, std::nullopt, error);
    if (!in) {
        cli::fail(cli::exit_bad_input, error);
        return std::nullopt;
    }
    if (in->format == msg_format::binary) {
        message head;
        wire_error err;
        if (decode(bytes_of(in->data), head, [](node &&) {}, err)) return std::move(in->data);
        cli::fail(cli::exit_bad_input, wire_error_text(file, err));
        return std::nullopt;
    }
    auto m = parse_input(file, *in, error);
    if (!m) {
        cli::fail(cli::exit_bad_input, error);
        return std::nullopt;
    }
    in.reset();
    const std::vector<std::uint8_t> bytes = encode(m->msg);
    return std::string(bytes.begin(), bytes.end());
}

}  // namespace cfgmsg
