#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/Http.h"
#include "support/RunningUnit.h"

namespace {

using namespace std::chrono_literals;

struct Refusal {
    std::vector<std::string> options;
    int exitCode;
    std::string error; ///< must occur on stderr
};

TEST(RadioUnitStart, RefusesWhatItCannotDoAndSaysWhy)
{
    const TemporaryFolder folder;
    const auto stateFile = [&](const std::string& name, const std::string& content) {
        return std::vector<std::string>{"--state", folder.write(name, content)};
    };
    const RunningUnit other;
    const std::vector<std::string> freePorts{"--link", "127.0.0.1:0", "--control", "127.0.0.1:0"};
    const Refusal cases[] = {
        {{"--channels", "3"}, 2, "--channels"},
        {{"--channels", "0"}, 2, "--channels"},
        {{"--channels", "two"}, 2, "--channels"},
        {{"--module-channels", "256"}, 2, "--module-channels"},
        {{"--module-channels", "-1"}, 2, "--module-channels"},
        {{"--trace", "9"}, 2, "--trace"},
        {{"--colour"}, 2, "--colour"},
        {{"--link"}, 2, "--link"},
        {{"--link", "127.0.0.1"}, 2, "HOST:PORT"},
        {{"--link", ":1"}, 2, "HOST:PORT"},
        {{"--link", "::1"}, 2, "brackets"},
        {{"--link", "127.0.0.1:65536"}, 2, "65535"},
        {{"--link", "127.0.0.1:-1"}, 2, "65535"},
        {{"--control", "127.0.0.1:http"}, 2, "65535"},
        {{"--control", "0.0.0.0:0"}, 2, "--allow-remote"},
        {{"--link", "192.0.2.7:0"}, 2, "--allow-remote"},
        {{"--link", "radio.example:0"}, 2, "--allow-remote"},
        {{"--state", folder.path() + "/missing"}, 2, "/missing"},
        {{"--state", folder.path()}, 2, folder.path()},
        {stateFile("broken", "{"), 2, "not JSON"},
        {stateFile("empty", ""), 2, "not JSON"},
        {stateFile("list", "[]"), 2, "object"},
        {stateFile("deep", std::string(100'000, '[')), 2, "deep"},
        {stateFile("unknown", R"({"unit":{"colour":1}})"), 2, "unit.colour"},
        {stateFile("range", R"({"channels":{"1":{"radio":{"temperature":200}}}})"), 2, "channels.1.radio.temperature"},
        {{"--link", other.link()}, 1, other.link() + ": Address already in use"},
        {{"--control", other.control()}, 1, other.control() + ": Address already in use"},
        {{"--module", folder.path() + "/missing.so"}, 1, "no such file"},
        {{"--module", folder.path()}, 1, folder.path()},
        {{"--module", folder.write("text.so", "not a library")}, 1, "text.so"},
        {{"--module", std::string{BIN_DIR} + "/libradioplatform.so"}, 1, "createVornipcAdapter"},
        {{"--ready-file", folder.path() + "/no/such/folder/ready"}, 1, "no/such/folder/ready"},
        {{"--ready-file", folder.path()}, 1, folder.path()},
    };
    for (const auto& refusal : cases) {
        std::vector<std::string> command{RADIOUNIT_PATH};
        const std::string what = testing::PrintToString(refusal.options);
        for (std::size_t i = 0; i < freePorts.size(); i += 2) {
            if (refusal.options.front() != freePorts[i]) {
                command.insert(command.end(), {freePorts[i], freePorts[i + 1]});
            }
        }
        command.insert(command.end(), refusal.options.begin(), refusal.options.end());
        Program program{command};
        EXPECT_EQ(program.waitForExit(), refusal.exitCode) << what << program.errors();
        EXPECT_NE(program.errors().find("radiounit: "), std::string::npos) << what << program.errors();
        EXPECT_NE(program.errors().find(refusal.error), std::string::npos) << what << program.errors();
        EXPECT_EQ(program.output(), "") << what;
    }
}

TEST(RadioUnitStart, ListensWhereItIsTold)
{
    const TemporaryFolder folder;
    const struct {
        std::vector<std::string> options;
        std::string link; ///< how the address in the ready file begins; empty: there is none
        std::string control;
    } cases[] = {
        {{"--link", "[::1]:0", "--control", "localhost:0"}, "[::1]:", "127.0.0.1:"},
        {{"--link", "none", "--control", "127.0.0.2:0"}, "", "127.0.0.2:"},
        {{"--link", "127.0.0.1:0", "--control", "none"}, "127.0.0.1:", ""},
        {{"--link", "0.0.0.0:0", "--control", "none", "--allow-remote"}, "0.0.0.0:", ""},
    };
    for (const auto& one : cases) {
        const std::string ready = folder.write("ready", "left by an earlier unit");
        std::vector<std::string> command{RADIOUNIT_PATH, "--ready-file", ready};
        command.insert(command.end(), one.options.begin(), one.options.end());
        Program program{command};
        nlohmann::json addresses;
        const Deadline deadline{patience};
        while (!addresses.is_object() && !deadline.passed() && program.waitForFile(ready)) {
            addresses = nlohmann::json::parse(readFile(ready), nullptr, false);
        }
        ASSERT_TRUE(addresses.is_object()) << program.errors();
        const auto begins = [](const nlohmann::json& address, const std::string& with) {
            return with.empty() ? address.is_null() : address.get<std::string>().starts_with(with);
        };
        EXPECT_TRUE(begins(addresses.at("link"), one.link)) << addresses;
        EXPECT_TRUE(begins(addresses.at("control"), one.control)) << addresses;
        EXPECT_EQ(addresses.at("pid"), program.pid());
        program.signal(SIGINT);
        EXPECT_EQ(program.waitForExit(), 0) << program.errors();
    }
}

TEST(RadioUnitStart, CallsTheModuleUpForEachRadioThatIsUp)
{
    const RunningUnit unit{{"--trace", "0"}, R"({"channels":{"1":{"radio":{"up":false}}}})"};
    const auto calls = unit.get("/api/calls");
    std::vector<std::string> called;
    for (const auto& call : calls.at("calls")) {
        if (call.at("operation") == "getRfChannelPlan") {
            called.push_back(call.at("interface").get<std::string>() + " on " + call.at("thread").get<std::string>());
        }
    }
    EXPECT_EQ(called, (std::vector<std::string>{"IRadioCapability_2 on platform-1"}));
}

/// Waits until the process has taken the signal into its own hands. Before, it ends like any program does.
bool blocks(pid_t pid, int signal)
{
    const Deadline deadline{patience};
    while (!deadline.passed()) {
        const std::string status = readFile("/proc/" + std::to_string(pid) + "/status");
        const auto mask = status.find("SigBlk:");
        if (mask != std::string::npos &&
            (std::stoull(status.substr(mask + 7), nullptr, 16) & (1ULL << static_cast<unsigned>(signal - 1))) != 0) {
            return true;
        }
    }
    return false;
}

TEST(RadioUnitStop, IsOrderlyAtAnyMoment)
{
    // The delay holds the start up in the module's initialisation, where the later moments fall.
    const TemporaryFolder folder;
    const std::string slow = folder.write("slow", R"({"delaysMs":{"IRadio_1.registerCallback":60000}})");
    for (const auto moment : {0ms, 1ms, 2ms, 5ms, 10ms, 20ms, 40ms, 80ms, 160ms}) {
        Program program{{RADIOUNIT_PATH, "--link", "127.0.0.1:0", "--control", "127.0.0.1:0", "--state", slow}};
        ASSERT_TRUE(blocks(program.pid(), SIGTERM));
        EXPECT_EQ(program.waitForExit(moment), std::nullopt);
        program.signal(SIGTERM);
        EXPECT_EQ(program.waitForExit(), 0) << moment.count() << " ms: " << program.errors();
    }
}

TEST(RadioUnitStop, TakesLittleTimeWhateverHoldsOn)
{
    RunningUnit unit{{}, R"({"delaysMs":{"IRadio_1.getTemperature":60000}})"};
    const Node node{unit.link()};
    const Node deaf{unit.link()};
    const Socket idle{unit.control()};
    const Socket slow{unit.control()};
    slow.send("GET /api/mod");
    node.sendFrame(0, word(0x200020) + word(0) + word(0) + word(0) + word(0) + word(0) + word(1));
    for (int i = 0; i < 10; ++i) {
        node.sendFrame(0, word(0x200020) + word(0) + word(0) + word(0) + word(0) + word(0) + word(1));
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(unit.stop(), 0) << unit.program().errors();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 4s) << "nobody waits for delays, clients or time-outs";
    EXPECT_TRUE(node.closedByPeer());
    EXPECT_EQ(unit.program().errors().find("still loaded"), std::string::npos) << unit.program().errors();
}

} // namespace
