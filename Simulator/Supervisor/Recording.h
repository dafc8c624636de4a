#pragma once

#include "Platform/Linux/Device.h"
#include "Platform/Pipes.h"
#include "Simulator/Supervisor/DeviceTime.h"
#include "Simulator/Supervisor/FrontEndLayer.h"

#include <cstddef>
#include <string>
#include <vector>

namespace simulator {

// A recording of a session is a file of JSON objects, one a line:
//
//     {"recording":1,"system":"6.1","idiom":"phone","unlocked":false}     the device; comes first
//     {"time":2.5,"command":"press Yes"}                                  a command, when it began
//     {"time":2.5,"failure":"no alert is on the screen"}                  ... that failed
//     {"time":2.5,"event":"alert-dismissed","id":1,"buttonIndex":1}       an event
//     {"time":7.5,"signal":9}                                             what the home screen got
//                                                                         from outside before the
//                                                                         event that it went down

/// Writes down what a front end does and what happens.
class Recorder : public FrontEndLayer {
public:
    /// Errors: throws `std::system_error` when the file cannot be opened.
    Recorder(FrontEnd& inner, const std::string& path,
             const platform::DeviceConfiguration& configuration, DeviceTime time);

    std::optional<std::string> nextCommand() override;
    void commandBegun(std::chrono::nanoseconds time) override;
    void commandFailed(const std::string& reason) override;
    void eventHappened(const Event& event) override;
    void homeScreenEnded(int signal) override;
    /// Also when not everything could be written.
    int exitStatus() const override;

    /// Writes down that the session ends.
    void finish();

private:
    void write(std::chrono::nanoseconds time, const char* member, const Event& value);
    void writeLine(const Event& object);

    platform::FileDescriptor file_;
    DeviceTime time_;
    std::string command_;
    bool isIntact_ = true;
};

/// A line of a recording with its number in the file.
struct RecordedLine {
    std::size_t number = 0;
    Event content;

    bool has(const char* member) const { return content.contains(member); }
    std::chrono::nanoseconds time() const;
};

/// A recording that was read.
struct Recording {
    std::vector<RecordedLine> lines;

    /// Whether a file that can be read again from its start holds a recording. Leaves it there.
    static bool isIn(int descriptor);

    /// Errors: throws `std::runtime_error`, naming the line, for what is no recording.
    static Recording read(int descriptor);
};

} // namespace simulator
