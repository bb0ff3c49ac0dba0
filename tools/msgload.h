// Loading a configuration message from a file in any of its three forms:
// the binary message, the text form (msgtext.h) or the JSON form
// (msgjson.h). Every cfgmsg command that reads a message reads it here.
//
// The form is recognised by content: a NUL byte among the first 12 bytes
// means a binary message (its header holds the body length, whose top byte
// is 0 for any message under 16 MiB), a '{' as first non-blank character
// JSON, anything else the text form. A caller may insist on one form.
//
// A binary message is read up to the header plus the body length that it
// declares and no further, so that an endless input (/dev/zero, a pipe) is
// not read to its end; an input that goes on after the body is reported,
// as is one that ends before it. Text and JSON are read up to max_input.
#pragma once

#include "msgtext.h"

#include <cstddef>
#include <optional>
#include <string>

namespace cfgmsg {

enum class msg_format { binary, text, json };

// "binary", "text", "json"; and back (nullopt for another word).
const char *format_name(msg_format f);
std::optional<msg_format> format_from_name(std::string_view name);

// Largest body length, and largest text or JSON input, that is read: far
// above a whole 72-port configuration (170 kB), far below what would hurt.
inline constexpr std::size_t max_input = std::size_t{64} << 20;

struct loaded_message {
    message msg;
    msg_format format = msg_format::binary;
    std::string text;             // the text form as read (format text), for edits that keep its layout
    bool byte_order_mark = false; // the text began with one (skipped)
};

// Forms a caller accepts, as a set of bits.
enum : unsigned { accept_binary = 1, accept_text = 2, accept_json = 4, accept_any = 7 };

// Reads FILE ('-': standard input) and loads the message in it. `want`:
// the form the caller insists on, or nullopt to recognise it; a recognised
// form outside `accepts` is reported as such ("this looks like the text
// form of a message, not a binary message"). On failure returns nullopt and
// sets `error` to one line, "FILE: reason" with the byte offset, text line
// or JSON position of the fault.
std::optional<loaded_message> load_message(const std::string &file, std::optional<msg_format> want,
                                           std::string &error, unsigned accepts = accept_any);

// The bytes of FILE, read and recognised as load_message reads them, but
// not parsed: a binary message is framed (header and declared body, no
// more) and not yet decoded. For the commands that stream a large message.
struct loaded_input {
    std::string data;
    msg_format format = msg_format::binary;
    bool byte_order_mark = false; // the text began with one (skipped)
};
std::optional<loaded_input> read_input(const std::string &file, std::optional<msg_format> want,
                                       std::string &error, unsigned accepts = accept_any);

// The message of an input that read_input returned, as load_message gives it.
std::optional<loaded_message> parse_input(const std::string &file, const loaded_input &in,
                                          std::string &error);

// "FILE: malformed message at byte offset N (0xN): reason".
std::string wire_error_text(const std::string &file, const wire_error &err);

// The message in the given form: wire bytes, text or JSON (as decode prints).
std::string render(const message &msg, msg_format f);

} // namespace cfgmsg
