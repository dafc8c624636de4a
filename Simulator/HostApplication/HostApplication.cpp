#include "Platform/Linux/Device.h"
#include "Simulator/Device/Environment.h"
#include "Simulator/Device/Folders.h"
#include "Simulator/HostApplication/Cleaner.h"
#include "Simulator/HostApplication/Report.h"
#include "Simulator/HostApplication/Settings.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>
#include <unistd.h>

namespace simulator {
namespace {

enum ExitStatus { done = 0, failed = 1, wrongUsage = 2 };

constexpr const char* usage =
    "usage: iOS6_Purgo -printsettings\n"
    "       iOS6_Purgo -clean [-printresults]\n"
    "       iOS6_Purgo -respring\n"
    "PURGO_DEVICE_ROOT names the folder that stands for the device's /.\n";

platform::FileDescriptor openRootFromEnvironment() {
    const char* path = std::getenv(platform::deviceRootVariable);
    errno = EINVAL;
    return path ? openDeviceRoot(path) : platform::FileDescriptor();
}

Settings settingsOrDefaults(int deviceRoot) {
    const auto settings = readSettings(deviceRoot);
    if (!settings)
        std::cerr << settingsFolder << '/' << settingsFileName
                  << " is missing or unreadable, so the default settings hold\n";
    return settings.value_or(Settings());
}

std::string joined(const std::vector<std::string>& list) {
    std::string text;
    for (const std::string& element : list)
        text += (text.empty() ? "" : ",") + element;
    return text;
}

const char* boolText(bool value) {
    return value ? "true" : "false";
}

ExitStatus printSettings(int deviceRoot) {
    const Settings settings = settingsOrDefaults(deviceRoot);
    printRecord("language", settings.language);
    printRecord("plugins", joined(settings.plugins));
    printRecord("shouldrespring", boolText(settings.shouldRespring));
    printRecord("cachefolders", joined(settings.cacheFolders));
    return done;
}

void cleanCacheFolder(int deviceRoot, const std::string& path, CleanupCounts& counts) {
    if (!mayBeCleaned(path)) {
        printProgress("Left alone, as it is no cache folder: " + path);
        ++counts.failures;
        return;
    }
    platform::FileDescriptor folder = openFolder(deviceRoot, path);
    if (folder.isOpen()) {
        printProgress("Cleaning " + path);
        cleanFolder(std::move(folder), counts);
    } else if (errno != ENOENT) {
        printProgress("Left alone: " + path + " (" + std::strerror(errno) + ")");
        ++counts.failures;
    }
}

void printFailure(const std::string& message) {
    printRecord("success", boolText(false));
    printRecord("message", message);
}

// A cleanup that leaves something behind has still done what it could; one that could do nothing
// at all has failed.
ExitStatus clean(int deviceRoot, bool printResults) {
    const Settings settings = settingsOrDefaults(deviceRoot);
    CleanupCounts counts;
    for (const std::string& path : settings.cacheFolders)
        cleanCacheFolder(deviceRoot, path, counts);
    printProgress(std::to_string(counts.deletedFiles) + " deleted, " +
                  std::to_string(counts.failures) + " failed");

    const bool success = counts.deletedFiles > 0 || counts.failures == 0;
    if (printResults && success) {
        printRecord("success", boolText(true));
        printRecord("shouldrespring", boolText(settings.shouldRespring));
        printRecord("freed", sizeText(counts.freedSpace));
        printRecord("deleted", std::to_string(counts.deletedFiles));
        printRecord("failed", std::to_string(counts.failures));
    } else if (printResults) {
        printFailure("Nothing could be deleted. Failed attempts: " +
                     std::to_string(counts.failures));
    }
    return success ? done : failed;
}

// The home screen's process number, if that process started this one.
std::optional<pid_t> homeScreenAsParent() {
    const char* variable = std::getenv(homeScreenVariable);
    const std::string_view text = variable ? variable : "";
    pid_t homeScreen = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), homeScreen);
    // A home screen that is gone has left this process to another parent, at last to process 1.
    const bool isParent = error == std::errc() && end == text.data() + text.size() &&
                          homeScreen > 1 && homeScreen == getppid();
    return isParent ? std::optional(homeScreen) : std::nullopt;
}

ExitStatus restartHomeScreen() {
    const auto homeScreen = homeScreenAsParent();
    if (!homeScreen) {
        std::cerr << "this was not started by the home screen, so there is nothing to restart\n";
        return failed;
    }
    if (kill(*homeScreen, SIGTERM) == 0)
        return done;
    std::cerr << "the home screen cannot be ended: " << std::strerror(errno) << '\n';
    return failed;
}

ExitStatus run(const std::vector<std::string>& arguments) {
    const bool printsSettings = arguments == std::vector<std::string>{"-printsettings"};
    const bool printsResults = arguments == std::vector<std::string>{"-clean", "-printresults"};
    const bool cleans = printsResults || arguments == std::vector<std::string>{"-clean"};
    const bool restarts = arguments == std::vector<std::string>{"-respring"};
    if (!printsSettings && !cleans && !restarts) {
        std::cerr << usage;
        return wrongUsage;
    }

    const platform::FileDescriptor root = openRootFromEnvironment();
    if (!root.isOpen()) {
        const std::string reason = std::string("The device's folder (") +
                                   platform::deviceRootVariable +
                                   ") cannot be used: " + std::strerror(errno);
        std::cerr << reason << '\n';
        if (printsResults)
            printFailure(reason);
        return failed;
    }
    if (restarts)
        return restartHomeScreen();
    return cleans ? clean(root.get(), printsResults) : printSettings(root.get());
}

} // namespace
} // namespace simulator

int main(int argumentCount, char** arguments) {
    // A cleanup goes on to its end when nobody reads its progress any more.
    signal(SIGPIPE, SIG_IGN);
    const auto status = simulator::run(
        std::vector<std::string>(arguments + (argumentCount > 0), arguments + argumentCount));
    std::cout.flush();
    return std::cout ? status : simulator::failed;
}
