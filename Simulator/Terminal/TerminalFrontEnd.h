#pragma once

#include "Platform/Pipes.h"
#include "Simulator/Picture/PhoneScreen.h"
#include "Simulator/Supervisor/DeviceTime.h"
#include "Simulator/Supervisor/EventPrinter.h"
#include "Simulator/Supervisor/FrontEnd.h"
#include "Simulator/Supervisor/Signals.h"
#include "Simulator/Terminal/CapturedErrors.h"
#include "Simulator/Terminal/Interface.h"
#include "Simulator/Terminal/TerminalScreen.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace simulator {

/// A person at a terminal that shows the device.
class TerminalFrontEnd : public FrontEnd {
public:
    /// Takes the terminal. Null, with the reason, when the terminal is unfit for it.
    ///
    /// `screen` must be kept up to date by somebody else.
    static std::unique_ptr<TerminalFrontEnd> make(PhoneScreen& screen, DeviceTime time,
                                                  std::string& reason);

    ~TerminalFrontEnd() override;

    std::optional<std::string> nextCommand() override;
    void commandDone() override;
    void commandFailed(const std::string& reason) override;
    void commandInterrupted() override;
    void eventHappened(const Event& event) override;
    void listed(const Event& event) override;
    std::vector<int> descriptors() const override;
    void descriptorReady(int descriptor) override;
    std::optional<std::chrono::seconds> commandLimit() const override { return std::nullopt; }
    bool isFinished() const override { return isHungUp_ || interface_.wantsToQuit(); }
    int exitStatus() const override { return 0; }

private:
    using Clock = std::chrono::steady_clock;

    TerminalFrontEnd(PhoneScreen& screen, DeviceTime time);

    void takeKeys();
    void takeSignals();
    void takeErrors();
    void commandEnds();
    void show();
    /// Has the present state shown soon, after what else is there to be done.
    void showSoon();
    void log(LogEntry::Kind kind, std::string text);
    std::string nextPicture();

    DeviceTime time_;
    Signals signals_;
    CapturedErrors errors_;
    TerminalScreen terminal_;
    platform::FileDescriptor redraw_;
    EventWords words_;
    Interface interface_;
    std::optional<std::string> command_;
    Clock::time_point commandStart_;
    int pictures_ = 0;
    bool isHungUp_ = false;
};

} // namespace simulator
