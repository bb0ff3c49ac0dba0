#!/usr/bin/env python3
"""Writes the seed corpora of the fuzz targets into OUT/<target>/ and the
dictionaries of the message targets into OUT/<target>.dict.

    fuzz/seeds.py OUT [SCHEMA]

SCHEMA is the output of 'cfgmsg schema --json': the node paths and keys of
the key tables, from which the dictionaries are made (fuzz/run passes it);
without it they hold the paths and names of examples/full-config.txt.

Sources: examples/full-config.msg (whole, and every node as a message of its
own), examples/sample.msg, the text forms examples/*.txt (whole and node by
node), the values of examples/full-config.txt that each text converter
reads (dial-plan rules, hunt-group port lists, firewall rules, switch port
strings) and texts taken from the unit tests. Converters with a max_ports
byte in front get each text with a few port counts.
"""
import hashlib
import itertools
import json
import os
import re
import struct
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
EXAMPLES = os.path.join(ROOT, "examples")

# Texts from the unit tests (tests/test_firewall.cpp, test_dial_plan_text.cpp,
# test_groups.cpp, test_switch_vlan.cpp).
FIREWALL_RULES = [
    "all_src_ip any ACCEPT",
    "192.168.1.10 4 tcp 1000 10 all_dst_ports drop",
    "all_src_ip ICMP echo-request Reject",
    "all_src_ip udp 65535 1 all_dst_ports accept",
    "all_src_ip udp 65535 2 all_dst_ports accept",
    "all_src_ip udp 65536 1 all_dst_ports accept",
    "all_src_ip udp 0 1 all_dst_ports accept",
    "all_src_ip gre ACCEPT",
    "all_src_ip udp all_src_ports",
    "all_src_ip tcp all_src_ports 65000 536 drop",
    "all_src_ip tcp -5 1 22 1 drop",
    "all_src_ip udp 4294967297 1 all_dst_ports accept",
    "all_src_ip udp 2 99999999999999999999 all_dst_ports accept",
    "all_src_ip TCP all_src_portsXYZ all_dst_portz accept",
    "10.0.0.0/8 abc any drop",
    "10.0.0.0 -1 any drop",
    "  1.2.3.4   99   UDP  1 65535   2 10  ReJeCt  trailing tokens",
    "all_src_ip\tany accept",
    "10.1.1.1 32 tcp 22 1 1024 64512 reject",
    "all_src_ip icmp 0123456789012345678901234567890123456789 accept",
]
DIAL_PLAN_RULES = [
    '55 4 0 sip "proxy" "" 0 0 0 +0-3 0',
    '55 0 0 pickup "proxy" "" 0 0 0 +0-3 0',
    '9 1 2 h323 "gatekeeper" "ab" 3 300 5 -1 -7',
    '9 1 2 h323 gatekeeper "ab" 3 -1 5 + 6',
    '9 1 -2 sip 1234 "x" 0 256 0 +7 0',
    '9 1 2 sip-t "proxy" "x" 0 0 0 - 0',
    '1 1 1 sip d "abcdefghi" 0 0 0 + 0',
    '1 1 1 sip d "ab"c" 0 0 0 + 0',
    '1 1 1 sip d "abc 0 0 0 + 0',
    "7 1 2 sip dest",
    "1 1 1 verylongprotocol d \"\" 0 0 0 + 0",
    "55 x 0 sip d",
]
MASKS = ["+", "-", "+1,3,", "+0-3,7", "-2", "+ 1, 2", "+2-2", "+64-71,95", "+95", "3", "",
         "+3-1", "+8", "+1-8", "+0-96", "+-1", "+1,,2", "+1 2", "+1-", "+x", "+1;2",
         "+99999999999999999999", "-4,5,6,7", "+0,1,2,3,4,5,6,7"]
GROUP_PORTS = ["0,3,7", "", " 1,+2", "0,8", "-1", "0;3", "0 ,3", ",", "1,,2",
               "71," * 72, "1," * 73]
PORT_STRINGS = ["1 0 1 0 0 1", "1,1,1,1,1,1", "1 10 0 0 0 0", "2 1 1 1 1 1", "1 1 1 1 1 1 1",
                "", "111111", "-1 1 1 1 1 1", "1 a 1 b 1 c", "1 4294967297 1"]

NUMBERS = ["0", "-0", "+7", " 12", "\t-3", "12abc", "+-5", "-", "999999999999999999", "1000000000000000000",
           "9223372036854775807", "9223372036854775808", "-9223372036854775809", "4294967296"]

# Port counts put in front of the converters' texts.
PORT_COUNTS = [8, 16, 72, 96, 200]


def write_seed(folder, data):
    if isinstance(data, str):
        data = data.encode("latin-1")
    name = hashlib.sha1(data).hexdigest()
    with open(os.path.join(folder, name), "wb") as f:
        f.write(data)


def message_nodes(msg):
    """The nodes of a whole message, each as its raw bytes."""
    body_length = struct.unpack_from("<I", msg, 4)[0]
    end = 12 + body_length
    at = 13
    nodes = []
    while end - at >= 2:
        start = at
        (path_len,) = struct.unpack_from("<H", msg, at)
        at += 2 + path_len
        (count,) = struct.unpack_from("<H", msg, at)
        at += 2
        for _ in range(2 * count):
            (n,) = struct.unpack_from("<H", msg, at)
            at += 2 + n
        nodes.append(msg[start:at])
    return nodes


def framed(nodes):
    body = bytes([2]) + b"".join(nodes) + b"\0"
    return struct.pack("<III", 0, len(body), 0) + body


def text_params(text):
    """(name, value) of every 'name = value' line of a text form."""
    out = []
    for line in text.splitlines():
        m = re.match(r"\s*([^#\[][^=]*?)\s*=\s*(.*?)\s*$", line)
        if m:
            out.append((m.group(1), m.group(2)))
    return out


def text_blocks(text):
    """The header lines, and each node block of a text form."""
    parts = re.split(r"\n(?=\[)", text)
    return parts[0], parts[1:]


RANGE = re.compile(r"\{(\d+)\.\.(\d+)\}")


def expand(pattern, every):
    """A schema name with its numbered parts ({first..last}) filled in: with
    every number when `every`, else with the first and the last, plus the
    name without the number."""
    parts = RANGE.split(pattern)
    choices = []
    for i in range(1, len(parts), 3):
        first, last = int(parts[i]), int(parts[i + 1])
        choices.append([str(n) for n in range(first, last + 1)] if every else [str(first), str(last), ""])
    out = set()
    for pick in itertools.product(*choices):
        text = parts[0]
        for k, number in enumerate(pick):
            text += number + parts[3 * k + 3]
        out.add(text)
    return out


def schema_words(schema):
    """Every node path of the key tables (each number filled in) and every
    key (first and last number, and the stem)."""
    words = set()
    for node in schema:
        words |= expand(node["path"], True)
        for param in node["params"]:
            words |= expand(param["name"], False)
            if param.get("sent_as"):
                words |= expand(param["sent_as"], False)
    return words


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    out = sys.argv[1]
    folders = {}
    for target in ["all_parser", "status_parsers", "dial_plan_rule", "port_mask", "group_ports",
                   "firewall_rule", "eth_port", "msgtext_decode", "msgtext_text", "roundtrip", "numbers",
                   "check_agrees"]:
        folders[target] = os.path.join(out, target)
        os.makedirs(folders[target], exist_ok=True)

    with open(os.path.join(EXAMPLES, "full-config.msg"), "rb") as f:
        full = f.read()
    with open(os.path.join(EXAMPLES, "sample.msg"), "rb") as f:
        sample = f.read()
    with open(os.path.join(EXAMPLES, "full-config.txt"), encoding="latin-1") as f:
        full_text = f.read()
    with open(os.path.join(EXAMPLES, "sample.txt"), encoding="latin-1") as f:
        sample_text = f.read()

    # Messages: whole, and one node per message (small inputs fuzz faster).
    # Header word 0 picks max_ports in fuzz_all_parser: 0 gives 72, n gives n - 1.
    nodes = message_nodes(full) + message_nodes(sample)
    # fuzz_roundtrip reads its input the same way and gets the same seeds.
    for msg in [full, sample] + [framed([n]) for n in nodes]:
        write_seed(folders["all_parser"], msg)
        write_seed(folders["roundtrip"], msg)
        write_seed(folders["check_agrees"], msg)
        write_seed(folders["msgtext_decode"], msg)
    for word0 in (1, 9, 101):
        for msg in (sample, full):
            write_seed(folders["all_parser"], bytes([word0]) + msg[1:])
            write_seed(folders["roundtrip"], bytes([word0]) + msg[1:])
            write_seed(folders["check_agrees"], bytes([word0]) + msg[1:])

    # Inputs that once found a fault or a rule, kept in fuzz/findings/, so
    # every run replays them first.
    findings = os.path.join(os.path.dirname(os.path.abspath(__file__)), "findings")
    for name in sorted(os.listdir(findings)):
        with open(os.path.join(findings, name), "rb") as f:
            found = f.read()
        write_seed(folders["all_parser"], found)
        write_seed(folders["roundtrip"], found)
        write_seed(folders["check_agrees"], found)

    # Dictionary of fuzz_all_parser and fuzz_roundtrip: every node path and
    # key, alone and with its 16-bit length in front.
    words = set(re.findall(r"^\[(.*)\]$", full_text, re.M))
    words |= {n for n, _ in text_params(full_text)}
    if len(sys.argv) > 2:
        with open(sys.argv[2], encoding="utf-8") as f:
            words |= schema_words(json.load(f))
    entries = []
    for word in sorted(words):
        raw = word.encode("latin-1")
        for entry in (raw, struct.pack("<H", len(raw)) + raw):
            entries.append('"' + "".join(chr(b) if 0x20 <= b < 0x7F and b not in b'"\\' else "\\x%02X" % b
                                         for b in entry) + '"\n')
    for target in ("all_parser", "roundtrip", "check_agrees"):
        with open(os.path.join(out, target + ".dict"), "w") as f:
            f.writelines(entries)

    # Texts: whole, and one node block (with the header lines) per text.
    for text in [full_text, sample_text]:
        write_seed(folders["msgtext_text"], text)
        head, blocks = text_blocks(text)
        for block in blocks:
            write_seed(folders["msgtext_text"], head + "\n" + block)

    # Status messages: parser byte, then the message (12-byte header first).
    def status(which, fields):
        msg = bytearray(694)
        for offset, value in fields:
            struct.pack_into("<I", msg, offset, value)
        write_seed(folders["status_parsers"], bytes([which]) + bytes(msg))
    status(0, [(13, 0x00010002), (41, 0xFFFF0003)])
    status(1, [(19, 1)])
    status(1, [(19, 72)])
    status(2, [(13, 0x302E3176)])
    for kind in range(0, 13):
        for number in (1, 64, 72):
            status(3, [(15, kind), (19, number), (23, 12)])

    # Converter texts from the example configuration and the tests.
    params = text_params(full_text)
    rules = [v for n, v in params if re.fullmatch(r"rule_\d+", n)] + FIREWALL_RULES
    dial_plan = [v for n, v in params if re.fullmatch(r"dialplan_\d+", n)] + DIAL_PLAN_RULES
    masks = MASKS + [rule.split()[9] for rule in dial_plan if len(rule.split()) > 9]
    groups = [v for n, v in params if n == "ports" and re.fullmatch(r"[0-9,]*", v)] + GROUP_PORTS
    port_strings = [v for n, v in params if re.fullmatch(r"portmask\d", n)] + PORT_STRINGS

    for text in rules:
        write_seed(folders["firewall_rule"], text)
    for text in port_strings:
        write_seed(folders["eth_port"], text)
    for count in PORT_COUNTS:
        for text in dial_plan:
            write_seed(folders["dial_plan_rule"], bytes([count]) + text.encode("latin-1"))
        for text in masks:
            write_seed(folders["port_mask"], bytes([count]) + text.encode("latin-1"))
        for text in groups:
            write_seed(folders["group_ports"], bytes([min(count, 100)]) + text.encode("latin-1"))
    # Every value of the example configuration, and numbers at the edges of
    # the conversions.
    for text in {v for _, v in params} | set(NUMBERS):
        write_seed(folders["numbers"], text)
    # A damaged group record (top bit of the first byte): ports and a count past the list.
    write_seed(folders["group_ports"], bytes([0x80]) + struct.pack("<I", 4000000000) * 150)

    for target, folder in folders.items():
        print(f"seeds: {target}: {len(os.listdir(folder))} inputs")


if __name__ == "__main__":
    main()
