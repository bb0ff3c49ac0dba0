// The cfgmsg tool run as a process: exit codes and messages by command, the
// kinds of file it writes, redaction by output form, edits, JSON and check,
// patterns, flat listings and batch edits.
#include "msgtext.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace {

namespace fs = std::filesystem;

// build/tests/cfgparser_tests -> build/cfgmsg
fs::path tool()
{
    return fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "cfgmsg";
}

fs::path source_dir()
{
    return fs::path(CFGPARSER_SOURCE_DIR); // absolute whatever the generator
}
fs::path example(const char *name)
{
    return source_dir() / "examples" / name;
}

std::string slurp(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

struct result {
    int status = -1;
    std::string out;
    std::string err;
};

class CfgmsgCli : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!fs::exists(tool()))
            GTEST_SKIP() << "cfgmsg not built (CFGPARSER_BUILD_TOOLS off)";
        char pattern[] = "/tmp/cfgmsg_cli_XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir_ = pattern;
    }
    void TearDown() override
    {
        if (!dir_.empty())
            fs::remove_all(dir_);
    }

    fs::path file(const std::string &name, const std::string &bytes) const
    {
        const fs::path p = dir_ / name;
        std::ofstream(p, std::ios::binary) << bytes;
        return p;
    }
    fs::path message(const std::string &name, std::string_view text) const
    {
        const std::vector<std::uint8_t> bytes = cfgmsg::message_from_text(text);
        return file(name, std::string(bytes.begin(), bytes.end()));
    }

    // Runs cfgmsg with `args` (after the shell commands `shell`, if any);
    // standard output and error go to files.
    result run(const std::vector<std::string> &args, const std::string &shell = "") const
    {
        const fs::path out = dir_ / "stdout", err = dir_ / "stderr";
        std::vector<std::string> words;
        if (!shell.empty())
            words = {"/bin/sh", "-c", shell + "exec \"$@\"", "sh"};
#ifdef CFGMSG_RUNNER
        // Cross-built: the tool runs under the emulator that runs these tests.
        for (const char *word : {CFGMSG_RUNNER})
            words.emplace_back(word);
#endif
        words.push_back(tool().string());
        words.insert(words.end(), args.begin(), args.end());
        std::vector<char *> argv;
        for (std::string &w : words)
            argv.push_back(w.data());
        argv.push_back(nullptr);
        posix_spawn_file_actions_t io;
        posix_spawn_file_actions_init(&io);
        posix_spawn_file_actions_addopen(&io, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&io, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&io, STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        result r;
        pid_t pid = -1;
        int status = 0;
        if (posix_spawn(&pid, argv[0], &io, nullptr, argv.data(), environ) == 0 &&
            waitpid(pid, &status, 0) == pid && WIFEXITED(status))
            r.status = WEXITSTATUS(status);
        posix_spawn_file_actions_destroy(&io);
        r.out = slurp(out);
        r.err = slurp(err);
        return r;
    }

    // The same with the words of `line` (no quoting: words without blanks).
    result run_line(const std::string &line) const
    {
        std::istringstream words(line);
        return run({std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()});
    }

    fs::path dir_;
};

// A header whose body length is `declared`, then `body`.
std::string framed(std::uint32_t declared, const std::string &body)
{
    std::string m(12, '\0');
    for (int i = 0; i < 4; ++i)
        m[4 + i] = static_cast<char>(declared >> (8 * i));
    return m + body;
}

// Exit status by command, as grep's: 0 yes, 1 no (finding, difference,
// absent node or param), 2 trouble (usage, unreadable or malformed input);
// the decoder's own reasons are MsgText.ReportsMalformedWireWithOffset,
// each kind of bad input BadInputOfEveryCommand.
TEST_F(CfgmsgCli, ExitCodesAndMessages)
{
    const std::string sample = example("sample.msg").string(), out = (dir_ / "out").string();
    const std::string trailing = file("trailing.msg", framed(1, "\x02xyz")).string();
    const std::string groups = file("groups.txt", "[config.VOIP.groups.group_0]\nports = 0,8\n").string();
    struct row {
        std::vector<std::string> args;
        int status;
        std::string out, err;
    }; // out, err: parts of standard output, error
    const std::vector<row> rows = {
        {{}, 2, "", "missing command"},
        {{"frobnicate"}, 2, "", "unknown command 'frobnicate'"},
        {{"--help"}, 0, "  get FILE [PATH [PARAM]]", ""},
        {{"--version"}, 0, "cfgmsg 0.", ""},
        {{"--version", "extra"}, 2, "", "--version takes nothing after it"},
        {{"encode", "-h"}, 0, "usage: cfgmsg encode [--json] FILE", ""},
        // The reader's own checks: an endless input, bytes past the body; the decoder's place in hex.
        {{"decode", "/dev/zero"},
         2,
         "",
         "/dev/zero: malformed message at byte offset 4 (0x4): body length 0"},
        {{"decode", trailing}, 2, "", "byte offset 13 (0xd): the input goes on after the 1-byte body"},
        {{"decode", sample, sample}, 2, "", "decode: expects one FILE"},
        {{"get", sample, "a", "b", "c"}, 2, "", "get: expects FILE [PATH [PARAM]]"},
        {{"diff", "-", "-"}, 2, "", "diff: '-' (standard input) given twice"},
        {{"apply", "--ports", "73", sample}, 2, "", "--ports wants a number from 1 to 72, not '73'"},
        {{"apply", "--ports", "0", sample}, 2, "", "--ports wants a number from 1 to 72, not '0'"},
        {{"apply", "--ports", "72", sample}, 0, "max_ports 72", ""},
        // The library's trace lines, passed on with the file and node they concern.
        {{"apply", "--ports", "1", groups}, 0, "max_ports 1", groups + ": [config.VOIP.groups.group_0]: "},
        {{"apply", sample, "--ports"}, 2, "", "option '--ports' needs a value"},
        {{"decode", "--ports", "8", sample}, 2, "", "decode: unknown option '--ports'"},
        {{"decode", "--json=yes", sample}, 2, "", "decode: option '--json' takes no value"},
        {{"set", sample, "a.b=1"}, 2, "", "set: -o OUT or -i is required"},
        {{"set", sample, "-o", "x"}, 2, "", "set: nothing to change"},
        {{"set", sample, "-o", "", "a.b=1"}, 2, "", "set: -o '': the output file name is empty"},
        {{"set", sample, "-i", "-o", out, "a.b=1"}, 2, "", "give -o OUT or -i, not both"},
        {{"set", "-", "-i", "a.b=1"}, 2, "", "FILE must not be '-'"},
        {{"set", sample, "-o", out, "a.b\nc.d=1"},
         2,
         "",
         "set: 'a.b\\nc.d=1': the path holds a line break (at character 4)"},
        {{"set", sample, "-o", out, std::string(65536, 'p') + ".b=1"},
         2,
         "",
         "the path is longer than 65535 bytes"},
        {{"set", sample, "-o", out, "ab=1"}, 2, "", "set: 'ab=1' is not PATH.PARAM=VALUE"},
        {{"set", sample, "-o", "x", "--format", "xml", "a.b=1"},
         2,
         "",
         "--format wants binary, text or json"},
        {{"set", sample, "-o", out, "--delete-node", "a.b"}, 1, "", sample + ": no node [a.b] to delete"},
        // Values checked with the key tables: a warning, or with --strict a refusal (nothing written).
        {{"set", sample, "-o", out, "--strict", "config.VOIP.ports.port_1.category=300"},
         1,
         "",
         "port_1.category: stored as \"10\""},
        {{"set", sample, "-o", out, "--strict", "config.VOIP.ports.port_1.nokey=3"}, 1, "", "no such key"},
        {{"set", sample, "-o", "-", "--strict", "config.VOIP.ports.port_1.categoryX=3"},
         0,
         "",
         ""}, // longer than its key
        {{"set", sample, "-o", "-", "config.VOIP.ports.port_1.category=300"},
         0,
         "",
         "warning: config.VOIP.ports.port_1.category"},
        {{"set", sample, "-o", (dir_ / "no-dir" / "x.msg").string(), "a.b=1"},
         2,
         "",
         "cannot create a file in " + dir_.string()},
        {{"decode", sample}, 0, "[config.VOIP.h323]\n    enableh323 = 1\n", ""},
        {{"get", sample, "config.VOIP.h323", "password"}, 0, "s3cret\n", ""},
        {{"get", sample, "config.VOIP.h323"}, 0, "[config.VOIP.h323]\n    enableh323 = 1\n", ""},
        {{"get", file("bom.txt", "\xEF\xBB\xBF[a]\nx = 1\n").string()}, 0, "a\n", ""},
        {{"get", sample, "config.VOIP.h323", "nope"}, 1, "", "no param 'nope' in [config.VOIP.h323]"},
        {{"diff", sample, example("full-config.msg")}, 1, "-    password = s3cret\n", ""},
        {{"check", sample, example("full-config.msg")}, 0, "", ""},
        {{"schema", "config.VOIP.ports.port_72"}, 1, "", "no node path begins with"},
        {{"schema", "a", "b"}, 2, "", "expects at most one PATH"},
        {{"check"}, 2, "", "missing FILE"},
    };
    for (const row &r : rows) {
        std::string joined;
        for (const std::string &a : r.args)
            joined += " " + a;
        SCOPED_TRACE("cfgmsg" + joined.substr(0, 200));
        const result got = run(r.args);
        EXPECT_EQ(got.status, r.status) << got.err;
        EXPECT_NE(got.out.find(r.out), std::string::npos) << got.out.substr(0, 200);
        EXPECT_NE(got.err.find(r.err), std::string::npos) << got.err;
        if (r.status == 0 && r.err.empty() && r.args.size() > 1 && r.args[1] != "--help") {
            EXPECT_EQ(got.err, "");
        }
        if (r.status != 0 && r.args.size() > 1 && r.out.empty()) {
            EXPECT_EQ(got.out, "") << "nothing printed on failure";
        }
        EXPECT_FALSE(fs::exists(out));
    }
}

// Every command given each kind of bad input: one line on standard error
// that starts with the file's name and names the place, exit 2 (1 for an
// absent node or param), nothing on standard output, no output file.
TEST_F(CfgmsgCli, BadInputOfEveryCommand)
{
    struct kind {
        std::string name, bytes, place;
    };
    const std::vector<kind> kinds = {
        {"missing", "", ": cannot open: No such file"},
        {"empty", "", ": empty file"},
        {"truncated",
         framed(9, std::string("\x02\x03\x00"
                               "abc\x00\x00",
                               8)),
         ": malformed message at byte offset"},
        {"random", "\xb7\x9f!(\xe8\x97\x92\xca\xfe\x81\x92\xa0xyz", ": malformed message at byte offset 4"},
        {"bad-text", "[a]\nx = 1\nnot a param\n", ":3: expected '[path]'"},
        {"header-twice", "operation = 2\n\noperation = 3\n", ":3: operation given twice (first on line 1)"},
        {"bad-json", "{\"nodes\": [\n  {\"path\": 1}]}", ": bad JSON at /nodes/0/path: expected a string"},
        {"bad-syntax", "{\n\"nodes\": [}", ": bad JSON at line 2, column 11: syntax error"},
        {"nul-in-text", std::string("[a]\nx = 1\ny = 2\n\0", 17), ": a NUL byte at offset 16"},
        {"no-node", "[a]\nx = 1\n", ": no "}, // get: no node [b]; set: no param y in [b]
        {"no-param", "[b]\nx = 1\n", ": no param 'y' in [b]"},
    };
    const std::string out = (dir_ / "out.msg").string();
    for (const kind &k : kinds) {
        const std::string f =
            k.name == "missing" ? (dir_ / "missing").string() : file(k.name, k.bytes).string();
        const bool binary = k.name == "truncated" || k.name == "random";
        for (const std::vector<std::string> &args :
             std::vector<std::vector<std::string>>{{"decode", f},
                                                   {"encode", f},
                                                   {"apply", f},
                                                   {"diff", f, f},
                                                   {"check", "--json", f},
                                                   {"get", f, "b", "y"},
                                                   {"set", f, "-o", out, "--unset", "b.y"}}) {
            const bool node_check = k.name == "no-node" || k.name == "no-param";
            if (node_check && args[0] != "get" && args[0] != "set")
                continue;
            SCOPED_TRACE(args[0] + " " + k.name);
            const result got = run(args);
            EXPECT_EQ(got.status, node_check ? 1 : 2) << got.err;
            EXPECT_EQ(got.out, "");
            EXPECT_FALSE(fs::exists(out));
            ASSERT_EQ(got.err.rfind("cfgmsg: " + f, 0), 0u) << got.err;
            EXPECT_EQ(std::count(got.err.begin(), got.err.end(), '\n'), 1) << got.err;
            const bool other_form =
                (args[0] == "decode" && !binary && k.name != "empty" && k.name != "missing") ||
                (args[0] == "encode" && binary);
            EXPECT_NE(got.err.find(other_form ? ": this looks like " : k.place), std::string::npos)
                << got.err.substr(0, 200);
        }
    }
}

// set -o OUT for each kind of file at OUT: a regular file is replaced
// keeping its owner, group and mode, a link writes the file it names, a
// FIFO or a device is written through; no temporary file stays, not even
// when a signal ends the run.
TEST_F(CfgmsgCli, WritesEachKindOfFile)
{
    const std::string sample = example("sample.msg").string(), edit = "config.VOIP.h323.enableh323=0";
    const std::string edited = run({"set", sample, "-o", "-", edit}).out;
    const fs::path reg = file("reg.msg", "old"), target = file("target.msg", "old"), fifo = dir_ / "fifo";
    ASSERT_EQ(chmod(reg.c_str(), 0640), 0);
    const bool root = geteuid() == 0; // then the file is another user's
    ASSERT_TRUE(!root || chown(reg.c_str(), 4321, 4322) == 0);
    fs::create_symlink("target.msg", dir_ / "link.msg");
    fs::create_symlink("new.msg", dir_ / "dangling.msg");
    fs::create_directories(dir_ / "sub" / "ro");
    fs::permissions(dir_ / "sub" / "ro", fs::perms::owner_read | fs::perms::owner_exec);
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    // A device like /dev/null: as root a node of our own, so that a fault cannot replace the real one.
    fs::path dev = root ? dir_ / "null" : "/dev/null";
    const bool have_dev = (!root || mknod(dev.c_str(), S_IFCHR | 0666, makedev(1, 3)) == 0) &&
                          close(open(dev.c_str(), O_WRONLY)) == 0; // not on a nodev mount
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK);  // so that the writer's open returns
    struct row {
        std::vector<std::string> out;
        int status;
        fs::path written;
    };
    for (const row &r : std::vector<row>{{{"-o", reg}, 0, reg},
                                         {{"-o", dir_ / "link.msg"}, 0, target},
                                         {{"-o", dir_ / "dangling.msg"}, 0, dir_ / "new.msg"},
                                         {{"-o", have_dev ? dev : reg}, 0, ""},
                                         {{"-o", fifo}, 0, ""},
                                         {{"-o", dir_ / "sub"}, 2, ""},
                                         {{"-o", dir_ / "sub" / "ro" / "x.msg"},
                                          root ? 0 : 2,
                                          root ? dir_ / "sub" / "ro" / "x.msg" : ""}}) {
        SCOPED_TRACE(r.out.back());
        std::vector<std::string> args{"set", sample, edit};
        args.insert(args.end(), r.out.begin(), r.out.end());
        const result got = run(args);
        EXPECT_EQ(got.status, r.status) << got.err;
        EXPECT_TRUE(r.written.empty() || slurp(r.written) == edited);
    }
    struct stat st {};
    ASSERT_EQ(stat(reg.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
    EXPECT_TRUE(!root || std::pair(st.st_uid, st.st_gid) == std::pair(4321u, 4322u))
        << st.st_uid << ":" << st.st_gid;
    EXPECT_TRUE(fs::is_symlink(dir_ / "link.msg") && (!have_dev || fs::is_character_file(dev)) &&
                fs::is_fifo(fifo));
    std::string piped(edited.size() + 1, '\0');
    EXPECT_EQ(read(reader, piped.data(), piped.size()), static_cast<ssize_t>(edited.size()));
    close(reader);
    EXPECT_EQ(piped.substr(0, edited.size()), edited);
    // -i edits FILE in place; a file size limit (SIGXFSZ) ends the run midway.
    ASSERT_EQ(run({"set", "-i", (dir_ / "link.msg").string(), "config.VOIP.h323.enableh323=7"}).status, 0);
    EXPECT_EQ(run({"get", target.string(), "config.VOIP.h323", "enableh323"}).out, "7\n");
    const std::string full = example("full-config.msg").string();
    EXPECT_EQ(run({"set", full, "-o", target.string(), edit}, "ulimit -f 8; ").status, -1)
        << "killed by SIGXFSZ";
    EXPECT_EQ(run({"get", target.string(), "config.VOIP.h323", "enableh323"}).out, "7\n");
    for (const auto &entry : fs::recursive_directory_iterator(dir_))
        EXPECT_NE(entry.path().filename().string()[0], '.') << "temporary file left: " << entry.path();
    fs::permissions(dir_ / "sub" / "ro", fs::perms::owner_all);
}

// Each secret param, in each form the tool prints, shows as ***: passwords,
// keys, secrets, communities, and the password word of an SNMP user line
// in every spacing the library reads (sscanf's white space).
TEST_F(CfgmsgCli, RedactsEverySecretInEveryForm)
{
    const std::string secret = "Secret" + std::string(300, 'x'); // longer than any field: check reports it
    std::string text;
    for (const auto &[path, name] : {std::pair{"config.VOIP.h323", "password"},
                                     {"config.VOIP.ports.port_1", "auth_pass"},
                                     {"config.VOIP.groups.group_2", "password"},
                                     {"config.VOIP.profile.profile_3.sip", "password"},
                                     {"config.Network.network", "PPPOE_PASSWORD"},
                                     {"config.Network.network", "PPTP_PASSWORD"},
                                     {"config.Network.network", "RADIUS_SECRET"},
                                     {"config.Network.network", "AUTOUPDATE_PASS"},
                                     {"config.Network.snmp", "rocommunity"},
                                     {"config.Network.snmp", "rwcommunity"},
                                     {"config.Network.snmp", "trap_community"},
                                     {"config.Network.IPSec", "PreshareKey"},
                                     {"config.Network.TR069", "Password"},
                                     {"config.Network.TR069", "ConnectionRequestPassword"}})
        text += std::string("[") + path + "]\n" + name + " = " + secret + "\n";
    const std::string users[] = {"monitor\\tSecret-1\\tauthPriv", "\\x20monitor Secret-2 authPriv",
                                 "monitor \\t Secret-3\\n authPriv\\x20",
                                 std::string(45, 'u') + " Secret-4 authPriv"};
    for (const std::string &user : users)
        text += "[config.Network.snmp_users]\nuser_0 = " + user + "\n";
    const std::string msg = file("secrets.txt", text).string(),
                      none = file("none.txt", "operation = 2\n").string();
    ASSERT_NE(run({"check", msg}).out.find("Secret"), std::string::npos) << "check shows values unless told";
    std::vector<std::vector<std::string>> forms = {
        {"decode", "--redact", message("secrets.msg", text).string()},
        {"decode", "--json", "--redact", (dir_ / "secrets.msg").string()},
        {"apply", "--redact", msg},
        {"apply", "--json", "--redact", msg},
        {"check", "--redact", msg},
        {"check", "--json", "--redact", msg},
        {"diff", "--redact", msg, none},
        {"get", "--redact", msg, "config.Network.network"},
        {"get", "--redact", msg, "config.Network.snmp_users", "user_0"},
        {"get", "--redact", msg, "config.Network.TR069", "Password"},
        // set warns of a value cut to its field, refuses it with --strict, or a line break in it
        {"set", none, "-o", dir_ / "o", "config.VOIP.h323.password=" + secret},
        {"set", none, "-o", dir_ / "o", "--strict", "config.Network.snmp.rocommunity=" + secret},
        {"set", none, "-o", dir_ / "o", "config.Network.IPSec.PreshareKey=Secret\n"}};
    for (const std::vector<std::string> &args : forms) {
        SCOPED_TRACE(args[0] + " " + args[1]);
        const result got = run(args);
        EXPECT_EQ((got.out + got.err).find("Secret"), std::string::npos) << got.out << got.err;
        EXPECT_NE((args[0] == "set" ? got.err : got.out).find(args[0] == "set" ? "cfgmsg: " : "***"),
                  std::string::npos);
    }
    EXPECT_NE(run({"decode", "--redact", (dir_ / "secrets.msg").string()})
                  .out.find("user_0 = monitor\\t***\\tauthPriv"),
              std::string::npos)
        << "the user name and level stay";
}

// decode --json | encode gives back every example message byte for byte,
// and apply takes binary, text and JSON alike (diff finds nothing).
TEST_F(CfgmsgCli, JsonAndTextComeBackToTheSameMessage)
{
    for (const auto &entry : fs::directory_iterator(source_dir() / "examples")) {
        if (entry.path().extension() != ".msg")
            continue;
        const std::string msg = entry.path().string();
        SCOPED_TRACE(msg);
        const fs::path txt = fs::path(entry.path()).replace_extension(".txt"); // its text form
        EXPECT_TRUE(!fs::exists(txt) || run({"encode", txt.string()}).out == slurp(msg));
        const fs::path decoded = file("decoded.json", run({"decode", "--json", msg}).out);
        const result enc = run({"encode", decoded.string()});
        EXPECT_EQ(std::tuple(enc.status, enc.out), std::tuple(0, slurp(msg))) << enc.err;
        const result same = run({"diff", msg, decoded.string()});
        EXPECT_EQ(same.status, 0) << same.out << same.err;
    }
}

// set: edits land where documented and change only their own lines of a
// text FILE; the output keeps the input's form (or takes --format), decodes
// with its new body length, and may replace FILE; paths that get prints
// with escapes are taken back.
TEST_F(CfgmsgCli, SetEditsAMessage)
{
    const fs::path text =
        file("in.txt", "# gateway 7\nheader0 = 0x5\n[a]\n  x = 1\n  y = 2\n\n# the second x\nx = 3\n"
                       "[b]\nz = 4\n[a]\nw = 5\n[conf\\xf2g.x]\np = \\xf2\n");
    const fs::path out = dir_ / "out";
    const result got = run({"set", text.string(), "-o", out.string(), "a.x=9", "a.v=", "c.n=new value",
                            "--unset", "a.y", "--delete-node", "b", "--delete-node", "conf\\xf2g.x"});
    ASSERT_EQ(got.status, 0) << got.err;
    EXPECT_EQ(slurp(out),
              "# gateway 7\nheader0 = 0x5\n[a]\n  x = 9\n\n# the second x\nx = 9\n[a]\nw = 5\nv =\n\n[c]\n"
              "    n = new value\n");
    EXPECT_EQ(run({"get", text.string()}).out, "a\nb\nconf\\xf2g.x\n");
    EXPECT_EQ(run({"get", text.string(), "conf\\xf2g.x", "p"}).out, "\xf2\n");
    EXPECT_NE(run({"set", text.string(), "-o", "-", "--format", "json", "a.x=1"}).err.find("is not UTF-8"),
              std::string::npos);
    for (const char *format : {"json", "binary"}) {
        ASSERT_EQ(run({"set", out.string(), "-o", out.string(), "--format", format, "a.w=6"}).status, 0);
        EXPECT_EQ(run({"get", out.string(), "a", "w"}).out, "6\n");
    }
    EXPECT_EQ(run({"get", out.string()}).out, "a\nc\n");
}

// ---- schema, check, and the samples' reference output

TEST_F(CfgmsgCli, SchemaSelectsNodesAndShowsEachRule)
{
    const result port = run_line("schema config.VOIP.ports.port_5");
    ASSERT_EQ(port.status, 0);
    EXPECT_EQ(port.out.find("port_def_"), std::string::npos) << "a concrete path selects its own node only";
    // Rows that guard a bound, a default, a writer's name and a text length.
    for (const char *line :
         {"[config.VOIP.ports.port_{0..71}]",
          "category                     range          0..255, default 10; sent: yes",
          "pickup                       pickup groups  groups 0..31 separated by ',' or ';'; sent: as "
          "pickupgroup",
          "ct_number                    text           at most 50 characters; sent: no",
          "dt_detect_time               range          -2147483648..2147483647, default 5; sent: yes"})
        EXPECT_NE(port.out.find(line), std::string::npos) << line;
    const result prefix = run_line("schema config.VOIP.ports.port_");
    EXPECT_NE(prefix.out.find("port_def_{0..7}"), std::string::npos);
    EXPECT_NE(prefix.out.find("port_{0..71}"), std::string::npos);

    // JSON: one object per node, params in key order, bounds and defaults.
    const auto nodes = nlohmann::json::parse(run_line("schema --json").out);
    ASSERT_TRUE(nodes.is_array() && !nodes.empty());
    for (const auto &node : nodes)
        ASSERT_TRUE(node.contains("path") && !node["params"].empty()) << node.dump();
    const auto tr069 = std::find_if(nodes.begin(), nodes.end(),
                                    [](const auto &n) { return n["path"] == "config.Network.TR069"; });
    ASSERT_NE(tr069, nodes.end());
    const auto &params = (*tr069)["params"];
    EXPECT_EQ(std::tuple(params.front()["name"], params.back()["name"]), std::tuple("Enable", "NATAddress"));
    EXPECT_EQ(params[10],
              nlohmann::json::parse(R"({"name": "STUNServerPort", "kind": "range", "min": 1, "max": 65535,
        "default": 3478, "rule": "1..65535, default 3478", "sent": true, "sent_by": ["save_acs"]})"));

    // The committed reference is the one the tables print.
    EXPECT_EQ(run_line("schema --markdown").out, slurp(source_dir() / "docs" / "parameters.md"))
        << "docs/parameters.md is out of date: cmake --build build --target parameters_md";
}

// What the library stores from the bundled samples, as every section writer
// sends it: the order, names and forms of every writer's params, and every
// stored value, in one place.
TEST_F(CfgmsgCli, SamplesApplyToTheirReference)
{
    for (const std::string name : {"full-config", "sample"}) {
        const result r = run_line("apply " + example((name + ".msg").c_str()).string());
        EXPECT_EQ(r.status, 0);
        EXPECT_TRUE(r.out == slurp(source_dir() / "tests" / "golden" / (name + ".apply.txt")))
            << name << ": apply differs from tests/golden/" << name << ".apply.txt";
    }
}

TEST_F(CfgmsgCli, CheckReportsEachKindOfFinding)
{
    const std::string findings = example("check-findings.txt").string();
    const result r = run_line("check " + findings);
    EXPECT_EQ(r.status, 1);
    for (const char *line :
         {"port_3 category: sent \"300\", stored \"10\": out of range 0..255: default 10 used",
          "port_3 gainr: sent \"loud\", stored \"0\": not a number: read as 0",
          "port_3 dialing: sent (no value), stored \"DTMF\": no value: default DTMF used",
          "(50 characters): cut", "port_3 no_such_param: sent \"1\": unknown key: ignored",
          "TR069 STUNServerPort: sent \"0\", stored \"3478\": out of range 1..65535: default 3478 used",
          "config.VOIP.no_such_node: unknown node: skipped"})
        EXPECT_NE(r.out.find(line), std::string::npos) << line << "\n" << r.out;
    for (const char *as_sent : {"port_3 phone", "PeriodicInformInterval"})
        EXPECT_EQ(r.out.find(as_sent), std::string::npos) << as_sent;
    const auto json = nlohmann::json::parse(run_line("check --json " + findings).out);
    ASSERT_EQ(json.size(), static_cast<std::size_t>(std::count(r.out.begin(), r.out.end(), '\n')));
    EXPECT_EQ(json[0],
              nlohmann::json::parse(R"({"file": ")" + findings + R"(", "path": "config.VOIP.ports.port_3",
        "param": "category", "sent": "300", "stored": "10", "reason": "out of range 0..255: default 10 used"})"));
}

// Patterns, flat listings, batch edits and machine output, run as shell
// lines: what each prints and its exit status.
TEST_F(CfgmsgCli, PatternsFlatListingsAndBatchEdits)
{
    file("in.txt",
         "[a.p_0]\nx = 1\ny = 2\n[a.p_1]\nx = 3\n[a.p_10]\nx = 4\n[b]\nv.w = 5\ns = t\\x01u\nn =\n");
    file("z.txt", "[z]\nq = 1\n");
    std::string runner;
#ifdef CFGMSG_RUNNER
    for (const char *word : {CFGMSG_RUNNER})
        runner += std::string(word) + " ";
#endif
    const std::string setup = "cd " + dir_.string() + " && T='" + runner + tool().string() +
                              "' && S=" + fs::absolute(example("sample.msg")).string() + " && ";
    const std::string all =
        "z.q=1\na.p_0.x=1\na.p_0.y=2\na.p_1.x=3\na.p_10.x=4\nb.v\\.w=5\nb.s=t\\x01u\nb.n=\n";
    struct row {
        std::string line;
        std::string out;
        int status;
    };
    const row rows[] = {
        // Ranges hold numbers without leading zeros; '?' one character; '*' dots too.
        {"$T get --flat in.txt 'a.p_{0..1}' x", "a.p_0.x=1\na.p_1.x=3\n", 0},
        {"$T get --flat in.txt 'a.p_?'", "a.p_0.x=1\na.p_0.y=2\na.p_1.x=3\n", 0},
        {"$T get in.txt '*' '{y,x}'", "1\n2\n3\n4\n", 0},
        {"$T get in.txt 'a.p_{1..1}0'", "[a.p_10]\n    x = 4\n", 0},
        // Escaped: a control byte, a dot in a name; no value.
        {"$T get --flat in.txt b", "b.v\\.w=5\nb.s=t\\x01u\nb.n=\n", 0},
        {"$T get --json in.txt b n",
         "[\n  {\n    \"path\": \"b\",\n    \"name\": \"n\",\n    \"value\": null\n  }\n]\n", 0},
        {"$T get in.txt 'a.p_2*'", "", 1},
        {"$T get in.txt 'a.p_0' '\\*'", "", 1},
        {"$T get in.txt 'a.p_{1..0}'", "", 2},
        {"$T get --flat --json in.txt", "", 2},
        {"$T schema 'config.Network.snmp*' | grep -c '^\\['", "2\n", 0},
        {"$T schema 'config.VOIP.ports.port_{70..80}' | grep -c '^\\['", "1\n", 0},
        // set with patterns: the nodes and params that FILE has.
        {"$T set in.txt -o o1.txt 'a.p_{0..1}.x=9' --unset 'a.*.y' && $T get --flat o1.txt 'a.*'",
         "a.p_0.x=9\na.p_1.x=9\na.p_10.x=4\n", 0},
        {"$T set in.txt -o o2.txt --delete-node 'a.p_1?' 'b.{s,n}=' && $T get o2.txt && $T get --flat o2.txt "
         "b",
         "a.p_0\na.p_1\nb\nb.v\\.w=5\nb.s=\nb.n=\n", 0},
        {"$T set in.txt -o o3.txt 'c.*.x=1' 2>/dev/null; echo $?; test -e o3.txt || echo none", "1\nnone\n",
         0},
        {"$T set in.txt -o o3.txt 'a.*.nope*=1' 2>/dev/null; echo $?; test -e o3.txt || echo none",
         "1\nnone\n", 0},
        // Batch edits: in order, all or nothing, the bad line named.
        {"printf '# edits\\n\\na.p_0.x=7\\n--unset a.p_0.y\\n--delete-node b\\na.p_0.x=\\\\x41\\\\\\\\\\n' | "
         "$T set in.txt -o o4.txt -f - && $T get --flat o4.txt",
         "a.p_0.x=A\\\\\na.p_1.x=3\na.p_10.x=4\n", 0},
        {"printf 'a.p_0.x=7\\nbogus\\n' | $T set in.txt -o o5.txt -f - 2>err; echo $?; test -e o5.txt || "
         "echo none; "
         "grep -c -- '-:2: ' err",
         "2\nnone\n1\n", 0},
        {"printf -- '--delete-node nothing\\n' > e.txt; $T set in.txt -o o5.txt -f e.txt 2>err; echo $?; "
         "grep -c 'e.txt:1: ' err",
         "1\n1\n", 0},
        // The flat listing of one message edits another into the same params.
        {"$T get --flat in.txt | $T set z.txt -o rt.txt -f - && $T get --flat rt.txt", all, 0},
        {"$T get --flat in.txt | $T set z.txt -o rt.msg --format binary -f - && $T get --flat rt.msg", all,
         0},
        // Machine output: diff -q and --json, check -q, set -q.
        {"$T set $S -o d.msg config.VOIP.h323.timetolive=600 && $T diff -q $S d.msg; echo $?; $T diff -q $S "
         "$S; echo $?",
         "1\n0\n", 0},
        {"$T diff --json $S d.msg",
         "[\n  {\n    \"path\": \"config.VOIP.h323\",\n    \"name\": \"timetolive\",\n    \"a\": \"300\",\n  "
         "  \"b\": \"600\"\n  }\n]\n",
         1},
        {"$T check -q " + fs::absolute(example("check-findings.txt")).string(), "", 1},
        {"$T set $S -o q.msg -q config.VOIP.ports.port_1.category=300 2>&1", "", 0},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(r.line);
        const int status = std::system(("(" + setup + r.line + ") > " + (dir_ / "stdout").string()).c_str());
        EXPECT_EQ(slurp(dir_ / "stdout"), r.out);
        EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, r.status);
    }
}

} // namespace
