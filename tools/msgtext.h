// Configuration messages as structures, as wire bytes and as readable text.
//
// Text form (what `cfgmsg decode` prints and `cfgmsg encode` reads):
//
//     # header fields come before the first node; all optional
//     header0 = 0x00000000
//     header2 = 0x00000000
//     operation = 2
//
//     # a node: its path in brackets, then one "name = value" per param
//     [config.VOIP.h323]
//         enableh323 = 1
//         password = ""
//         h323aliase =
//
// - `name =` (nothing after '=') is a param without a value (length 0 on
//   the wire; an empty value is the same thing). `name = ""` is the
//   two-character value "" and stays distinct.
// - A comment is a line whose first non-blank character is '#'.
// - Indentation and blank lines carry no meaning; blanks around '=' and at
//   the ends of a line are dropped. Everything after the first '=' is the
//   value, so '=' and '#' inside a value need no escape.
// - Escapes, valid in paths, names and values: \\ \n \r \t \xNN (two hex
//   digits). The printer escapes control bytes, bytes >= 0x80, a leading or
//   trailing blank, '=' in a name, and '#' or '[' opening a name, so that any
//   byte sequence round-trips.
// - `terminator = none` (header field) stands for a body that ends right
//   after its last node without the closing 0 byte; `terminator = 0xNN` for
//   a closing byte other than 0. The parser accepts both (it stops when
//   fewer than 2 bytes remain), so they are kept rather than rejected.
//   A body length of 0 (no operation byte) and bytes after the body are
//   reported as malformed.
// - A text error names its line; a wire error names its byte offset.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cfgmsg {

// Largest path, name or value, and largest param count, that the 16-bit
// length fields can carry.
inline constexpr std::size_t max_field = 0xFFFF;
inline constexpr std::size_t header_size = 12;

struct param {
    std::string name;
    std::optional<std::string> value; // nullopt: value length 0 on the wire
    bool operator==(const param &) const = default;
};

struct node {
    std::string path;
    std::vector<param> params;
    bool operator==(const node &) const = default;
};

struct message {
    std::uint32_t header0 = 0; // header word 0, not interpreted
    std::uint32_t header2 = 0; // header word 2, not interpreted
    std::uint8_t operation = 2;
    std::optional<std::uint8_t> terminator = 0; // nullopt: body has no closing byte
    std::vector<node> nodes;
    bool operator==(const message &) const = default;
};

struct wire_error {
    std::size_t offset = 0; // from the first byte of the message
    std::string reason;
};

struct text_error {
    std::size_t line = 0; // 1-based
    std::string reason;
};

// Number of body bytes (operation byte through closing byte) that `encode`
// writes for `msg`: the value of the body length field.
std::size_t body_length(const message &msg);

// Wire bytes of `msg`: header, operation byte, nodes, closing byte.
// Throws std::length_error when a field or count exceeds its 16-bit length
// or the body its 32-bit length.
std::vector<std::uint8_t> encode(const message &msg);

// Reads a whole message (header included). The input must end exactly where
// the body length says. On failure fills `err` and returns false.
bool decode(std::span<const std::uint8_t> bytes, message &out, wire_error &err);

// The same, handing each node to `sink` as soon as it is read instead of
// keeping it in `out` (which gets the header fields only), so that a large
// message is read in the memory of one node. Nodes before a fault have been
// handed over when it is reported.
bool decode(std::span<const std::uint8_t> bytes, message &out, const std::function<void(node &&)> &sink,
            wire_error &err);

// Reads a body alone (operation byte, nodes, closing byte), as the section
// writers produce it; offsets in `err` count from `base`.
bool decode_body(std::span<const std::uint8_t> body, std::size_t base, message &out, wire_error &err);
bool decode_body(std::span<const std::uint8_t> body, std::size_t base, message &out,
                 const std::function<void(node &&)> &sink, wire_error &err);

// Text form of `msg`, as described at the top of this file.
std::string to_text(const message &msg);
// Its parts: the lines before the first node (header fields of `msg`, and
// a comment with the body length and node count), and one node ('[path]'
// and its params).
std::string text_header(const message &msg, std::size_t body, std::size_t nodes);
std::string node_text(const node &nd);

// The wire bytes of one node, appended to `out`; throws as `encode` does.
void encode_node(std::vector<std::uint8_t> &out, const node &nd);

// Parses the text form. On failure fills `err` and returns false. A message
// that parses always encodes (every length is checked here).
bool parse_text(std::string_view text, message &out, text_error &err);

// The blanks of a text-form line (space, tab, carriage return), a line
// without them at either end, and the value of a hex digit (-1: none).
bool is_blank(char c);
std::string_view trim(std::string_view s);
int hex_digit(char c);

// Text escaping of one path, name or value, as `to_text` writes it.
enum class field_kind { path, name, value };
std::string escape(std::string_view raw, field_kind kind);
// And back: nullopt (with `reason` set) on a bad escape.
std::optional<std::string> unescape_field(std::string_view text, std::string &reason);

// Fixture helper: text to wire bytes. Throws std::invalid_argument
// ("line N: reason") for bad text.
std::vector<std::uint8_t> message_from_text(std::string_view text);

} // namespace cfgmsg
