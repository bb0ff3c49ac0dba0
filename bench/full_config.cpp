#include "full_config.h"

#include "writer_families.h"

#include "msgtext.h"

#include <cfgparser.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <span>
#include <iterator>
#include <stdexcept>
#include <string>

namespace bench {
namespace {

constexpr const char *full_config_path = CFGPARSER_SOURCE_DIR "/examples/full-config.msg";

uint32_t u16(const uint8_t *p)
{
    return static_cast<uint32_t>(p[0] | (p[1] << 8));
}
uint32_t u32(const uint8_t *p)
{
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) |
           (static_cast<uint32_t>(p[2]) << 16) | (static_cast<uint32_t>(p[3]) << 24);
}

bool load_file(const char *path, std::vector<uint8_t> &out)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    out.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !out.empty();
}

// Values an installed gateway typically carries, given to the records that
// the writers then send back in full: numbers, credentials and pickup
// groups on every port, rules in every dial plan, hunt groups, modifiers
// and cadences.
std::string seed_text()
{
    std::string t;
    for (int p = 0; p < CFG_MAX_PORTS; ++p) {
        const std::string n = std::to_string(2000 + p);
        t += "[config.VOIP.ports.port_" + std::to_string(p) + "]\n";
        t += " phone = " + n + "\n user_name = " + n + "\n auth_name = " + n + "\n auth_pass = Pw" + n +
             "x\n pickup = 1," + std::to_string(p % 32) + "\n hotnumber = 100\n cfb_number = 8495" + n +
             "\n altnumber = 7495" + n + "\n profile_id = " + std::to_string(p % CFG_PROFILES) +
             "\n gainr = -30\n";
    }
    for (int d = 0; d < CFG_PORT_PROFILES; ++d)
        t += "[config.VOIP.ports.port_def_" + std::to_string(d) +
             "]\n flashtime = 600\n category = 1\n dialing = DTMF\n";
    for (int p = 0; p < CFG_PROFILES; ++p) {
        t += "[config.VOIP.profile.profile_" + std::to_string(p) + ".dialplan]\n";
        for (int r = 0; r < 20; ++r)
            t +=
                " dialplan_" + std::to_string(r) + " = 1 1 1 sip d \"\" 0 0 0 +" + std::to_string(r) + " 0\n";
    }
    for (int g = 0; g < 8; ++g)
        t += "[config.VOIP.groups.group_" + std::to_string(g) +
             "]\n enabled = 1\n type = 1\n"
             " phone = 30" +
             std::to_string(g) + "\n name = group" + std::to_string(g) + "\n timeout = 20\n";
    for (int m = 0; m < 4; ++m) {
        t += "[config.VOIP.modifiers.modifier_" + std::to_string(m) + "]\n";
        for (int r = 0; r < 8; ++r)
            t += " mod_rule_" + std::to_string(r) + " = 8495" + std::to_string(r) + " 10 +7495\n";
    }
    for (int c = 0; c < 8; ++c)
        t += "[config.VOIP.cadences.cadence_" + std::to_string(c) + "]\n ring = 1000\n pause = 4000\n";
    return t;
}

// The generated message: the writers' output for a seeded image, joined
// into one message through the text form.
std::vector<uint8_t> generated_message()
{
    cfg_image_t *image = new_image();
    const std::vector<uint8_t> seed = cfgmsg::message_from_text(seed_text());
    all_parser(image, seed.data());
    std::vector<uint8_t> sample;
    if (load_file(CFGPARSER_SOURCE_DIR "/examples/sample.msg", sample))
        all_parser(image, sample.data());

    std::string text;
    std::vector<uint8_t> buffer(writer_buffer_size);
    for (const writer_family &family : writer_families()) {
        for (const writer_call &call : family.calls) {
            if (!call.in_full_config)
                continue;
            uint8_t *cursor = buffer.data();
            const int written = call.write(&cursor, *image);
            const std::span<const uint8_t> body(buffer.data(), static_cast<std::size_t>(written));
            cfgmsg::message part;
            cfgmsg::wire_error error;
            if (!cfgmsg::decode_body(body, 12, part, error))
                throw std::runtime_error(std::string(family.name) + ": " + error.reason);
            for (cfgmsg::node &node : part.nodes) {
                cfgmsg::message one;
                one.nodes.push_back(std::move(node));
                text += cfgmsg::to_text(one);
            }
        }
    }
    std::free(image);
    return cfgmsg::message_from_text(text);
}

full_config load()
{
    full_config c;
    // CFGPARSER_BENCH_MESSAGE names another message file to measure.
    const char *other = std::getenv("CFGPARSER_BENCH_MESSAGE");
    if (other != nullptr && *other != '\0') {
        if (!load_file(other, c.message))
            throw std::runtime_error(std::string("cannot read ") + other);
        c.source = other;
    } else if (load_file(full_config_path, c.message)) {
        c.source = "examples/full-config.msg";
    } else {
        c.message = generated_message();
        c.source = "generated (examples/full-config.msg not present)";
    }
    const walk_result w = bare_walk(c.message.data());
    c.nodes = w.nodes;
    c.params = w.params;
    return c;
}

} // namespace

const full_config &the_full_config()
{
    static const full_config c = load();
    return c;
}

cfg_image_t *new_image()
{
    auto *image = static_cast<cfg_image_t *>(std::calloc(1, sizeof(cfg_image_t)));
    if (image == nullptr)
        throw std::bad_alloc();
    image->max_ports = CFG_MAX_PORTS;
    return image;
}

std::vector<std::string> node_paths(const std::vector<uint8_t> &message)
{
    cfgmsg::message decoded;
    cfgmsg::wire_error error;
    if (!cfgmsg::decode(message, decoded, error))
        throw std::runtime_error("full configuration: " + error.reason);
    std::vector<std::string> paths;
    for (const cfgmsg::node &n : decoded.nodes)
        paths.push_back(n.path);
    return paths;
}

// Same framing rules as all_parser and find_params: the walk ends when
// fewer than 2 bytes remain or a length runs past the message.
walk_result bare_walk(const uint8_t *message) noexcept
{
    walk_result r;
    const uint32_t body_length = u32(message + 4);
    uint32_t remaining = body_length == 0 ? 0 : body_length - 1;
    const uint8_t *at = message + 13;
    uint32_t sum = 0;
    // Reads one length-prefixed field and adds up its bytes; false when the
    // length runs past the message.
    auto field = [&](uint32_t &length) {
        if (remaining < 2)
            return false;
        length = u16(at);
        if (length + 2 > remaining)
            return false;
        for (uint32_t i = 0; i < length; ++i)
            sum += at[2 + i];
        at += 2 + length;
        remaining -= length + 2;
        return true;
    };
    while (remaining >= 2) {
        uint32_t path_length = u16(at);
        if (path_length + 4 > remaining || !field(path_length))
            break;
        const uint32_t count = u16(at);
        at += 2;
        remaining -= 2;
        ++r.nodes;
        uint32_t name_length = 0;
        uint32_t value_length = 0;
        for (uint32_t i = 0; i < count; ++i) {
            if (!field(name_length) || !field(value_length)) {
                r.checksum = sum;
                return r;
            }
            ++r.params;
        }
    }
    r.checksum = sum;
    return r;
}

} // namespace bench
