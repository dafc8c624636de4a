#include "Tests/Support/SimulatedPhone.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

const std::string clean = "com.norvane.purgo.flipswitch.clean";

// What a person saw once, done again on the same device.
class Recording : public testing::Test {
protected:
    /// Runs a script and returns what was recorded.
    std::string recordingOf(const std::string& script, std::vector<std::string> options = {}) {
        const std::string file = phone.files.at("recorded");
        options.insert(options.end(), {"--json", "--record", file});
        phone.run(script, options);
        std::ostringstream recording;
        recording << std::ifstream(file).rdbuf();
        return recording.str();
    }

    tests::ProgramResult replay(const std::string& recording,
                                const std::vector<std::string>& options = {}) const {
        return phone.run(recording, options);
    }

    void expectSame(const std::string& recording) const {
        const auto result = replay(recording);
        EXPECT_EQ(result.exitStatus, 0) << result.errors << recording;
        EXPECT_EQ(result.errors, "");
    }

    static std::string replaced(std::string text, const std::string& what,
                                const std::string& with) {
        const auto place = text.find(what);
        EXPECT_NE(place, text.npos) << what << "\n" << text;
        return text.replace(place, what.size(), with);
    }

    tests::SimulatedPhone phone;
};

TEST_F(Recording, DoesAllOfItAgain) {
    phone.hostCleans("echo deleted=7; echo shouldrespring=true; echo success=true");
    const std::string picture = phone.files.at("picture.svg");
    const auto recording = recordingOf(R"(
        toggle com.norvane.purgo.flipswitch.clean
        wait 2.5
        press Yes
        settle
        wait 1
        press No
        event com.norvane.purgo.activator.clean
        wait 0.5
        snapshot )" + picture + R"(
        restart
        unlock
        event com.norvane.purgo.activator.cleannopopup
        lock
        toggle com.norvane.purgo.flipswitch.clean
        wait 10
        settle
        wait 10
        screen)",
                                       {"--system=8.4", "--idiom=pad"});
    ASSERT_TRUE(std::filesystem::remove(picture));
    expectSame(recording);
    EXPECT_TRUE(std::filesystem::exists(picture));
    EXPECT_NE(recording.find("Deleted: 7"), recording.npos) << recording;

    // A command that failed is to fail again, for the same reason.
    const auto failed = recordingOf("toggle " + clean + "\npress Maybe");
    expectSame(failed);
    EXPECT_EQ(replay(replaced(failed, "Maybe\\\"", "Never\\\"")).exitStatus, 1);
    EXPECT_EQ(replay(replaced(failed, "press Maybe", "press No")).exitStatus, 1);
}

TEST_F(Recording, AnotherEventIsRefusedWithItsPlace) {
    const auto recording = recordingOf("toggle " + clean + "\nwait 3\npress No");
    const auto lineOf = [&recording](const std::string& text) {
        const auto before = recording.substr(0, recording.find(text));
        return std::to_string(1 + std::count(before.begin(), before.end(), '\n')) + ": expected ";
    };
    const std::string change = "{\"time\":2.0,\"event\":\"alert-changed\",\"id\":1,"
                               "\"title\":\"Purgo\",\"message\":\"In 8. Now?\"}\n";
    const std::pair<std::string, std::string> cases[] = {
        {replaced(recording, "\"buttonIndex\":0", "\"buttonIndex\":1"), lineOf("\"buttonIndex\"")},
        {replaced(recording, "In 8.", "In 5."), lineOf("In 8.")},
        {replaced(recording, change, ""), lineOf("In 8.")},
        {replaced(recording, change, change + change), lineOf("In 7.")},
        {replaced(recording, "\"command\":\"toggle " + clean, "\"command\":\"lock"),
         lineOf("switch-activated")},
        {replaced(recording, "2.0,\"event\"", "1.5,\"event\""), lineOf("In 8.")},
        {replaced(recording, "3.0,\"command\":\"press", "4.5,\"command\":\"press"),
         lineOf("\"press")},
    };
    for (const auto& [changed, place] : cases) {
        const auto result = replay(changed);
        EXPECT_EQ(result.exitStatus, 1) << changed;
        EXPECT_EQ(result.errors.substr(0, place.size()), place) << result.errors << changed;
    }
    const auto result = replay(cases[0].first);
    EXPECT_NE(result.errors.find("\"buttonIndex\":1} but "), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find("\"buttonIndex\":0}"), std::string::npos) << result.errors;
}

// Recorded on the real clock: timers fire late, child processes take their time.
TEST_F(Recording, RealTimeIsNoDifference) {
    const auto recording = [](const std::string& press, const std::string& rest) {
        const std::string alert = R"(,"title":"Purgo","message":)";
        return R"({"time":0.9,"command":"toggle )" + clean + R"("}
{"time":0.9,"event":"switch-activated","identifier":")" +
               clean + R"("}
{"time":0.901,"event":"alert-shown","id":1,"control":"UIAlertView")" +
               alert + R"("In 10. Now?","buttons":["No","Yes"],"cancelButtonIndex":0,)" +
               R"("destructiveButtonIndex":null}
{"time":1.95,"event":"alert-changed","id":1)" +
               alert + R"("In 9. Now?"}
)" + press + R"({"time":2.91,"event":"alert-dismissed","id":1,"buttonIndex":1}
{"time":2.911,"event":"alert-shown","id":2,"control":"UIAlertView")" +
               alert + R"("Cleaning","buttons":[],"cancelButtonIndex":null,)" +
               R"("destructiveButtonIndex":null}
)" + rest;
    };
    const std::string started = recordingOf("quit");
    const auto start = started.substr(0, started.find("{\"time\":0.0,\"command\""));
    // The second tick was due at 2.9, but the button was pressed before anybody noticed.
    const std::string late = "{\"time\":2.908,\"command\":\"press Yes\"}\n";
    // The cleanup took two seconds, in which other things were done.
    const std::string slow = R"({"time":3.5,"command":"screen"}
{"time":3.5,"event":"screen","alerts":[{"id":2,"control":"UIAlertView","title":"Purgo",)"
                             R"("message":"Cleaning","buttons":[],"cancelButtonIndex":null,)"
                             R"("destructiveButtonIndex":null}]}
{"time":4.9,"event":"alert-shown","id":3,"control":"UIAlertView","title":"Purgo",)"
                             R"("message":"Done\nDeleted: 0","buttons":["Ok"],)"
                             R"("cancelButtonIndex":null,"destructiveButtonIndex":null}
{"time":4.9,"event":"alert-dismissed","id":2,"buttonIndex":-1}
)";
    // Then somebody killed the home screen.
    const std::string killed = R"({"time":5,"signal":9}
{"time":5,"event":"home-screen-restarted"}
)";
    auto again = start.substr(start.find('\n') + 1);
    expectSame(start + recording(late, slow + killed) + again);
    EXPECT_EQ(replay(start + recording(late, slow + killed.substr(killed.find('\n') + 1) + again))
                  .exitStatus,
              1);
}

TEST_F(Recording, UnusableFilesAreRefused) {
    for (const char* const content :
         {"{", "{}\n", "{\"time\":0,\"event\":7}", "{\"time\":\"0\",\"command\":\"lock\"}",
          "{\"time\":0,\"command\":\"lock\"}\n[]", "{\"command\":\"lock\"}"}) {
        EXPECT_EQ(replay(content).exitStatus, 2) << content;
    }
    const std::string nothing = "\n {\"time\":0,\"command\":\"quit\"}";
    EXPECT_EQ(replay(nothing, {"--clock", "real"}).exitStatus, 2);
    EXPECT_EQ(phone.run("screen", {"--record", "/nowhere/file"}).exitStatus, 2);
    EXPECT_EQ(phone.run("screen", {"--record", "/dev/full"}).exitStatus, 1);
}

TEST_F(Recording, PicturesThatCannotBeWrittenFail) {
    const auto result =
        phone.run("snapshot " + phone.files.at("a.svg").string() + "\nsnapshot /nowhere/b");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "2: /nowhere/b: No such file or directory\n");
    // Nobody but the picture hears of the toggles' titles.
    EXPECT_EQ(result.output.find("\"switch\""), std::string::npos);
    std::ostringstream picture;
    picture << std::ifstream(phone.files.at("a.svg")).rdbuf();
    EXPECT_NE(picture.str().find("Clean now"), std::string::npos);
    EXPECT_EQ(phone.run("snapshot").errors, "1: snapshot needs an argument: snapshot FILE\n");
}

} // namespace
