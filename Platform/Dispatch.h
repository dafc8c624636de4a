#pragma once

#include <functional>

namespace platform {

/// Queues work for the main thread, which runs it on a later turn of the main loop.
///
/// Work is kept until a main loop runs; work queued first runs first.
///
/// Ownership:  the queue owns the work and all that it captured until it has run.
/// Threads:    any.
void asyncOnMainQueue(std::function<void()> work);

/// Runs work on a worker of the global concurrent queue of high priority.
///
/// Work that blocks never holds up other work: every piece has a thread of its own, which ends
/// with it.
///
/// Ownership:  the worker owns the work and all that it captured until it has run.
/// Threads:    any.
void asyncOnHighPriorityQueue(std::function<void()> work);

} // namespace platform
