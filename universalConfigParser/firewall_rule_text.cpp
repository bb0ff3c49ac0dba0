// Firewall rule text <-> firewall_rule_t.
//
// A rule is one line of blank-separated tokens:
//     <source> <protocol> [<src ports> <dst ports> | <icmp type>] <target>
// with source "all_src_ip" or "<address> <number>", ports "all_src_ports" /
// "all_dst_ports" or "<start> <count>". Tokens are taken by position: a step
// that fails still consumes its token, reports at the error level and the
// rule stays invalid, but the following steps go on so that every fault of
// the text is reported.
#include "cfgmngr/list_words.h"

#include <cfgparser.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace cfg::firewall_text {
namespace {

// Whether `a` is the lower-case word `b` in any mix of cases.
bool same_word(std::string_view a, std::string_view b) noexcept
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != b[i])
            return false;
    return true;
}

// Splits the caller's text in place at blanks (spaces only).
struct tokens {
    char *rest;

    // The next token, NUL-terminated inside the text; nullptr when none is left.
    char *next() noexcept
    {
        while (*rest == ' ')
            ++rest;
        if (*rest == '\0')
            return nullptr;
        char *token = rest;
        while (*rest != '\0' && *rest != ' ')
            ++rest;
        if (*rest == ' ')
            *rest++ = '\0';
        return token;
    }
};

// The integer of a token: leading decimal digits with an optional sign, 0
// when there are none. Read at full width so that a huge number stays out of
// the port range instead of wrapping into it.
long long integer(const char *token) noexcept
{
    return std::strtoll(token, nullptr, 10);
}

// One parse: the rule being filled and whether any step failed.
struct rule_parse {
    firewall_rule_t &rule;
    tokens words;
    bool failed = false;

    void fail(const char *message) noexcept
    {
        cfg_trace(CFG_TRACE_ERROR, "%s", message);
        failed = true;
    }
};

// Stores the canonical spelling of a known word; false for any other word.
template <std::size_t N>
bool canonical(char (&field)[N], std::string_view lower, const char *canon) noexcept
{
    if (!same_word(lists::field_text(field), lower))
        return false;
    lists::store_word(field, canon);
    return true;
}

void parse_source(rule_parse &r) noexcept
{
    const char *token = r.words.next();
    if (token == nullptr)
        return r.fail("Parse rule error. Need IP or 'all_src_ip'");
    if (std::strcmp(token, "all_src_ip") == 0)
        r.rule.all_src_ip = 1;
    else
        lists::store_word(r.rule.src_ip, token);

    if (r.failed || r.rule.all_src_ip != 0)
        return;
    token = r.words.next();
    if (token == nullptr)
        return r.fail("Parse rule error. Need src ip number");
    r.rule.src_ip_number = static_cast<uint32_t>(static_cast<unsigned long long>(integer(token)));
}

void parse_protocol(rule_parse &r) noexcept
{
    const char *token = r.words.next();
    if (token == nullptr)
        return r.fail("Parse rule error. Need protocol");
    char(&p)[sizeof r.rule.protocol] = r.rule.protocol;
    lists::store_word(p, token);
    if (!canonical(p, "udp", "UDP") && !canonical(p, "tcp", "TCP") && !canonical(p, "icmp", "ICMP") &&
        !canonical(p, "any", "any"))
        r.fail("Parse rule error. Unknown protocol");
}

// The texts of one direction of a port range.
struct port_words {
    const char *all; // first 12 characters of the "all" token
    const char *need_port;
    const char *invalid_start;
    const char *need_number;
    const char *number_below_1;
    const char *invalid_number;
};

constexpr port_words source_ports{
    "all_src_port",
    "Parse rule error. Need port or 'all_src_ports'",
    "Parse rule error. Invalid src start port",
    "Parse rule error. Need src ports number",
    "Parse rule error. Src ports number < 1",
    "Parse rule error. Invalid src ports number",
};

constexpr port_words destination_ports{
    "all_dst_port",
    "Parse rule error. Need port or 'all_dst_ports'",
    "Parse rule error. Invalid dst start port",
    "Parse rule error. Need dst ports number",
    "Parse rule error. Dst ports number < 1",
    "Parse rule error. Invalid dst ports number",
};

void parse_ports(rule_parse &r, const port_words &words, uint16_t &port, uint16_t &number,
                 uint8_t &all) noexcept
{
    const char *token = r.words.next();
    if (token == nullptr) {
        r.fail(words.need_port);
    } else if (std::strncmp(token, words.all, std::strlen(words.all)) == 0) {
        all = 1;
    } else {
        const long long p = integer(token);
        port = static_cast<uint16_t>(p);
        if (p < 1 || p > 65535)
            r.fail(words.invalid_start);
    }

    if (all != 0)
        return;
    token = r.words.next();
    if (r.failed || token == nullptr)
        return r.fail(words.need_number);
    const long long n = integer(token);
    if (n < 1)
        return r.fail(words.number_below_1);
    // Compared without adding, so that a huge count cannot overflow.
    if (n - 1 > 65535 - static_cast<long long>(port))
        return r.fail(words.invalid_number);
    number = static_cast<uint16_t>(n);
}

void parse_target(rule_parse &r) noexcept
{
    const char *token = r.words.next();
    if (token == nullptr)
        return r.fail("Parse rule error. Need target");
    char(&t)[sizeof r.rule.target] = r.rule.target;
    lists::store_word(t, token);
    if (!canonical(t, "accept", "ACCEPT") && !canonical(t, "drop", "DROP") &&
        !canonical(t, "reject", "REJECT"))
        r.fail("Parse rule error. Unknown target");
}

bool is_protocol(const firewall_rule_t &rule, const char *name) noexcept
{
    return std::strcmp(rule.protocol, name) == 0;
}

} // namespace
} // namespace cfg::firewall_text

extern "C" {

int firewall_rule_string_to_t(char *text, firewall_rule_t *rule) CFG_NOEXCEPT
{
    using namespace cfg::firewall_text;
    if (rule == nullptr)
        return 0;
    *rule = firewall_rule_t{};
    char no_text[1] = "";
    rule_parse r{*rule, tokens{text != nullptr ? text : no_text}};

    parse_source(r);
    parse_protocol(r);
    if (!r.failed && (is_protocol(*rule, "UDP") || is_protocol(*rule, "TCP"))) {
        parse_ports(r, source_ports, rule->src_port, rule->src_ports_number, rule->all_src_ports);
        parse_ports(r, destination_ports, rule->dst_port, rule->dst_ports_number, rule->all_dst_ports);
    } else if (!r.failed && is_protocol(*rule, "ICMP")) {
        if (const char *token = r.words.next())
            cfg::lists::store_word(rule->icmp_type, token);
        else
            r.fail("Parse rule error. Need type of msg (ICMP)");
    }
    parse_target(r);
    if (!r.failed)
        rule->valid = 1;

    cfg_trace(CFG_TRACE_DEBUG,
              "CFG FIREWALL RULE[%s] %s (%d) all:%d / %s %s / SRC PORTS %d (%d) all:%d / "
              "DST PORTS %d (%d) all:%d / %s.\n",
              rule->valid != 0 ? "OK" : "ERR", rule->src_ip, static_cast<int>(rule->src_ip_number),
              rule->all_src_ip, rule->protocol, rule->icmp_type, rule->src_port, rule->src_ports_number,
              rule->all_src_ports, rule->dst_port, rule->dst_ports_number, rule->all_dst_ports, rule->target);
    return 0;
}

int print_rule_string(const firewall_rule_t *rule, char *out) CFG_NOEXCEPT
{
    using cfg::lists::field_text;
    if (rule == nullptr || out == nullptr)
        return 0;
    const auto len = [](std::string_view s) { return static_cast<int>(s.size()); };
    const std::string_view src_ip = field_text(rule->src_ip), protocol = field_text(rule->protocol),
                           target = field_text(rule->target), icmp = field_text(rule->icmp_type);

    char source[sizeof rule->src_ip + 16];
    if (rule->all_src_ip != 0)
        std::snprintf(source, sizeof source, "all_src_ip");
    else
        std::snprintf(source, sizeof source, "%.*s %u", len(src_ip), src_ip.data(), rule->src_ip_number);

    constexpr std::size_t room = CFG_RULE_TEXT_SIZE;
    int n = 0;
    if (cfg::firewall_text::same_word(protocol, "any")) {
        n = std::snprintf(out, room, "%s any %.*s", source, len(target), target.data());
    } else if (cfg::firewall_text::same_word(protocol, "icmp")) {
        n = std::snprintf(out, room, "%s ICMP %.*s %.*s", source, len(icmp), icmp.data(), len(target),
                          target.data());
    } else {
        char src_ports[16];
        char dst_ports[16];
        if (rule->all_src_ports != 0)
            std::snprintf(src_ports, sizeof src_ports, "all_src_ports");
        else
            std::snprintf(src_ports, sizeof src_ports, "%d %d", rule->src_port, rule->src_ports_number);
        if (rule->all_dst_ports != 0)
            std::snprintf(dst_ports, sizeof dst_ports, "all_dst_ports");
        else
            std::snprintf(dst_ports, sizeof dst_ports, "%d %d", rule->dst_port, rule->dst_ports_number);
        n = std::snprintf(out, room, "%s %.*s %s %s %.*s", source, len(protocol), protocol.data(), src_ports,
                          dst_ports, len(target), target.data());
    }
    // The longest form (30-character texts, ten-digit number) is well under
    // the room; the result never exceeds what was written.
    if (n < 0)
        n = 0;
    return n < static_cast<int>(room) ? n : static_cast<int>(room) - 1;
}

} // extern "C"
