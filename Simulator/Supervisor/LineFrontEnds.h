#pragma once

#include "Simulator/Supervisor/EventPrinter.h"
#include "Simulator/Supervisor/FrontEnd.h"
#include "Simulator/Supervisor/LineInput.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// A front end that takes one command a line and prints the events.
///
/// `quit` and the end of the input finish it, and so does a reader of the events who goes away.
class LineFrontEnd : public FrontEnd {
public:
    LineFrontEnd(LineInput input, EventPrinter& printer)
        : input_(std::move(input)), printer_(printer) {}

    std::optional<std::string> nextCommand() override;
    void commandDone() override {}
    void commandInterrupted() override {}
    void eventHappened(const Event& event) override;
    std::vector<int> descriptors() const override;
    void descriptorReady(int descriptor) override;
    bool isFinished() const override;

protected:
    std::size_t lineNumber() const { return lineNumber_; }
    EventPrinter& printer() const { return printer_; }
    void finish() { isFinished_ = true; }

    /// Called when no line has arrived, before the supervisor waits for one.
    virtual void noLineYet() {}
    virtual void lineArrived() {}

private:
    std::optional<std::string> accept(std::string_view line);

    LineInput input_;
    EventPrinter& printer_;
    std::size_t lineNumber_ = 0;
    bool isWaiting_ = false;
    bool isFinished_ = false;
};

/// Runs a script. The first command that fails ends it, with "LINE: reason" on standard error.
class ScriptFrontEnd : public LineFrontEnd {
public:
    using LineFrontEnd::LineFrontEnd;

    void commandFailed(const std::string& reason) override;
    std::optional<std::chrono::seconds> commandLimit() const override;
    int exitStatus() const override;

private:
    bool hasFailed_ = false;
};

/// Somebody who types commands and sees what happens meanwhile. A command that fails ends nothing.
class PromptFrontEnd : public LineFrontEnd {
public:
    /// Without a terminal for it no prompt is shown.
    PromptFrontEnd(LineInput input, EventPrinter& printer, bool hasTerminal)
        : LineFrontEnd(std::move(input), printer), hasTerminal_(hasTerminal) {}

    ~PromptFrontEnd() override;

    void commandFailed(const std::string& reason) override;
    void eventHappened(const Event& event) override;
    std::optional<std::chrono::seconds> commandLimit() const override { return std::nullopt; }
    int exitStatus() const override { return 0; }

private:
    void noLineYet() override;
    void lineArrived() override;
    void clearPrompt();

    bool hasTerminal_;
    bool isPromptShown_ = false;
};

} // namespace simulator
