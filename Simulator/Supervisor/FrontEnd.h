#pragma once

#include "Simulator/Link/Event.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// The side of the simulator that a person or a script sees: it gives commands and is told what
/// became of them and what happens on the device.
///
/// The supervisor asks it for a command when the home screen can take one, so there is at most one
/// command under way. Exactly one of `commandDone`, `commandFailed` and `commandInterrupted` ends
/// it.
///
/// Threads: the supervisor's only thread. No operation waits for anything but its own output.
class FrontEnd {
public:
    virtual ~FrontEnd() = default;

    /// The next command for the home screen; nothing while there is none. It is asked again after
    /// each `descriptorReady`.
    virtual std::optional<std::string> nextCommand() = 0;

    /// The home screen took the command up, at this time on its clock: what is reported from now on
    /// came after that.
    virtual void commandBegun(std::chrono::nanoseconds /*time*/) {}
    virtual void commandDone() = 0;
    virtual void commandFailed(const std::string& reason) = 0;
    /// The home screen went down in the middle of the command.
    virtual void commandInterrupted() = 0;

    virtual void eventHappened(const Event& event) = 0;

    /// A toggle or a listener as it is, in answer to a `listingRequest`.
    virtual void listed(const Event&) {}

    /// The home screen has gone down, before the event that tells of it. `signal` is what ended it,
    /// or 0.
    virtual void homeScreenEnded(int /*signal*/) {}

    /// The descriptors on which it waits for input at present.
    virtual std::vector<int> descriptors() const = 0;
    virtual void descriptorReady(int descriptor) = 0;

    /// How long a command, or the start of a home screen, may take before it counts as failed;
    /// nothing when somebody is there to lose patience.
    virtual std::optional<std::chrono::seconds> commandLimit() const = 0;

    /// Whether the simulator is to end.
    virtual bool isFinished() const = 0;

    /// Whether all went well, as the simulator's exit status says it.
    virtual int exitStatus() const = 0;
};

} // namespace simulator
