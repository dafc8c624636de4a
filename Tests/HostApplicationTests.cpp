#include "Platform/Linux/Device.h"
#include "Platform/PropertyLists.h"
#include "Simulator/Device/Environment.h"
#include "Simulator/Device/Litter.h"
#include "Tests/Support/RunProgram.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Records = std::map<std::string, std::string>;

constexpr const char* caches = "/var/mobile/Library/Caches";
constexpr const char* settings = "/var/mobile/Library/Preferences/com.norvane.purgo.plist";

// A device with the host application's files, and the program run on it.
class HostApplication : public testing::Test {
protected:
    tests::ProgramResult run(const std::vector<std::string>& arguments) const {
        return tests::runProgram(PURGO_HOST_PROGRAM, arguments,
                                 {{platform::deviceRootVariable, device.path()}});
    }

    /// Runs a shell whose parameters are the words that run the program.
    tests::ProgramResult runFromShell(const std::string& commands) const {
        std::vector<std::string> words = {"/bin/sh", "-c", commands, "sh"};
        for (const auto& word : tests::commandOf(PURGO_HOST_PROGRAM))
            words.push_back(word);
        return tests::runCommand(words, {{platform::deviceRootVariable, device.path()}});
    }

    static Records recordsIn(const std::string& output) {
        Records records;
        std::istringstream lines(output);
        for (std::string line; std::getline(lines, line);)
            if (const auto end = line.find('='); end != std::string::npos)
                records[line.substr(0, end)] = line.substr(end + 1);
        return records;
    }

    Records clean() const { return recordsIn(run({"-clean", "-printresults"}).output); }

    bool exists(std::string_view path) const {
        return fs::exists(fs::symlink_status(device.at(path)));
    }

    const tests::TemporaryFolder device;
};

TEST_F(HostApplication, PrintsWhatAPersonHasSet) {
    const std::string both = "com.norvane.purgo.flipswitch,com.norvane.purgo.activator";
    const auto xml = [](const std::string& pairs) {
        return "<plist version=\"1.0\"><dict>" + pairs + "</dict></plist>";
    };
    struct Case {
        std::string file, language, plugins, shouldRespring;
    };
    const std::vector<Case> cases = {
        {"{ language = Italian; plugins = ( a.b, c.d ); shouldRespring = YES; }", "Italian",
         "a.b,c.d", "true"},
        {xml("<key>language</key><string>日本語=1</string><key>plugins</key><array/>"
             "<key>shouldRespring</key><true/>"),
         "日本語=1", "", "true"},
        {"shouldRespring = 0;", "English", both, "false"},
        // Of the wrong kind, or such that the output could not carry it.
        {"{ language = ( German ); plugins = a.b; shouldRespring = ( ); }", "English", both,
         "false"},
        {R"({ language = "one\ntwo"; plugins = ( a, "b,c", "", ( d ), e ); })", "English", "a,e",
         "false"},
        {"{ language = German", "English", both, "false"},
        {"", "English", both, "false"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.file);
        device.write(settings, one.file);
        const auto result = run({"-printsettings"});
        Records records = recordsIn(result.output);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(records["language"], one.language);
        EXPECT_EQ(records["plugins"], one.plugins);
        EXPECT_EQ(records["shouldrespring"], one.shouldRespring);
    }
}

TEST_F(HostApplication, ReadsNoSettingsBehindALinkOrFromAPipe) {
    const tests::TemporaryFolder outside;
    outside.write("settings", "language = Klingon;");
    fs::create_directories(device.at(settings).parent_path());
    fs::create_symlink(outside.at("settings"), device.at(settings));
    EXPECT_EQ(recordsIn(run({"-printsettings"}).output)["language"], "English");
    fs::remove(device.at(settings));
    ASSERT_EQ(mkfifo(device.at(settings).c_str(), 0600), 0);
    EXPECT_EQ(recordsIn(run({"-printsettings"}).output)["language"], "English");
}

TEST_F(HostApplication, ACleanupDeletesTheFilesAndReportsThem) {
    device.write(settings, "shouldRespring = true;");
    device.write("/var/mobile/Library/Caches/a", std::string(1536, 'a'));
    device.write("/var/mobile/Library/Caches/b/c/d e=\n\xFF", std::string(4096, 'b'));
    device.write("/var/tmp/empty", "");
    device.write("/var/mobile/Documents/letter", "kept");
    ASSERT_EQ(mkfifo(device.at("/var/tmp/pipe").c_str(), 0600), 0);

    const auto result = run({"-clean", "-printresults"});
    const Records expected = {{"success", "true"},
                              {"shouldrespring", "true"},
                              {"freed", "5.5 KB"},
                              {"deleted", "3"},
                              {"failed", "0"}};
    EXPECT_EQ(recordsIn(result.output), expected);
    EXPECT_EQ(result.output.find("Cleaning /var/mobile/Library/Caches\n"), 0u);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_TRUE(fs::is_empty(device.at(caches)));
    EXPECT_TRUE(exists("/var/tmp/pipe"));
    EXPECT_TRUE(exists("/var/mobile/Documents/letter"));

    const Records nothingLeft = clean();
    EXPECT_EQ(nothingLeft.at("success"), "true");
    EXPECT_EQ(nothingLeft.at("freed"), "0 bytes");
    EXPECT_EQ(nothingLeft.at("deleted"), "0");
}

TEST_F(HostApplication, NeverFollowsALinkOutOfTheDevice) {
    const tests::TemporaryFolder outside;
    outside.write("folder/file", std::string(8192, 'k'));
    fs::create_directories(device.at(caches));
    fs::create_directory_symlink(outside.path(), device.at("/var/mobile/Library/Caches/link"));
    fs::create_symlink("nowhere", device.at("/var/mobile/Library/Caches/dangling"));
    fs::create_hard_link(outside.at("folder/file"), device.at("/var/mobile/Library/Caches/hard"));
    fs::create_directory_symlink(outside.path(), device.at("/var/tmp"));
    fs::create_directory_symlink(outside.path(), device.at("/var/behind"));
    device.write(settings, "cacheFolders = ( \"/var/mobile/Library/Caches\", \"/var/tmp\", "
                           "\"/var/behind/folder\" );");

    const Records records = clean();
    EXPECT_TRUE(fs::exists(outside.at("folder/file")));
    EXPECT_TRUE(fs::is_empty(device.at(caches)));
    EXPECT_EQ(records.at("success"), "true");
    EXPECT_EQ(records.at("deleted"), "3");
    EXPECT_EQ(records.at("failed"), "2");
    // What still has a name outside frees nothing.
    EXPECT_EQ(records.at("freed").find("KB"), std::string::npos) << records.at("freed");
}

TEST_F(HostApplication, RefusesFoldersThatAreNoCaches) {
    device.write("/Applications/Purgo.app/English.strings", "");
    device.write("/var/mobile/Documents/letter", "kept");
    device.write(settings,
                 "cacheFolders = ( \"/\", \"//\", \"/var/mobile/\", \"/var/tmp/..\", "
                 "\"/var/./mobile/Documents\", Applications, \"/Applications/Purgo.app\", "
                 "\"/var/mobile/Library/Preferences\", \"/var/mobile/Documents/letter\", "
                 "\"/var/a=b/../c\" );");
    const auto result = run({"-clean", "-printresults"});
    const Records expected = {{"success", "false"},
                              {"message", "Nothing could be deleted. Failed attempts: 10"}};
    EXPECT_EQ(recordsIn(result.output), expected);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_TRUE(exists("/Applications/Purgo.app/English.strings"));
    EXPECT_TRUE(exists("/var/mobile/Documents/letter"));
    EXPECT_TRUE(exists(settings));
}

TEST_F(HostApplication, DeepFoldersNeedFewDescriptors) {
    fs::create_directories(device.at(caches));
    int folder = open(device.at(caches).c_str(), O_RDONLY | O_DIRECTORY);
    for (int depth = 0; depth < 300; ++depth) {
        ASSERT_EQ(mkdirat(folder, "folder", 0700), 0);
        const int next = openat(folder, "folder", O_RDONLY | O_DIRECTORY);
        close(folder);
        folder = next;
    }
    close(openat(folder, "file", O_CREAT | O_WRONLY, 0600));
    close(folder);
    const auto result = runFromShell("ulimit -n 32 && exec \"$@\" -clean -printresults");
    EXPECT_EQ(recordsIn(result.output)["deleted"], "1") << result.errors;
    EXPECT_TRUE(fs::is_empty(device.at(caches)));
}

TEST_F(HostApplication, RefusesToWorkWithoutADeviceOfItsOwn) {
    if (tests::isEmulated())
        GTEST_SKIP() << "the emulation has a root folder of its own, which is not \"/\"";
    fs::create_directory_symlink("/", device.at("machine"));
    const std::vector<std::string> roots = {
        "", "/", "//", "/.", "/tmp/..", device.at("machine"), "relative", device.at("missing")};
    // A command that does no harm where it is not refused.
    for (const std::string& root : roots) {
        SCOPED_TRACE(root);
        const auto result = tests::runProgram(PURGO_HOST_PROGRAM, {"-printsettings"},
                                              {{platform::deviceRootVariable, root}});
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.output, "");
    }
    const auto result = tests::runProgram(PURGO_HOST_PROGRAM, {"-clean", "-printresults"});
    EXPECT_EQ(recordsIn(result.output)["success"], "false");
    EXPECT_NE(recordsIn(result.output)["message"], "");
}

TEST_F(HostApplication, AnythingButItsCommandsPrintsTheUsage) {
    const std::vector<std::vector<std::string>> commands = {
        {}, {""}, {"-printresults"}, {"-clean", "-respring"}, {"-CLEAN"}, {"-printsettings", "x"}};
    device.write("/var/tmp/file", "kept");
    for (const auto& arguments : commands) {
        const auto result = run(arguments);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors.find("usage:"), 0u);
    }
    EXPECT_TRUE(exists("/var/tmp/file"));
}

TEST_F(HostApplication, ARestartEndsTheHomeScreenAndNobodyElse) {
    // A shell plays the home screen.
    const auto restart = [this](const std::string& homeScreen, const std::string& command) {
        const std::string commands = std::string("export ") + simulator::homeScreenVariable + "=" +
                                     homeScreen + "; " + command + "; exit $?";
        return runFromShell(commands);
    };
    const std::string direct = R"("$@" -respring)";
    EXPECT_EQ(restart("$$", direct).signal, SIGTERM);
    EXPECT_EQ(restart("", direct).exitStatus, 1);
    EXPECT_EQ(restart("$$x", direct).exitStatus, 1);
    const std::string throughAnother = R"(sh -c '"$@" -respring; exit $?' sh "$@")";
    EXPECT_EQ(restart("$$", throughAnother).exitStatus, 1);
    EXPECT_EQ(run({"-respring"}).exitStatus, 1);
}

TEST_F(HostApplication, CleansLitterAway) {
    const simulator::Litter first = simulator::makeLitter(device.path(), 60);
    const simulator::Litter second = simulator::makeLitter(device.path(), 60);
    EXPECT_EQ(first.error, "");
    EXPECT_EQ(first.files, 60u);
    EXPECT_GT(first.bytes, 0u);
    EXPECT_EQ(second.bytes, first.bytes);
    EXPECT_EQ(clean().at("deleted"), "120");

    const tests::TemporaryFolder outside;
    fs::remove(device.at("/var/tmp"));
    fs::create_directory_symlink(outside.path(), device.at("/var/tmp"));
    EXPECT_NE(simulator::makeLitter(device.path(), 60).error, "");
    EXPECT_TRUE(fs::is_empty(outside.path()));
    // Under emulation another folder stands for the root.
    if (!tests::isEmulated()) {
        EXPECT_NE(simulator::makeLitter("/.", 1).error, "");
    }
}

Records textsIn(const fs::path& path) {
    const auto dictionary = platform::dictionaryWithContentsOfFile(path);
    Records texts;
    if (dictionary)
        for (const auto& [key, value] : *dictionary)
            texts[*key] = value->string() ? *value->string() : "no text";
    return texts;
}

TEST(StringsFiles, EveryFormHoldsTheSameTexts) {
    const tests::TemporaryFolder files;
    files.write("source", R"("a <key> & more" = "quote \" slash \\ line\nend";
                            short = ""; "ü" = "Grüße, 日本語 and 😀";)");
    const Records texts = {{"a <key> & more", "quote \" slash \\ line\nend"},
                           {"short", ""},
                           {"ü", "Grüße, 日本語 and 😀"}};
    for (const std::string form : {"text", "xml", "binary", "utf16le", "utf16be"}) {
        const auto result =
            tests::runProgram(PURGO_STRINGS_COMPILER, {form, files.at("source"), files.at(form)});
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
        EXPECT_EQ(textsIn(files.at(form)), texts) << form;
    }
}

TEST(StringsFiles, EveryLanguageHasAllTexts) {
    const std::vector<std::string> keys = {
        "CLEANLBL",     "CLEANUPCOMPLETED", "CONTINUE",    "DELETEDFILES", "FREEDSPACE",
        "NO",           "PLUGINDESC1",      "PLUGINDESC2", "PLUGINTITLE1", "PLUGINTITLE2",
        "RESPRINGMSG1", "RUNCOUNTDOWNMSG",  "YES"};
    const fs::path application = fs::path(PURGO_STAGED_DEVICE) / "Applications/Purgo.app";
    for (const std::string language : {"English", "German", "Italian", "Japanese"}) {
        SCOPED_TRACE(language);
        Records texts = textsIn(application / (language + ".strings"));
        for (const std::string& key : keys)
            EXPECT_NE(texts[key], "") << key;
        for (const auto& [key, text] : texts)
            EXPECT_EQ(text.find("<countdown>") != std::string::npos,
                      key == "RUNCOUNTDOWNMSG" || key == "RESPRINGMSG1")
                << key;
    }
}

} // namespace
