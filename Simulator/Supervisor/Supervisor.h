#pragma once

#include "Simulator/Link/Messages.h"
#include "Simulator/Supervisor/Children.h"
#include "Simulator/Supervisor/FrontEnd.h"
#include "Simulator/Supervisor/HomeScreenProcess.h"
#include "Simulator/Supervisor/Signals.h"

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>

namespace simulator {

/// Keeps a home screen running and carries commands and events between it and the front end.
///
/// A home screen that goes down is followed by a new one, as on the phone: in safe mode after a
/// crash, and when it has gone down three times in a row before it could do anything.
///
/// States:  the home screen is starting, idle, or busy with a command; the device's clock and lock
///          go on from one home screen to the next.
/// Threads: the process's only thread.
class Supervisor {
public:
    /// No home screen stays up, not even in safe mode.
    class Hopeless : public std::runtime_error {
    public:
        using std::runtime_error::runtime_error;
    };

    /// `endingSignals` makes the run end when one of them has come; it is left to be taken.
    Supervisor(platform::DeviceConfiguration device, FrontEnd& frontEnd,
               const Signals& endingSignals);

    /// Runs until the front end is finished or told to end by a signal. No process that it
    /// started, and none that those started, is left then.
    ///
    /// Errors: throws `Hopeless`, and `std::system_error` when no process can be started.
    void run();

    /// The time on the device's clock.
    std::chrono::nanoseconds now() const;

private:
    using Clock = std::chrono::steady_clock;
    enum class State { starting, idle, busy };

    void runHomeScreens();
    void startHomeScreen();
    void giveNextCommand();
    void setDeadline();
    void waitForSomething();
    void deadlinePassed();
    LineChannel::Received takeMessages();
    void take(const Message& message);
    void becomeIdle();
    void reapChildren();
    void homeScreenEnded(int status);
    void letHomeScreenEnd();
    bool wantsToEnd() const;

    HomeScreenSettings settings_;
    FrontEnd& frontEnd_;
    const Signals& endingSignals_;
    Signals childEnded_;
    Children children_;
    std::optional<HomeScreenProcess> homeScreen_;
    State state_ = State::starting;
    bool isListening_ = true;
    /// The command under way, or the one that a home screen went down without having begun.
    std::optional<std::string> command_;
    bool isBegun_ = false;
    int endsWithoutWork_ = 0;
    std::optional<Clock::time_point> deadline_;
    bool isInterrupted_ = false;
};

} // namespace simulator
