// Codec between configuration messages on the wire, as structures and as
// text. The text form is described in msgtext.h.
#include "msgtext.h"

#include <charconv>
#include <functional>
#include <cstdio>
#include <stdexcept>

namespace cfgmsg {

namespace {

// ---------------------------------------------------------------- wire --

std::uint32_t read_u16(std::span<const std::uint8_t> b, std::size_t at)
{
    return static_cast<std::uint32_t>(b[at]) | static_cast<std::uint32_t>(b[at + 1]) << 8;
}

std::uint32_t read_u32(std::span<const std::uint8_t> b, std::size_t at)
{
    return read_u16(b, at) | read_u16(b, at + 2) << 16;
}

void put_u16(std::vector<std::uint8_t> &out, std::size_t v)
{
    out.push_back(static_cast<std::uint8_t>(v & 0xFF));
    out.push_back(static_cast<std::uint8_t>(v >> 8 & 0xFF));
}

void put_u32(std::vector<std::uint8_t> &out, std::uint32_t v)
{
    put_u16(out, v & 0xFFFF);
    put_u16(out, v >> 16);
}

void put_field(std::vector<std::uint8_t> &out, std::string_view s, const char *what)
{
    if (s.size() > max_field)
        throw std::length_error(std::string(what) + " longer than 65535 bytes");
    put_u16(out, s.size());
    out.insert(out.end(), s.begin(), s.end());
}

std::string format(const char *fmt, auto... args)
{
    char buf[256];
    std::snprintf(buf, sizeof buf, fmt, args...);
    return buf;
}

// "1 byte", "2 bytes".
std::string byte_count(std::size_t n)
{
    return format("%zu byte%s", n, n == 1 ? "" : "s");
}

// "node 2 (config.VOIP.h323)" for error reports; the path is escaped so
// that odd bytes cannot garble the terminal.
std::string node_label(std::size_t index, std::string_view path)
{
    return format("node %zu (", index + 1) + escape(path, field_kind::path) + ")";
}

bool fail(wire_error &err, std::size_t offset, std::string reason)
{
    err.offset = offset;
    err.reason = std::move(reason);
    return false;
}

// --------------------------------------------------------------- text ---

// Undoes `escape`. Returns an empty optional and sets `reason` on a bad
// escape.
std::optional<std::string> unescape(std::string_view s, std::string &reason)
{
    std::string out;
    out.reserve(s.size());
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (s[i] != '\\') {
            out += s[i];
            continue;
        }
        if (++i == s.size()) {
            reason = "line ends inside an escape ('\\' needs to be written '\\\\')";
            return std::nullopt;
        }
        switch (s[i]) {
        case '\\':
            out += '\\';
            break;
        case 'n':
            out += '\n';
            break;
        case 'r':
            out += '\r';
            break;
        case 't':
            out += '\t';
            break;
        case 'x': {
            int hi = i + 1 < s.size() ? hex_digit(s[i + 1]) : -1;
            int lo = i + 2 < s.size() ? hex_digit(s[i + 2]) : -1;
            if (hi < 0 || lo < 0) {
                reason = "'\\x' must be followed by two hex digits";
                return std::nullopt;
            }
            out += static_cast<char>(hi * 16 + lo);
            i += 2;
            break;
        }
        default:
            reason = format("unknown escape '\\%c' (use \\\\ \\n \\r \\t or \\xNN)", s[i]);
            return std::nullopt;
        }
    }
    return out;
}

// Position of the first '=' that is not part of an escape, or npos.
std::size_t find_equals(std::string_view line)
{
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\\')
            ++i; // escapes never contain a raw '='
        else if (line[i] == '=')
            return i;
    }
    return std::string_view::npos;
}

// Decimal or 0x-hexadecimal number up to `max`.
std::optional<std::uint32_t> parse_number(std::string_view s, std::uint32_t max)
{
    int base = 10;
    if (s.size() > 2 && s[0] == '0' && (s[1] == 'x' || s[1] == 'X')) {
        s.remove_prefix(2);
        base = 16;
    }
    std::uint32_t v = 0;
    auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), v, base);
    if (s.empty() || ec != std::errc() || end != s.data() + s.size() || v > max)
        return std::nullopt;
    return v;
}

// Stores one header field line; false with `reason` set on a bad one.
bool set_header_field(message &msg, std::string_view key, std::string_view value, std::string &reason)
{
    std::optional<std::uint32_t> n;
    if (key == "terminator" && value == "none") {
        msg.terminator.reset();
        return true;
    }
    if (key == "header0" || key == "header2") {
        n = parse_number(value, 0xFFFFFFFFu);
        if (n)
            (key == "header0" ? msg.header0 : msg.header2) = *n;
    } else if (key == "operation" || key == "terminator") {
        n = parse_number(value, 0xFF);
        if (n && key == "operation")
            msg.operation = static_cast<std::uint8_t>(*n);
        if (n && key == "terminator")
            msg.terminator = static_cast<std::uint8_t>(*n);
    } else {
        reason = "'" + std::string(key) +
                 "' is not a header field (header0, header2, operation, terminator);"
                 " params belong after a [path] line";
        return false;
    }
    if (!n) {
        reason = "bad value for " + std::string(key) + ": '" + std::string(value) + "'" +
                 (key == "terminator"  ? " (expected a byte or none)"
                  : key == "operation" ? " (expected a byte, 0 to 255)"
                                       : " (expected a 32-bit number)");
        return false;
    }
    return true;
}

// Parses one non-blank, non-comment line (already trimmed) into `msg`.
bool parse_line(std::string_view line, message &msg, std::string &reason)
{
    if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
        auto path = unescape(trim(line.substr(1, line.size() - 2)), reason);
        if (!path)
            return false;
        if (path->size() > max_field) {
            reason = "path longer than 65535 bytes";
            return false;
        }
        msg.nodes.push_back(node{std::move(*path), {}});
        return true;
    }
    std::size_t eq = find_equals(line);
    if (eq == std::string_view::npos) {
        reason = "expected '[path]' or 'name = value' (write 'name =' for no value)";
        return false;
    }
    std::string_view raw_name = trim(line.substr(0, eq));
    std::string_view raw_value = trim(line.substr(eq + 1));
    if (msg.nodes.empty())
        return set_header_field(msg, raw_name, raw_value, reason);

    auto name = unescape(raw_name, reason);
    if (!name)
        return false;
    param p{std::move(*name), std::nullopt};
    if (!raw_value.empty()) {
        p.value = unescape(raw_value, reason);
        if (!p.value)
            return false;
    }
    if (p.name.size() > max_field || (p.value && p.value->size() > max_field)) {
        reason =
            format("param %s longer than 65535 bytes (%zu)", p.name.size() > max_field ? "name" : "value",
                   p.name.size() > max_field ? p.name.size() : p.value->size());
        return false;
    }
    auto &params = msg.nodes.back().params;
    if (params.size() == max_field) {
        reason = "more than 65535 params in one node";
        return false;
    }
    params.push_back(std::move(p));
    return true;
}

} // namespace

bool is_blank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

std::string_view trim(std::string_view s)
{
    while (!s.empty() && is_blank(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && is_blank(s.back()))
        s.remove_suffix(1);
    return s;
}

int hex_digit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// ------------------------------------------------------------- public ---

std::size_t body_length(const message &msg)
{
    std::size_t n = 1 + (msg.terminator ? 1 : 0);
    for (const node &nd : msg.nodes) {
        n += 4 + nd.path.size();
        for (const param &p : nd.params)
            n += 4 + p.name.size() + (p.value ? p.value->size() : 0);
    }
    return n;
}

std::vector<std::uint8_t> encode(const message &msg)
{
    const std::size_t body = body_length(msg);
    if (body > 0xFFFFFFFFu)
        throw std::length_error("message body longer than 4294967295 bytes");
    std::vector<std::uint8_t> out;
    out.reserve(header_size + body);
    put_u32(out, msg.header0);
    put_u32(out, static_cast<std::uint32_t>(body));
    put_u32(out, msg.header2);
    out.push_back(msg.operation);
    for (const node &nd : msg.nodes)
        encode_node(out, nd);
    if (msg.terminator)
        out.push_back(*msg.terminator);
    return out;
}

void encode_node(std::vector<std::uint8_t> &out, const node &nd)
{
    if (nd.params.size() > max_field)
        throw std::length_error("more than 65535 params in a node");
    put_field(out, nd.path, "path");
    put_u16(out, nd.params.size());
    for (const param &p : nd.params) {
        put_field(out, p.name, "param name");
        put_field(out, p.value.value_or(std::string()), "param value");
    }
}

// Walks the body the way the parser does: a node is read while at least 2
// bytes remain; what is left after the last node (0 or 1 byte) is the
// closing byte.
bool decode_body(std::span<const std::uint8_t> body, std::size_t base, message &out, wire_error &err)
{
    out.nodes.clear();
    return decode_body(
        body, base, out, [&](node &&nd) { out.nodes.push_back(std::move(nd)); }, err);
}

bool decode_body(std::span<const std::uint8_t> body, std::size_t base, message &out,
                 const std::function<void(node &&)> &sink, wire_error &err)
{
    if (body.empty())
        return fail(err, base, "empty body: no operation byte");
    out.operation = body[0];
    std::size_t pos = 1;
    auto left = [&] { return body.size() - pos; };

    for (std::size_t ni = 0; left() >= 2; ++ni) {
        const std::size_t path_len = read_u16(body, pos);
        if (path_len + 2 > left())
            return fail(err, base + pos,
                        format("node %zu: path length %zu runs past the end of the body (%s left)", ni + 1,
                               path_len, byte_count(left()).c_str()));
        if (path_len + 4 > left())
            return fail(err, base + pos + 2 + path_len,
                        format("node %zu: param count runs past the end of the body", ni + 1));
        node nd;
        nd.path.assign(reinterpret_cast<const char *>(&body[pos + 2]), path_len);
        pos += 2 + path_len;
        const std::size_t count = read_u16(body, pos);
        pos += 2;

        for (std::size_t pi = 0; pi < count; ++pi) {
            param p;
            std::string where = node_label(ni, nd.path) + format(", param %zu of %zu", pi + 1, count);
            for (int field = 0; field < 2; ++field) {
                const char *what = field == 0 ? "name" : "value";
                if (left() < 2)
                    return fail(err, base + pos, where + ": the body ends before its " + what + " length");
                const std::size_t len = read_u16(body, pos);
                if (len + 2 > left())
                    return fail(err, base + pos,
                                where + format(": %s length %zu runs past the end of the body (%s left)",
                                               what, len, byte_count(left()).c_str()));
                std::string text(reinterpret_cast<const char *>(&body[pos + 2]), len);
                pos += 2 + len;
                if (field == 0)
                    p.name = std::move(text);
                else if (len > 0)
                    p.value = std::move(text);
            }
            nd.params.push_back(std::move(p));
        }
        sink(std::move(nd));
    }
    out.terminator.reset();
    if (left() == 1)
        out.terminator = body[pos];
    return true;
}

bool decode(std::span<const std::uint8_t> bytes, message &out, wire_error &err)
{
    out.nodes.clear();
    return decode(
        bytes, out, [&](node &&nd) { out.nodes.push_back(std::move(nd)); }, err);
}

bool decode(std::span<const std::uint8_t> bytes, message &out, const std::function<void(node &&)> &sink,
            wire_error &err)
{
    if (bytes.size() < header_size)
        return fail(
            err, bytes.size(),
            format("the message ends inside its 12-byte header (%s)", byte_count(bytes.size()).c_str()));
    const std::size_t body = read_u32(bytes, 4);
    const std::size_t avail = bytes.size() - header_size;
    if (body == 0)
        return fail(err, 4, "body length 0 leaves no room for the operation byte");
    if (body > avail)
        return fail(err, 4,
                    format("body length %zu is larger than the %s after the header", body,
                           byte_count(avail).c_str()));
    out.header0 = read_u32(bytes, 0);
    out.header2 = read_u32(bytes, 8);
    if (!decode_body(bytes.subspan(header_size, body), header_size, out, sink, err))
        return false;
    if (body < avail)
        return fail(err, header_size + body,
                    (byte_count(avail - body) + " of trailing garbage after the end of the body"));
    return true;
}

std::string escape(std::string_view raw, field_kind kind)
{
    std::string out;
    out.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const char c = raw[i];
        const auto u = static_cast<unsigned char>(c);
        const bool at_edge = i == 0 || i + 1 == raw.size();
        if (c == '\\')
            out += "\\\\";
        else if (c == '\n')
            out += "\\n";
        else if (c == '\r')
            out += "\\r";
        else if (c == '\t')
            out += "\\t";
        else if (u < 0x20 || u >= 0x7F || (c == ' ' && at_edge) ||
                 (kind == field_kind::name && (c == '=' || (i == 0 && (c == '#' || c == '[')))))
            out += format("\\x%02x", u);
        else
            out += c;
    }
    return out;
}

std::optional<std::string> unescape_field(std::string_view text, std::string &reason)
{
    return unescape(text, reason);
}

std::string to_text(const message &msg)
{
    std::string out = text_header(msg, body_length(msg), msg.nodes.size());
    for (const node &nd : msg.nodes)
        out += "\n" + node_text(nd);
    return out;
}

std::string text_header(const message &msg, std::size_t body, std::size_t nodes)
{
    std::string out = format("# body length %zu, %zu node%s\n", body, nodes, nodes == 1 ? "" : "s");
    out += format("header0 = 0x%08x\nheader2 = 0x%08x\noperation = %u\n", static_cast<unsigned>(msg.header0),
                  static_cast<unsigned>(msg.header2), static_cast<unsigned>(msg.operation));
    if (!msg.terminator)
        out += "terminator = none\n";
    else if (*msg.terminator != 0)
        out += format("terminator = 0x%02x\n", static_cast<unsigned>(*msg.terminator));
    return out;
}

std::string node_text(const node &nd)
{
    std::string out = "[" + escape(nd.path, field_kind::path) + "]\n";
    for (const param &p : nd.params) {
        out += "    " + escape(p.name, field_kind::name) + " =";
        if (p.value && !p.value->empty())
            out += " " + escape(*p.value, field_kind::value);
        out += '\n';
    }
    return out;
}

bool parse_text(std::string_view text, message &out, text_error &err)
{
    out = message{};
    std::size_t line_no = 0;
    static constexpr std::string_view header_fields[] = {"header0", "header2", "operation", "terminator"};
    std::size_t header_line[std::size(header_fields)] = {}; // where each was given
    while (!text.empty()) {
        ++line_no;
        const std::size_t nl = text.find('\n');
        std::string_view line = trim(text.substr(0, nl));
        text.remove_prefix(nl == std::string_view::npos ? text.size() : nl + 1);
        if (line.empty() || line.front() == '#')
            continue;
        std::string reason;
        if (out.nodes.empty() && line.front() != '[') {
            const std::string_view key = trim(line.substr(0, find_equals(line)));
            for (std::size_t f = 0; f < std::size(header_fields); ++f) {
                if (key != header_fields[f])
                    continue;
                if (header_line[f] != 0)
                    reason =
                        format("%s given twice (first on line %zu)", header_fields[f].data(), header_line[f]);
                header_line[f] = line_no;
            }
        }
        if (!reason.empty() || !parse_line(line, out, reason)) {
            err.line = line_no;
            err.reason = std::move(reason);
            return false;
        }
    }
    return true;
}

std::vector<std::uint8_t> message_from_text(std::string_view text)
{
    message msg;
    text_error err;
    if (!parse_text(text, msg, err))
        throw std::invalid_argument("line " + std::to_string(err.line) + ": " + err.reason);
    return encode(msg);
}

} // namespace cfgmsg
