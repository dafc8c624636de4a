#include "Tests/Support/RunningSimulator.h"
#include "Tests/Support/SimulatedPhone.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Options = std::vector<std::string>;

const std::string clean = "com.norvane.purgo.flipswitch.clean";
const std::string cleanNow = "com.norvane.purgo.flipswitch.cleannopopup";

// How the simulator deals with scripts, signals and home screens that go down.
class Supervisor : public testing::Test {
protected:
    /// The number of the process that leaves it in a file of the host application.
    pid_t processIn(const std::string& file) const {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        pid_t number = 0;
        while (number == 0 && std::chrono::steady_clock::now() < limit) {
            std::ifstream(phone.files.at(phone.application + file)) >> number;
            std::this_thread::yield();
        }
        EXPECT_GT(number, 0) << "nothing came into the file " << file;
        return number;
    }

    static bool isGone(pid_t process) { return kill(process, 0) != 0; }

    const tests::SimulatedPhone phone;
};

TEST_F(Supervisor, TheFirstFailureEndsAScriptAndTellsItsLine) {
    const std::pair<std::string, std::string> cases[] = {
        {"wait -1", "\"-1\" is no number of seconds"},
        {"wait nan", "\"nan\" is no number of seconds"},
        {"wait 1 2", "\"1 2\" is no number of seconds"},
        {"wait 1e300", "the clock ends before 1e300 seconds have passed"},
        {"wait # long", "wait needs an argument: wait SECONDS"},
        {"lock now", "lock takes no argument, but was given \"now\""},
        {"Screen", "there is no command \"Screen\""},
        {"toggle " + clean + ".", "no switch is registered under \"" + clean + ".\""},
        {"event " + clean, "no listener is registered under \"" + clean + "\""},
        {"press #0", "no alert is on the screen"},
        {"toggle " + clean + "\npress #2", "the front alert has no button \"#2\""},
        {"toggle " + clean + "\npress no", "the front alert has no button \"no\""},
    };
    for (const auto& [commands, reason] : cases) {
        const auto result = phone.run("\n# comment\r\n" + commands + "\nscreen\n");
        const auto line = commands.find('\n') == std::string::npos ? "3: " : "4: ";
        EXPECT_EQ(result.errors, line + reason + "\n") << commands;
        EXPECT_EQ(result.exitStatus, 1) << commands;
        EXPECT_EQ(result.output.find("\"screen\""), std::string::npos) << commands;
    }
}

TEST_F(Supervisor, ScriptsMayHaveCommentsAndForeignLineEnds) {
    EXPECT_EQ(phone.storyOf("  # wait 5\r\n\t\r\n toggle " + clean +
                            "  # asks\r\n##\nwait 1 #\npress   #0\t# No\r\nscreen"),
              "\n0.0 switch-activated | " + clean + R"(
0.0 alert-shown | 1 | UIAlertView | Purgo | In 10. Now? | ["No","Yes"] | 0 | null
1.0 alert-changed | 1 | Purgo | In 9. Now?
1.0 alert-dismissed | 1 | 0
1.0 screen | []
)");
}

TEST_F(Supervisor, UnusableOptionsAreRefused) {
    const Options cases[] = {{"--device", "/"},
                             {"--device", "/dev/null"},
                             {"--device", "/nowhere"},
                             {"--device"},
                             {"--script", "/nowhere"},
                             {"--script", "/"},
                             {"--system", "6.1.x"},
                             {"--idiom", "watch"},
                             {"--clock", "slow"},
                             {"--json=yes"},
                             {"--script="},
                             {"--prompt"},
                             {"--unknown"},
                             {"extra"}};
    for (const auto& options : cases) {
        const auto result = phone.run("screen", options);
        EXPECT_EQ(result.exitStatus, 2) << options.front();
        EXPECT_EQ(result.output, "") << options.front();
        EXPECT_NE(result.errors, "") << options.front();
    }
}

TEST_F(Supervisor, AKilledHomeScreenLosesNeitherCommandsNorTimeNorLock) {
    // The host executable would take what it can get of the commands.
    phone.hostCleans("cat", "kill -KILL $PPID; cat > input");
    tests::RunningSimulator simulator(phone, {"--script", "-"});
    simulator.type("wait 2.5\nunlock\nrestart\nevent com.norvane.purgo.activator.cleannopopup\n");
    EXPECT_EQ(simulator.waitFor("home-screen-restarted").at("time"), 2.5);
    EXPECT_EQ(simulator.waitFor("home-screen-started").at("time"), 2.5);
    EXPECT_EQ(simulator.waitFor("url-opened").at("time"), 2.5);

    phone.hostCleans("echo shouldrespring=true; echo success=true", "kill -KILL $PPID; cat >input");
    simulator.type("lock\ntoggle " + cleanNow + "\nsettle\nwait 10\nscreen\nfaulty\nscreen\n");
    simulator.waitFor("switch-activated");
    EXPECT_EQ(simulator.waitFor("home-screen-restarted").at("time"), 12.5);
    EXPECT_EQ(simulator.waitFor("screen").at("time"), 12.5);
    const auto result = simulator.end();
    EXPECT_EQ(result.errors, "10: there is no command \"faulty\"\n");
    EXPECT_EQ(result.exitStatus, 1);
}

TEST_F(Supervisor, AfterACrashTheHomeScreenComesBackInSafeMode) {
    phone.hostCleans("echo shouldrespring=true; echo success=true", "kill -ABRT $PPID");
    const auto result =
        phone.run("toggle " + cleanNow + "\nsettle\npress Yes\nlisteners\nrestart\n" + "toggle " +
                  clean + "\npress No");
    EXPECT_EQ(tests::story(result.output, {"library-loaded", "switch-registered",
                                           "listener-registered", "alert-shown"}),
              R"(
0.0 home-screen-started | 6.1 | 993.0 | false
0.0 switch-activated | com.norvane.purgo.flipswitch.cleannopopup
0.0 alert-dismissed | 1 | -1
0.0 alert-dismissed | 2 | 1
0.0 home-screen-crashed | 6
0.0 home-screen-started | 6.1 | 993.0 | true
0.0 home-screen-restarted
0.0 home-screen-started | 6.1 | 993.0 | false
0.0 switch-activated | com.norvane.purgo.flipswitch.clean
0.0 alert-dismissed | 1 | 0
)");
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(Supervisor, AHomeScreenThatNeverStartsEndsInSafeMode) {
    phone.files.writeScript(phone.application + "iOS6_Purgo", "kill -TERM $PPID");
    const std::set<std::string> libraries = {"library-loaded"};
    EXPECT_EQ(tests::story(phone.run("switches\nscreen").output, libraries), R"(
0.0 home-screen-started | 6.1 | 993.0 | false
0.0 home-screen-restarted
0.0 home-screen-started | 6.1 | 993.0 | false
0.0 home-screen-restarted
0.0 home-screen-started | 6.1 | 993.0 | false
0.0 home-screen-restarted
0.0 home-screen-started | 6.1 | 993.0 | true
0.0 screen | []
)");

    phone.files.writeScript(phone.application + "iOS6_Purgo", "kill -QUIT $PPID");
    EXPECT_EQ(tests::story(phone.run("screen").output, libraries), R"(
0.0 home-screen-started | 6.1 | 993.0 | false
0.0 home-screen-crashed | 3
0.0 home-screen-started | 6.1 | 993.0 | true
0.0 screen | []
)");
}

TEST_F(Supervisor, LeavesNoProcessBehind) {
    if (tests::isEmulated())
        GTEST_SKIP() << "the emulation does not let a process adopt orphans";
    phone.hostCleans("echo $$ >host; (setsid sleep 1000 & echo $! >grandchild); exec sleep 1000");
    tests::RunningSimulator quitting(phone, {"--script", "-"});
    quitting.type("toggle " + cleanNow + "\n");
    const auto host = processIn("host");
    const auto grandchild = processIn("grandchild");
    // The home screen goes, and leaves the host executable to the supervisor.
    quitting.type("restart\nscreen\n");
    quitting.waitFor("screen");
    EXPECT_FALSE(isGone(host) || isGone(grandchild));
    EXPECT_EQ(quitting.end().exitStatus, 0);
    EXPECT_TRUE(isGone(host) && isGone(grandchild));

    // A home screen that hangs is no reason to stay.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const auto file = "hanging" + std::to_string(signal);
        phone.files.writeScript(phone.application + "iOS6_Purgo",
                                "cd ${0%/*}; echo $$ >" + file + "; exec sleep 1000");
        tests::RunningSimulator hanging(phone, {"--script", "-"});
        const auto process = processIn(file);
        hanging.send(signal);
        EXPECT_EQ(hanging.end().signal, signal);
        EXPECT_TRUE(isGone(process));
    }
}

TEST_F(Supervisor, TheHomeScreenGoesWithASupervisorThatIsKilled) {
    tests::RunningSimulator simulator(phone, {"--script", "-"});
    simulator.type("screen\n");
    simulator.waitFor("screen");
    simulator.send(SIGKILL);
    EXPECT_EQ(simulator.end().signal, SIGKILL);
}

TEST_F(Supervisor, EndsWhenNobodyReadsItsEvents) {
    tests::RunningSimulator simulator(phone, {"--script", "-"});
    simulator.waitFor("home-screen-started");
    simulator.stopReading();
    simulator.type("screen\nscreen\n");
    const auto result = simulator.end();
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "");

    // Nor does a reader that never reads keep it from ending.
    tests::RunningSimulator flooding(phone, {"--script", "-"});
    std::string flood;
    for (int count = 0; count < 200; ++count)
        flood += "listeners\n";
    flooding.narrowOutput();
    flooding.type(flood);
    flooding.waitFor("listener");
    flooding.send(SIGTERM);
    EXPECT_EQ(flooding.end().signal, SIGTERM);
}

TEST_F(Supervisor, AtThePromptTimePassesAndErrorsEndNothing) {
    tests::RunningSimulator simulator(phone, {"--prompt"});
    simulator.type("press Yes\nbogus\nhelp\ntoggle " + clean + "\n");
    const double shown = simulator.waitFor("alert-shown").at("time");
    const double ticked = simulator.waitFor("alert-changed").at("time");
    EXPECT_GT(ticked - shown, 0.9);
    simulator.type("restart\n");
    EXPECT_GE(simulator.waitFor("home-screen-started").at("time"), ticked);
    const auto result = simulator.end();
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors.substr(0, result.errors.find("  switches")),
              "no alert is on the screen\nthere is no command \"bogus\"\n");
}

} // namespace
