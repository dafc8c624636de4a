#pragma once

#include "Simulator/Supervisor/DeviceTime.h"
#include "Simulator/Supervisor/EventPrinter.h"
#include "Simulator/Supervisor/FrontEnd.h"
#include "Simulator/Supervisor/Recording.h"

#include <cstddef>
#include <optional>
#include <string>

namespace simulator {

/// Does again what was recorded, on the virtual clock, and fails when something else happens.
///
/// Each command is given at its recorded time, after the events that came before it. An event has
/// come when it is the next one that happens and everything in it but its time is as recorded. It
/// may come earlier than recorded, since on the virtual clock nothing takes time, but not later.
///
/// Timers fire as they did, whatever the machine was doing at the time of the recording, and what
/// child processes do is noticed where it was recorded, however long they take. A home screen that
/// was ended from outside is ended again.
class ReplayFrontEnd : public FrontEnd {
public:
    ReplayFrontEnd(Recording recording, EventPrinter& printer, DeviceTime time);

    std::optional<std::string> nextCommand() override;
    void commandDone() override;
    void commandFailed(const std::string& reason) override;
    void commandInterrupted() override { isOwnRequest_ = false; }
    void eventHappened(const Event& event) override;
    std::vector<int> descriptors() const override { return {}; }
    void descriptorReady(int) override {}
    std::optional<std::chrono::seconds> commandLimit() const override;
    bool isFinished() const override;
    int exitStatus() const override;

private:
    std::optional<std::string> request(std::string line);
    std::optional<std::string> stepTowardsEvent(const RecordedLine& line);
    std::optional<std::string> giveCommand(const RecordedLine& line);
    const RecordedLine* nextLine();
    /// Goes on to the next line.
    void lineCame();
    void differ(const std::string& happened);
    void fail(const std::string& reason);

    Recording recording_;
    EventPrinter& printer_;
    DeviceTime time_;
    std::size_t next_ = 0;
    /// What the home screen was sent before the next event.
    std::optional<int> signal_;
    bool keepsBack_ = false;
    bool hasSettled_ = false;
    bool hasSignalled_ = false;
    /// Up to when time has passed on the way to the next command.
    std::optional<std::chrono::nanoseconds> reached_;
    bool isOwnRequest_ = false;
    bool isFinished_ = false;
    bool hasFailed_ = false;
};

} // namespace simulator
