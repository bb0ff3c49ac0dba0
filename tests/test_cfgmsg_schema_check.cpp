// cfgmsg schema and cfgmsg check, run as processes.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

fs::path tool() { return fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "cfgmsg"; }
fs::path source_dir() { return fs::path(__FILE__).parent_path().parent_path(); }

struct result {
    int status = -1;
    std::string out;
};

// Runs cfgmsg with `args` (words without quotes or blanks); standard error is
// dropped.
result run(const std::string &args)
{
    std::string command;
#ifdef CFGMSG_RUNNER
    for (const char *word : {CFGMSG_RUNNER})
        command += std::string(word) + " ";
#endif
    command += tool().string() + " " + args + " 2>/dev/null";
    result r;
    FILE *pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return r;
    char buf[4096];
    std::size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, pipe)) > 0)
        r.out.append(buf, n);
    const int status = pclose(pipe);
    r.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return r;
}

class SchemaCheck : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!fs::exists(tool()))
            GTEST_SKIP() << "cfgmsg not built";
    }
};

TEST_F(SchemaCheck, SchemaSelectsNodesByPathAndShowsEachRule)
{
    const result port = run("schema config.VOIP.ports.port_5");
    ASSERT_EQ(port.status, 0);
    EXPECT_NE(port.out.find("[config.VOIP.ports.port_{0..71}]"), std::string::npos);
    EXPECT_EQ(port.out.find("port_def_"), std::string::npos) << "a concrete path selects its own node only";
    // Rows that guard a bound, a default, a writer's name and a text length.
    for (const char *line : {"category                     range          0..255, default 10; sent: yes",
                             "pickup                       pickup groups  groups 0..31 separated by ',' or ';'; sent: as pickupgroup",
                             "ct_number                    text           at most 50 characters; sent: no",
                             "dt_detect_time               range          -2147483648..2147483647, default 5; sent: yes"})
        EXPECT_NE(port.out.find(line), std::string::npos) << line;

    const result prefix = run("schema config.VOIP.ports.port_");
    EXPECT_NE(prefix.out.find("port_def_{0..7}"), std::string::npos);
    EXPECT_NE(prefix.out.find("port_{0..71}"), std::string::npos);
    EXPECT_EQ(run("schema config.VOIP.ports.port_72").status, 1);
    EXPECT_EQ(run("schema no.such.path").status, 1);
    EXPECT_EQ(run("schema --frobnicate").status, 2);
    EXPECT_EQ(run("schema a b").status, 2);
}

TEST_F(SchemaCheck, SchemaJsonHasOneObjectPerNodeWithParamsInKeyOrder)
{
    const result r = run("schema --json");
    ASSERT_EQ(r.status, 0);
    const auto nodes = nlohmann::json::parse(r.out);
    ASSERT_TRUE(nodes.is_array());
    ASSERT_FALSE(nodes.empty());
    for (const auto &node : nodes) {
        ASSERT_TRUE(node.contains("path") && node.contains("params")) << node.dump();
        ASSERT_FALSE(node["params"].empty()) << node["path"];
    }
    const auto tr069 = std::find_if(nodes.begin(), nodes.end(),
                                    [](const auto &n) { return n["path"] == "config.Network.TR069"; });
    ASSERT_NE(tr069, nodes.end());
    const auto &params = (*tr069)["params"];
    // Key order: the first and last keys, and one range with its bounds.
    EXPECT_EQ(params.front()["name"], "Enable");
    EXPECT_EQ(params.back()["name"], "NATAddress");
    const auto port = std::find_if(params.begin(), params.end(), [](const auto &p) { return p["name"] == "STUNServerPort"; });
    ASSERT_NE(port, params.end());
    EXPECT_EQ((*port)["min"], 1);
    EXPECT_EQ((*port)["max"], 65535);
    EXPECT_EQ((*port)["default"], 3478);
}

// The committed reference is the one the tables print.
TEST_F(SchemaCheck, ParameterReferenceIsCurrent)
{
    std::ifstream in(source_dir() / "docs" / "parameters.md", std::ios::binary);
    const std::string committed{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    EXPECT_EQ(run("schema --markdown").out, committed)
        << "docs/parameters.md is out of date: cmake --build build --target parameters_md";
}

// What the library stores from the bundled samples, as every section writer
// sends it: the order, names and forms of every writer's params, and every
// stored value, in one place.
TEST_F(SchemaCheck, SamplesApplyToTheirReference)
{
    for (const char *name : {"full-config", "sample"}) {
        std::ifstream in(source_dir() / "tests" / "golden" / (std::string(name) + ".apply.txt"), std::ios::binary);
        const std::string reference{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        const result r = run("apply " + (source_dir() / "examples" / (std::string(name) + ".msg")).string());
        EXPECT_EQ(r.status, 0);
        EXPECT_TRUE(r.out == reference) << name << ": apply differs from tests/golden/" << name << ".apply.txt";
    }
}

TEST_F(SchemaCheck, CheckReportsEachKindOfFinding)
{
    const std::string full = (source_dir() / "examples" / "full-config.msg").string();
    for (const char *clean : {"full-config.msg", "sample.msg"}) {
        const result r = run("check " + (source_dir() / "examples" / clean).string());
        EXPECT_EQ(r.status, 0) << clean << "\n" << r.out;
        EXPECT_EQ(r.out, "") << clean;
    }

    const std::string findings = (source_dir() / "examples" / "check-findings.txt").string();
    const result r = run("check " + findings);
    EXPECT_EQ(r.status, 1);
    for (const char *line : {
             "port_3 category: sent \"300\", stored \"10\": out of range 0..255: default 10 used",
             "port_3 gainr: sent \"loud\", stored \"0\": not a number: read as 0",
             "port_3 dialing: sent (no value), stored \"DTMF\": no value: default DTMF used",
             "(50 characters): cut",
             "port_3 no_such_param: sent \"1\": unknown key: ignored",
             "TR069 STUNServerPort: sent \"0\", stored \"3478\": out of range 1..65535: default 3478 used",
             "config.VOIP.no_such_node: unknown node: skipped",
         })
        EXPECT_NE(r.out.find(line), std::string::npos) << line << "\n" << r.out;
    EXPECT_EQ(r.out.find("port_3 phone"), std::string::npos) << "stored as sent";
    EXPECT_EQ(r.out.find("PeriodicInformInterval"), std::string::npos) << "stored as sent";

    const auto json = nlohmann::json::parse(run("check --json " + findings).out);
    ASSERT_TRUE(json.is_array());
    EXPECT_EQ(json.size(), static_cast<std::size_t>(std::count(r.out.begin(), r.out.end(), '\n')));
    EXPECT_EQ(json[0]["path"], "config.VOIP.ports.port_3");
    EXPECT_TRUE(json[0].contains("sent") && json[0].contains("stored") && json[0].contains("reason"));

    // A message cut short: where it stopped.
    const fs::path cut = fs::temp_directory_path() / "cfgmsg_check_cut.msg";
    {
        std::ifstream whole(full, std::ios::binary);
        std::string bytes{std::istreambuf_iterator<char>(whole), std::istreambuf_iterator<char>()};
        std::ofstream(cut, std::ios::binary) << bytes.substr(0, 1000);
    }
    const result stopped = run("check " + cut.string());
    fs::remove(cut);
    EXPECT_EQ(stopped.status, 1);
    EXPECT_NE(stopped.out.find("malformed message at byte offset"), std::string::npos) << stopped.out;

    EXPECT_EQ(run("check").status, 2);
    EXPECT_EQ(run("check --ports 73 " + full).status, 2);
    EXPECT_EQ(run("check /no/such/file").status, 1);
}

// set checks each value with the key tables: a value the library would not
// store as given is a warning, and with --strict an error that writes nothing.
TEST_F(SchemaCheck, SetWarnsOfValuesTheLibraryWouldNotStore)
{
    const std::string sample = (source_dir() / "examples" / "sample.msg").string();
    const fs::path out = fs::temp_directory_path() / "cfgmsg_set_strict.msg";
    fs::remove(out);
    const std::string set = "set " + sample + " -o " + out.string() + " ";
    EXPECT_EQ(run(set + "--strict config.VOIP.ports.port_1.category=300").status, 1);
    EXPECT_FALSE(fs::exists(out));
    EXPECT_EQ(run(set + "--strict config.VOIP.ports.port_1.categoryX=3").status, 0) << "a name longer than its key";
    EXPECT_EQ(run(set + "--strict config.VOIP.ports.port_1.nokey=3").status, 1);
    EXPECT_EQ(run(set + "config.VOIP.ports.port_1.category=300").status, 0) << "a warning only";
    EXPECT_TRUE(fs::exists(out));
    fs::remove(out);
}

} // namespace
