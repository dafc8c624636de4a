#include "Simulator/Supervisor/Options.h"

#include <array>
#include <filesystem>
#include <functional>
#include <string_view>
#include <system_error>

namespace simulator {

namespace {

namespace fs = std::filesystem;
using platform::ClockKind;
using platform::UserInterfaceIdiom;

struct Option {
    std::string_view name;
    bool hasValue;
    void (*set)(Options&, const std::string& value);
};

void setSystemVersion(Options& options, const std::string& value) {
    const auto version = platform::SystemVersion::parse(value);
    if (!version)
        throw UsageError("\"" + value + "\" is no system version");
    options.systemVersion = *version;
}

void setIdiom(Options& options, const std::string& value) {
    if (value != "phone" && value != "pad")
        throw UsageError("the idiom is phone or pad, not \"" + value + "\"");
    options.idiom = value == "pad" ? UserInterfaceIdiom::pad : UserInterfaceIdiom::phone;
}

void setClock(Options& options, const std::string& value) {
    if (value != "real" && value != "virtual")
        throw UsageError("the clock is real or virtual, not \"" + value + "\"");
    options.clock = value == "real" ? ClockKind::real : ClockKind::virtualTime;
}

constexpr std::array<Option, 10> allOptions = {{
    {"--device", true,
     [](Options& options, const std::string& value) {
         options.device = value;
     }},
    {"--script", true,
     [](Options& options, const std::string& value) {
         options.script = value;
     }},
    {"--record", true,
     [](Options& options, const std::string& value) {
         options.record = value;
     }},
    {"--json", false,
     [](Options& options, const std::string&) {
         options.json = true;
     }},
    {"--prompt", false,
     [](Options& options, const std::string&) {
         options.prompt = true;
     }},
    {"--help", false,
     [](Options& options, const std::string&) {
         options.help = true;
     }},
    {"--unlocked", false,
     [](Options& options, const std::string&) {
         options.isUnlocked = true;
     }},
    {"--system", true, setSystemVersion},
    {"--idiom", true, setIdiom},
    {"--clock", true, setClock},
}};

const Option& optionNamed(std::string_view name) {
    for (const auto& option : allOptions)
        if (option.name == name)
            return option;
    throw UsageError("there is no option \"" + std::string(name) + "\"");
}

/// The staged device lies beside the program, wherever the two are moved.
fs::path stagedDevice() {
    return fs::read_symlink("/proc/self/exe").parent_path() / "device";
}

std::string deviceFolder(const std::string& given) {
    std::error_code error;
    const fs::path path = given.empty() ? stagedDevice() : fs::path(given);
    const auto folder = fs::canonical(path, error);
    if (error || !fs::is_directory(folder, error))
        throw UsageError("there is no device in \"" + path.string() + "\"");
    if (fs::equivalent(folder, "/", error))
        throw UsageError("the machine's own \"/\" cannot be a device");
    return folder;
}

} // namespace

Options Options::parse(std::span<char* const> arguments) {
    Options options;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string_view argument = arguments[index];
        const auto equals = argument.find('=');
        const auto& option = optionNamed(argument.substr(0, equals));
        const bool hasValueInside = equals != std::string_view::npos;
        if (hasValueInside && !option.hasValue)
            throw UsageError(std::string(option.name) + " takes no value");
        if (option.hasValue && !hasValueInside && index + 1 == arguments.size())
            throw UsageError(std::string(option.name) + " needs a value");
        std::string value;
        if (option.hasValue)
            value = hasValueInside ? argument.substr(equals + 1) : arguments[++index];
        if (option.hasValue && value.empty())
            throw UsageError(std::string(option.name) + " needs a value");
        option.set(options, value);
        options.given.emplace(option.name);
    }
    if (options.prompt && options.script)
        throw UsageError("--prompt and --script exclude each other");
    if (!options.help)
        options.device = deviceFolder(options.device);
    return options;
}

const char* const usage =
    "usage: purgo-simulator [--device DIR] [--script FILE] [--record FILE] [--json] [--prompt]\n"
    "                       [--system VERSION] [--idiom phone|pad] [--clock real|virtual]\n"
    "                       [--unlocked]\n"
    "\n"
    "  --device DIR      the folder that stands for the device's / (the staged one)\n"
    "  --script FILE     run the commands in FILE, - for standard input\n"
    "  --record FILE     keep the session's commands and events in FILE, one JSON object a line;\n"
    "                    as a script such a file does all of it again, on the device it was made\n"
    "                    with, and fails when another event comes; the device's files are to be\n"
    "                    as they were, and its program may take another time\n"
    "  --json            print each event as a JSON object on a line of its own\n"
    "  --system VERSION  the device's system version, such as 4.3 or 8.4 (6.1)\n"
    "  --idiom KIND      phone or pad (phone)\n"
    "  --clock KIND      real, or virtual: time passes in the command wait only, and at once\n"
    "                    (virtual with --script, else real)\n"
    "  --unlocked        start with the device unlocked\n"
    "  --prompt          take commands from a prompt (a terminal shows the device itself)\n"
    "  --help            print this\n"
    "\n"
    "The command help lists the commands. Exit status: 0 when all of them ran, 1 when one failed,\n"
    "2 for options that cannot be used.\n";

} // namespace simulator
