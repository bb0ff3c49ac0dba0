// Text form and wire codec of configuration messages (tools/msgtext).
#include "msgtext.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using bytes_t = std::vector<std::uint8_t>;

// Small builder for expected wire bytes.
struct wire {
    bytes_t v;
    wire &u8(unsigned b)
    {
        v.push_back(static_cast<std::uint8_t>(b));
        return *this;
    }
    wire &u16(unsigned n) { return u8(n & 0xFF).u8(n >> 8); }
    wire &u32(std::uint32_t n) { return u16(n & 0xFFFF).u16(n >> 16); }
    wire &str(std::string_view s)
    {
        v.insert(v.end(), s.begin(), s.end());
        return *this;
    }
    wire &field(std::string_view s) { return u16(static_cast<unsigned>(s.size())).str(s); }
};

// Header (words 0 and 2 zero) followed by `body`; `declared` overrides the
// body length field.
bytes_t framed(const wire &body, std::optional<std::uint32_t> declared = std::nullopt)
{
    wire w;
    w.u32(0).u32(declared.value_or(static_cast<std::uint32_t>(body.v.size()))).u32(0);
    w.v.insert(w.v.end(), body.v.begin(), body.v.end());
    return w.v;
}

TEST(MsgText, EncodesExactBytes)
{
    struct Case {
        const char *label;
        const char *text;
        bytes_t expected;
    };
    const std::vector<Case> cases = {
        {"one SIP node, header words little-endian",
         "header0 = 0x11223344\nheader2 = 0xA0B0C0D0\n[config.VOIP.sip]\n  enablesip = 1\n",
         wire{}
             .u32(0x11223344)
             .u32(35)
             .u32(0xA0B0C0D0)
             .u8(2)
             .field("config.VOIP.sip")
             .u16(1)
             .field("enablesip")
             .field("1")
             .u8(0)
             .v},
        {"no value is length 0, \"\" is two quote bytes", "[p]\na =\nb = \"\"\n",
         framed(wire{}.u8(2).field("p").u16(2).field("a").u16(0).field("b").field("\"\"").u8(0))},
        {"operation byte, no nodes, no closing byte", "operation = 7\nterminator = none\n",
         framed(wire{}.u8(7))},
        {"node without params, closing byte 0xee", "terminator = 0xee\n[config.VOIP.h323]\n",
         framed(wire{}.u8(2).field("config.VOIP.h323").u16(0).u8(0xEE))},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(cfgmsg::message_from_text(c.text), c.expected);
    }
}

TEST(MsgText, ParsesTextForms)
{
    using cfgmsg::message;
    auto one = [](std::string path, std::vector<cfgmsg::param> params) {
        message m;
        m.nodes.push_back({std::move(path), std::move(params)});
        return m;
    };
    message header;
    header.header0 = 0x11223344;
    header.header2 = 7;
    header.operation = 3;
    header.terminator.reset();

    struct Case {
        const char *label;
        std::string text;
        message expected;
    };
    const std::vector<Case> cases = {
        {"indentation, comments, CRLF and blanks in brackets are insignificant",
         "  # comment\r\n\r\n[ config.VOIP.sip ]\r\n\tenablesip=1\r\n   # another\n",
         one("config.VOIP.sip", {{"enablesip", "1"}})},
        {"'=' and '#' inside a value are literal", "[config.VOIP.dvo]\n code = *#=1 # not a comment\n",
         one("config.VOIP.dvo", {{"code", "*#=1 # not a comment"}})},
        {"no value, \"\" and a quoted letter", "[n]\na =\nb = \"\"\nc = \"x\"\n",
         one("n", {{"a", std::nullopt}, {"b", "\"\""}, {"c", "\"x\""}})},
        {"escapes in path, name and value", "[\\x20p\\\\]\n\\x3dn\\t = \\x00v\\n\\xFF\\x20\n",
         one(" p\\", {{"=n\t", std::string("\0v\n\xff ", 5)}})},
        {"empty path and empty name", "[]\n=\n", one("", {{"", std::nullopt}})},
        {"header fields", "header0 = 0x11223344\nheader2 = 7\noperation = 0x03\nterminator = none\n", header},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        message got;
        cfgmsg::text_error err;
        ASSERT_TRUE(cfgmsg::parse_text(c.text, got, err)) << "line " << err.line << ": " << err.reason;
        EXPECT_EQ(got, c.expected);
    }
}

TEST(MsgText, PrintsReadableText)
{
    cfgmsg::message m;
    m.header0 = 1;
    m.nodes.push_back(
        {"config.VOIP.h323", {{"enableh323", "1"}, {"h323aliase", std::nullopt}, {"password", "\"\""}}});
    EXPECT_EQ(cfgmsg::to_text(m), "# body length 65, 1 node\n"
                                  "header0 = 0x00000001\nheader2 = 0x00000000\noperation = 2\n"
                                  "\n[config.VOIP.h323]\n"
                                  "    enableh323 = 1\n    h323aliase =\n    password = \"\"\n");
}

// Every byte, at the edges and in the middle of paths, names and values,
// survives structure -> text -> structure and structure -> wire -> structure,
// and the text stays printable ASCII.
TEST(MsgText, EveryByteRoundTrips)
{
    cfgmsg::message m;
    for (int b = 0; b < 256; ++b) {
        const std::string c(1, static_cast<char>(b));
        m.nodes.push_back({c + "a" + c,
                           {{c, c},
                            {"[" + c + "]", " " + c + " "},
                            {"#" + c + "=", "=" + c + "\\"},
                            {" ", " "},
                            {"", std::nullopt}}});
    }
    m.nodes.push_back({"", {}});

    const std::string text = cfgmsg::to_text(m);
    for (char ch : text)
        ASSERT_TRUE(ch == '\n' || (ch >= 0x20 && ch < 0x7F)) << int(ch);

    cfgmsg::message from_text;
    cfgmsg::text_error terr;
    ASSERT_TRUE(cfgmsg::parse_text(text, from_text, terr)) << "line " << terr.line << ": " << terr.reason;
    EXPECT_EQ(from_text, m);

    const bytes_t bin = cfgmsg::encode(m);
    cfgmsg::message from_wire;
    cfgmsg::wire_error werr;
    ASSERT_TRUE(cfgmsg::decode(bin, from_wire, werr)) << werr.offset << ": " << werr.reason;
    EXPECT_EQ(from_wire, m);
    EXPECT_EQ(cfgmsg::to_text(from_wire), text);
    EXPECT_EQ(cfgmsg::message_from_text(text), bin);
}

TEST(MsgText, ReportsMalformedWireWithOffset)
{
    const wire node_a = wire{}.u8(2).field("a"); // operation byte, path "a"
    struct Case {
        const char *label;
        bytes_t bytes;
        std::size_t offset;
        const char *reason;
    };
    const std::vector<Case> cases = {
        {"short header", {1, 2, 3, 4, 5}, 5, "inside its 12-byte header"},
        {"body length 0", framed(wire{}), 4, "body length 0"},
        {"body length past the file", framed(wire{}.u8(2).u8(0), 5), 4, "larger than the 2 bytes"},
        {"path past the body", framed(wire{}.u8(2).u16(5).str("ab").u8(0)), 13, "path length 5 runs past"},
        {"param count past the body", framed(wire(node_a).u8(0)), 16, "param count runs past"},
        {"fewer params than counted", framed(wire(node_a).u16(2).field("n").u16(0).u8(0)), 23,
         "param 2 of 2: the body ends before its name"},
        {"name past the body", framed(wire(node_a).u16(1).u16(9).str("n").u8(0)), 18,
         "name length 9 runs past"},
        {"value one byte past the body", framed(wire(node_a).u16(1).field("n").u16(4).str("xy").u8(0)), 21,
         "value length 4 runs past the end of the body (5 bytes left)"},
        {"trailing garbage",
         [] {
             auto b = framed(wire{}.u8(2).u8(0));
             b.push_back(0xAA);
             b.push_back(0xBB);
             return b;
         }(),
         14, "2 bytes of trailing garbage"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        cfgmsg::message m;
        cfgmsg::wire_error err;
        ASSERT_FALSE(cfgmsg::decode(c.bytes, m, err));
        EXPECT_EQ(err.offset, c.offset) << err.reason;
        EXPECT_NE(err.reason.find(c.reason), std::string::npos) << err.reason;
    }
}

// Ends that the parser accepts are kept, so that they encode back unchanged.
TEST(MsgText, KeepsUnusualEnds)
{
    const wire node_a = wire{}.u8(2).field("a");
    struct Case {
        const char *label;
        bytes_t bytes;
        std::optional<std::uint8_t> terminator;
        std::size_t nodes;
    };
    const std::vector<Case> cases = {
        {"operation byte only", framed(wire{}.u8(2)), std::nullopt, 0},
        {"closing byte not 0", framed(wire{}.u8(2).u8(0x7F)), 0x7F, 0},
        {"last node ends the body", framed(wire(node_a).u16(0)), std::nullopt, 1},
        {"value fills the body exactly", framed(wire(node_a).u16(1).field("n").u16(3).str("xy").u8(0)),
         std::nullopt, 1},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        cfgmsg::message m;
        cfgmsg::wire_error err;
        ASSERT_TRUE(cfgmsg::decode(c.bytes, m, err)) << err.offset << ": " << err.reason;
        EXPECT_EQ(m.terminator, c.terminator);
        EXPECT_EQ(m.nodes.size(), c.nodes);
        EXPECT_EQ(cfgmsg::encode(m), c.bytes);
        EXPECT_EQ(cfgmsg::message_from_text(cfgmsg::to_text(m)), c.bytes);
    }
}

TEST(MsgText, ReportsBadTextWithLine)
{
    struct Case {
        std::string text;
        std::size_t line;
        const char *reason;
    };
    const std::vector<Case> cases = {
        {"enablesip = 1\n", 1, "not a header field"},
        {"[a]\n  x = 1\n  y\n", 3, "expected '[path]' or 'name = value'"},
        {"# c\n[a]\nx = \\q\n", 3, "unknown escape '\\q'"},
        {"[a]\nx = \\x4\n", 2, "two hex digits"},
        {"[a]\nx = ab\\\n", 2, "inside an escape"},
        {"operation = 256\n", 1, "bad value for operation"},
        {"header0 = 0x1G\n", 1, "bad value for header0"},
        {"terminator = -1\n", 1, "bad value for terminator"},
        {"\n\n[a]\nn = " + std::string(65536, 'x') + "\n", 4, "param value longer than 65535"},
        {"[a]\n" + std::string(65536, 'x') + " = 1\n", 2, "param name longer than 65535"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.text.substr(0, 40));
        cfgmsg::message m;
        cfgmsg::text_error err;
        ASSERT_FALSE(cfgmsg::parse_text(c.text, m, err));
        EXPECT_EQ(err.line, c.line) << err.reason;
        EXPECT_NE(err.reason.find(c.reason), std::string::npos) << err.reason;
    }
    try {
        cfgmsg::message_from_text("[a]\nok = 1\nbroken\n");
        ADD_FAILURE() << "no exception";
    } catch (const std::invalid_argument &e) {
        EXPECT_EQ(std::string(e.what()).rfind("line 3: ", 0), 0u) << e.what();
    }
}

} // namespace
