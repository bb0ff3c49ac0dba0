// SNMP agent settings: "config.Network.snmp" and its one user line,
// "config.Network.snmp_users". Both nodes share one time-stamp.
#include "universalConfigParser/handlers.h"
#include "universalConfigParser/list_params.h"
#include "universalConfigParser/store.h"

#include <cstring>

namespace cfg::handlers {
namespace {

// Trap version: exactly "v2" is version 2, anything else version 1.
void store_trap_type(uint32_t &field, const char *value) noexcept
{
    field = (value != nullptr && std::strcmp(value, "v2") == 0) ? 2u : 1u;
}

void store_snmp(snmp_cfg_t &r, const parse::param &p) noexcept
{
    const char *v = p.value();
    if (p.is("sys_location"))   return store::text(r.sys_location, v);
    if (p.is("sys_contact"))    return store::text(r.sys_contact, v);
    if (p.is("sys_name"))       return store::text(r.sys_name, v);
    if (p.is("trap_sink"))      return store::text(r.trap_sink, v);
    if (p.is("rocommunity"))    return store::text(r.rocommunity, v);
    if (p.is("rwcommunity"))    return store::text(r.rwcommunity, v);
    if (p.is("trap_community")) return store::text(r.trap_community, v);
    if (p.is("trap_type"))      return store_trap_type(r.trap_type, v);
}

// The user line: three blank-separated words; a word the line does not have
// leaves its field as it was, an empty line clears all three.
void store_user(snmp_user_t &u, const char *value) noexcept
{
    if (numbers::absent(value)) {
        lists::store_word(u.word1, {});
        lists::store_word(u.word2, {});
        lists::store_word(u.word3, {});
        return;
    }
    std::string_view rest(value);
    if (lists::scan_word(u.word1, rest) && lists::scan_word(u.word2, rest))
        lists::scan_word(u.word3, rest);
}

} // namespace

node_end snmp_users(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        if (p.is("user_0"))
            store_user(image.snmp.user, p.value());
    }
    return parse::finish_node(n, image.snmp.updated);
}

node_end snmp(cfg_image_t &image, node &n)
{
    while (parse::param p = parse::next_param(n)) {
        const parse::image_lock lock;
        store_snmp(image.snmp, p);
    }
    return parse::finish_node(n, image.snmp.updated);
}

} // namespace cfg::handlers
