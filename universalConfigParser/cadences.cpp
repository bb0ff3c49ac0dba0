// Ring cadences: "config.VOIP.cadences.cadence_N", N from 0 to 31.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/store.h"

#include <cstdlib>
#include <cstring>

namespace cfg::handlers {
namespace {

constexpr uint32_t ring_max = 4000;
constexpr uint32_t pause_max = 25500;
constexpr std::size_t mask_text_max = 255; // characters of "mask" looked at
constexpr int32_t mask_flags = 8;          // flags 0..7

// "ring" and "pause": the decimal value as the standard conversion reads it
// (sign allowed, no digits gives 0), clamped to 0..max. The 64-bit
// conversion saturates, so a huge text clamps to max instead of wrapping.
void clamped(uint32_t &field, const char *value, uint32_t max) noexcept
{
    const long long n = numbers::absent(value) ? 0 : std::strtoll(value, nullptr, 10);
    if (n < 0)
        field = 0;
    else
        field = n > static_cast<long long>(max) ? max : static_cast<uint32_t>(n);
}

// "mask": flag numbers separated by ",", e.g. "0,2,5". A piece whose value
// lies outside 0..7 is ignored; a piece without digits counts as 0. Empty
// pieces (two commas in a row, a comma at either end) name no flag, so a
// stray comma does not turn on flag 0. Only the first 255 characters count.
void mask(uint32_t &field, const char *value) noexcept
{
    field = 0;
    if (numbers::absent(value))
        return;
    char text[mask_text_max + 1] = {};
    std::memcpy(text, value, strnlen(value, mask_text_max));
    const char *piece = text;
    for (;;) {
        const char *comma = std::strchr(piece, ',');
        const bool empty = comma == piece || *piece == '\0';
        if (!empty) {
            const int32_t k = numbers::entry_within(piece, mask_flags, 0);
            if (k >= 0)
                field |= 1u << k;
        }
        if (comma == nullptr)
            return;
        piece = comma + 1;
    }
}

// "ring" comes before "rule": a name that begins with "ring" never reaches it.
void store_cadence(cadence_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("ring"))  return clamped(r.ring, v, ring_max);
    if (p.is("pause")) return clamped(r.pause, v, pause_max);
    if (p.is("mask"))  return mask(r.mask, v);
    if (p.is("rule"))  return store::text(r.rule, v);
}

} // namespace

node_end cadences(cfg_image_t &image, node &n)
{
    // The cadence number is the text after the last "_" of the path. Only a
    // text made of decimal digits alone counts: a path without "_", with
    // nothing after it, or with anything but digits there ("cadence_x",
    // "cadence_3a", "cadence_-1") names no cadence, so that it can never fall
    // back to cadence 0.
    const char *number = numbers::after_underscore(n.path, numbers::underscore::last);
    const int32_t c = numbers::entry_number(number);
    cfg_trace(4, "%s: cadence_number = %s  actual_cadence = %d", "all_parser",
              number == nullptr ? "" : number, c);

    // A path that names no cadence 0..31: reported, its params read and
    // dropped, no cadence and no time-stamp touched; the message goes on.
    if (c < 0 || c >= CFG_CADENCES) {
        cfg_trace(1, "%s: no cadence 0..%d in path [%s], node dropped", "all_parser",
                  CFG_CADENCES - 1, n.path);
        return parse::skip_unknown(n);
    }
    cadence_cfg_t &cadence = image.cadences[c];

    // A node without params clears the whole cadence.
    if (n.param_count == 0) {
        const parse::image_lock lock;
        std::memset(&cadence, 0, sizeof cadence);
    }
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_cadence(cadence, p);
    }
    return parse::finish_node(n, image.cadences_updated);
}

} // namespace cfg::handlers
