// VTU rules of the Ethernet switch: "config.Switch.vtu", params named
// "vtu<rule>.<field>" (for example vtu3.port1); the field words are the rows
// in cfgmngr/keys_switch.h.
#include "cfgmngr/key_tables.h"
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/text_numbers.h"

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

} // namespace

node_end switch_vtu(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const std::optional<vtu_name> name = read_vtu_name(p.name());
        if (!name)
            continue;
        const keys::key *k = keys::find(keys::switch_vtu, name->field);
        const parse::image_lock lock;
        if (k != nullptr)
            keys::store(*k, image.switch_cfg.vtu, p.value(), static_cast<unsigned>(name->rule));
    }
    return parse::finish_node(n, image.vtu_updated);
}

} // namespace cfg::handlers
