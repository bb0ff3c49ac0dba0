#include "stream.h"

#include "msgedit.h"
#include "msgjson.h"
#include "msgload.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <span>

#include <unistd.h>

namespace cfgmsg {

namespace {

std::span<const std::uint8_t> bytes_of(const std::string &data)
{
    return {reinterpret_cast<const std::uint8_t *>(data.data()), data.size()};
}

// Standard output through stdio's buffer; the first failed write is
// reported once, at the end.
struct output {
    bool failed = false;
    void put(std::string_view s)
    {
        if (!failed && std::fwrite(s.data(), 1, s.size(), stdout) != s.size())
            failed = true;
    }
    int finish()
    {
        if (std::fflush(stdout) != 0 || failed)
            return cli::fail(cli::exit_trouble,
                             std::string("cannot write standard output: ") + std::strerror(errno));
        return cli::exit_ok;
    }
};

} // namespace

int run_decode_streamed(const cli::options &opt)
{
    const std::string &file = opt.args[0];
    std::string error;
    const auto in = read_input(file, std::nullopt, error, accept_binary);
    if (!in)
        return cli::fail(cli::exit_trouble, error);

    // The whole message is checked first: a malformed one prints nothing.
    message head;
    std::size_t nodes = 0, body = 0; // the body length of what is printed (redacted or not)
    std::optional<std::string> non_utf8;
    wire_error err;
    const auto redact_node = [&](node &nd) {
        if (opt.redact)
            for (param &p : nd.params)
                p.value = redacted(nd.path, p.name, p.value);
    };
    const auto count = [&](node &&nd) {
        redact_node(nd);
        if (opt.json && !non_utf8)
            non_utf8 = non_utf8_in(nd, nodes);
        ++nodes;
        message one;
        one.terminator.reset();
        one.nodes.push_back(std::move(nd));
        body += body_length(one) - 1; // less the operation byte
    };
    if (!decode(bytes_of(in->data), head, count, err))
        return cli::fail(cli::exit_trouble, wire_error_text(file, err));
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
        if (opt.json)
            out.put((printed == 0 ? "\n" : ",\n") + json_node(nd));
        else
            out.put("\n" + node_text(nd));
        ++printed;
    };
    decode(bytes_of(in->data), head, print, err);
    if (opt.json)
        out.put(json_tail(nodes));
    return out.finish();
}

namespace {

// The text form cut before node lines ('[path]' alone on its line) into
// pieces of about a megabyte, each handed to `piece` with the number of its
// first line; stops at the first piece that `piece` refuses.
bool for_each_piece(std::string_view text, const std::function<bool(std::string_view, std::size_t)> &piece)
{
    constexpr std::size_t piece_size = std::size_t{1} << 20;
    std::size_t start = 0, start_line = 1, line_no = 1;
    for (std::size_t at = 0; at < text.size(); ++line_no) {
        const std::size_t nl = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, nl - at);
        while (!line.empty() && std::strchr(" \t\r", line.front()) != nullptr)
            line.remove_prefix(1);
        while (!line.empty() && std::strchr(" \t\r", line.back()) != nullptr)
            line.remove_suffix(1);
        if (at - start >= piece_size && line.size() >= 2 && line.front() == '[' && line.back() == ']') {
            if (!piece(text.substr(start, at - start), start_line))
                return false;
            start = at;
            start_line = line_no;
        }
        at = nl + 1;
    }
    return piece(text.substr(start), start_line);
}

// Writes the header, then the nodes that `nodes` hands to its sink, then the
// closing byte; `body` is the body length they make.
int write_wire(const message &head, std::size_t body,
               const std::function<void(const std::function<void(node &&)> &)> &nodes)
{
    if (body > 0xFFFFFFFFu)
        return cli::fail(cli::exit_trouble, "message body longer than 4294967295 bytes");
    message empty = head;
    empty.nodes.clear();
    std::vector<std::uint8_t> bytes = encode(empty);
    bytes.resize(header_size + 1); // without the closing byte
    for (int i = 0; i < 4; ++i)
        bytes[4 + i] = static_cast<std::uint8_t>(body >> (8 * i));
    output out;
    const auto put = [&] {
        out.put(std::string_view(reinterpret_cast<const char *>(bytes.data()), bytes.size()));
        bytes.clear();
    };
    nodes([&](node &&nd) {
        encode_node(bytes, nd);
        if (bytes.size() >= 65536)
            put();
    });
    if (head.terminator)
        bytes.push_back(*head.terminator);
    put();
    return out.finish();
}

} // namespace

int run_encode_streamed(const cli::options &opt)
{
    if (isatty(STDOUT_FILENO))
        return cli::fail(cli::exit_usage,
                         "refusing to write a binary message to a terminal; redirect standard output");
    const std::string &file = opt.args[0];
    std::string error;
    const auto in = read_input(file, opt.json ? std::optional(msg_format::json) : std::nullopt, error,
                               accept_text | accept_json);
    if (!in)
        return cli::fail(cli::exit_trouble, error);
    if (in->format == msg_format::json) {
        auto m = parse_input(file, *in, error);
        if (!m)
            return cli::fail(cli::exit_trouble, error);
        return write_wire(m->msg, body_length(m->msg), [&](const std::function<void(node &&)> &sink) {
            for (node &nd : m->msg.nodes) {
                sink(std::move(nd));
                nd = node(); // freed as it goes
            }
        });
    }
    // Text: read twice, a piece at a time: first whole, for the header
    // fields, the body length and any fault, then to write the nodes.
    message head, piece;
    std::size_t body = 1;
    const auto parse = [&](std::string_view text, std::size_t first_line) {
        text_error err;
        if (parse_text(text, piece, err))
            return true;
        error = file + ":" + std::to_string(first_line - 1 + err.line) + ": " + err.reason;
        return false;
    };
    bool first = true;
    const bool whole = for_each_piece(in->data, [&](std::string_view text, std::size_t first_line) {
        if (!parse(text, first_line))
            return false;
        if (first)
            head = piece, head.nodes.clear(), first = false;
        body += body_length(piece) - 1 - (piece.terminator ? 1 : 0);
        return true;
    });
    if (!whole)
        return cli::fail(cli::exit_trouble, error);
    body += head.terminator ? 1 : 0;
    return write_wire(head, body, [&](const std::function<void(node &&)> &sink) {
        for_each_piece(in->data, [&](std::string_view text, std::size_t first_line) {
            parse(text, first_line);
            for (node &nd : piece.nodes)
                sink(std::move(nd));
            return true;
        });
    });
}

std::optional<std::string> wire_bytes(const std::string &file)
{
    std::string error;
    auto in = read_input(file, std::nullopt, error);
    if (!in) {
        cli::fail(cli::exit_trouble, error);
        return std::nullopt;
    }
    if (in->format == msg_format::binary) {
        message head;
        wire_error err;
        if (decode(
                bytes_of(in->data), head, [](node &&) {}, err))
            return std::move(in->data);
        cli::fail(cli::exit_trouble, wire_error_text(file, err));
        return std::nullopt;
    }
    auto m = parse_input(file, *in, error);
    if (!m) {
        cli::fail(cli::exit_trouble, error);
        return std::nullopt;
    }
    in.reset();
    const std::vector<std::uint8_t> bytes = encode(m->msg);
    return std::string(bytes.begin(), bytes.end());
}

} // namespace cfgmsg
