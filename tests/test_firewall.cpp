// Firewall rules: the rule text parser with every error line it prints, the
// text form, the rules handler and both writers.
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

using support::fresh_image;

// The messages of the error lines printed while `run` runs.
template <typename Run>
std::vector<std::string> printed_errors(Run &&run)
{
    const std::string out = support::stdout_of(run);
    std::vector<std::string> messages;
    const std::string tag = "[CFGPARSE-ERR ]  ";
    for (std::size_t begin = 0, end = 0; begin < out.size(); begin = end + 2) {
        end = std::min(out.find("\r\n", begin), out.size());
        const std::string line = out.substr(begin, end - begin);
        const std::size_t at = line.find(tag);
        messages.push_back(at == std::string::npos ? "not an error line: " + line
                                                   : line.substr(at + tag.size()));
    }
    return messages;
}

std::string text_form(const firewall_rule_t &rule)
{
    char out[CFG_RULE_TEXT_SIZE];
    std::memset(out, 'Z', sizeof out);
    const int n = print_rule_string(&rule, out);
    EXPECT_EQ(static_cast<std::size_t>(n), std::strlen(out));
    return out;
}

const std::string E = "Parse rule error. ";

TEST(FirewallRuleText, OutcomesAndErrorLines)
{
    const std::string long_ip(40, '9');
    // errors: in the order they are printed; form: text form of an accepted rule.
    struct row {
        std::string text;
        std::vector<std::string> errors;
        const char *form;
    } rows[] = {
        // The outcome table of the rule format.
        {"all_src_ip any ACCEPT", {}, "all_src_ip any ACCEPT"},
        {"192.168.1.10 4 tcp 1000 10 all_dst_ports drop",
         {},
         "192.168.1.10 4 TCP 1000 10 all_dst_ports DROP"},
        {"all_src_ip ICMP echo-request Reject", {}, "all_src_ip ICMP echo-request REJECT"},
        {"all_src_ip udp 65535 1 all_dst_ports accept", {}, "all_src_ip UDP 65535 1 all_dst_ports ACCEPT"},
        {"all_src_ip udp 65535 2 all_dst_ports accept", {E + "Invalid src ports number"}, nullptr},
        {"all_src_ip udp 65536 1 all_dst_ports accept",
         {E + "Invalid src start port", E + "Need src ports number"},
         nullptr},
        {"all_src_ip udp 0 1 all_dst_ports accept",
         {E + "Invalid src start port", E + "Need src ports number"},
         nullptr},
        {"all_src_ip gre ACCEPT", {E + "Unknown protocol"}, nullptr},
        {"all_src_ip udp all_src_ports",
         {E + "Need port or 'all_dst_ports'", E + "Need dst ports number", E + "Need target"},
         nullptr},
        {"all_src_ip any allow", {E + "Unknown target"}, nullptr},
        {"10.0.0.1", {E + "Need src ip number", E + "Need protocol", E + "Need target"}, nullptr},
        // Further texts.
        {"", {E + "Need IP or 'all_src_ip'", E + "Need protocol", E + "Need target"}, nullptr},
        {"all_src_ip", {E + "Need protocol", E + "Need target"}, nullptr},
        {"all_src_ip tcp",
         {E + "Need port or 'all_src_ports'", E + "Need src ports number", E + "Need port or 'all_dst_ports'",
          E + "Need dst ports number", E + "Need target"},
         nullptr},
        {"all_src_ip tcp 100 0 all_dst_ports drop", {E + "Src ports number < 1"}, nullptr},
        {"all_src_ip tcp all_src_ports 80 -1 drop", {E + "Dst ports number < 1"}, nullptr},
        {"all_src_ip tcp all_src_ports 65000 537 drop", {E + "Invalid dst ports number"}, nullptr},
        {"all_src_ip tcp all_src_ports 65000 536 drop", {}, "all_src_ip TCP all_src_ports 65000 536 DROP"},
        {"all_src_ip tcp all_src_ports x 1 drop",
         {E + "Invalid dst start port", E + "Need dst ports number"},
         nullptr},
        // A failed source port marks the rule failed: the destination count is refused too.
        {"all_src_ip tcp -5 1 22 1 drop",
         {E + "Invalid src start port", E + "Need src ports number", E + "Need dst ports number"},
         nullptr},
        // Numbers beyond 32 bits never wrap into the port range.
        {"all_src_ip udp 4294967297 1 all_dst_ports accept",
         {E + "Invalid src start port", E + "Need src ports number"},
         nullptr},
        {"all_src_ip udp 1 4294967296 all_dst_ports accept", {E + "Invalid src ports number"}, nullptr},
        {"all_src_ip udp 2 99999999999999999999 all_dst_ports accept",
         {E + "Invalid src ports number"},
         nullptr},
        {"all_src_ip TCP all_src_portsXYZ all_dst_portz accept",
         {},
         "all_src_ip TCP all_src_ports all_dst_ports ACCEPT"},
        {"all_src_ip icmp", {E + "Need type of msg (ICMP)", E + "Need target"}, nullptr},
        {"10.0.0.0/8 abc any drop", {}, "10.0.0.0/8 0 any DROP"},
        {"10.0.0.0 -1 any drop", {}, "10.0.0.0 4294967295 any DROP"},
        {"  1.2.3.4   99   UDP  1 65535   2 10  ReJeCt  trailing tokens",
         {},
         "1.2.3.4 99 UDP 1 65535 2 10 REJECT"},
        // Only spaces separate: a tab stays inside its token.
        {"all_src_ip\tany accept", {E + "Need protocol", E + "Need target"}, nullptr},
        {"all_src_ip udp65 1 1 2 2 drop", {E + "Unknown protocol", E + "Unknown target"}, nullptr},
        {long_ip + " 7 any accept", {}, "999999999999999999999999999999 7 any ACCEPT"},
    };
    for (const row &r : rows) {
        firewall_rule_t rule;
        std::memset(&rule, 0x5A, sizeof rule); // cleared by the parser
        std::vector<char> text(r.text.begin(), r.text.end());
        text.push_back('\0');
        int result = -7;
        const auto errors = printed_errors([&] { result = firewall_rule_string_to_t(text.data(), &rule); });
        EXPECT_EQ(result, 0) << r.text;
        EXPECT_EQ(errors, r.errors) << r.text;
        EXPECT_EQ(rule.valid, r.form != nullptr ? 1 : 0) << r.text;
        if (r.form == nullptr)
            continue;
        EXPECT_EQ(text_form(rule), r.form) << r.text;
        // The text form parses back into the same record.
        std::string again_text = text_form(rule);
        firewall_rule_t again;
        const auto again_errors =
            printed_errors([&] { firewall_rule_string_to_t(again_text.data(), &again); });
        EXPECT_TRUE(again_errors.empty()) << r.text;
        EXPECT_EQ(std::memcmp(&again, &rule, sizeof rule), 0) << r.text;
    }
}

// What the text form cannot show: the "all" switches, the in-place split,
// what a failed rule keeps and how over-long words are cut.
TEST(FirewallRuleText, MembersOfAcceptedAndFailedRules)
{
    char tcp[] = "192.168.1.10 4 tcp 1000 10 all_dst_ports drop";
    firewall_rule_t rule;
    firewall_rule_string_to_t(tcp, &rule);
    EXPECT_EQ((std::vector<int>{rule.all_src_ip, rule.all_src_ports, rule.all_dst_ports}),
              (std::vector<int>{0, 0, 1}));
    EXPECT_EQ(tcp[12], '\0'); // split in place

    // A failed rule keeps what it set, with valid 0; over-long words are cut.
    const std::string long_word(45, 'q');
    std::string gre = "all_src_ip " + long_word + " " + long_word;
    support::stdout_of([&] { firewall_rule_string_to_t(gre.data(), &rule); });
    EXPECT_EQ(rule.valid, 0);
    EXPECT_EQ(rule.all_src_ip, 1);
    EXPECT_EQ(std::string(rule.protocol), std::string(30, 'q'));
    EXPECT_EQ(std::string(rule.target), std::string(30, 'q'));

    char icmp[] = "all_src_ip icmp 0123456789012345678901234567890123456789 accept";
    firewall_rule_string_to_t(icmp, &rule);
    EXPECT_EQ(rule.valid, 1);
    EXPECT_STREQ(rule.icmp_type, "012345678901234567890123456789");
}

TEST(FirewallRules, Writers)
{
    auto image = fresh_image();
    char a[] = "10.1.1.1 32 tcp 22 1 1024 64512 reject";
    char b[] = "all_src_ip icmp echo-request drop";
    char c[] = "all_src_ip udp 0 1 all_dst_ports accept"; // failed: never sent
    firewall_rule_string_to_t(a, &image->firewall.rules[2]);
    firewall_rule_string_to_t(b, &image->firewall.rules[7]);
    support::stdout_of([&] { firewall_rule_string_to_t(c, &image->firewall.rules[4]); });

    const auto out =
        support::write([&](uint8_t **cur) { return all_firewall_to_file(cur, &image->firewall); });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    support::expect_numbered(
        out.node(), "config.Network.rules", "rule_",
        support::padded({"10.1.1.1 32 TCP 22 1 1024 64512 REJECT", "all_src_ip ICMP echo-request DROP"}, 30));

    // One rule, with the given number, unchecked.
    const auto one =
        support::write([&](uint8_t **cur) { return firewall_to_file(cur, 7, &image->firewall.rules[7]); });
    EXPECT_EQ(one.node().path, "config.Network.rules");
    EXPECT_EQ(support::names(one.node()), std::vector<std::string>{"rule_7"});
    EXPECT_EQ(support::value(one.node(), "rule_7"), "all_src_ip ICMP echo-request DROP");
    const firewall_rule_t empty{};
    const auto blank = support::write([&](uint8_t **cur) { return firewall_to_file(cur, 40, &empty); });
    EXPECT_EQ(support::value(blank.node(), "rule_40"), " 0  0 0 0 0 ");
}

} // namespace
