// cfgmsg::decode on arbitrary bytes. A message that decodes encodes back
// into the same bytes, and its text form is printable ASCII that parses
// back into the same message.
#include "check.h"
#include "msgtext.h"

#include <cstdint>
#include <span>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::vector<uint8_t> bytes(data, data + size);
    cfgmsg::message msg;
    cfgmsg::wire_error wire_error;
    if (!cfgmsg::decode(std::span<const uint8_t>(bytes), msg, wire_error)) {
        fuzz::check(wire_error.offset <= size, "wire error offset past the input");
        return 0;
    }
    fuzz::check(cfgmsg::encode(msg) == bytes, "decode -> encode changed the bytes");

    const std::string text = cfgmsg::to_text(msg);
    for (const char c : text)
        fuzz::check(c == '\n' || (c >= 0x20 && c < 0x7F), "text form holds a byte that is not printable");
    cfgmsg::message again;
    cfgmsg::text_error text_error;
    fuzz::check(cfgmsg::parse_text(text, again, text_error), "text form of a message is refused");
    fuzz::check(again == msg, "text form parsed into another message");
    return 0;
}
