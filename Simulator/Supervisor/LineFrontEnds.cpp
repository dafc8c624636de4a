#include "Simulator/Supervisor/LineFrontEnds.h"

#include "Simulator/HomeScreen/Commands.h"

#include <algorithm>
#include <iostream>

namespace simulator {

namespace {

std::string helpText() {
    std::string text;
    for (const auto& command : commands()) {
        std::string call = std::string("  ") + command.name + " " + command.parameters;
        call.resize(std::max<std::size_t>(call.size(), 28), ' ');
        text += call + command.help + "\n";
    }
    return text +
           "A # between blanks starts a comment. Ctrl-R shows again what you have typed so far,\n"
           "Ctrl-D ends the simulator.\n";
}

} // namespace

std::optional<std::string> LineFrontEnd::nextCommand() {
    while (!isFinished()) {
        const auto line = input_.takeLine();
        if (!line && !input_.isAtEnd()) {
            isWaiting_ = true;
            noLineYet();
            return std::nullopt;
        }
        if (!line) {
            finish();
            break;
        }
        ++lineNumber_;
        lineArrived();
        if (auto command = accept(withoutComment(*line)))
            return command;
    }
    return std::nullopt;
}

/// Carries out what is for the front end, and returns what is for the home screen.
std::optional<std::string> LineFrontEnd::accept(std::string_view line) {
    if (line.empty())
        return std::nullopt;
    try {
        const auto call = parseCommand(line);
        if (call.command->run || call.command->name == std::string_view(snapshotCommand))
            return std::string(line);
        if (call.command->name == std::string_view(quitCommand))
            finish();
        else if (printer_.format() == EventFormat::words)
            printer_.output().write(helpText());
        else
            std::cerr << helpText() << std::flush;
    } catch (const CommandFailure& failure) {
        commandFailed(failure.what());
    }
    return std::nullopt;
}

void LineFrontEnd::eventHappened(const Event& event) {
    if (!isFinished())
        printer_.print(event);
}

std::vector<int> LineFrontEnd::descriptors() const {
    return isWaiting_ ? std::vector{input_.descriptor()} : std::vector<int>();
}

void LineFrontEnd::descriptorReady(int) {
    isWaiting_ = false;
}

bool LineFrontEnd::isFinished() const {
    return isFinished_ || !printer_.output().isIntact();
}

void ScriptFrontEnd::commandFailed(const std::string& reason) {
    std::cerr << lineNumber() << ": " << reason << std::endl;
    hasFailed_ = true;
    finish();
}

std::optional<std::chrono::seconds> ScriptFrontEnd::commandLimit() const {
    return std::chrono::seconds(60);
}

int ScriptFrontEnd::exitStatus() const {
    return hasFailed_ || !printer().output().isIntact() ? 1 : 0;
}

PromptFrontEnd::~PromptFrontEnd() {
    clearPrompt();
}

void PromptFrontEnd::commandFailed(const std::string& reason) {
    clearPrompt();
    std::cerr << reason << std::endl;
}

void PromptFrontEnd::eventHappened(const Event& event) {
    clearPrompt();
    LineFrontEnd::eventHappened(event);
}

void PromptFrontEnd::noLineYet() {
    if (!hasTerminal_ || isPromptShown_)
        return;
    printer().output().write("> ");
    isPromptShown_ = true;
}

// With the line's end that was typed the prompt has scrolled away.
void PromptFrontEnd::lineArrived() {
    isPromptShown_ = false;
}

void PromptFrontEnd::clearPrompt() {
    if (!isPromptShown_)
        return;
    printer().output().write("\r\033[K");
    isPromptShown_ = false;
}

} // namespace simulator
