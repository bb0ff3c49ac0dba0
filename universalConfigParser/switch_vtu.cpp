// VTU rules of the Ethernet switch: "config.Switch.vtu", params named
// "vtu<rule>.<field>" (for example vtu3.port1).
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

#include <cctype>
#include <optional>

namespace cfg::handlers {
namespace {

constexpr std::size_t field_word_max = 15;

// What a param name addresses: the rule and the field word.
struct vtu_name {
    int32_t rule;
    std::string_view field;
};

// "vtu%d.%s": the rule number, a literal '.', then the field word (white
// space before it skipped, ending at white space). A name without both
// parts, a rule outside 0..15 or a field word of more than 15 characters
// gives nothing.
std::optional<vtu_name> read_vtu_name(std::string_view name) noexcept
{
    if (!name.starts_with("vtu"))
        return std::nullopt;
    int64_t rule = 0;
    const char *text = numbers::scan_entry(name.data() + 3, rule);
    if (text == nullptr || *text != '.')
        return std::nullopt;
    ++text;
    while (std::isspace(static_cast<unsigned char>(*text)))
        ++text;
    std::size_t length = 0;
    while (text[length] != '\0' && !std::isspace(static_cast<unsigned char>(text[length])))
        ++length;
    if (length == 0 || length > field_word_max)
        return std::nullopt;
    if (rule < 0 || rule >= CFG_VTU_RULES)
        return std::nullopt;
    return vtu_name{static_cast<int32_t>(rule), std::string_view(text, length)};
}

// Only "vid" says whether the rule is in use.
void store_vid(vtu_rule_t &r, const char *value) noexcept
{
    if (numbers::absent(value)) {
        r.vid = 0;
        r.valid = 0;
        return;
    }
    numbers::scan_int(value, r.vid);
    r.valid = 1;
}

void store_vtu(vtu_rule_t &r, std::string_view field, const char *v) noexcept
{
    if (field.starts_with("vid"))      return store_vid(r, v);
    if (field.starts_with("override")) return store::number(r.override, v);
    if (field.starts_with("priority")) return store::number(r.priority, v);
    if (field.starts_with("port0"))    return store::number(r.port0, v);
    if (field.starts_with("port1"))    return store::number(r.port1, v);
    if (field.starts_with("port2"))    return store::number(r.port2, v);
    if (field.starts_with("cpu"))      return store::number(r.cpu, v);
    if (field.starts_with("sfp0"))     return store::number(r.sfp0, v);
    if (field.starts_with("sfp1"))     return store::number(r.sfp1, v);
}

} // namespace

node_end switch_vtu(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const std::optional<vtu_name> name = read_vtu_name(p.name());
        if (!name)
            continue;
        const parse::image_lock lock;
        store_vtu(image.switch_cfg.vtu[name->rule], name->field, p.value());
    }
    return parse::finish_node(n, image.vtu_updated);
}

} // namespace cfg::handlers
