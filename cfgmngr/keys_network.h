// Key tables of the network sections: one row per key, in the order the keys
// are matched (a key that is the prefix of another comes after it).
#pragma once

#include "cfgmngr/key_table.h"

#include <cstdint>
#include <limits>

namespace cfg::keys {

inline constexpr int32_t int_max = std::numeric_limits<int32_t>::max();
inline constexpr uint32_t uint_max = std::numeric_limits<uint32_t>::max();

// "config.Network.TR069"
#define F(member) CFG_FIELD(tr069_cfg_t, member)
inline constexpr key tr069_keys[] = {
    checkbox("Enable", F(enable)),
    text("URL", F(url)),
    checkbox("PeriodicInformEnable", F(periodic_inform_enable)),
    urange("PeriodicInformInterval", F(periodic_inform_interval), 1, uint_max, 30),
    text("Username", F(username)),
    text("Password", F(password)),
    text("ConnectionRequestUsername", F(connection_request_username)),
    text("ConnectionRequestPassword", F(connection_request_password)),
    text("NATMode", F(nat_mode)),
    text("STUNServerAddress", F(stun_server_address)),
    range("STUNServerPort", F(stun_server_port), 1, 65535, 3478),
    range("STUNMinimumKeepAlivePeriod", F(stun_minimum_keepalive_period), 10, int_max, 30),
    range("STUNMaximumKeepAlivePeriod", F(stun_maximum_keepalive_period), -1, int_max, 60),
    text("NATAddress", F(nat_address)),
};
#undef F

} // namespace cfg::keys
