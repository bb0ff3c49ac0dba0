#include "msgload.h"

#include "msgjson.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace cfgmsg {

namespace {

struct file_closer {
    void operator()(FILE *f) const noexcept
    {
        if (f != stdin)
            std::fclose(f);
    }
};
using file_ptr = std::unique_ptr<FILE, file_closer>;

// Appends up to `count` more bytes of `f` to `data`. False (with `error`
// set) on a read error; a short read at the end of the input is no error.
bool read_more(FILE *f, std::size_t count, std::string &data, const std::string &file, std::string &error)
{
    char buf[65536];
    while (count > 0) {
        const std::size_t n = std::fread(buf, 1, std::min(count, sizeof buf), f);
        data.append(buf, n);
        count -= n;
        if (n == 0)
            break;
    }
    if (std::ferror(f) == 0)
        return true;
    error = file + ": cannot read: " + std::strerror(errno);
    return false;
}

std::string at_offset(std::size_t offset)
{
    char buf[64];
    std::snprintf(buf, sizeof buf, "at byte offset %zu (0x%zx)", offset, offset);
    return buf;
}

std::uint32_t body_length_field(const std::string &header)
{
    std::uint32_t n = 0;
    for (int i = 3; i >= 0; --i)
        n = n << 8 | static_cast<unsigned char>(header[4 + i]);
    return n;
}

// A control byte that no text holds (all but tab, line feed and carriage
// return), or -1.
std::ptrdiff_t control_byte(std::string_view data)
{
    for (std::size_t i = 0; i < data.size(); ++i) {
        const auto c = static_cast<unsigned char>(data[i]);
        if ((c < 0x20 && c != '\t' && c != '\n' && c != '\r') || c == 0x7F)
            return static_cast<std::ptrdiff_t>(i);
    }
    return -1;
}

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

// Whether `start` is UTF-8 as far as it goes (the last sequence may be cut).
bool utf8_start(std::string_view start)
{
    for (std::size_t i = 0; i < start.size();) {
        const auto c = static_cast<unsigned char>(start[i]);
        const std::size_t n = c < 0x80             ? 1
                              : (c & 0xE0) == 0xC0 ? 2
                              : (c & 0xF0) == 0xE0 ? 3
                              : (c & 0xF8) == 0xF0 ? 4
                                                   : 0;
        if (n == 0 || (n == 2 && c < 0xC2))
            return false;
        for (std::size_t k = 1; k < n && i + k < start.size(); ++k)
            if ((static_cast<unsigned char>(start[i + k]) & 0xC0) != 0x80)
                return false;
        i += n;
    }
    return true;
}

// Binary: a control byte or bytes that are not UTF-8 among the first ones
// (random bytes too are called binary, not text).
msg_format recognise(const std::string &start)
{
    if (control_byte(start) >= 0 || !utf8_start(start))
        return msg_format::binary;
    const std::size_t first = start.find_first_not_of(" \t\r\n");
    return first != std::string::npos && start[first] == '{' ? msg_format::json : msg_format::text;
}

} // namespace

const char *format_name(msg_format f)
{
    return f == msg_format::binary ? "binary" : f == msg_format::text ? "text" : "json";
}

std::optional<msg_format> format_from_name(std::string_view name)
{
    for (msg_format f : {msg_format::binary, msg_format::text, msg_format::json})
        if (name == format_name(f))
            return f;
    return std::nullopt;
}

std::string wire_error_text(const std::string &file, const wire_error &err)
{
    return file + ": malformed message " + at_offset(err.offset) + ": " + err.reason;
}

std::optional<loaded_message> load_message(const std::string &file, std::optional<msg_format> want,
                                           std::string &error, unsigned accepts)
{
    auto in = read_input(file, want, error, accepts);
    if (!in)
        return std::nullopt;
    return parse_input(file, *in, error);
}

std::optional<loaded_message> parse_input(const std::string &file, const loaded_input &in, std::string &error)
{
    loaded_message out;
    out.format = in.format;
    if (out.format == msg_format::binary) {
        const std::span bytes(reinterpret_cast<const std::uint8_t *>(in.data.data()), in.data.size());
        wire_error err;
        if (decode(bytes, out.msg, err))
            return out;
        error = wire_error_text(file, err);
        return std::nullopt;
    }
    if (out.format == msg_format::json) {
        json_error err;
        if (from_json(in.data, out.msg, err))
            return out;
        error = file + ": bad JSON at " + err.where + ": " + err.reason;
        return std::nullopt;
    }
    text_error err;
    out.byte_order_mark = in.byte_order_mark;
    if (parse_text(in.data, out.msg, err)) {
        out.text = in.data;
        return out;
    }
    if (const std::ptrdiff_t at = control_byte(in.data); at >= 0) {
        error = file + ": this looks like binary data (a control byte at offset " + std::to_string(at) +
                "), not the text form of a message";
        return std::nullopt;
    }
    error = file + ":" + std::to_string(err.line) + ": " + err.reason;
    return std::nullopt;
}

std::optional<loaded_input> read_input(const std::string &file, std::optional<msg_format> want,
                                       std::string &error, unsigned accepts)
{
    errno = 0;
    file_ptr f(file == "-" ? stdin : std::fopen(file.c_str(), "rb"));
    if (!f) {
        error = file + ": cannot open: " + std::strerror(errno);
        return std::nullopt;
    }
    std::string data;
    if (!read_more(f.get(), header_size, data, file, error))
        return std::nullopt;
    if (data.empty()) {
        error = file + ": empty file, no message in it";
        return std::nullopt;
    }
    loaded_input out;
    out.format = want.value_or(recognise(data));
    // A UTF-8 byte-order mark before text or JSON is skipped.
    if (out.format != msg_format::binary && data.starts_with(byte_order_mark)) {
        data.erase(0, byte_order_mark.size());
        out.byte_order_mark = true;
        if (!read_more(f.get(), byte_order_mark.size(), data, file, error))
            return std::nullopt;
        out.format = want.value_or(recognise(data));
    }
    if ((accepts & 1u << static_cast<unsigned>(out.format)) == 0) {
        static const char *const shown[] = {"a binary message", "the text form of a message",
                                            "a message in JSON"};
        std::string expected;
        for (unsigned f = 0; f < 3; ++f)
            if (accepts & 1u << f)
                expected += std::string(expected.empty() ? "" : " or ") + shown[f];
        error = file + ": this looks like " + shown[static_cast<unsigned>(out.format)] + ", not " + expected;
        return std::nullopt;
    }

    if (out.format == msg_format::binary) {
        if (data.size() == header_size && body_length_field(data) > 0) {
            const std::size_t body = body_length_field(data);
            if (body > max_input) {
                error = file + ": malformed message " + at_offset(4) + ": body length " +
                        std::to_string(body) +
                        " is more than cfgmsg reads (64 MiB); is this a configuration message?";
                return std::nullopt;
            }
            data.reserve(header_size + body + 1);
            if (!read_more(f.get(), body + 1, data, file, error))
                return std::nullopt;
            if (data.size() > header_size + body) {
                error = file + ": malformed message " + at_offset(header_size + body) +
                        ": the input goes on after the " + std::to_string(body) +
                        "-byte body that the header declares";
                return std::nullopt;
            }
        }
        out.data = std::move(data);
        return out;
    }

    // Text and JSON never hold a raw NUL byte: stop at the first one, so
    // that an endless binary input is not read to max_input.
    for (std::size_t checked = 0;;) {
        const std::size_t nul = data.find('\0', checked);
        if (nul != std::string::npos) {
            error = file + ": a NUL byte at offset " + std::to_string(nul) + " in what began as " +
                    (out.format == msg_format::json ? "JSON" : "text") + "; this is no message in any form";
            return std::nullopt;
        }
        if (data.size() > max_input) {
            error = file + ": more than 64 MiB of " + format_name(out.format) + ", more than cfgmsg reads";
            return std::nullopt;
        }
        checked = data.size();
        if (!read_more(f.get(), 65536, data, file, error))
            return std::nullopt;
        if (data.size() == checked)
            break;
    }
    out.data = std::move(data);
    return out;
}

std::string render(const message &msg, msg_format f)
{
    if (f == msg_format::text)
        return to_text(msg);
    if (f == msg_format::json)
        return to_json(msg);
    const std::vector<std::uint8_t> bytes = encode(msg);
    return {bytes.begin(), bytes.end()};
}

} // namespace cfgmsg
