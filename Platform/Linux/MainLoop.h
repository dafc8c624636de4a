#pragma once

#include "Platform/Pipes.h"
#include "Platform/Timer.h"

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace platform {

enum class ClockKind { real, virtualTime };

/// The main loop of the simulated device: queued work, timers and file descriptors, on a clock
/// that is the real one or a virtual one.
///
/// Virtual time passes in `letPass` only, and then at once. Between two timers that fire, all the
/// work that the first one queued has run.
///
/// Threads:     the thread that runs it; `async` and `wake` on any.
/// Reentrancy:  work, ticks and descriptors' callbacks may run the loop again.
class MainLoop {
public:
    using Duration = std::chrono::nanoseconds;

    /// A loop whose clock shows `start` now.
    MainLoop(ClockKind clock, Duration start);

    /// The time on the clock.
    Duration now() const;

    /// Queues work for a later turn.
    void async(std::function<void()> work);

    /// Makes a waiting loop look again at what it is waiting for.
    void wake();

    /// Schedules a repeating timer. Requires: an interval above zero.
    std::shared_ptr<Timer> schedule(Duration interval, std::function<void()> tick);

    /// Calls `onReadable` whenever the descriptor can be read or has come to its end.
    void watch(int descriptor, std::function<void()> onReadable);
    void unwatch(int descriptor);

    /// When the next timer fires, on the clock; nothing while there is none.
    std::optional<Duration> nextDeadline() const;

    /// Whether work that other threads queue is kept back until it no longer is. Whoever steps
    /// through virtual time decides with this when what a child process did is noticed.
    void keepBackOtherThreads(bool isKept);

    /// Whether no work is queued.
    bool isIdle() const;

    /// Runs what is ready, and what that makes ready, without waiting for anything.
    void drain();

    /// Lets that much time pass on the clock.
    void letPass(Duration duration);

    /// Runs until the condition holds, or until `realLimit` of real time has passed. Says whether
    /// the condition held. Virtual time stands still meanwhile.
    bool runUntil(const std::function<bool()>& condition, Duration realLimit = Duration::max());

private:
    class ScheduledTimer;

    bool runQueuedWork();
    bool fireNextTimer(Duration notAfter);
    void waitForSomething(Duration atMost);
    std::shared_ptr<ScheduledTimer> nextTimer() const;

    ClockKind clock_;
    std::chrono::steady_clock::time_point realStart_;
    Duration start_;
    Duration virtualNow_;
    std::thread::id thread_ = std::this_thread::get_id();
    mutable std::mutex mutex_; // guards the next three
    std::deque<std::function<void()>> queue_;
    std::deque<std::function<void()>> keptBack_;
    bool keepsBack_ = false;
    std::vector<std::shared_ptr<ScheduledTimer>> timers_;
    std::map<int, std::shared_ptr<std::function<void()>>> descriptors_;
    FileDescriptor wakeUp_;
};

} // namespace platform
