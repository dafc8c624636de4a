#pragma once

#include <functional>
#include <memory>

namespace platform {

/// A repeating timer on the main run loop.
///
/// States:     scheduled -> invalid.
/// Ownership:  the run loop owns a scheduled timer, the timer owns its tick and all that the tick
///             captured. Invalidating releases both.
/// Threads:    main thread only.
class Timer {
public:
    /// Schedules a timer that ticks each time `interval` seconds have passed.
    ///
    /// Ticks that a busy main thread missed are not made up for: the next one comes at the next
    /// whole multiple of the interval.
    static std::shared_ptr<Timer> scheduled(double interval, std::function<void()> tick);

    virtual ~Timer() = default;

    /// Takes the timer off the run loop. It never ticks again; a second call does nothing.
    virtual void invalidate() = 0;
};

} // namespace platform
