// The cfgmsg tool run as a process: exit codes and messages for good and bad
// input, apply of the full sample (every writer, fixed point, JSON), diff and JSON.
#include "msgtext.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <spawn.h>
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
fs::path tool() { return fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "cfgmsg"; }

fs::path source_dir() { return fs::path(__FILE__).parent_path().parent_path(); }
fs::path example(const char *name) { return source_dir() / "examples" / name; }

std::string slurp(const fs::path &file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

struct result { int status = -1; std::string out; std::string err; };

class CfgmsgCli : public ::testing::Test {
protected:
    void SetUp() override {
        if (!fs::exists(tool())) GTEST_SKIP() << "cfgmsg not built (CFGPARSER_BUILD_TOOLS off)";
        char pattern[] = "/tmp/cfgmsg_cli_XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir_ = pattern;
    }
    void TearDown() override {
        if (!dir_.empty()) fs::remove_all(dir_);
    }

    fs::path file(const std::string &name, const std::string &bytes) const {
        const fs::path p = dir_ / name;
        std::ofstream(p, std::ios::binary) << bytes;
        return p;
    }
    fs::path message(const std::string &name, std::string_view text) const {
        const std::vector<std::uint8_t> bytes = cfgmsg::message_from_text(text);
        return file(name, std::string(bytes.begin(), bytes.end()));
    }

    // Runs cfgmsg with `args`; standard output and error go to files.
    result run(const std::vector<std::string> &args) const {
        const fs::path out = dir_ / "stdout", err = dir_ / "stderr";
        std::vector<std::string> words;
#ifdef CFGMSG_RUNNER
        // Cross-built: the tool runs under the emulator that runs these tests.
        for (const char *word : {CFGMSG_RUNNER}) words.emplace_back(word);
#endif
        words.push_back(tool().string());
        words.insert(words.end(), args.begin(), args.end());
        std::vector<char *> argv;
        for (std::string &w : words) argv.push_back(w.data());
        argv.push_back(nullptr);
        posix_spawn_file_actions_t io;
        posix_spawn_file_actions_init(&io);
        posix_spawn_file_actions_addopen(&io, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&io, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&io, STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        result r;
        pid_t pid = -1;
        int status = 0;
        if (posix_spawn(&pid, argv[0], &io, nullptr, argv.data(), environ) == 0 && waitpid(pid, &status, 0) == pid &&
            WIFEXITED(status))
            r.status = WEXITSTATUS(status);
        posix_spawn_file_actions_destroy(&io);
        r.out = slurp(out);
        r.err = slurp(err);
        return r;
    }

    // The same with the words of `line` (no quoting: words without blanks).
    result run_line(const std::string &line) const {
        std::istringstream words(line);
        return run({std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()});
    }

    fs::path dir_;
};

// A header whose body length is `declared`, then `body`.
std::string framed(std::uint32_t declared, const std::string &body) {
    std::string m(12, '\0');
    for (int i = 0; i < 4; ++i) m[4 + i] = static_cast<char>(declared >> (8 * i));
    return m + body;
}

// One row per kind of outcome of each command family; the decoder's own
// reasons are MsgText.ReportsMalformedWireWithOffset, missing nodes and
// params of get and set BadInputOfEveryCommand.
TEST_F(CfgmsgCli, ExitCodesAndMessages) {
    const std::string sample = example("sample.msg").string();
    // Body length 5: operation byte, then a path length of 16 with 2 bytes left.
    const std::string bad_node = file("bad-node.msg", framed(5, std::string("\x02\x10\x00" "a\x00", 5))).string();
    const std::string trailing = file("trailing.msg", framed(1, "\x02xyz")).string();
    struct row { std::vector<std::string> args; int status; std::string out, err; }; // out, err: parts of standard output, error
    const std::vector<row> rows = {
        {{}, 2, "", "missing command"}, {{"frobnicate"}, 2, "", "unknown command 'frobnicate'"},
        {{"--help"}, 0, "  get FILE [PATH [PARAM]]", ""}, {{"--version"}, 0, "cfgmsg 0.", ""},
        {{"decode", "--help"}, 0, "usage: cfgmsg decode [--json] [--redact] FILE", ""},
        {{"encode", "-h"}, 0, "usage: cfgmsg encode [--json] FILE", ""},
        // The reader's own checks: an endless input, bytes past the body; the decoder's place in hex.
        {{"decode", "/dev/zero"}, 1, "", "/dev/zero: malformed message at byte offset 4 (0x4): body length 0"},
        {{"decode", trailing}, 1, "", "byte offset 13 (0xd): the input goes on after the 1-byte body"},
        {{"apply", bad_node}, 1, "", bad_node + ": malformed message at byte offset 13 (0xd): node 1"},
        {{"decode", example("sample.txt")}, 1, "", "sample.txt: this looks like the text form of a message, not a binary"},
        {{"apply"}, 2, "", "apply: missing FILE"}, {{"decode", sample, sample}, 2, "", "decode: expects one FILE"},
        {{"diff", sample}, 2, "", "diff: expects two FILEs"}, {{"get", sample, "a", "b", "c"}, 2, "", "get: expects FILE [PATH [PARAM]]"},
        {{"diff", "-", "-"}, 2, "", "diff: '-' (standard input) given twice"},
        {{"apply", "--ports", "73", sample}, 2, "", "--ports wants a number from 0 to 72, not '73'"},
        {{"apply", sample, "--ports"}, 2, "", "option '--ports' needs a value"},
        {{"decode", "--ports", "8", sample}, 2, "", "decode: unknown option '--ports'"},
        {{"decode", "--json=yes", sample}, 2, "", "decode: option '--json' takes no value"},
        {{"set", sample, "a.b=1"}, 2, "", "set: -o OUT is required"}, {{"set", sample, "-o", "x"}, 2, "", "set: nothing to change"},
        {{"set", sample, "-o", "x", "ab=1"}, 2, "", "set: 'ab=1' is not PATH.PARAM=VALUE"},
        {{"set", sample, "-o", "x", "--format", "xml", "a.b=1"}, 2, "", "--format wants binary, text or json"},
        {{"set", sample, "-o", "x", "--unset", "ab"}, 2, "", "--unset wants PATH.PARAM, not 'ab'"},
        {{"decode", sample}, 0, "[config.VOIP.h323]\n    enableh323 = 1\n", ""},
        {{"decode", "--redact", sample}, 0, "    password = ***\n", ""},
        {{"get", "--redact", sample, "config.VOIP.h323", "password"}, 0, "***\n", ""},
        {{"get", sample, "config.VOIP.h323", "password"}, 0, "s3cret\n", ""},
        {{"get", sample, "config.VOIP.h323"}, 0, "[config.VOIP.h323]\n    enableh323 = 1\n", ""},
        {{"get", sample}, 0, "config.VOIP.h323\nconfig.VOIP.range\n", ""},
        {{"apply", "--ports", "0", sample}, 0, "max_ports 0", ""},
        {{"apply", "--redact", example("full-config.msg")}, 0, "    rocommunity = ***\n", ""},
        {{"diff", "--redact", sample, example("full-config.msg")}, 1, "-    password = ***\n+    password = ***\n", ""},
    };
    for (const row &r : rows) {
        std::string joined;
        for (const std::string &a : r.args) joined += " " + a;
        SCOPED_TRACE("cfgmsg" + joined);
        const result got = run(r.args);
        EXPECT_EQ(got.status, r.status) << got.err;
        EXPECT_NE(got.out.find(r.out), std::string::npos) << got.out.substr(0, 200);
        EXPECT_NE(got.err.find(r.err), std::string::npos) << got.err;
        if (r.status == 0 && r.args.size() > 1 && r.args[1] != "--help") {
            EXPECT_EQ(got.err, "");
        }
        if (r.status != 0 && r.args.size() > 1 && r.out.empty()) {
            EXPECT_EQ(got.out, "") << "nothing printed on failure";
        }
        if (r.args.size() > 1 && r.args[1] == "--redact") {
            EXPECT_EQ(got.out.find("s3cret"), std::string::npos);
            EXPECT_EQ(got.out.find("Ipsec-psk-0123"), std::string::npos);
        }
    }
}

// Every command given each kind of bad input: one line on standard error
// that starts with the file's name and names the place, the command's
// trouble status, nothing on standard output, no output file.
TEST_F(CfgmsgCli, BadInputOfEveryCommand) {
    struct kind { std::string name, bytes, place; };
    const std::vector<kind> kinds = {
        {"missing", "", ": cannot open: No such file"}, {"empty", "", ": empty file"},
        {"truncated", framed(9, std::string("\x02\x03\x00" "abc\x00\x00", 8)), ": malformed message at byte offset"},
        {"bad-text", "[a]\nx = 1\nnot a param\n", ":3: expected '[path]'"},
        {"bad-json", "{\"nodes\": [\n  {\"path\": 1}]}", ": bad JSON at /nodes/0/path: expected a string"},
        {"bad-syntax", "{\n\"nodes\": [}", ": bad JSON at line 2, column 11: syntax error"},
        {"nul-in-text", std::string("[a]\nx = 1\ny = 2\n\0", 17), ": a NUL byte at offset 16"},
        {"no-node", "[a]\nx = 1\n", ": no "},  // get: no node [b]; set: no param y in [b]
        {"no-param", "[b]\nx = 1\n", ": no param 'y' in [b]"},
    };
    const std::string out = (dir_ / "out.msg").string();
    for (const kind &k : kinds) {
        const std::string f = k.name == "missing" ? (dir_ / "missing").string() : file(k.name, k.bytes).string();
        const bool binary = k.name == "truncated";
        for (const std::vector<std::string> &args : std::vector<std::vector<std::string>>{
                 {"decode", f}, {"encode", f}, {"apply", f}, {"diff", f, f}, {"get", f, "b", "y"},
                 {"set", f, "-o", out, "--unset", "b.y"}}) {
            const bool node_check = k.name == "no-node" || k.name == "no-param";
            if (node_check && args[0] != "get" && args[0] != "set") continue;
            SCOPED_TRACE(args[0] + " " + k.name);
            const result got = run(args);
            EXPECT_EQ(got.status, args[0] == "diff" ? 2 : 1) << got.err;
            EXPECT_EQ(got.out, "");
            EXPECT_FALSE(fs::exists(out));
            ASSERT_EQ(got.err.rfind("cfgmsg: " + f, 0), 0u) << got.err;
            EXPECT_EQ(std::count(got.err.begin(), got.err.end(), '\n'), 1) << got.err;
            const bool other_form = (args[0] == "decode" && !binary && k.name != "empty" && k.name != "missing") ||
                                    (args[0] == "encode" && binary);
            EXPECT_NE(got.err.find(other_form ? ": this looks like " : k.place), std::string::npos) << got.err.substr(0, 200);
        }
    }
    // set: bad values and places to write; nothing written, nothing left behind.
    const std::string sample = example("sample.msg").string();
    for (const auto &[args, reason] : std::vector<std::pair<std::vector<std::string>, std::string>>{
             {{"-o", out, "a.b=x\ny"}, "set: 'a.b=x\\ny': the value holds a line break (at character 2)"},
             {{"-o", out, std::string(65536, 'p') + ".b=1"}, "the path is longer than 65535 bytes"},
             {{"-o", out, "--delete-node", "a.b"}, sample + ": no node [a.b] to delete"},
             {{"-o", (dir_ / "no-dir" / "x.msg").string(), "a.b=1"}, "cannot create a file in " + dir_.string()},
         }) {
        std::vector<std::string> full{"set", sample};
        full.insert(full.end(), args.begin(), args.end());
        const result got = run(full);
        EXPECT_EQ(got.status, 1);
        EXPECT_NE(got.err.find(reason), std::string::npos) << got.err;
        EXPECT_FALSE(fs::exists(out));
    }
    for (const auto &entry : fs::directory_iterator(dir_))
        EXPECT_NE(entry.path().filename().string()[0], '.') << "temporary file left: " << entry.path();
}

// decode --json | encode gives back every example message byte for byte,
// and apply takes binary, text and JSON alike (diff finds nothing).
TEST_F(CfgmsgCli, JsonAndTextComeBackToTheSameMessage) {
    for (const auto &entry : fs::directory_iterator(source_dir() / "examples")) {
        if (entry.path().extension() != ".msg") continue;
        const std::string msg = entry.path().string();
        SCOPED_TRACE(msg);
        for (const char *form : {"--json", "--redact"}) {
            const result dec = run({"decode", form, msg});
            ASSERT_EQ(dec.status, 0) << dec.err;
            const fs::path decoded = file(std::string("decoded") + form, dec.out);
            const result enc = run({"encode", decoded.string()});
            ASSERT_EQ(enc.status, 0) << enc.err;
            if (std::string(form) == "--json") {
                EXPECT_EQ(enc.out, slurp(msg));
                const result same = run({"diff", msg, decoded.string()});
                EXPECT_EQ(same.status, 0) << same.out << same.err;
            }
        }
    }
}

// set: edits land where documented, the output keeps the input's form (or
// takes --format), decodes with its new body length, and may replace FILE.
TEST_F(CfgmsgCli, SetEditsAMessage) {
    const fs::path text = file("in.txt", "header0 = 0x5\n[a]\nx = 1\ny = 2\nx = 3\n[b]\nz = 4\n[a]\nw = 5\n");
    const fs::path out = dir_ / "out";
    const result got = run({"set", text.string(), "-o", out.string(), "a.x=9", "a.v=", "c.n=new value",
                            "--unset", "a.y", "--delete-node", "b"});
    ASSERT_EQ(got.status, 0) << got.err;
    EXPECT_EQ(slurp(out), "# body length 54, 3 nodes\nheader0 = 0x00000005\nheader2 = 0x00000000\noperation = 2\n\n"
                          "[a]\n    x = 9\n    x = 9\n\n[a]\n    w = 5\n    v =\n\n[c]\n    n = new value\n");
    for (const char *format : {"json", "binary"}) {
        ASSERT_EQ(run({"set", out.string(), "-o", out.string(), "--format", format, "a.w=6"}).status, 0);
        EXPECT_EQ(run({"get", out.string(), "a", "w"}).out, "6\n");
    }
    EXPECT_EQ(run({"decode", out.string()}).status, 0);
    EXPECT_EQ(run({"get", out.string()}).out, "a\nc\n");
}

// The nodes and values apply prints are those of the samples' reference
// (CfgmsgCli.SamplesApplyToTheirReference).
TEST_F(CfgmsgCli, FullSampleIsAFixedPoint) {
    const result first = run({"apply", example("full-config.msg").string()});
    ASSERT_EQ(first.status, 0) << first.err;
    EXPECT_EQ(first.err, "");

    // apply -> encode -> apply gives the same text, and diff finds nothing.
    const result encoded = run({"encode", file("applied.txt", first.out).string()});
    ASSERT_EQ(encoded.status, 0) << encoded.err;
    const fs::path again = file("applied.msg", encoded.out);
    const result second = run({"apply", again.string()});
    ASSERT_EQ(second.status, 0) << second.err;
    EXPECT_EQ(second.out, first.out);
    const result same = run({"diff", example("full-config.msg").string(), again.string()});
    EXPECT_EQ(same.status, 0) << same.out;
    EXPECT_EQ(same.out, "");

    // apply --json holds the same message as the text: both encode to the same bytes.
    const result json = run({"apply", "--json", example("full-config.msg").string()});
    ASSERT_EQ(json.status, 0) << json.err;
    EXPECT_TRUE(run({"encode", file("applied.json", json.out).string()}).out == encoded.out);
}
TEST_F(CfgmsgCli, FullSampleTextAndMessageAgree) {
    // examples/full-config.msg is the encoding of examples/full-config.txt.
    const std::string text = slurp(example("full-config.txt"));
    const std::vector<std::uint8_t> bytes = cfgmsg::message_from_text(text);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), slurp(example("full-config.msg")));
}

// ---- schema, check, and the samples' reference output

TEST_F(CfgmsgCli, SchemaSelectsNodesAndShowsEachRule)
{
    const result port = run_line("schema config.VOIP.ports.port_5");
    ASSERT_EQ(port.status, 0);
    EXPECT_EQ(port.out.find("port_def_"), std::string::npos) << "a concrete path selects its own node only";
    // Rows that guard a bound, a default, a writer's name and a text length.
    for (const char *line : {"[config.VOIP.ports.port_{0..71}]", "category                     range          0..255, default 10; sent: yes",
                             "pickup                       pickup groups  groups 0..31 separated by ',' or ';'; sent: as pickupgroup",
                             "ct_number                    text           at most 50 characters; sent: no",
                             "dt_detect_time               range          -2147483648..2147483647, default 5; sent: yes"})
        EXPECT_NE(port.out.find(line), std::string::npos) << line;
    const result prefix = run_line("schema config.VOIP.ports.port_");
    EXPECT_NE(prefix.out.find("port_def_{0..7}"), std::string::npos);
    EXPECT_NE(prefix.out.find("port_{0..71}"), std::string::npos);
    for (const auto &[args, status] : {std::pair{"schema config.VOIP.ports.port_72", 1}, {"schema no.such.path", 1},
                                       {"schema --frobnicate", 2}, {"schema a b", 2}})
        EXPECT_EQ(run_line(args).status, status) << args;

    // JSON: one object per node, params in key order, bounds and defaults.
    const auto nodes = nlohmann::json::parse(run_line("schema --json").out);
    ASSERT_TRUE(nodes.is_array() && !nodes.empty());
    for (const auto &node : nodes)
        ASSERT_TRUE(node.contains("path") && !node["params"].empty()) << node.dump();
    const auto tr069 = std::find_if(nodes.begin(), nodes.end(), [](const auto &n) { return n["path"] == "config.Network.TR069"; });
    ASSERT_NE(tr069, nodes.end());
    const auto &params = (*tr069)["params"];
    EXPECT_EQ(std::tuple(params.front()["name"], params.back()["name"]), std::tuple("Enable", "NATAddress"));
    EXPECT_EQ(params[10], nlohmann::json::parse(R"({"name": "STUNServerPort", "kind": "range", "min": 1, "max": 65535,
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
    for (const char *clean : {"full-config.msg", "sample.msg"}) {
        const result r = run_line("check " + example(clean).string());
        EXPECT_EQ(std::tuple(r.status, r.out), std::tuple(0, "")) << clean;
    }
    const std::string findings = example("check-findings.txt").string();
    const result r = run_line("check " + findings);
    EXPECT_EQ(r.status, 1);
    for (const char *line : {
             "port_3 category: sent \"300\", stored \"10\": out of range 0..255: default 10 used",
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
    EXPECT_EQ(json[0], nlohmann::json::parse(R"({"file": ")" + findings + R"(", "path": "config.VOIP.ports.port_3",
        "param": "category", "sent": "300", "stored": "10", "reason": "out of range 0..255: default 10 used"})"));

    // A message cut short: where it stopped.
    const result stopped = run_line("check " + file("cut.msg", slurp(example("full-config.msg")).substr(0, 1000)).string());
    EXPECT_EQ(stopped.status, 1);
    EXPECT_NE(stopped.out.find("malformed message at byte offset"), std::string::npos) << stopped.out;
    for (const auto &[args, status] : {std::pair{"check", 2}, {"check --ports 73 x", 2}, {"check /no/such/file", 1}})
        EXPECT_EQ(run_line(args).status, status) << args;
}

// set checks each value with the key tables: a value the library would not
// store as given is a warning, and with --strict an error that writes nothing.
TEST_F(CfgmsgCli, SetWarnsOfValuesTheLibraryWouldNotStore)
{
    const fs::path out = dir_ / "strict.msg";
    const std::string set = "set " + example("sample.msg").string() + " -o " + out.string() + " ";
    for (const auto &[edit, status] : {std::pair{"--strict config.VOIP.ports.port_1.category=300", 1},
                                       {"--strict config.VOIP.ports.port_1.nokey=3", 1},
                                       {"--strict config.VOIP.ports.port_1.categoryX=3", 0}, // longer than its key
                                       {"config.VOIP.ports.port_1.category=300", 0}}) {       // a warning only
        fs::remove(out);
        EXPECT_EQ(run_line(set + edit).status, status) << edit;
        EXPECT_EQ(fs::exists(out), status == 0) << edit;
    }
}

}  // namespace
