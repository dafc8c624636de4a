#pragma once

#include "Tests/Support/RunProgram.h"
#include "Tests/Support/TemporaryFolder.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

/// A device with the library, both frameworks, English texts and a host executable of the test's
/// own, on which the simulator runs scripts.
class SimulatedPhone {
public:
    SimulatedPhone() {
        for (const char* name :
             {"PurgoLib.dylib", "PurgoLib.plist", "Flipswitch.dylib", "Activator.dylib"})
            stage(name);
        files.write(application + "English.strings", R"(
            RUNCOUNTDOWNMSG = "In <countdown>."; CONTINUE = "Now?"; YES = Yes; NO = No;
            CLEANLBL = Cleaning; CLEANUPCOMPLETED = Done; FREEDSPACE = Freed;
            DELETEDFILES = Deleted; RESPRINGMSG1 = "Restart in <countdown>?";
            PLUGINTITLE1 = Clean; PLUGINTITLE2 = "Clean now"; PLUGINDESC1 = Asks;)");
        hostSettings("plugins=com.norvane.purgo.flipswitch,com.norvane.purgo.activator");
        hostCleans("echo success=true");
    }

    /// Puts one of the staged libraries, or its filter, on this device.
    void stage(const std::string& name) const {
        std::filesystem::create_directories(files.at(libraries));
        std::filesystem::create_symlink(std::string(PURGO_STAGED_DEVICE) + libraries + name,
                                        files.at(libraries + name));
    }

    void hostSettings(std::string_view lines) const {
        files.write(application + "settings", std::string(lines) + "\n");
    }

    /// Gives the host executable what it does to clean, and to restart the home screen.
    void hostCleans(const std::string& clean,
                    const std::string& respring = "kill -TERM $PPID") const {
        files.writeScript(application + "iOS6_Purgo", "cd $PURGO_DEVICE_ROOT/" + application +
                                                          "\ncase $1 in\n"
                                                          "-printsettings) cat settings ;;\n"
                                                          "-clean) " +
                                                          clean +
                                                          " ;;\n"
                                                          "-respring) " +
                                                          respring + " ;;\nesac");
    }

    /// Runs a script to its end. More options come behind those that every run has.
    ProgramResult run(const std::string& script,
                      const std::vector<std::string>& options = {"--json"}) const {
        files.write("script", script);
        std::vector<std::string> arguments = {"--device", files.path(), "--script",
                                              files.at("script")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runProgram(PURGO_SIMULATOR, arguments);
    }

    /// What a script makes happen, once the home screen has started; as `story` tells it.
    std::string storyOf(const std::string& script,
                        const std::vector<std::string>& options = {}) const;

    const TemporaryFolder files;
    const std::string application = "/Applications/Purgo.app/";
    const std::string libraries = "/Library/MobileSubstrate/DynamicLibraries/";
};

/// Retells events of the JSON form one a line: the time, the name, the values of the other members.
inline std::string story(const std::string& output, const std::set<std::string>& leftOut = {}) {
    std::string lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);) {
        const auto event = nlohmann::ordered_json::parse(line);
        if (leftOut.contains(event.at("event")))
            continue;
        std::ostringstream told;
        for (const auto& [name, value] : event.items())
            told << (name == "time"    ? ""
                     : name == "event" ? " "
                                       : " | ")
                 << (value.is_string() ? value.get<std::string>() : value.dump());
        auto text = told.str();
        for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n'))
            text.replace(end, 1, " / ");
        lines += "\n" + text;
    }
    return lines + "\n";
}

inline std::string SimulatedPhone::storyOf(const std::string& script,
                                           const std::vector<std::string>& options) const {
    auto all = options;
    all.emplace_back("--json");
    const auto result = run(script, all);
    return story(result.output, {"home-screen-started", "library-loaded", "switch-registered",
                                 "listener-registered"}) +
           result.errors;
}

} // namespace tests
