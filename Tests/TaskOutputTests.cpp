#include "Shared/Source/Model/Tasks/PGTaskDictionaryOutput.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "Platform/Exceptions.h"
#include "Shared/Source/Model/Application/PGApplication.h"
#include "Shared/Source/Model/Tasks/PGTask.h"
#include "Shared/Source/Model/Tasks/PGTaskConvenience.h"
#include "Tests/Support/Emulation.h"
#include "Tests/Support/TestDevice.h"

namespace {

using namespace purgo;
using Dictionary = std::map<std::string, std::string>;

Dictionary dictionaryFromChildThatPrints(const std::string& text) {
    const auto task = PGTask::make(PURGO_TEST_CHILD, {"--print", text});
    task->setStdOutAction(PGTaskStreamActionCapture);
    task->launchSynchronously();
    return dictionaryFromOutput(*task);
}

TEST(TaskOutput, RecordsAreReadAsTheyStand) {
    const tests::TestDevice device;
    const std::pair<std::string, Dictionary> cases[] = {
        {"language=English\nsuccess=true\n", {{"language", "English"}, {"success", "true"}}},
        {"a=1\r\nb=2", {{"a", "1"}, {"b", "2"}}},
        {"a=1\u0085b=2\u2028c=3\u2029d=4\v=5\f",
         {{"a", "1"}, {"b", "2"}, {"c", "3"}, {"d", "4"}, {"", "5"}}},
        {"key=\n=\n\n=value\nk=v=w\n", {{"", "value"}, {"k", "v=w"}}},
        {" k = v \n\tk\t=\t\"v\"\t", {{" k ", " v "}, {"\tk\t", "\t\"v\"\t"}}},
        {"x=1\nworking ...\nx=2\nx=\n", {{"x", "2"}}},
        {"clé=\u20AC\n# a=b", {{"clé", "\u20AC"}, {"# a", "b"}}},
        {"no record", {}},
        {"a=1\nb=\xFF\n", {}},
    };
    for (const auto& [text, dictionary] : cases)
        EXPECT_EQ(dictionaryFromChildThatPrints(text), dictionary) << text;
    EXPECT_TRUE(dictionaryFromOutput(*PGTask::make("/never/launched")).empty());
}

TEST(TaskConvenience, AProgramIsFoundInTheFirstFolderThatHasIt) {
    const tests::TestDevice device;
    for (const auto* path :
         {"/sbin/purgo-both", "/usr/bin/purgo-both", "/usr/local/sbin/purgo-last"})
        device.files().writeScript(path, "");
    // Neither a folder nor a file that cannot be run is a program.
    std::filesystem::create_directories(device.files().at("/bin/purgo-both"));
    device.files().write("/usr/bin/purgo-last", "");

    EXPECT_EQ(launchPathForExecutable("purgo-both"), "/sbin/purgo-both");
    EXPECT_EQ(launchPathForExecutable("purgo-last"), "/usr/local/sbin/purgo-last");
    EXPECT_EQ(launchPathForExecutable("/purgo-both/"), "/sbin/purgo-both");
    EXPECT_EQ(launchPathForExecutable("purgo-none"), std::nullopt);
    EXPECT_EQ(launchPathForExecutable(""), std::nullopt);
}

TEST(TaskConvenience, OnlyAChildThatEndsByItselfIsASuccess) {
    const tests::TestDevice device;
    EXPECT_TRUE(launchSyncTaskWithLaunchPath(PURGO_TEST_CHILD, {"--exit", "1"}, true));
    EXPECT_FALSE(launchSyncTaskWithLaunchPath(PURGO_TEST_CHILD, {"--signal", "9"}, true));
    EXPECT_NE(launchSyncTaskWithLaunchPath("/no/such/program", {}, false),
              tests::reportsFailedLaunches());
    EXPECT_THROW(launchSyncTaskWithLaunchPath("true", {}, true), platform::Exception);

    for (const bool quiet : {true, false}) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        launchSyncTaskWithLaunchPath(PURGO_TEST_CHILD, {"--print", "1", "--error", "2"}, quiet);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), quiet ? "" : "1");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), quiet ? "" : "2");
    }
}

TEST(Application, TheExecutableFitsTheSystemVersion) {
    const std::pair<platform::SystemVersion, std::string> cases[] = {
        {{4, 3}, "iOS4_Purgo"}, {{5, 0}, "iOS5_Purgo"}, {{5, 1}, "iOS5_Purgo"},
        {{6, 0}, "iOS6_Purgo"}, {{8, 4}, "iOS6_Purgo"},
    };
    for (const auto& [version, executable] : cases) {
        platform::DeviceConfiguration configuration;
        configuration.systemVersion = version;
        const tests::TestDevice device(configuration);
        EXPECT_EQ(PGApplication::executablePath(), "/Applications/Purgo.app/" + executable);
        EXPECT_EQ(PGApplication::executablePath("/Other.app"), "/Other.app/" + executable);
    }
}

} // namespace
