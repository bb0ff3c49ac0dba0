// cfgmsg patterns, flat listings, batch edits and machine output, run as
// shell lines: what each prints and its exit status.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;

TEST(CfgmsgSelect, PatternsFlatListingsAndBatchEdits)
{
    const fs::path build = fs::read_symlink("/proc/self/exe").parent_path().parent_path();
    if (!fs::exists(build / "cfgmsg"))
        GTEST_SKIP() << "cfgmsg not built";
    char dir[] = "/tmp/cfgmsg_select_XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    std::ofstream(fs::path(dir) / "in.txt") << "[a.p_0]\nx = 1\ny = 2\n[a.p_1]\nx = 3\n[a.p_10]\nx = 4\n"
                                               "[b]\nv.w = 5\ns = t\\x01u\nn =\n";
    std::ofstream(fs::path(dir) / "z.txt") << "[z]\nq = 1\n";
    std::string runner = "";
#ifdef CFGMSG_RUNNER
    for (const char *word : {CFGMSG_RUNNER})
        runner += std::string(word) + " ";
#endif
    const std::string sample =
        fs::absolute(fs::path(__FILE__).parent_path().parent_path() / "examples").string();
    const std::string setup = "cd " + std::string(dir) + " && T='" + runner + (build / "cfgmsg").string() +
                              "' && S=" + sample + "/sample.msg && ";
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
        {"$T check -q " + sample + "/check-findings.txt", "", 1},
        {"$T set $S -o q.msg -q config.VOIP.ports.port_1.category=300 2>&1", "", 0},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(r.line);
        const fs::path out = fs::path(dir) / "stdout";
        const int status = std::system(("(" + setup + r.line + ") > " + out.string()).c_str());
        std::ifstream in(out, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), r.out);
        EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, r.status);
    }
    fs::remove_all(dir);
}

} // namespace
