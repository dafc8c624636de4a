#include "Tests/Support/SimulatedPhone.h"

#include <filesystem>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

// The road of a cleanup, on a device, by scripts that anybody could have typed.
class Simulator : public testing::Test {
protected:
    const tests::SimulatedPhone phone;
};

TEST_F(Simulator, ACleanupLeftAloneRunsFromTheConfirmationToTheRestart) {
    phone.hostCleans("echo freed=1 MB; echo deleted=7; echo shouldrespring=true; echo success=true",
                     "sed -i s/activator/nothing/ settings; kill -TERM $PPID");
    EXPECT_EQ(phone.storyOf(R"(
        toggle com.norvane.purgo.flipswitch.clean
        wait 10
        settle
        wait 8
        listeners
        wait 10        # after two of them the home screen goes down
        listeners
        screen
    )"),
              R"(
0.0 switch-activated | com.norvane.purgo.flipswitch.clean
0.0 alert-shown | 1 | UIAlertView | Purgo | In 10. Now? | ["No","Yes"] | 0 | null
1.0 alert-changed | 1 | Purgo | In 9. Now?
2.0 alert-changed | 1 | Purgo | In 8. Now?
3.0 alert-changed | 1 | Purgo | In 7. Now?
4.0 alert-changed | 1 | Purgo | In 6. Now?
5.0 alert-changed | 1 | Purgo | In 5. Now?
6.0 alert-changed | 1 | Purgo | In 4. Now?
7.0 alert-changed | 1 | Purgo | In 3. Now?
8.0 alert-changed | 1 | Purgo | In 2. Now?
9.0 alert-changed | 1 | Purgo | In 1. Now?
10.0 alert-changed | 1 | Purgo | In 0. Now?
10.0 alert-dismissed | 1 | -1
10.0 alert-shown | 2 | UIAlertView | Purgo | Cleaning | [] | null | null
10.0 alert-shown | 3 | UIAlertView | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 10? | ["No","Yes"] | 0 | null
10.0 alert-dismissed | 2 | -1
11.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 9?
12.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 8?
13.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 7?
14.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 6?
15.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 5?
16.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 4?
17.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 3?
18.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 2?
18.0 listener | com.norvane.purgo.activator.clean | Clean | Asks
18.0 listener | com.norvane.purgo.activator.cleannopopup | Clean now | <null>
19.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 1?
20.0 alert-changed | 3 | Purgo | Done / Freed: 1 MB / Deleted: 7 / Restart in 0?
20.0 alert-dismissed | 3 | -1
20.0 home-screen-restarted
20.0 screen | []
)");
}

TEST_F(Simulator, NoEndsItAndTheNextToggleWorks) {
    EXPECT_EQ(phone.storyOf(R"(
        toggle com.norvane.purgo.flipswitch.clean
        wait 3
        press No
        wait 20
        toggle com.norvane.purgo.flipswitch.clean
        press #1
        settle
        press Ok
    )"),
              R"(
0.0 switch-activated | com.norvane.purgo.flipswitch.clean
0.0 alert-shown | 1 | UIAlertView | Purgo | In 10. Now? | ["No","Yes"] | 0 | null
1.0 alert-changed | 1 | Purgo | In 9. Now?
2.0 alert-changed | 1 | Purgo | In 8. Now?
3.0 alert-changed | 1 | Purgo | In 7. Now?
3.0 alert-dismissed | 1 | 0
23.0 switch-activated | com.norvane.purgo.flipswitch.clean
23.0 alert-shown | 2 | UIAlertView | Purgo | In 10. Now? | ["No","Yes"] | 0 | null
23.0 alert-dismissed | 2 | 1
23.0 alert-shown | 3 | UIAlertView | Purgo | Cleaning | [] | null | null
23.0 alert-shown | 4 | UIAlertView | Purgo | Done / Deleted: 0 | ["Ok"] | null | null
23.0 alert-dismissed | 3 | -1
23.0 alert-dismissed | 4 | 0
)");
}

TEST_F(Simulator, AnUnlockedDeviceHandsTheCleanupToTheHostApplication) {
    phone.hostCleans("touch cleaned; exec sleep 1000");
    const std::string script = R"(
        event com.norvane.purgo.activator.cleannopopup
        screen
        restart
        event com.norvane.purgo.activator.cleannopopup
        lock
        event com.norvane.purgo.activator.cleannopopup
    )";
    const std::string opened =
        "0.0 url-opened | purgo://clean/?plugin=com.norvane.purgo.activator | applicationOpenURL\n"
        "0.0 event-fired | com.norvane.purgo.activator.cleannopopup | true\n";
    EXPECT_EQ(phone.storyOf(script, {"--unlocked"}),
              "\n" + opened + "0.0 screen | []\n0.0 home-screen-restarted\n" + opened +
                  "0.0 alert-shown | 1 | UIAlertView | Purgo | Cleaning | [] | null | null\n"
                  "0.0 event-fired | com.norvane.purgo.activator.cleannopopup | true\n");
}

TEST_F(Simulator, EveryFailureOfTheHostExecutableIsShownUntilItIsSeen) {
    const std::pair<const char*, const char*> cases[] = {
        {"echo message=Disk on fire", "Disk on fire"},
        {"echo success=false", "Unknown error"},
        {"exit 3", "Unknown error"},
        {"kill -SEGV $$", "Unknown error"},
        {"printf 'success=true\\n\\377'", "Unknown error"},
        {"rm iOS6_Purgo; kill -9 $$", "Unknown error"},
        {nullptr, "Unknown error"},
    };
    for (const auto& [clean, message] : cases) {
        phone.hostCleans(clean ? clean : "");
        // It prints the settings once, and is then not there any more.
        if (!clean)
            phone.files.writeScript(phone.application + "iOS6_Purgo",
                                    "cd ${0%/*}; cat settings; rm $0");
        EXPECT_EQ(phone.storyOf("toggle com.norvane.purgo.flipswitch.cleannopopup\n"
                                "settle\nwait 100\nevent com.norvane.purgo.activator.clean\n"
                                "press Ok"),
                  std::string(R"(
0.0 switch-activated | com.norvane.purgo.flipswitch.cleannopopup
0.0 alert-shown | 1 | UIAlertView | Purgo | Cleaning | [] | null | null
0.0 alert-shown | 2 | UIAlertView | Purgo | )") +
                      message + R"( | ["Ok"] | null | null
0.0 alert-dismissed | 1 | -1
100.0 event-fired | com.norvane.purgo.activator.clean | false
100.0 alert-dismissed | 2 | 0
)") << message;
    }
}

TEST_F(Simulator, WhileAnAlertIsUpNothingStartsAndAnAbortTakesItAway) {
    EXPECT_EQ(phone.storyOf(R"(
        event com.norvane.purgo.activator.clean
        toggle com.norvane.purgo.flipswitch.clean
        toggle com.norvane.purgo.flipswitch.cleannopopup
        event com.norvane.purgo.activator.cleannopopup
        screen
        abort com.norvane.purgo.activator.clean
        event com.norvane.purgo.activator.clean
        other com.norvane.purgo.activator.cleannopopup
        abort com.norvane.purgo.activator.clean
    )"),
              R"(
0.0 alert-shown | 1 | UIAlertView | Purgo | In 10. Now? | ["No","Yes"] | 0 | null
0.0 event-fired | com.norvane.purgo.activator.clean | true
0.0 switch-activated | com.norvane.purgo.flipswitch.clean
0.0 switch-activated | com.norvane.purgo.flipswitch.cleannopopup
0.0 event-fired | com.norvane.purgo.activator.cleannopopup | false
0.0 screen | [{"id":1,"control":"UIAlertView","title":"Purgo","message":"In 10. Now?","buttons":["No","Yes"],"cancelButtonIndex":0,"destructiveButtonIndex":null}]
0.0 alert-dismissed | 1 | -1
0.0 alert-shown | 2 | UIAlertView | Purgo | In 10. Now? | ["No","Yes"] | 0 | null
0.0 event-fired | com.norvane.purgo.activator.clean | true
0.0 alert-dismissed | 2 | -1
)");
}

TEST_F(Simulator, TheLanguageOfTheHostApplicationLiesOverEnglish) {
    const std::string plugins = "plugins=com.norvane.purgo.flipswitch\nlanguage=";
    const std::string ofClean = "\n0.0 switch | com.norvane.purgo.flipswitch.clean | ";
    const std::string ofCleanNow = "0.0 switch | com.norvane.purgo.flipswitch.cleannopopup | ";
    const std::string rest = " | true | true | 0 | null\n";
    phone.files.write(phone.application + "Italian.strings", "PLUGINTITLE1 = Pulisci;");

    phone.hostSettings(plugins + "Italian");
    EXPECT_EQ(phone.storyOf("switches"),
              ofClean + "Pulisci" + rest + ofCleanNow + "Clean now" + rest);
    phone.files.write(phone.application + "English.strings", "PLUGINTITLE1 = Clean;");
    EXPECT_EQ(phone.storyOf("switches"), ofClean + "Pulisci" + rest + ofCleanNow + "<null>" + rest);
    fs::remove(phone.files.at(phone.application + "English.strings"));
    EXPECT_EQ(phone.storyOf("switches"), ofClean + "null" + rest + ofCleanNow + "null" + rest);
}

TEST_F(Simulator, TheSampleHostExecutableCleansAndRestarts) {
    if (tests::isEmulated())
        GTEST_SKIP() << "the machine cannot run the program without the emulator's words before it";
    fs::copy_file(PURGO_HOST_PROGRAM, phone.files.at(phone.application + "iOS6_Purgo"),
                  fs::copy_options::overwrite_existing);
    phone.files.write("/var/mobile/Library/Preferences/com.norvane.purgo.plist",
                      "plugins = (com.norvane.purgo.activator); shouldRespring = true;");
    const auto story = phone.storyOf(R"(
        litter 25
        event com.norvane.purgo.activator.cleannopopup
        settle
        press Yes
        litter nothing
    )");
    EXPECT_NE(story.find("Deleted: 25 / Restart in 10?"), std::string::npos) << story;
    EXPECT_NE(story.find("0.0 alert-dismissed | 2 | 1\n0.0 home-screen-restarted\n6: "),
              std::string::npos)
        << story;
}

TEST_F(Simulator, OnlyLibrariesForTheHomeScreenAreOpened) {
    const auto inLibraries = [this](const char* name) {
        return phone.libraries + name;
    };
    phone.files.write(inLibraries("Activator.plist"),
                      "Filter = { Bundles = (com.example.music); };");
    phone.files.write(inLibraries("Flipswitch.plist"), "{ a broken filter");
    phone.files.write(inLibraries("Broken.dylib"), "no library");
    phone.hostSettings("plugins=com.norvane.purgo.activator");
    const auto result =
        phone.run("switches\nlisteners\nquit\nnever read", {"--json", "--system=4.3"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(tests::story(result.output), R"(
0.0 home-screen-started | 4.3 | 751.49 | false
0.0 library-loaded | /Library/MobileSubstrate/DynamicLibraries/PurgoLib.dylib
)");
    EXPECT_NE(result.errors.find("Broken.dylib"), std::string::npos) << result.errors;

    fs::remove_all(phone.files.at("/Library"));
    EXPECT_EQ(tests::story(phone.run("switches\nscreen").output), R"(
0.0 home-screen-started | 6.1 | 993.0 | false
0.0 screen | []
)");
}

TEST_F(Simulator, PeopleReadWordsThatCannotCommandTheirTerminal) {
    phone.hostCleans("printf 'message=\\033[2J\\302\\233H\\001\\n'");
    const auto words = phone
                           .run("event com.norvane.purgo.activator.clean\nwait 1\npress Yes\n"
                                "settle\nscreen",
                                {})
                           .output;
    EXPECT_EQ(words.substr(words.find("[   0.000] alert")),
              R"([   0.000] alert 1, UIAlertView: “Purgo”
           In 10. Now?
           [0] No (cancel)  [1] Yes
[   0.000] event fired: com.norvane.purgo.activator.clean
[   1.000] alert 1: In 9. Now?
[   1.000] alert 1 dismissed with “Yes”
[   1.000] alert 2, UIAlertView: “Purgo”
           Cleaning
           (no buttons)
[   1.000] alert 3, UIAlertView: “Purgo”
           ␛[2J�H␁
           [0] Ok
[   1.000] alert 2 dismissed without a button
[   1.000] on the screen: alert 3, UIAlertView: “Purgo”
           ␛[2J�H␁
           [0] Ok
)");
}

} // namespace
