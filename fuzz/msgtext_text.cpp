// cfgmsg::parse_text on arbitrary text. A text that parses encodes (every
// length was checked), the bytes decode into the same message, and the
// message printed and parsed again stays the same.
#include "check.h"
#include "msgtext.h"

#include <cstdint>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::vector<char> text(data, data + size);
    cfgmsg::message msg;
    cfgmsg::text_error text_error;
    if (!cfgmsg::parse_text(std::string_view(text.data(), text.size()), msg, text_error))
        return 0;

    std::vector<uint8_t> bytes;
    try {
        bytes = cfgmsg::encode(msg);
    } catch (...) {
        fuzz::check(false, "a message that parsed does not encode");
    }
    cfgmsg::message decoded;
    cfgmsg::wire_error wire_error;
    fuzz::check(cfgmsg::decode(bytes, decoded, wire_error), "encoded message does not decode");
    fuzz::check(decoded == msg, "text -> wire -> message changed the message");

    const std::string printed = cfgmsg::to_text(msg);
    cfgmsg::message again;
    fuzz::check(cfgmsg::parse_text(printed, again, text_error), "text form of a parsed message is refused");
    fuzz::check(again == msg, "text -> message -> text -> message changed the message");
    return 0;
}
