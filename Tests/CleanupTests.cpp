#include "Source/Model/PurgoInterface.h"

#include "Platform/Exceptions.h"
#include "Platform/Linux/Application.h"
#include "Tests/Support/TestDevice.h"

#include <gtest/gtest.h>

namespace {

using platform::ApplicationOperation;
using purgo::PGLocalizationManager;
using purgo::PurgoInterface;
using tests::hostExecutable;

constexpr const char* plugin = "com.norvane.purgo.activator";

/// A device with short texts, an interface with one enabled plugin, and a record of what happens.
class Cleanup : public testing::Test, public platform::DeviceObserver {
protected:
    Cleanup() {
        phone.device().setObserver(this);
        phone.files().write("/Applications/Purgo.app/English.strings",
                            "RUNCOUNTDOWNMSG = \"In <countdown>.\"; CONTINUE = Now; YES = Yes;"
                            "NO = No; CLEANLBL = Cleaning; CLEANUPCOMPLETED = Done;"
                            "FREEDSPACE = Freed; DELETEDFILES = Deleted;"
                            "RESPRINGMSG1 = \"Restart in <countdown>\";");
        purgo->setEnabledPlugins(std::set<std::string>{plugin});
    }

    void alertShown(const platform::ScreenAlert& alert) override {
        messages.push_back(alert.contents().message.value_or("no message"));
    }
    void urlOpened(const std::string& url, const std::string& through) override {
        messages.push_back(through + " " + url);
    }

    /// Makes the host executable print these lines, and write its arguments into a file.
    void hostPrints(const std::string& lines) {
        phone.files().writeScript(hostExecutable, "echo \"$@\" >> \"" + arguments() +
                                                      "\"\ncat <<'END'\n" + lines + "\nEND");
    }
    std::string arguments() const { return phone.files().at("/arguments").string(); }
    std::string argumentsGiven() const {
        std::ifstream file(arguments());
        return {std::istreambuf_iterator<char>(file), {}};
    }

    tests::TestDevice phone;
    std::shared_ptr<PurgoInterface> purgo =
        PurgoInterface::make(std::make_shared<PGLocalizationManager>("English"));
    std::vector<std::string> messages;
};

TEST_F(Cleanup, LeftAloneItRunsFromTheConfirmationToTheRestart) {
    hostPrints("some progress\nsuccess=true\nfreed=12.5 MB\ndeleted=42\nshouldrespring=true");
    purgo->showCleanupTimeoutAlertWithPluginIdentifier(plugin);
    EXPECT_EQ(phone.message(), "In 10. Now");
    phone.letPass(9);
    EXPECT_EQ(phone.message(), "In 1. Now");
    phone.letPass(1);
    ASSERT_TRUE(phone.settle());
    EXPECT_EQ(messages[1], "Cleaning");
    EXPECT_EQ(phone.message(), "Done\nFreed: 12.5 MB\nDeleted: 42\nRestart in 10");
    EXPECT_EQ(argumentsGiven(), "-clean -printresults\n");
    phone.letPass(10);
    EXPECT_EQ(argumentsGiven(), "-clean -printresults\n-respring\n");
    EXPECT_FALSE(purgo->isShowingAlert());
    EXPECT_TRUE(phone.screen().alerts().empty());
}

TEST_F(Cleanup, NoEndsItAndTheNextOneWorks) {
    hostPrints("success=true");
    for (int round = 0; round < 2; ++round) {
        purgo->showCleanupTimeoutAlertWithPluginIdentifier(plugin);
        phone.letPass(3);
        EXPECT_EQ(phone.message(), "In 7. Now");
        ASSERT_TRUE(phone.press("No"));
        phone.letPass(20);
        EXPECT_FALSE(purgo->isShowingAlert());
    }
    EXPECT_EQ(argumentsGiven(), "");
}

TEST_F(Cleanup, TheSummaryShowsWhatTheResultsGive) {
    const std::pair<const char*, const char*> cases[] = {
        {"success=true", "Done\nDeleted: 0"},
        {"success=true\ndeleted= \t+17 files\nfreed= ", "Done\nFreed:  \nDeleted: 17"},
        {"success=true\ndeleted=-5\nshouldrespring=TRUE", "Done\nDeleted: 0"},
        {"success=false\nsuccess=true\ndeleted=99999999999999999999999",
         sizeof(void*) == 8 ? "Done\nDeleted: 9223372036854775807" : "Done\nDeleted: 2147483647"},
    };
    for (const auto& [results, summary] : cases) {
        hostPrints(results);
        purgo->runCleanupWithPluginIdentifier(plugin);
        ASSERT_TRUE(phone.settle());
        EXPECT_EQ(phone.message(), summary) << results;
        phone.letPass(10);
        EXPECT_EQ(phone.message(), "no alert") << results;
    }
}

TEST_F(Cleanup, EveryFailureStaysUntilItIsSeen) {
    const std::pair<const char*, const char*> cases[] = {
        {"echo message=Broken", "Broken"},
        {"echo success=TRUE", "Unknown error"},
        {"echo success=1; echo message=", "Unknown error"},
        {"true", "Unknown error"},
        {"printf 'success=true\\n\\377'", "Unknown error"},
        {"echo success=true; kill -9 $$", "Done\nDeleted: 0"},
        {"kill -9 $$", "Unknown error"},
    };
    for (const auto& [commands, message] : cases) {
        phone.files().writeScript(hostExecutable, commands);
        purgo->runCleanupWithPluginIdentifier(plugin);
        ASSERT_TRUE(phone.settle());
        EXPECT_EQ(phone.message(), message) << commands;
        ASSERT_TRUE(phone.press("Ok")) << commands;
    }

    std::filesystem::remove(phone.files().at(hostExecutable));
    purgo->runCleanupWithPluginIdentifier(plugin);
    EXPECT_EQ(phone.message(), "Cleaning");
    ASSERT_TRUE(phone.settle());
    phone.letPass(1000);
    EXPECT_EQ(phone.message(), "Unknown error");
}

TEST_F(Cleanup, AnUnlockedDeviceHandsItToTheHostApplication) {
    hostPrints("success=true");
    phone.device().setUnlocked(true);
    purgo->runCleanupWithPluginIdentifier(plugin);
    phone.device().classes().add("SpringBoard",
                                 std::make_shared<platform::SimulatedApplication>(
                                     std::set{ApplicationOperation::isProtectedDataAvailable,
                                              ApplicationOperation::applicationOpenURL}));
    purgo->runCleanupWithPluginIdentifier(plugin);
    EXPECT_EQ(messages,
              (std::vector<std::string>{
                  "openURL purgo://clean/?plugin=com.norvane.purgo.activator",
                  "applicationOpenURL purgo://clean/?plugin=com.norvane.purgo.activator"}));
    EXPECT_FALSE(purgo->isShowingAlert());

    // A system that cannot tell counts as locked.
    phone.device().classes().remove("SpringBoard");
    phone.device().classes().add("SpringBoard",
                                 std::make_shared<platform::SimulatedApplication>(
                                     std::set{ApplicationOperation::applicationOpenURL}));
    purgo->runCleanupWithPluginIdentifier(plugin);
    EXPECT_EQ(phone.message(), "Cleaning");
    ASSERT_TRUE(phone.settle());
    EXPECT_EQ(argumentsGiven(), "-clean -printresults\n");
}

TEST_F(Cleanup, APluginThatIsNotEnabledGetsNoFurtherThanTheConfirmation) {
    for (const auto& enabled :
         {std::optional<std::set<std::string>>(), std::optional(std::set<std::string>{})}) {
        purgo->setEnabledPlugins(enabled);
        purgo->runCleanupWithPluginIdentifier(plugin);
        EXPECT_EQ(phone.message(), "no alert");
        purgo->showCleanupTimeoutAlertWithPluginIdentifier(plugin);
        ASSERT_TRUE(phone.press("Yes"));
        EXPECT_EQ(phone.message(), "no alert");
    }
}

TEST_F(Cleanup, OverlappingRunsAreNotKeptApart) {
    hostPrints("success=true");
    purgo->runCleanupWithPluginIdentifier(plugin);
    const auto first = phone.screen().front();
    purgo->runCleanupWithPluginIdentifier(plugin);
    ASSERT_TRUE(phone.settle());
    // The first outcome took the second progress alert away; the first one stays for good.
    EXPECT_TRUE(first->isOnScreen());
    EXPECT_EQ(messages, (std::vector<std::string>{"Cleaning", "Cleaning", "Done\nDeleted: 0",
                                                  "Done\nDeleted: 0"}));
}

TEST_F(Cleanup, MissingTextsShowAsTheFormatterPrintsThem) {
    phone.files().write("/Applications/Purgo.app/English.strings", "CONTINUE = Now;");
    purgo->showCleanupTimeoutAlertWithPluginIdentifier(plugin);
    EXPECT_EQ(phone.message(), "<null> Now");
    purgo->dismissAlert();

    std::filesystem::remove(phone.files().at("/Applications/Purgo.app/English.strings"));
    purgo = PurgoInterface::make(std::make_shared<PGLocalizationManager>("English"));
    purgo->showCleanupTimeoutAlertWithPluginIdentifier(plugin);
    EXPECT_EQ(phone.message(), "(null) (null)");
    EXPECT_EQ(phone.screen().front()->contents().buttons,
              (std::vector<std::optional<std::string>>{std::nullopt, std::nullopt}));
    EXPECT_EQ(purgo->alertWithFreedSpace("", 1, true)->message(),
              "(null)\n(null): \n(null): 1\n(null)");
}

TEST_F(Cleanup, AnAlertGoesWithoutItsInterface) {
    hostPrints("success=true");
    purgo->runCleanupWithPluginIdentifier(plugin);
    const std::weak_ptr<PurgoInterface> interface = purgo;
    const std::weak_ptr<purgo::PGAlertController> alert = purgo->alert();
    purgo.reset();
    EXPECT_TRUE(interface.expired());
    ASSERT_TRUE(phone.settle());
    phone.screen().front()->dismiss(-1);
    phone.device().mainLoop().drain();
    EXPECT_TRUE(alert.expired());
}

TEST(CleanupInterface, NeedsALocalizationManager) {
    try {
        PurgoInterface::make(nullptr);
        FAIL();
    } catch (const platform::Exception& exception) {
        EXPECT_EQ(exception.name(), "NSInternalInconsistencyException");
        EXPECT_EQ(exception.reason(), "Invalid parameter not satisfying: localizationManager");
    }
}

} // namespace
