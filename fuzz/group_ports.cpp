// cfgpars_group_ports_string_to_t and cfg_port_to_string. The first input
// byte is max_ports (0..100), the rest the port list text. A refused text
// leaves the group's list as it was; a taken one, written back as text and
// read again, gives the same list (below 101 ports, 72 numbers of at most
// two digits always fit the 256-byte text). Inputs whose first byte has its top bit
// set are instead a damaged group record (its bytes as they come) for
// cfg_port_to_string, which must stay inside its 256-byte text.
#include "check.h"
#include "text_input.h"

#include <cfgparser.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

cfg_image_t image;

bool text_fits(const char *out) noexcept
{
    return std::memchr(out, '\0', CFG_PORT_LIST_TEXT_SIZE) != nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return -1;
    char out[CFG_PORT_LIST_TEXT_SIZE];

    if ((data[0] & 0x80) != 0) {
        group_cfg_t damaged{};
        std::memcpy(&damaged, data + 1, std::min(size - 1, sizeof damaged));
        fuzz::check(cfg_port_to_string(&damaged, out) == out, "port list writer returned another buffer");
        fuzz::check(text_fits(out), "port list text without its NUL");
        return 0;
    }

    image.max_ports = data[0] % 101;
    const auto text = fuzz::text_input(data + 1, size - 1);
    group_cfg_t group{};
    group.port_list[0] = 5;
    group.port_list[1] = 6;
    group.port_count = 2;
    const group_cfg_t before = group;
    const int result = cfgpars_group_ports_string_to_t(&group, text.data(), &image);
    fuzz::check(result == 0 || result == -1, "port list reader returned neither 0 nor -1");
    if (result != 0) {
        fuzz::check(std::memcmp(&group, &before, sizeof group) == 0, "a refused port list changed the group");
        return 0;
    }
    fuzz::check(group.port_count <= CFG_MAX_PORTS, "port count past the list");
    for (uint32_t i = 0; i < group.port_count; ++i)
        fuzz::check(group.port_list[i] < image.max_ports, "a port past max_ports was taken");

    fuzz::check(cfg_port_to_string(&group, out) == out, "port list writer returned another buffer");
    fuzz::check(text_fits(out), "port list text without its NUL");
    group_cfg_t back{};
    fuzz::check(cfgpars_group_ports_string_to_t(&back, out, &image) == 0, "the written port list is refused");
    fuzz::check(back.port_count == group.port_count &&
                    std::equal(group.port_list, group.port_list + group.port_count, back.port_list),
                "port list -> text -> port list changed the list");
    return 0;
}
