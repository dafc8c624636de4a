#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace platform {

/// Runs each piece of work on a thread of its own, which ends with it, so that work that blocks
/// holds up nothing else. When the system has no more threads, work waits for one to come free.
///
/// Threads: any.
class WorkerQueue {
public:
    /// `onFinished` is called on the worker's thread after each piece of work.
    explicit WorkerQueue(std::function<void()> onFinished);

    /// Errors: throws `std::system_error` when not a single thread can be had.
    void async(std::function<void()> work);

    /// How many pieces of work are running or waiting.
    std::size_t pendingCount() const;

    /// Returns when nothing is running or waiting any more.
    void waitUntilFinished() const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace platform
