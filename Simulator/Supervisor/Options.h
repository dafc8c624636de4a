#pragma once

#include "Platform/Linux/Device.h"

#include <functional>
#include <optional>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace simulator {

/// Arguments that the simulator cannot be started with.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What the simulator was started with.
struct Options {
    /// An absolute path without links, never "/".
    std::string device;
    /// "-" stands for standard input.
    std::optional<std::string> script;
    /// The file to record the session in.
    std::optional<std::string> record;
    bool json = false;
    bool prompt = false;
    bool help = false;
    platform::SystemVersion systemVersion = {6, 1};
    platform::UserInterfaceIdiom idiom = platform::UserInterfaceIdiom::phone;
    /// The clock that was asked for; missing when none was.
    std::optional<platform::ClockKind> clock;
    bool isUnlocked = false;
    /// The options that were given, by name.
    std::set<std::string, std::less<>> given;

    bool isGiven(std::string_view name) const { return given.contains(name); }

    /// Errors: throws `UsageError`.
    static Options parse(std::span<char* const> arguments);
};

/// What `--help` prints.
extern const char* const usage;

} // namespace simulator
