#pragma once

#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

class HomeScreen;

/// Why a command could not be carried out, in words for who gave it.
class CommandFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using Arguments = std::vector<std::string>;

/// One of the simulator's commands.
struct Command {
    const char* name;
    /// The arguments as help shows them, optional ones in brackets.
    const char* parameters;
    const char* help;
    std::size_t fewestArguments;
    /// The last argument takes the rest of the line.
    std::size_t mostArguments;
    /// Carries the command out in the home screen; null for those that the front end carries out.
    void (*run)(HomeScreen&, const Arguments&);
};

/// The names of commands that a front end carries out.
inline constexpr const char* quitCommand = "quit";
inline constexpr const char* helpCommand = "help";
inline constexpr const char* snapshotCommand = "snapshot";

/// All commands, in the order in which help lists them.
std::span<const Command> commands();

/// A command with the arguments that were given to it.
struct CommandCall {
    const Command* command;
    Arguments arguments;
};

/// The command on a line, without the comment and the white space around it; empty when there is
/// none. A comment's "#" comes first on the line, or stands between white space.
std::string_view withoutComment(std::string_view line);

/// Reads the command on a line without a comment.
///
/// Errors: throws `CommandFailure` for an unknown command and for missing or superfluous arguments.
CommandCall parseCommand(std::string_view line);

} // namespace simulator
