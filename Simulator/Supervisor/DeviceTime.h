#pragma once

#include <chrono>
#include <functional>

namespace simulator {

/// Tells the time on the device's clock.
using DeviceTime = std::function<std::chrono::nanoseconds()>;

inline double seconds(std::chrono::nanoseconds time) {
    return std::chrono::duration<double>(time).count();
}

} // namespace simulator
