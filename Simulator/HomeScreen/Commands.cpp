#include "Simulator/HomeScreen/Commands.h"

#include "Simulator/HomeScreen/CommandActions.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n\v\f";

bool isSpace(char character) {
    return whiteSpace.find(character) != std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(whiteSpace);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(whiteSpace) - begin + 1);
}

bool startsComment(std::string_view line, std::size_t index) {
    if (line[index] != '#')
        return false;
    const bool isLast = index + 1 == line.size();
    return index == 0 || (isSpace(line[index - 1]) && (isLast || isSpace(line[index + 1])));
}

std::string_view takeWord(std::string_view& rest) {
    const auto end = std::find_if(rest.begin(), rest.end(), isSpace);
    const auto word = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest = trimmed(rest.substr(word.size()));
    return word;
}

} // namespace

std::span<const Command> commands() {
    static constexpr Command table[] = {
        {"switches", "", "lists the quick toggles that are registered", 0, 0, listSwitches},
        {"listeners", "", "lists the event listeners that are registered", 0, 0, listListeners},
        {"toggle", "IDENTIFIER", "activates a quick toggle", 1, 1, toggle},
        {"event", "NAME", "fires an event at the listener of this name", 1, 1, fireEvent},
        {"abort", "NAME", "tells the listener that its event was aborted", 1, 1, abortEvent},
        {"other", "NAME", "tells the listener that another one handled its event", 1, 1,
         otherListenerHandledEvent},
        {"screen", "", "shows the alerts on the screen, front first", 0, 0, showScreen},
        {"press", "BUTTON", "presses a button of the front alert, by title or as #INDEX", 1, 1,
         press},
        {"type", "[TEXT]", "writes into the text field of the front alert", 0, 1, typeText},
        {"gallery", "[NAME [BACKEND]]",
         "lists the alert gallery, or shows an exhibit by a BACKEND: view, controller", 0, 2,
         gallery},
        {"wait", "SECONDS", "lets that much time pass", 1, 1, wait},
        {"settle", "", "runs until no child process runs and nothing is queued", 0, 0, settle},
        {"lock", "", "locks the device: its protected data is unavailable", 0, 0, lock},
        {"unlock", "", "unlocks the device", 0, 0, unlock},
        {"litter", "[COUNT]", "fills the device's caches with that many files", 0, 1, litter},
        {snapshotCommand, "FILE", "writes a picture of the screen, an SVG file", 1, 1, nullptr},
        {"restart", "", "restarts the home screen", 0, 0, restart},
        {helpCommand, "", "shows this list", 0, 0, nullptr},
        {quitCommand, "", "ends the simulator", 0, 0, nullptr},
    };
    return table;
}

std::string_view withoutComment(std::string_view line) {
    line = trimmed(line);
    for (std::size_t index = 0; index < line.size(); ++index)
        if (startsComment(line, index))
            return trimmed(line.substr(0, index));
    return line;
}

CommandCall parseCommand(std::string_view line) {
    auto rest = trimmed(line);
    const std::string name(takeWord(rest));
    const auto all = commands();
    const auto command = std::find_if(all.begin(), all.end(),
                                      [&name](const auto& each) { return each.name == name; });
    if (command == all.end())
        throw CommandFailure("there is no command \"" + name + "\"");

    Arguments arguments;
    while (!rest.empty() && arguments.size() < command->mostArguments) {
        const bool isLast = arguments.size() + 1 == command->mostArguments;
        arguments.emplace_back(isLast ? std::exchange(rest, {}) : takeWord(rest));
    }
    if (arguments.size() < command->fewestArguments)
        throw CommandFailure(name + " needs an argument: " + name + " " + command->parameters);
    if (!rest.empty())
        throw CommandFailure(name + " takes no argument, but was given \"" + std::string(rest) +
                             "\"");
    return {&*command, std::move(arguments)};
}

} // namespace simulator
