#pragma once

#include "Simulator/Link/LineChannel.h"
#include "Simulator/Link/Messages.h"

#include <sys/types.h>

namespace simulator {

/// A home screen that runs as a child process, and the socket to it.
///
/// It reads nothing from this process's standard input and writes to its standard error only. It
/// has a process group of its own, so that what is typed to interrupt the simulator does not
/// reach it.
///
/// Ownership: the child outlives this object; whoever started it reaps it.
class HomeScreenProcess {
public:
    /// Errors: throws `std::system_error` when no process can be started.
    explicit HomeScreenProcess(const HomeScreenSettings& settings);

    pid_t number() const { return number_; }
    LineChannel& channel() { return channel_; }

    /// Ends it at once.
    void kill() const;

private:
    LineChannel channel_;
    pid_t number_ = -1;
};

} // namespace simulator
